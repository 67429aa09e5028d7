#include "support/RecordingSurface.h"
#include "support/StudFixture.h"

#include "core/Options.h"
#include "reporting/HutchLabels.h"
#include "store/DaySerial.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

using Op = RecordingSurface::Op;

// Paper in twips, the page's own unit, 567 to the centimetre.
constexpr double kTwipsPerCm = 567;
const QSizeF kA4Landscape{16838, 11906}, kA4Portrait{11906, 16838};
const QSizeF kLetterLandscape{15840, 12240}, kLetterPortrait{12240, 15840};

// The recording page on paper of any size, writing down where each new page began. Its
// fixed metrics, in centimetres: a character is half its point size wide, a line 1.2 times
// its point size high.
class LabelPage : public RecordingSurface
{
public:
    explicit LabelPage(QSizeF paper) : m_paper(paper) {}
    QSizeF pageSize() const override { return m_paper; }
    void newPage() override { pageBreaks << ops.size(); }

    QList<Op> of(Op::Kind kind) const
    {
        QList<Op> found;
        for (const Op &op : ops)
            if (op.kind == kind)
                found << op;
        return found;
    }
    QStringList words() const
    {
        QStringList w;
        for (const Op &op : of(Op::Text))
            w << op.text;
        return w;
    }
    bool ended() const { return !ops.isEmpty() && ops.last().kind == Op::End; }

    QList<qsizetype> pageBreaks;

private:
    QSizeF m_paper;
};

double lineHeight(double points)
{
    return points * 24 / kTwipsPerCm;
}

TEST(HutchLabelGrid, CountsWholeLabelsWithTheirGapsOnThePaperTheSizeTurnsTo)
{
    // {size, landscape, columns, rows}: landscape A4 is 29.7 by 21 cm, Letter 27.9 by 21.6;
    // the compact size turns them round and goes two across.
    const std::array<std::array<int, 4>, 5> expected{
        {{0, 1, 4, 2}, {1, 1, 3, 2}, {2, 1, 2, 2}, {3, 1, 4, 4}, {4, 0, 2, 7}}};
    for (const auto &[paperName, landscape, portrait] :
         {std::tuple{"A4", kA4Landscape, kA4Portrait}, {"Letter", kLetterLandscape, kLetterPortrait}}) {
        for (const auto &[size, turned, columns, rows] : expected) {
            SCOPED_TRACE(std::string(paperName) + " size " + std::to_string(size));
            EXPECT_EQ(labelsLandscape(size), bool(turned));
            const QSizeF paper = turned ? landscape : portrait;
            const LabelGrid g = labelGrid(size, paper.width() / kTwipsPerCm, paper.height() / kTwipsPerCm);
            EXPECT_EQ(g.columns, columns);
            EXPECT_EQ(g.rows, rows);
        }
    }

    // 29 / (6 + 0.5) = 4.46: four across. A page that holds labels exactly keeps the last.
    EXPECT_EQ(labelGrid(0, 29, 21).columns, 4);
    EXPECT_EQ(labelGrid(0, 26, 19).columns, 4);
    EXPECT_EQ(labelGrid(0, 29, 19).rows, 2);
    EXPECT_EQ(labelGrid(4, 21, 26.95).rows, 7);
    EXPECT_EQ(labelGrid(4, 40, 29.7).columns, 2) << "two across however wide the paper";
    EXPECT_EQ(labelGrid(4, 20.42, 29.7).columns, 2) << "the second label's right edge at 20.4125";
    EXPECT_FALSE(labelGrid(4, 19, 27.7).fits()) << "A4 less a printer's margins: the second would run off";

    EXPECT_FALSE(labelGrid(2, 12, 21).fits()) << "12 cm labels need 12.5 cm with their gap";
    EXPECT_FALSE(labelGrid(0, 29.7, 9).fits());
    EXPECT_FALSE(labelGrid(4, 10, 29.7).fits());
    EXPECT_EQ(labelGrid(9, 29.7, 21).width, 6) << "a size the settings do not know is the first";
}

TEST(HutchLabelGrid, FillsEachRowFromTheLeftAndBeginsAPageAfterAFullOne)
{
    const LabelGrid g = labelGrid(0, 29.7, 21); // 4 across, 2 down
    const LabelPlace first = labelPlace(g, 1);
    EXPECT_EQ(std::tuple(first.row, first.column, first.left, first.top, first.right, first.bottom),
              std::tuple(1, 1, 0.0625, 0.0625, 6.0625, 9.0625));
    EXPECT_FALSE(first.newPage) << "the first label prints on the page the document begins with";
    EXPECT_EQ(std::tuple(labelPlace(g, 2).column, labelPlace(g, 2).left), std::tuple(2, 6.5625));
    EXPECT_EQ(std::tuple(labelPlace(g, 5).row, labelPlace(g, 5).column, labelPlace(g, 5).top),
              std::tuple(2, 1, 9.5625));
    for (const int counter : {9, 17}) {
        const LabelPlace next = labelPlace(g, counter);
        EXPECT_TRUE(next.newPage) << counter;
        EXPECT_EQ(std::tuple(next.row, next.column, next.left), std::tuple(1, 1, 0.0625)) << counter;
    }
    EXPECT_FALSE(labelPlace(g, 8).newPage);
    EXPECT_FALSE(labelPlace(g, 10).newPage);

    const LabelGrid compact = labelGrid(4, 21, 29.7);
    EXPECT_DOUBLE_EQ(labelPlace(compact, 2).left, 10.4125);
    EXPECT_DOUBLE_EQ(labelPlace(compact, 3).top, 3.9125);
}

TEST(HutchLabelTicks, AreKeptByNumberAndGivenInListOrder)
{
    const QList<qint64> list{30, 10, 20, 40};
    LabelTicks ticks;
    for (const qint64 n : {20, 30, 40})
        ticks.setTicked(n, true);
    ticks.setTicked(40, false);
    EXPECT_EQ(ticks.picked(list), (QList<qint64>{30, 20}));
    ticks.setAll(true);
    ticks.setTicked(10, false);
    EXPECT_EQ(ticks.picked(list), (QList<qint64>{30, 20, 40}));
    ticks.setAll(false);
    EXPECT_TRUE(ticks.picked(list).isEmpty()) << "untick all forgets the single ticks";
}

// Jet and Fern, their daughter Thistle with every detail, Mystery of no recorded sex.
class HutchLabelsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        jet = fx.add({{u"Name"_s, u"Jet"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
        fern = fx.add({{u"Name"_s, u"Fern"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
        thistle = fx.add({{u"Name"_s, u"Thistle"_s},
                          {u"Sex"_s, u"Doe"_s},
                          {u"RingNo"_s, u"R 24/117"_s},
                          {u"Type"_s, u"Rex"_s},
                          {u"Colour"_s, u"Black"_s},
                          {u"DOB"_s, DaySerial::fromDate(QDate(2024, 4, 2))},
                          {u"Sire"_s, jet},
                          {u"Dam"_s, fern},
                          {u"Archive"_s, u"No"_s}});
        mystery = fx.add({{u"Name"_s, u"Mystery"_s}, {u"Archive"_s, u"No"_s}});
    }

    static LabelOptions ticking(int size, std::initializer_list<LabelItem> items)
    {
        LabelOptions o;
        o.size = size;
        for (const LabelItem i : items)
            o.include[i] = true;
        return o;
    }
    static LabelOptions allButComments(int size)
    {
        return ticking(size,
                       {ItemName, ItemId, ItemSex, ItemBreed, ItemColour, ItemBirth, ItemDam, ItemSire});
    }
    void expectMessage(const QString &text, const QString &title, Prompts::Icon icon)
    {
        ASSERT_FALSE(fx.prompts.messages.isEmpty());
        const ScriptedPrompts::Message &m = fx.prompts.messages.last();
        EXPECT_EQ(m.text, text);
        EXPECT_EQ(m.title, title);
        EXPECT_EQ(m.icon, icon);
    }

    StudFixture fx;
    Database *db = nullptr;
    qint64 jet = 0, fern = 0, thistle = 0, mystery = 0;
};

TEST_F(HutchLabelsTest, PrintsEachDetailTickedOnALineOfItsOwnInListOrder)
{
    LabelPage page(kA4Landscape);
    ASSERT_TRUE(printHutchLabels(page, fx.session, fx.prompts, allButComments(0), {thistle}));
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
    EXPECT_TRUE(page.ended());
    EXPECT_TRUE(page.pageBreaks.isEmpty());
    EXPECT_NEAR(page.scaleWidth(), 29.697, 0.001) << "the page in centimetres";

    // The border, then the dam before the sire, as the list has them.
    const QList<Op> border = page.of(Op::Line);
    ASSERT_EQ(border.size(), 4);
    EXPECT_EQ(std::tuple(border[0].x, border[0].y, border[1].x, border[1].y2),
              std::tuple(0.0625, 0.0625, 6.0625, 9.0625));
    EXPECT_EQ(page.words(), (QStringList{u"Thistle"_s, u"R 24/117"_s, u"Doe"_s, u"Rex"_s, u"Black"_s,
                                         u"DOB: 02/04/2024"_s, u"Dam: Fern"_s, u"Sire: Jet"_s}));
    const QList<Op> t = page.of(Op::Text);
    EXPECT_EQ(std::tuple(t[0].x, t[0].y, t[0].size, t[0].bold), std::tuple(0.0625 + 0.2, 0.1875, 20.0, true))
        << "the name bold, 4 points over the size's 16";
    double y = 0.1875 + lineHeight(20);
    for (int i = 1; i < t.size(); ++i, y += lineHeight(16)) {
        EXPECT_DOUBLE_EQ(t[i].x, 0.2625) << i;
        EXPECT_NEAR(t[i].y, y, 1e-9) << i;
        EXPECT_EQ(std::tuple(t[i].size, t[i].bold, t[i].italic), std::tuple(16.0, false, false)) << i;
    }

    // Details unticked take no line; an unknown parent or day of birth keeps its line empty,
    // so each detail stands on the same line of every label.
    LabelPage few(kA4Landscape);
    ASSERT_TRUE(printHutchLabels(few, fx.session, fx.prompts, ticking(0, {ItemName, ItemBirth, ItemSire}),
                                 {jet, thistle}));
    EXPECT_EQ(few.words(), (QStringList{u"Jet"_s, QString(), QString(), u"Thistle"_s, u"DOB: 02/04/2024"_s,
                                        u"Sire: Jet"_s}));
    EXPECT_NEAR(few.of(Op::Text)[2].y, 0.1875 + lineHeight(20) + lineHeight(16), 1e-9);
}

TEST_F(HutchLabelsTest, ALongNameIsCutToTheLabelsWidthNeverWrapped)
{
    const QString longName = u"Warren End Thistledown Grand Champion Supreme"_s;
    const qint64 n = fx.add({{u"Name"_s, longName}, {u"Sex"_s, u"Doe"_s}, {u"Colour"_s, u"Black"_s}});
    LabelPage page(kA4Landscape);
    ASSERT_TRUE(printHutchLabels(page, fx.session, fx.prompts, ticking(0, {ItemName, ItemColour}), {n}));
    // 6 - 0.4 = 5.6 cm at 20 points (0.353 cm a character) takes 15 characters.
    EXPECT_EQ(page.words(), (QStringList{longName.left(15), u"Black"_s}));
    EXPECT_NEAR(page.of(Op::Text)[1].y, 0.1875 + lineHeight(20), 1e-9) << "the next detail on the next line";
}

TEST_F(HutchLabelsTest, StopsAtTheLabelsBottomAndAtTheCommentsBox)
{
    // 6 by 4 cm at 11 points: the dam's line ends at 3.62 cm, the sire's would end at 4.08,
    // past the bottom at 4.0625.
    LabelPage small(kA4Landscape);
    ASSERT_TRUE(printHutchLabels(small, fx.session, fx.prompts, allButComments(3), {thistle}));
    EXPECT_EQ(small.words().last(), u"Dam: Fern");
    EXPECT_EQ(small.words().size(), 7);

    // The box fills what is left under the details, 0.2 cm in, and ends the label.
    LabelOptions o = allButComments(0);
    o.include[ItemCommentsBox] = true;
    LabelPage page(kA4Landscape);
    ASSERT_TRUE(printHutchLabels(page, fx.session, fx.prompts, o, {thistle, jet}));
    const QList<Op> lines = page.of(Op::Line);
    ASSERT_EQ(lines.size(), 16) << "a border and a box for each label";
    EXPECT_DOUBLE_EQ(lines[4].x, 0.2625);
    EXPECT_NEAR(lines[4].y, 0.1875 + lineHeight(20) + 7 * lineHeight(16) + 0.2, 1e-9);
    EXPECT_EQ(std::tuple(lines[5].x, lines[5].y2), std::tuple(6.0625 - 0.2, 9.0625 - 0.2));
    // Thistle's border, 8 details and the box, then at once Jet's border one column over.
    EXPECT_EQ(std::tuple(page.ops[16].kind, page.ops[16].x), std::tuple(Op::Line, 6.5625));
}

TEST_F(HutchLabelsTest, EachSexPrintsInItsColourAndAnyOtherInBlack)
{
    LabelOptions o = ticking(0, {ItemName});
    o.colours = {0xFF0000, 0x8000FF};
    LabelPage page(kA4Landscape);
    ASSERT_TRUE(printHutchLabels(page, fx.session, fx.prompts, o, {jet, fern, mystery}));
    QList<int> colours;
    for (const Op &op : page.of(Op::Text))
        colours << op.colour;
    EXPECT_EQ(colours, (QList<int>{0xFF0000, 0x8000FF, 0})) << "Mystery, of no recorded sex, in black";
}

TEST_F(HutchLabelsTest, CompactSizeKeepsSexColourAndBirthInItsSecondColumn)
{
    LabelPage page(kA4Portrait);
    ASSERT_TRUE(printHutchLabels(page, fx.session, fx.prompts, allButComments(4), {thistle, fern}));
    const QList<Op> t = page.of(Op::Text);
    EXPECT_EQ(page.words(),
              (QStringList{u"Thistle"_s, u"R 24/117"_s, u"Doe"_s, u"Rex"_s, u"Black"_s, u"DOB: 02/04/2024"_s,
                           u"Fern"_s, QString(), u"Doe"_s, QString(), QString(), QString()}))
        << "the date of birth ends a compact label: no parents";
    const double line1 = 0.1875, line2 = line1 + lineHeight(14), line3 = line2 + lineHeight(10);
    const double first = 0.2625, second = first + 6;
    const std::array<std::pair<double, double>, 6> at{{{first, line1},
                                                       {first, line2},
                                                       {second, line2},
                                                       {first, line3},
                                                       {second, line3},
                                                       {second, line3 + lineHeight(10)}}};
    for (int i = 0; i < 6; ++i) {
        EXPECT_NEAR(t[i].x, at[i].first, 1e-9) << t[i].text.toStdString();
        EXPECT_NEAR(t[i].y, at[i].second, 1e-9) << t[i].text.toStdString();
    }
    EXPECT_NEAR(t[6].x, 10.4125 + 0.2, 1e-9) << "Fern's label beside Thistle's";

    // With nothing printed before it, the sex goes on the first line. The second column is
    // cut at the label's edge: 10 - 0.4 - 6 = 3.6 cm at 10 points takes 20 characters.
    const QString colour = u"Chocolate Siamese Smoke Pearl"_s;
    db->execute(u"UPDATE Stock SET Colour = ? WHERE Number = ?"_s, {colour, thistle});
    LabelPage alone(kA4Portrait);
    ASSERT_TRUE(printHutchLabels(alone, fx.session, fx.prompts, ticking(4, {ItemSex, ItemBreed, ItemColour}),
                                 {thistle}));
    EXPECT_EQ(alone.words(), (QStringList{u"Doe"_s, u"Rex"_s, colour.left(20)}));
    EXPECT_NEAR(alone.of(Op::Text)[0].y, line1, 1e-9);
}

TEST_F(HutchLabelsTest, AnAnimalGoneIsToldAndTheOthersFillThePlacesAndPages)
{
    const qint64 gone = fx.add({{u"Name"_s, u"Gone"_s}});
    db->execute(u"DELETE FROM Stock WHERE Number = ?"_s, {gone});
    QList<qint64> picked{jet, gone};
    for (int i = 1; i < 9; ++i)
        picked << fx.add({{u"Name"_s, u"Kit %1"_s.arg(i)}, {u"Sex"_s, u"Doe"_s}});
    LabelPage page(kA4Landscape);
    ASSERT_TRUE(printHutchLabels(page, fx.session, fx.prompts, ticking(0, {ItemName}), picked));
    expectMessage(u"Stock not found"_s, QString(), Prompts::Icon::None);
    EXPECT_EQ(fx.prompts.messages.size(), 1);

    // Eight to a page: Kit 1 takes the gone animal's place, Kit 8 begins page two.
    const QList<Op> t = page.of(Op::Text);
    ASSERT_EQ(t.size(), 9);
    EXPECT_EQ(std::tuple(t[1].text, t[1].x), std::tuple(u"Kit 1"_s, 6.5625 + 0.2));
    ASSERT_EQ(page.pageBreaks.size(), 1) << "none before the first label";
    const Op &pageTwo = page.ops[page.pageBreaks[0]];
    EXPECT_EQ(std::tuple(pageTwo.kind, pageTwo.x, pageTwo.y), std::tuple(Op::Line, 0.0625, 0.0625));
    EXPECT_EQ(page.ops[page.pageBreaks[0] + 4].text, u"Kit 8");
    EXPECT_TRUE(page.ended());

    // Every animal gone: nothing printed and the document left open.
    LabelPage none(kA4Landscape);
    EXPECT_FALSE(printHutchLabels(none, fx.session, fx.prompts, ticking(0, {ItemName}), {gone}));
    EXPECT_TRUE(none.ops.isEmpty());
}

TEST_F(HutchLabelsTest, ASizeTooLargeForThePaperIsToldAndPrintsNothing)
{
    // A postcard, 10 by 15 cm, holds no 12 cm label across, but a 6 by 4 cm one.
    LabelPage page(QSizeF(10 * kTwipsPerCm, 15 * kTwipsPerCm));
    EXPECT_FALSE(printHutchLabels(page, fx.session, fx.prompts, ticking(2, {ItemName}), {thistle}));
    expectMessage(u"The labels of this size do not fit on the paper.\n"
                  u"Choose a smaller label size, or larger paper or narrower margins under Printer Setup."_s,
                  u"Hutch Labels"_s, Prompts::Icon::Exclamation);
    EXPECT_TRUE(page.ops.isEmpty());
    EXPECT_TRUE(printHutchLabels(page, fx.session, fx.prompts, ticking(3, {ItemName}), {thistle}));
}

TEST_F(HutchLabelsTest, ChoicesGoToTheStudsLabelOptionsAndComeBack)
{
    const QStringList items = labelItemTexts(fx.session);
    EXPECT_EQ(items, (QStringList{u"Name"_s, u"Ring No."_s, u"Sex"_s, u"Breed"_s, u"Colour"_s,
                                  u"Date Of Birth"_s, u"Dam"_s, u"Sire"_s, u"Comments Box"_s}));
    Options options(fx.session);
    const LabelOptions none = readLabelOptions(options, items);
    EXPECT_EQ(std::tuple(none.include, none.size, none.colours),
              std::tuple(std::array<bool, kLabelItemCount>{}, 0, std::array<int, 2>{}));

    LabelOptions chosen = ticking(3, {ItemName, ItemDam, ItemCommentsBox});
    chosen.colours = {255, 0xFF8000};
    saveLabelOptions(options, items, chosen);
    const CRegSettings store(fx.session.AppName);
    const auto stored = [&](const QString &key) {
        return store.GetSetting(u"Rabbits\\Label Options"_s, key, u"absent"_s);
    };
    EXPECT_EQ(stored(u"Name"_s), u"Include");
    EXPECT_EQ(stored(u"Comments Box"_s), u"Include");
    EXPECT_EQ(stored(u"Ring No."_s), QString()) << "unticked is kept empty";
    EXPECT_EQ(stored(u"Label Size"_s), u"3");
    EXPECT_EQ(stored(u"LabelColour_0"_s), u"255");
    EXPECT_EQ(stored(u"LabelColour_1"_s), u"16744448");

    const LabelOptions back = readLabelOptions(options, items);
    EXPECT_EQ(std::tuple(back.include, back.size, back.colours),
              std::tuple(chosen.include, 3, chosen.colours));
    options.set(Opt::LabelSize, u"7"_s);
    EXPECT_EQ(readLabelOptions(options, items).size, 0) << "a size the list does not hold is the first";
}

TEST_F(HutchLabelsTest, TheStockListIsEveryAnimalInParentOrderUpToItsLimitAndOneMustBeTicked)
{
    const qint64 archived = fx.add({{u"Name"_s, u"Ash"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"Yes"_s}});
    // By sex (none first), archive, then name.
    const QList<qint64> all{mystery, jet, archived, fern, thistle};
    EXPECT_EQ(labelStockList(*db, fx.prompts).numbers, all);
    EXPECT_FALSE(labelStockList(*db, fx.prompts, 5).cut) << "a list exactly full";
    EXPECT_TRUE(fx.prompts.messages.isEmpty());

    const LabelStockList cut = labelStockList(*db, fx.prompts, 3);
    EXPECT_EQ(cut.numbers, all.first(3));
    EXPECT_TRUE(cut.cut);
    expectMessage(u"Too Many Livestock Items\nArchive Some Stock!"_s, u"Error"_s, Prompts::Icon::Exclamation);

    EXPECT_TRUE(checkLabelsPicked({thistle}, fx.prompts));
    EXPECT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_FALSE(checkLabelsPicked({}, fx.prompts));
    expectMessage(u"No Livestock Selected\nTick the animals to print labels for."_s, u"Hutch Labels"_s,
                  Prompts::Icon::Exclamation);
}

} // namespace
