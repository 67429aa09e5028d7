#include "support/RecordingProgress.h"
#include "support/RecordingSurface.h"
#include "support/StudFixture.h"

#include "pedigree/PedigreeSheet.h"
#include "store/StudDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using test::RecordingSurface;
using test::addAnimal;

namespace {

TEST(ChampionTests, TitlesMustStandAsWordsOrWithAPoint)
{
    EXPECT_TRUE(Is_Champion_Name(u"Ch. Warren Jack"_s));
    EXPECT_TRUE(Is_Champion_Name(u"GR CH. Jack"_s));
    EXPECT_TRUE(Is_Champion_Name(u"Ch Jack"_s));
    EXPECT_TRUE(Is_Champion_Name(u"Warren Champion Jack"_s));
    EXPECT_FALSE(Is_Champion_Name(u"Charlie"_s)) << "the letters CH alone are no title";
    EXPECT_FALSE(Is_Champion_Name(u"CHAMPION"_s));
    EXPECT_TRUE(Is_Champion_Award(u"Best in Show"_s));
    EXPECT_TRUE(Is_Champion_Award(u"Grand Champion Buck"_s));
    EXPECT_FALSE(Is_Champion_Award(u"BEST"_s));
    EXPECT_FALSE(Is_Champion_Award(QString()));
}

TEST(SheetText, FittedTextIsCutAndWrappedTextBreaksOnce)
{
    RecordingSurface page;
    page.setScale(500, 4500);
    page.setFontSize(10); // a character is 10 x 10 twips / (11906 / 500) = 4.2 units
    PrintFitted(page, u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"_s, 5, 100, 80);
    EXPECT_EQ(page.ops.last().text, u"ABCDEFGHIJKLMNOPQRS") << "cut until narrower than the limit";
    Print_Wrapped(page, u"Warren End Champion Bramble"_s, 7, 200, 80);
    ASSERT_GE(page.ops.size(), 3);
    EXPECT_EQ(page.ops[1].text, u"Warren End Champion");
    EXPECT_EQ(page.ops[2].text, u"Bramble");
    EXPECT_EQ(page.ops[2].x, 7) << "the rest starts again at x on the next line";
    EXPECT_GT(page.ops[2].y, page.ops[1].y);
    Print_Wrapped(page, u"Supercalifragilisticexpialidocious"_s, 7, 300, 80);
    EXPECT_EQ(page.ops.last().text, u"Supercalifragilisti") << "a name without blanks is cut, never wrapped";
}

class PedigreeSheetTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Database &db = fx.open();
        fx.session.StudName = u"Warren End"_s;
        CRegSettings s(fx.session.AppName);
        s.SaveSetting(u"Rabbits\\Options"_s, u"Header_0"_s, u"Tel: 0123"_s);
        s.SaveSetting(u"Rabbits\\Options"_s, u"Footer"_s, u"Bred with care"_s);
        grandsire = addAnimal(db, {{u"Name"_s, u"Ch. Old Grandad"_s}, {u"Colour"_s, u"Black"_s}});
        const qint64 sire = addAnimal(db, {{u"Name"_s, u"Ch Jack"_s}, {u"Sire"_s, grandsire},
                                           {u"BestAward"_s, u"Best in Show"_s}, {u"Colour"_s, u"Otter"_s}});
        subject = addAnimal(db, {{u"Name"_s, u"Bramble"_s}, {u"Sire"_s, sire}, {u"RingNo"_s, u"WE201"_s},
                                 {u"Sex"_s, u"Doe"_s}, {u"Type"_s, u"Rex"_s}, {u"Colour"_s, u"Agouti"_s}});
        fx.session.CurrentStockNo = subject;
        ASSERT_TRUE(Load_Pedigree_Table(fx.session, table, subject, -1, -1, &type));
    }

    PedigreeSheetJob job(int style, int generations)
    {
        PedigreeSheetJob j;
        j.table = &table;
        j.style = style;
        j.generations = generations;
        j.captions = {u"Sire: "_s, u"Dam: "_s};
        j.certifyLine = u"I certify this Pedigree to be correct to the best of my knowledge"_s;
        j.subjectType = type;
        return j;
    }

    test::StudFixture fx;
    PedigreeTable table;
    QString type;
    qint64 subject = 0, grandsire = 0;
};

TEST_F(PedigreeSheetTest, HeadingSubjectGridAndSignature)
{
    RecordingSurface page;
    test::RecordingProgress progress;
    ASSERT_TRUE(printPedigreeSheet(page, fx.session, fx.prompts, job(1, 3), progress));
    EXPECT_EQ(progress.total, 68);
    EXPECT_EQ(progress.steps.size(), 68);
    EXPECT_EQ(progress.title, u"Printing Pedigree");
    EXPECT_EQ(page.ops.last().kind, RecordingSurface::Op::End);

    const auto *stud = page.find(u"Warren End"_s);
    ASSERT_NE(stud, nullptr);
    EXPECT_EQ(stud->size, 32);
    EXPECT_EQ(stud->y, 0);
    ASSERT_NE(page.find(u"Tel: 0123"_s), nullptr);
    EXPECT_EQ(page.find(u"Bred with care"_s)->y, 4250);
    const auto *certify = page.find(u"I certify this Pedigree to be correct to the best of my knowledge"_s);
    ASSERT_NE(certify, nullptr);
    EXPECT_EQ(certify->y, 4210);
    const auto *signature = page.find(u"Signed ..............................................  Date ...../...../....."_s);
    ASSERT_NE(signature, nullptr);
    EXPECT_DOUBLE_EQ(signature->y, 4210 + 12 * 24 * 4500 / 16838.0 + 30) << "30 units below the certify line";
    EXPECT_EQ(signature->x, certify->x);

    const auto *label = page.find(u"Pedigree of: "_s);
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(label->bold);
    EXPECT_EQ(label->x, 2);
    EXPECT_EQ(label->y, 800);
    EXPECT_TRUE(page.find(u"Bramble"_s)->italic);
    EXPECT_EQ(page.find(u"Ring No.: "_s)->x, 2);
    EXPECT_EQ(page.find(u"Colour: "_s)->x, 357);

    QStringList onPage;
    for (const QString &title : {u"Parents"_s, u"Grandparents"_s, u"Great GrandParents"_s, u"G. G. GrandParents"_s,
                                 u"G.G.G. GrandParents"_s}) {
        const auto *op = page.find(title);
        ASSERT_NE(op, nullptr);
        if (op->x < op->scaleWidth)
            onPage << title;
    }
    EXPECT_EQ(onPage, QStringList({u"Parents"_s, u"Grandparents"_s, u"Great GrandParents"_s}));
}

// The particulars of the subject above the grid, as drawn: the texts of the row at y.
QList<RecordingSurface::Op> particulars(const RecordingSurface &page, double y)
{
    QList<RecordingSurface::Op> row;
    for (const auto &op : page.ops)
        if (op.kind == RecordingSurface::Op::Text && op.scaleWidth == 500 && op.y == y)
            row << op;
    return row;
}

// How wide a text is on the page: half its point size a character, in twips, over a page
// 500 units wide.
double drawnWidth(const RecordingSurface::Op &op)
{
    return op.text.size() * op.size * 10 / (11906 / op.scaleWidth);
}

constexpr double kFirstRow = 800;
constexpr double kSecondRow = 800 + 12 * 24 * 4500 / 16838.0;

TEST_F(PedigreeSheetTest, ShortParticularsKeepTheirPlacesAndSize)
{
    RecordingSurface page;
    ASSERT_TRUE(printPedigreeSheet(page, fx.session, fx.prompts, job(1, 5)));
    struct Expected
    {
        QString text;
        double x;
        bool bold, italic;
    };
    const double character = 12 * 10 / (11906 / 500.0);
    const QList<QList<Expected>> rows{{{u"Pedigree of: "_s, 2, true, false},
                                       {u"Bramble"_s, 2 + 13 * character, false, true},
                                       {u"Date of Birth: "_s, 246, true, false},
                                       {QString(), 246 + 15 * character, false, true},
                                       {u"Breed: "_s, 357, true, false},
                                       {u"Rex"_s, 357 + 7 * character, false, true},
                                       // the end of the line
                                       {QString(), 357 + 10 * character, false, false}},
                                      {{u"Ring No.: "_s, 2, true, false},
                                       {u"WE201"_s, 2 + 10 * character, false, true},
                                       {u"Sex: "_s, 246, true, false},
                                       {u"Doe"_s, 246 + 5 * character, false, true},
                                       {u"Colour: "_s, 357, true, false},
                                       {u"Agouti"_s, 357 + 8 * character, false, true}}};
    for (int r = 0; r < 2; ++r) {
        const auto drawn = particulars(page, r == 0 ? kFirstRow : kSecondRow);
        ASSERT_EQ(drawn.size(), rows[r].size()) << "row " << r;
        for (qsizetype i = 0; i < drawn.size(); ++i) {
            const std::string at = "row " + std::to_string(r) + " text " + std::to_string(i);
            EXPECT_EQ(drawn[i].text, rows[r][i].text) << at;
            EXPECT_DOUBLE_EQ(drawn[i].x, rows[r][i].x) << at;
            EXPECT_EQ(drawn[i].size, 12) << at;
            EXPECT_EQ(drawn[i].bold, rows[r][i].bold) << at;
            EXPECT_EQ(drawn[i].italic, rows[r][i].italic) << at;
        }
    }
}

TEST_F(PedigreeSheetTest, LongParticularsShrinkAndAreCutInsideTheirRooms)
{
    const QString name = u"Warren End Grand Champion Bramblewood Thistledown Kits of Hampton Vale"_s;
    const QString breed = u"Continental Giant Coloured Rex"_s; // as long as a breed can be
    fx.session.CurrentStockNo = fx.add({{u"Name"_s, name},
                                        {u"DOB"_s, 45323.0},
                                        {u"Type"_s, breed},
                                        {u"RingNo"_s, u"WE2024-0001"_s},
                                        {u"Sex"_s, u"Doe"_s},
                                        {u"Colour"_s, u"Broken Chinchilla Steel Sable"_s}});
    fx.session.IdWord = u"Identification given by the National Rabbit Council of Great Britain and Ireland"_s;
    RecordingSurface page;
    ASSERT_TRUE(printPedigreeSheet(page, fx.session, fx.prompts, job(1, 5)));

    for (const double y : {kFirstRow, kSecondRow}) {
        auto drawn = particulars(page, y);
        if (y == kFirstRow)
            drawn.removeLast(); // the end of the line
        ASSERT_EQ(drawn.size(), 6);
        for (qsizetype i = 0; i < drawn.size(); ++i) {
            const double end = drawn[i].x + drawnWidth(drawn[i]);
            const double next = i + 1 < drawn.size() ? drawn[i + 1].x : 500;
            EXPECT_LE(end, next + 1e-9) << drawn[i].text.toStdString() << " runs into what follows";
            EXPECT_LE(end, 500) << drawn[i].text.toStdString() << " runs off the page";
        }
        for (qsizetype i = 0; i < drawn.size(); i += 2) {
            EXPECT_TRUE(drawn[i].bold);
            EXPECT_TRUE(drawn[i + 1].italic);
            EXPECT_EQ(drawn[i + 1].size, drawn[i].size) << "a label and its value share one size";
        }
    }
    const auto first = particulars(page, kFirstRow);
    EXPECT_EQ(first[0].text, u"Pedigree of: ");
    EXPECT_EQ(first[0].x, 2);
    EXPECT_EQ(first[0].size, 8) << "shrunk as far as it goes";
    EXPECT_EQ(first[1].text, u"Warren End Grand Champion Bramblewood Thistledown Kits..."_s)
        << "cut, without the blank before the dots";
    EXPECT_EQ(first[2].text, u"Date of Birth: ");
    EXPECT_EQ(first[2].x, 246);
    EXPECT_EQ(first[3].text, u"01/02/2024") << "a smaller size is enough for the whole date";
    EXPECT_EQ(first[3].size, 10);
    EXPECT_EQ(first[4].text, u"Breed: ");
    EXPECT_EQ(first[4].x, 357);
    EXPECT_EQ(first[5].text, breed) << "the smallest size is enough for the longest breed";
    EXPECT_EQ(first[5].size, 8);

    const auto second = particulars(page, kSecondRow);
    EXPECT_TRUE(fx.session.IdWord.startsWith(second[0].text)) << "a label too long even alone is cut";
    EXPECT_TRUE(second[1].text.isEmpty());
    EXPECT_EQ(second[2].text, u"Sex: ");
    EXPECT_EQ(second[3].text, u"Doe");
    EXPECT_EQ(second[3].size, 12) << "each field shrinks on its own";
    EXPECT_EQ(second[4].x, 357);
    EXPECT_EQ(page.find(u"Sire: "_s)->size, 14) << "the grid keeps its sizes";
}

TEST_F(PedigreeSheetTest, AncestorsSitInTheirCellsAndChampionsPrintRed)
{
    RecordingSurface page;
    ASSERT_TRUE(printPedigreeSheet(page, fx.session, fx.prompts, job(1, 5)));
    const auto *sire = page.find(u"Ch Jack"_s);
    ASSERT_NE(sire, nullptr);
    EXPECT_EQ(sire->x, 5);
    EXPECT_EQ(sire->y, 1205 + 550);
    EXPECT_EQ(sire->colour, 255) << "in the colour styles the award decides";
    const auto *grandsire = page.find(u"Ch. Old Grandad"_s);
    ASSERT_NE(grandsire, nullptr);
    EXPECT_EQ(grandsire->colour, 0) << "a champion name without a champion award prints black here";
    EXPECT_EQ(grandsire->y, 1205 + 110);

    RecordingSurface named;
    ASSERT_TRUE(printPedigreeSheet(named, fx.session, fx.prompts, job(2, 5)));
    EXPECT_EQ(named.find(u"Ch. Old Grandad"_s)->colour, 255);
    EXPECT_EQ(named.find(u"Ch Jack"_s)->y, 1205 + 600);
    int roles = 0;
    for (const auto &op : named.ops)
        if (op.kind == RecordingSurface::Op::Text && (op.text == u"Sire: " || op.text == u"Dam: "))
            ++roles;
    EXPECT_EQ(roles, 62) << "every cell prints its role, occupied or empty";
}

TEST_F(PedigreeSheetTest, NameLineCanBeLeftBlankAndTestMatingsAreNamed)
{
    fx.session.PrintName = false;
    RecordingSurface page;
    ASSERT_TRUE(printPedigreeSheet(page, fx.session, fx.prompts, job(3, 5)));
    EXPECT_NE(page.find(QString(40, u'_')), nullptr);
    EXPECT_EQ(page.find(u"Ring No.: "_s), nullptr) << "styles 3 and 4 leave the identification line out";

    fx.session.PrintName = true;
    fx.session.CurrentStockNo = 0;
    RecordingSurface mating;
    ASSERT_TRUE(printPedigreeSheet(mating, fx.session, fx.prompts, job(1, 5)));
    EXPECT_NE(mating.find(u"Result of Test Mating"_s), nullptr);
}

TEST_F(PedigreeSheetTest, VanishedSubjectAbandonsTheDocument)
{
    fx.session.Stud->handle().execute(u"DELETE FROM Stock WHERE Number = ?"_s, {subject});
    RecordingSurface page;
    EXPECT_FALSE(printPedigreeSheet(page, fx.session, fx.prompts, job(1, 5)));
    EXPECT_EQ(page.ops.last().kind, RecordingSurface::Op::Kill);
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"Requested Stock Not Found"_s}));
}

TEST_F(PedigreeSheetTest, WatermarkFillsThePageAndLogoSitsTopRight)
{
    CRegSettings s(fx.session.AppName);
    s.SaveSetting(u"Rabbits\\Options"_s, u"Watermark"_s, u"/pictures/mark.png"_s);
    s.SaveSetting(u"Rabbits\\Options"_s, u"Logo"_s, u"/pictures/logo.png"_s);
    s.SaveSetting(u"Rabbits"_s, u"Rex Watermark"_s, u"/pictures/rex.png"_s);
    RecordingSurface page;
    page.pictures.insert(u"/pictures/rex.png"_s, QSizeF(2000, 1000));
    page.pictures.insert(u"/pictures/logo.png"_s, QSizeF(4000, 1000));
    ASSERT_TRUE(printPedigreeSheet(page, fx.session, fx.prompts, job(1, 5)));
    const auto *mark = page.find(u"/pictures/rex.png"_s);
    ASSERT_EQ(mark, nullptr) << "pictures are not texts";
    QList<RecordingSurface::Op> pictures;
    for (const auto &op : page.ops)
        if (op.kind == RecordingSurface::Op::Picture)
            pictures << op;
    ASSERT_EQ(pictures.size(), 2);
    EXPECT_EQ(pictures[0].text, u"/pictures/rex.png") << "the breed's own watermark comes first";
    EXPECT_DOUBLE_EQ(pictures[0].x2, 11896) << "as wide as the page allows, keeping proportions";
    EXPECT_DOUBLE_EQ(pictures[0].y2, 5948);
    EXPECT_DOUBLE_EQ(pictures[1].x2, 1500) << "a wide logo is held to 1500";
    EXPECT_DOUBLE_EQ(pictures[1].x, 11906 - 1500);
    EXPECT_DOUBLE_EQ(pictures[1].y, 0);
}

TEST_F(PedigreeSheetTest, InbreedingLinesAndFramesPrintOnlyWhenGiven)
{
    RecordingSurface plain;
    ASSERT_TRUE(printPedigreeSheet(plain, fx.session, fx.prompts, job(1, 5)));

    PedigreeSheetJob marked = job(1, 5);
    marked.inbreedingLines = {u"COI 6.25% (3 gen, 50% of ancestors known)"_s, u"Relationship of Sire and Dam 12.50%"_s};
    marked.marks.insert(grandsire, 0xe6194b);
    RecordingSurface page;
    ASSERT_TRUE(printPedigreeSheet(page, fx.session, fx.prompts, marked));

    // Under the footer (4250), on the left, one below the other, each cut short of the
    // signature block (at 107 with this surface's wide letters).
    const auto *coi = page.find(u"COI 6.25% (3 gen, 50% o"_s);
    ASSERT_NE(coi, nullptr);
    EXPECT_EQ(coi->x, 0);
    EXPECT_EQ(coi->y, 4330);
    EXPECT_EQ(coi->size, 10);
    const auto *relationship = page.find(u"Relationship of Sire an"_s);
    ASSERT_NE(relationship, nullptr);
    EXPECT_GT(relationship->y, coi->y);

    // The grandsire's place (second column, first of four rows) framed inside its lines, in
    // his colour as the surface takes it (blue, green, red).
    QList<RecordingSurface::Op> frame;
    for (const RecordingSurface::Op &op : page.ops)
        if (op.kind == RecordingSurface::Op::Line && op.colour == 0x4b19e6)
            frame << op;
    ASSERT_EQ(frame.size(), 4);
    EXPECT_EQ(QList<double>({frame[0].x, frame[0].y, frame[1].x, frame[2].y}), QList<double>({102, 1206, 198, 1944}));
    EXPECT_EQ(page.ops.size(), plain.ops.size() + 6) << "two lines of text and four of frame, nothing else";
}

} // namespace
