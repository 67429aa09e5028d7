#include "support/RecordingProgress.h"
#include "support/RecordingSurface.h"
#include "support/StudFixture.h"

#include "reporting/AnimalSheet.h"
#include "reporting/BirthDateReport.h"
#include "reporting/SheetPrint.h"
#include "store/DaySerial.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;
using Op = RecordingSurface::Op;

namespace {

QList<Op> texts(const RecordingSurface &page)
{
    QList<Op> out;
    for (const Op &op : page.ops)
        if (op.kind == Op::Text && !op.text.isEmpty())
            out << op;
    return out;
}

int count(const RecordingSurface &page, const QString &text)
{
    int n = 0;
    for (const Op &op : page.ops)
        n += op.kind == Op::Text && op.text == text;
    return n;
}

// The recording page at the sheets' scale: size 12 is 4.79 high and a character 2.02 wide.
struct Sheet
{
    Sheet()
    {
        SetPrinterDefaults(page);
        SetSheetScale(page);
    }
    RecordingSurface page;
    int headings = 0;
    SheetPrinter printer{page, [this](bool continued) {
                             ++headings;
                             PrintSheetHeader(page, u"Warren End"_s, u"Bramble"_s, continued);
                         }};
};

TEST(SheetPrint, HeadingsFrameThePageAndMarkContinuations)
{
    RecordingSurface page;
    SetSheetScale(page);
    PrintSheetHeader(page, u"Warren End"_s, u"Bramble"_s, false);
    const Op *title = page.find(u"Warren End"_s);
    ASSERT_TRUE(title);
    EXPECT_EQ(std::tuple(title->x, title->y, title->size, title->bold), std::tuple(0.0, 2.0, 30.0, true));
    const Op *label = page.find(u"Name"_s);
    ASSERT_TRUE(label);
    EXPECT_EQ(std::tuple(label->x, label->y, label->italic, label->bold), std::tuple(2.0, 18.0, true, false));
    const Op *name = page.find(u"Bramble"_s);
    EXPECT_EQ(std::tuple(name->x, name->y, name->bold, name->italic), std::tuple(21.0, 18.0, true, false));
    EXPECT_FALSE(page.find(u"Continued"_s));
    // The frame from (0, 16) to (199, 279), and the rule under the name row.
    EXPECT_TRUE(std::any_of(page.ops.begin(), page.ops.end(), [](const Op &op) {
        return op.kind == Op::Line && op.x == 199 && op.y == 16 && op.x2 == 199 && op.y2 == 279;
    }));
    EXPECT_NEAR(page.CurrentY, 18 + 14 * 24 / (16838.0 / 280), 1e-9);

    RecordingSurface later;
    SetSheetScale(later);
    PrintSheetHeader(later, u"Warren End"_s, u"Bramble"_s, true);
    ASSERT_TRUE(later.find(u"Continued"_s));
    EXPECT_EQ(later.find(u"Continued"_s)->x, 145);

    RecordingSurface report;
    SetSheetScale(report);
    PrintReportHeading(report, {u"Warren End"_s, u"Birth Date Report"_s, u"01/03/2024"_s, u"31/03/2024"_s}, true);
    EXPECT_EQ(report.find(u"Warren End"_s)->size, 24);
    EXPECT_EQ(report.find(u"Birth Date Report"_s)->x, 2);
    EXPECT_EQ(report.find(u"Birth Date Report"_s)->size, 16);
    EXPECT_EQ(report.find(u"From "_s)->x, 110);
    EXPECT_TRUE(report.find(u"From "_s)->italic);
    ASSERT_TRUE(report.find(u"01/03/2024"_s)) << "a date is made smaller, never cut";
    EXPECT_TRUE(report.find(u"01/03/2024"_s)->bold);
    EXPECT_LT(report.find(u"01/03/2024"_s)->size, 12);
    EXPECT_EQ(report.find(u"To "_s)->x, 140);
    EXPECT_EQ(report.find(u"(Continued)"_s)->x, 180);
    EXPECT_EQ(report.find(u"(Continued)"_s)->size, 10);
}

TEST(SheetPrint, DetailRowsShrinkWideValuesAndSkipEmptyOnes)
{
    Sheet s;
    s.page.CurrentY = 50;
    s.printer.PrintDetailRow(u"Breed"_s, QString(), u"Ring No."_s, QString());
    EXPECT_TRUE(texts(s.page).isEmpty()) << "a row with both values empty is left out";
    EXPECT_EQ(s.page.CurrentY, 50);

    const QString wide = QString(60, u'W'); // 121 wide at size 12: more than the 99 it has
    s.printer.PrintDetailRow(u"Breed"_s, wide, u"Ring No."_s, u"R 12"_s);
    const Op *value = s.page.find(wide);
    ASSERT_TRUE(value);
    EXPECT_EQ(value->x, 21);
    EXPECT_TRUE(value->bold);
    EXPECT_LT(value->size, 12);
    EXPECT_LT(value->text.size() * value->size * 10 / (11906.0 / 200), 99) << "shrunk until it fits, never cut";
    EXPECT_EQ(s.page.find(u"Breed"_s)->x, 2);
    EXPECT_TRUE(s.page.find(u"Breed"_s)->italic);
    EXPECT_EQ(s.page.find(u"Ring No."_s)->x, 120);
    EXPECT_EQ(s.page.find(u"R 12"_s)->x, 145);
    EXPECT_EQ(s.page.find(u"R 12"_s)->size, 12);
    EXPECT_NEAR(s.page.CurrentY, 50 + 12 * 24 / (16838.0 / 280), 1e-9);
}

TEST(SheetPrint, WrappedSectionsBreakAtBlanksLineBreaksAndPageEnds)
{
    Sheet s;
    s.page.setFontSize(12);
    s.page.CurrentY = 100;
    // 176 wide: 87 characters at size 12.
    const QString words = QString(u"aaaa "_s).repeated(30).trimmed();
    s.printer.PrintWrappedSection(u"Notes"_s, words + u"\r\nsecond paragraph"_s);
    QList<Op> lines = texts(s.page);
    ASSERT_EQ(lines.size(), 4) << "label, two lines of words, the line after the break";
    EXPECT_EQ(lines[0].text, u"Notes");
    EXPECT_TRUE(lines[0].italic);
    EXPECT_EQ(lines[1].text, QString(u"aaaa "_s).repeated(17).trimmed()) << "up to the last blank that fits";
    EXPECT_EQ(lines[1].x, 21);
    EXPECT_TRUE(lines[1].bold);
    EXPECT_EQ(lines[2].text, QString(u"aaaa "_s).repeated(13).trimmed());
    EXPECT_EQ(lines[3].text, u"second paragraph");
    EXPECT_GT(lines[3].y, lines[2].y);

    // A word wider than the line is cut at the width.
    Sheet cut;
    cut.page.setFontSize(12);
    cut.page.CurrentY = 100;
    cut.printer.PrintWrappedSection(u"Health"_s, QString(100, u'x'));
    lines = texts(cut.page);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[1].text.size() + lines[2].text.size(), 100);

    // A section at 239 stays on the page; at 240 it begins a page marked "Continued".
    Sheet stays;
    stays.page.CurrentY = 239;
    stays.printer.PrintWrappedSection(u"Notes"_s, u"short"_s);
    EXPECT_EQ(stays.headings, 0);
    EXPECT_EQ(stays.page.find(u"short"_s)->y, 239);
    Sheet moves;
    moves.page.CurrentY = 240;
    moves.printer.PrintWrappedSection(u"Notes"_s, u"short"_s);
    EXPECT_EQ(moves.headings, 1);
    EXPECT_TRUE(moves.page.find(u"Continued"_s));
    EXPECT_LT(moves.page.find(u"short"_s)->y, 30);

    // A line that would reach 278 goes to the next page, its label with the first line only.
    Sheet runs;
    runs.page.setFontSize(12);
    runs.page.CurrentY = 230;
    runs.printer.PrintWrappedSection(u"Notes"_s, QString(u"line\n"_s).repeated(12).chopped(1));
    EXPECT_EQ(runs.headings, 1);
    EXPECT_EQ(count(runs.page, u"Notes"_s), 1);
    EXPECT_EQ(count(runs.page, u"line"_s), 12);
    double lastOnFirstPage = 0;
    for (const Op &op : texts(runs.page))
        if (op.text == u"line" && op.y > 200)
            lastOnFirstPage = std::max(lastOnFirstPage, op.y);
    EXPECT_LT(lastOnFirstPage + 12 * 24 / (16838.0 / 280), 278);
}

TEST(SheetPrint, TwoLineWrapAndRightJustify)
{
    Sheet s;
    s.page.setFontSize(10);
    s.page.CurrentY = 60;
    // At size 10 a character is 1.68 wide: 63 holds 37 of them.
    s.printer.Print2LineWrap(u"  Northern Counties Fur and Feather Fanciers Society  "_s, 18, 63, 63);
    QList<Op> lines = texts(s.page);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0].text, u"Northern Counties Fur and Feather");
    EXPECT_EQ(lines[1].text, u"Fanciers Society");
    EXPECT_EQ(lines[1].x, 18);
    EXPECT_GT(lines[1].y, 60);
    EXPECT_EQ(s.page.CurrentY, 60) << "the row goes on from its first line";

    s.printer.PrintRightJustify(u"12"_s, 136);
    const Op *number = s.page.find(u"12"_s);
    EXPECT_NEAR(number->x + 2 * 10 * 10 / (11906.0 / 200), 136, 1e-9);
}

TEST(SheetPrint, PicturesKeepTheirProportionsAndAMissingOneLeavesThePage)
{
    Sheet s;
    s.page.pictures[u"/pics/wide.jpg"_s] = QSizeF(6000 * 15, 3000 * 15);
    s.page.pictures[u"/pics/tall.jpg"_s] = QSizeF(1000 * 15, 4000 * 15);
    s.page.CurrentY = 30;
    ASSERT_TRUE(s.printer.PrintDefaultImage(u"/pics/wide.jpg"_s));
    const Op &wide = s.page.ops.at(s.page.ops.size() - 2);
    ASSERT_EQ(wide.kind, Op::Picture);
    EXPECT_NEAR(wide.x2, 175, 1e-9) << "the page width less 25";
    EXPECT_NEAR(wide.x, 12.5, 1e-9) << "centred";
    // Half as high as wide on paper: the page's units are 59.53 twips across, 60.14 down.
    EXPECT_NEAR(wide.y2 * (16838.0 / 280), 175 * (11906.0 / 200) / 2, 1e-6);
    EXPECT_NEAR(s.page.CurrentY, 30 + wide.y2, 1e-9);
    EXPECT_EQ(s.page.ops.last().kind, Op::Line) << "a rule follows the picture";

    s.page.CurrentY = 100;
    ASSERT_TRUE(s.printer.PrintDefaultImage(u"/pics/tall.jpg"_s));
    const Op &tall = s.page.ops.at(s.page.ops.size() - 2);
    EXPECT_NEAR(tall.y2, 178, 1e-9) << "no taller than what is left of the page";
    EXPECT_NEAR(tall.x + tall.x2 / 2, 100, 1e-9);

    const qsizetype before = s.page.ops.size();
    s.page.CurrentY = 40;
    EXPECT_FALSE(s.printer.PrintDefaultImage(u"/pics/gone.jpg"_s));
    EXPECT_EQ(s.page.ops.size(), before);
    EXPECT_EQ(s.page.CurrentY, 40);
}

// Bramble, a doe with parents, awards, diary notes and matings.
class AnimalSheetTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        sire = fx.add({{u"Name"_s, u"Warren Jack"_s}, {u"Sex"_s, u"Buck"_s}});
        dam = fx.add({{u"Name"_s, u"Old Mother"_s}, {u"Sex"_s, u"Doe"_s}});
        bramble = fx.add({{u"Name"_s, u"Bramble"_s},
                          {u"Sex"_s, u"Doe"_s},
                          {u"Type"_s, u"Rex"_s},
                          {u"Colour"_s, u"Black"_s},
                          {u"RingNo"_s, u"R 101"_s},
                          {u"id2"_s, u"T 7"_s},
                          {u"id3"_s, u"G 3"_s},
                          {u"status"_s, u"Show"_s},
                          {u"Breeder"_s, u"J. Smith"_s},
                          {u"Sire"_s, sire},
                          {u"Dam"_s, dam},
                          {u"DOB"_s, DaySerial::fromDate(QDate(2023, 4, 2))},
                          {u"Health"_s, u"Vaccinated"_s},
                          {u"Notes"_s, u"Good doe"_s}});
    }

    RecordingSurface print(std::initializer_list<SheetSection> ticked)
    {
        SheetSections sections{};
        for (SheetSection s : ticked)
            sections[int(s)] = true;
        RecordingSurface page;
        EXPECT_TRUE(printAnimalSheet(page, fx.session, bramble, sections));
        return page;
    }

    void award(const QDate &date, const QString &venue, const QString &judge, const QString &secretary,
               const QString &comments = {})
    {
        db->execute(u"INSERT INTO Awards (Number, Date, Venue, Judge, Secretary, Award, NoEntered, NoShown, Stars, "
                    "CCStars, Comments) VALUES (?, ?, ?, ?, ?, 'BOB', 12, 10, '3', '1', ?)"_s,
                    {bramble, DaySerial::fromDate(date), venue, judge, secretary, comments});
    }

    StudFixture fx;
    Database *db = nullptr;
    qint64 sire = 0, dam = 0, bramble = 0;
};

TEST_F(AnimalSheetTest, GeneralRowsFollowTheIdentifierTermsInUse)
{
    RecordingSurface page = print({SheetSection::General});
    const auto rowOf = [&](const QString &text) {
        const Op *op = page.find(text);
        return op ? op->y : -1.0;
    };
    // Both further identifiers in use: Sex with the second, colour with the third.
    EXPECT_EQ(rowOf(u"Breed"_s), rowOf(u"Ring No."_s));
    EXPECT_EQ(rowOf(u"Sex"_s), rowOf(u"T 7"_s));
    EXPECT_EQ(rowOf(u"Colour"_s), rowOf(u"G 3"_s));
    EXPECT_EQ(rowOf(u"Sire"_s), rowOf(u"Date of Birth"_s));
    EXPECT_EQ(page.find(u"Warren Jack"_s)->x, 21);
    EXPECT_EQ(page.find(u"02/04/2023"_s)->x, 145);
    EXPECT_EQ(rowOf(u"Dam"_s), rowOf(u"Show"_s));
    EXPECT_EQ(rowOf(u"Breeder"_s), rowOf(u"J. Smith"_s));
    EXPECT_FALSE(page.find(u"Genotype"_s)) << "no genotype, no label";
    EXPECT_LT(rowOf(u"Breed"_s), rowOf(u"Sex"_s));
    EXPECT_LT(rowOf(u"Sex"_s), rowOf(u"Colour"_s));
    EXPECT_LT(rowOf(u"Colour"_s), rowOf(u"Sire"_s));
    EXPECT_LT(rowOf(u"Sire"_s), rowOf(u"Dam"_s));
    EXPECT_LT(rowOf(u"Dam"_s), rowOf(u"Breeder"_s));
    EXPECT_FALSE(page.find(u"Health"_s)) << "only the ticked sections print";

    // No second term: colour and sex share one row.
    fx.session.Id2Word.clear();
    page = print({SheetSection::General});
    EXPECT_EQ(rowOf(u"Colour"_s), rowOf(u"Sex"_s));
    EXPECT_EQ(page.find(u"Sex"_s)->x, 120);
    EXPECT_FALSE(page.find(u"T 7"_s));

    // The second alone: Sex with it, and no colour row.
    fx.session.Id2Word = u"Tattoo"_s;
    fx.session.Id3Word.clear();
    page = print({SheetSection::General});
    EXPECT_EQ(rowOf(u"Sex"_s), rowOf(u"T 7"_s));
    EXPECT_FALSE(page.find(u"Black"_s));
}

TEST_F(AnimalSheetTest, DayOfDeathAndGenotypeJoinTheirRows)
{
    db->execute(u"UPDATE Stock SET DOD = ?, Genotype = 'aa Bb' WHERE Number = ?"_s,
                {DaySerial::fromDate(QDate(2025, 1, 9)), bramble});
    RecordingSurface page = print({SheetSection::General});
    const Op *to = page.find(u"To "_s);
    ASSERT_TRUE(to);
    EXPECT_EQ(to->x, 168);
    EXPECT_FALSE(to->bold);
    EXPECT_EQ(to->y, page.find(u"Date of Birth"_s)->y);
    EXPECT_TRUE(page.find(u"09/01/2025"_s)->bold);
    EXPECT_EQ(page.find(u"Genotype"_s)->y, page.find(u"Breeder"_s)->y);
    EXPECT_EQ(page.find(u"aa Bb"_s)->x, 145);
}

TEST_F(AnimalSheetTest, AwardsPrintWithTheirHeadingCritiquesWhenTickedAndNothingWhenThereAreNone)
{
    RecordingSurface page = print({SheetSection::Awards});
    EXPECT_FALSE(page.find(u"Awards"_s)) << "no awards, no heading";

    fx.session.PointsOn = false;
    award(QDate(2024, 5, 4), u"Northern Counties Fur and Feather Fanciers Society"_s, u"A. Judge"_s,
          u"B. Secretary"_s, u"Excellent coat"_s);
    award(QDate(2024, 6, 1), u"Derby"_s, QString(), u"C. Sec"_s);
    page = print({SheetSection::Awards});
    const Op *title = page.find(u"Awards"_s);
    ASSERT_TRUE(title);
    EXPECT_TRUE(title->bold);
    EXPECT_EQ(title->size, 12);
    for (const auto &[head, x] : {std::pair{u"Date"_s, 2.0}, {u"Club"_s, 18.0}, {u"Judge/Secretary"_s, 90.0},
                                  {u"Award"_s, 150.0}})
        EXPECT_EQ(page.find(head)->x, x) << head.toStdString();
    EXPECT_FALSE(page.find(u"Awarded"_s)) << "no star columns without the points system";
    const Op *judge = page.find(u"A. Judge"_s);
    const Op *secretary = page.find(u"B. Secretary"_s);
    EXPECT_EQ(judge->x, 90);
    EXPECT_GT(secretary->y, judge->y) << "the secretary goes under a judge";
    EXPECT_EQ(page.find(u"C. Sec"_s)->y, page.find(u"Derby"_s)->y) << "and in the judge's place without one";
    EXPECT_EQ(page.find(u"Northern Counties Fur and Feather"_s)->y, judge->y);
    EXPECT_GT(page.find(u"Derby"_s)->y, secretary->y) << "a two-line award takes two lines";
    EXPECT_FALSE(page.find(u"Excellent coat"_s)) << "critiques only when ticked";

    fx.session.PointsOn = true;
    fx.session.PointsName = u"Stars"_s;
    page = print({SheetSection::Awards, SheetSection::AwardComments});
    EXPECT_TRUE(page.find(u"Excellent coat"_s));
    EXPECT_EQ(page.find(u"Excellent coat"_s)->x, 21);
    const Op *awarded = page.find(u"Awarded"_s);
    ASSERT_TRUE(awarded);
    EXPECT_NEAR(awarded->x + 7 * 10 * 10 / (11906.0 / 200), 197, 1e-9);
    const Op *club = page.find(u"Northern Counties Fur and Feather"_s);
    ASSERT_TRUE(club);
    EXPECT_LE(club->text.size() * 10 * 10 / (11906.0 / 200), 63) << "the club narrows to 63 with star columns";
    ASSERT_TRUE(page.find(u"3"_s));
    EXPECT_NEAR(page.find(u"3"_s)->x + 10 * 10 / (11906.0 / 200), 87, 1e-9) << "the show's stars end at 87";
}

TEST_F(AnimalSheetTest, DiaryAndMatingsRunOnToContinuationPages)
{
    for (int i = 0; i < 80; ++i)
        db->execute(u"INSERT INTO BreedNote (Number, Date, Notes) VALUES (?, ?, ?)"_s,
                    {bramble, DaySerial::fromDate(QDate(2024, 1, 1).addDays(i)), u"Note %1"_s.arg(i)});
    const qint64 buck = fx.add({{u"Name"_s, u"Mate"_s}, {u"Sex"_s, u"Buck"_s}});
    db->execute(u"INSERT INTO Matings (Sire, Dam, MatingDate, Birthdate) VALUES (?, ?, ?, ?)"_s,
                {buck, bramble, DaySerial::fromDate(QDate(2025, 2, 1)), DaySerial::fromDate(QDate(2025, 3, 3))});
    RecordingSurface page = print({SheetSection::Diary, SheetSection::Matings});
    EXPECT_EQ(count(page, u"Diary"_s), 2) << "the heading again on the continuation page";
    EXPECT_EQ(count(page, u"Continued"_s), 1);
    for (int i = 0; i < 80; ++i)
        ASSERT_TRUE(page.find(u"Note %1"_s.arg(i))) << i;
    for (const Op &op : texts(page))
        EXPECT_LT(op.y, 278) << op.text.toStdString();
    const Op *partnerHead = nullptr;
    for (const Op &op : texts(page))
        if (op.text == u"Sire" && op.x == 62)
            partnerHead = &op;
    ASSERT_TRUE(partnerHead) << "a doe's partner is her litters' sire";
    EXPECT_EQ(page.find(u"Mate"_s)->x, 62);
    EXPECT_EQ(page.find(u"01/02/2025"_s)->x, 2);
    EXPECT_EQ(page.find(u"03/03/2025"_s)->x, 32);
    EXPECT_EQ(page.ops.last().kind, Op::End);
}

TEST_F(AnimalSheetTest, DefaultPictureComesFirstAndAGoneAnimalPrintsNothing)
{
    db->execute(u"INSERT INTO Images (Number, imageno, Path, Caption, \"Default\") VALUES (?, 1, '/p/a.jpg', 'A', 0), "
                "(?, 2, '/p/b.jpg', 'B', 1)"_s,
                {bramble, bramble});
    RecordingSurface page;
    page.pictures[u"/p/b.jpg"_s] = QSizeF(1500, 1000);
    SheetSections sections{};
    sections[int(SheetSection::Image)] = sections[int(SheetSection::General)] = true;
    ASSERT_TRUE(printAnimalSheet(page, fx.session, bramble, sections));
    const auto picture = std::find_if(page.ops.begin(), page.ops.end(), [](const Op &op) { return op.kind == Op::Picture; });
    ASSERT_NE(picture, page.ops.end());
    EXPECT_EQ(picture->text, u"/p/b.jpg");
    EXPECT_LT(picture->y + picture->y2, page.find(u"Breed"_s)->y);

    // The default picture's file has gone: the sheet prints without it.
    RecordingSurface gap;
    ASSERT_TRUE(printAnimalSheet(gap, fx.session, bramble, sections));
    EXPECT_TRUE(gap.find(u"Breed"_s));
    EXPECT_EQ(gap.ops.last().kind, Op::End);

    RecordingSurface gone;
    EXPECT_FALSE(printAnimalSheet(gone, fx.session, 9999, sections));
    EXPECT_EQ(gone.ops.last().kind, Op::Kill);
}

TEST_F(AnimalSheetTest, TicksAreKeptPerStud)
{
    Options options(fx.session);
    EXPECT_EQ(readSheetSections(options), SheetSections{}) << "nothing ticked at first";
    SheetSections ticked{};
    ticked[int(SheetSection::Awards)] = ticked[int(SheetSection::Image)] = true;
    saveSheetSections(options, ticked);
    EXPECT_EQ(readSheetSections(Options(fx.session)), ticked);
    CRegSettings store(fx.session.AppName);
    EXPECT_EQ(store.GetSetting(u"Rabbits\\Report Options"_s, u"Print Awards"_s), u"1");
    EXPECT_EQ(store.GetSetting(u"Rabbits\\Report Options"_s, u"Print Diary"_s), u"0");
}

class BirthDateReportTest : public AnimalSheetTest
{
protected:
    void litter(const QDate &born, qint64 dam, qint64 sire, const QDate &mated = {})
    {
        db->execute(u"INSERT INTO Matings (Sire, Dam, MatingDate, Birthdate) VALUES (?, ?, ?, ?)"_s,
                    {sire, dam, mated.isValid() ? QVariant(DaySerial::fromDate(mated)) : QVariant(),
                     DaySerial::fromDate(born)});
    }
    BirthDateRange march{QDate(2024, 3, 1), QDate(2024, 3, 31)};
};

TEST_F(BirthDateReportTest, DatesMustBeGivenAndValid)
{
    const DateSettings &dates = fx.session.Dates;
    QString focus;
    EXPECT_FALSE(birthDateRange(dates.BlankDate, u"31/03/2024"_s, dates, fx.prompts, &focus));
    EXPECT_EQ(focus, u"SDOB");
    EXPECT_FALSE(birthDateRange(u"01/03/2024"_s, QString(), dates, fx.prompts, &focus));
    EXPECT_EQ(focus, u"SToDOB");
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    for (const auto &m : fx.prompts.messages) {
        EXPECT_EQ(m.text, u"Date must be entered");
        EXPECT_EQ(m.title, u"Date Error");
        EXPECT_EQ(m.icon, Prompts::Icon::Exclamation);
    }
    EXPECT_FALSE(birthDateRange(u"01/03/2024"_s, u"31/02/2024"_s, dates, fx.prompts, &focus));
    EXPECT_EQ(focus, u"SToDOB");
    EXPECT_EQ(fx.prompts.messages.size(), 3) << "an invalid date gets the date check's own box";
    const auto range = birthDateRange(u"01/03/2024"_s, u"31/03/2024"_s, dates, fx.prompts, &focus);
    ASSERT_TRUE(range);
    EXPECT_EQ(range->to, QDate(2024, 3, 31));
}

TEST_F(BirthDateReportTest, LittersOfOneDayStandTogether)
{
    litter(QDate(2024, 3, 3), dam, sire, QDate(2024, 2, 1));
    litter(QDate(2024, 3, 3), bramble, sire);
    litter(QDate(2024, 3, 9), bramble, 9999);
    litter(QDate(2024, 4, 1), dam, sire); // after the range
    litter(QDate(2024, 2, 29), dam, sire); // before it
    EXPECT_TRUE(anyBirthsBetween(fx.session, march));
    RecordingSurface page;
    ASSERT_TRUE(printBirthDateReport(page, fx.session, march));
    EXPECT_EQ(page.find(u"Birth Date Report"_s)->y, 18);
    EXPECT_FALSE(page.find(u"(Continued)"_s));
    for (const auto &[head, x] : {std::pair{u"Birth Date"_s, 2.0}, {u"Dam"_s, 25.0}, {u"Sire"_s, 102.0},
                                  {u"Mated Date"_s, 176.0}}) {
        ASSERT_TRUE(page.find(head));
        EXPECT_EQ(page.find(head)->x, x);
        EXPECT_TRUE(page.find(head)->italic);
    }
    QList<Op> rows;
    for (const Op &op : texts(page))
        if (op.x == 2 && op.size == 10)
            rows << op;
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0].text, u"03/03/2024");
    EXPECT_EQ(rows[2].text, u"09/03/2024");
    const double line = 10 * 24 / (16838.0 / 280);
    EXPECT_NEAR(rows[1].y - rows[0].y, line, 1e-9) << "one day's litters stand together";
    EXPECT_NEAR(rows[2].y - rows[1].y, line + 1, 1e-9) << "a new day stands 1 apart";
    EXPECT_TRUE(page.find(u"Old Mother"_s)->bold);
    EXPECT_EQ(page.find(u"Old Mother"_s)->x, 25);
    EXPECT_EQ(page.find(u"01/02/2024"_s)->x, 176);
    EXPECT_TRUE(page.find(u"Not Found"_s)) << "a sire that has gone";
    EXPECT_EQ(page.ops.last().kind, Op::End);
}

TEST_F(BirthDateReportTest, ALongReportContinuesAndAnEmptyOneIsAbandoned)
{
    RecordingSurface empty;
    EXPECT_FALSE(anyBirthsBetween(fx.session, march));
    EXPECT_FALSE(printBirthDateReport(empty, fx.session, march));
    EXPECT_EQ(empty.ops.last().kind, Op::Kill);

    for (int i = 0; i < 120; ++i)
        litter(QDate(2024, 3, 1 + i % 30), dam, sire);
    RecordingSurface page;
    ASSERT_TRUE(printBirthDateReport(page, fx.session, march));
    EXPECT_EQ(count(page, u"(Continued)"_s), 2);
    EXPECT_EQ(count(page, u"Mated Date"_s), 3);
    for (const Op &op : texts(page))
        EXPECT_LT(op.y, 272 + 10 * 24 / (16838.0 / 280)) << op.text.toStdString();

    // Stopped part way: the document is abandoned, nothing half printed goes out.
    RecordingProgress stop;
    stop.cancelAfter = 10;
    RecordingSurface stopped;
    EXPECT_FALSE(printBirthDateReport(stopped, fx.session, march, stop));
    EXPECT_EQ(stop.steps.size(), 10);
    EXPECT_EQ(stopped.ops.last().kind, Op::Kill);
}

} // namespace
