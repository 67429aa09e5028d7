#include "support/RecordingSurface.h"
#include "support/StudFixture.h"

#include "reporting/LitterStats.h"
#include "store/DaySerial.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

TEST(LitterStatsTexts, QueryOptionsAndTitle)
{
    EXPECT_EQ(offspringQuery(5, -1), u"Select * From Stock Where Sire = 5");
    EXPECT_EQ(offspringQuery(-1, 7), u"Select * From Stock Where Dam = 7");
    EXPECT_EQ(offspringQuery(5, 7), u"Select * From Stock Where Sire = 5 AND Dam = 7");
    EXPECT_EQ(offspringQuery(-1, -1), QString());
    EXPECT_EQ(statsTitle(u"Jack"_s), u"Litter Statistics for : Jack");

    const auto options = statsOptions(u"Color"_s);
    QStringList captions, tips;
    for (const StatsOption &o : options) {
        captions << o.caption;
        tips << o.tip;
    }
    EXPECT_EQ(captions, (QStringList{u"&Sex"_s, u"&Breed"_s, u"&Color"_s, u"S&tatus"_s, u"S&ummary"_s}));
    EXPECT_EQ(tips, (QStringList{u"Show Statistics by Sex"_s, u"Show Statistics by Breed"_s,
                                 u"Show Statistics by Colour"_s, u"Show Statistics by Status"_s,
                                 u"Show Statistics Summary"_s}));
}

// Jack's young: two litters of two, each born on one day, and one young with no day of
// birth. The 2024 litter has two dams, Jill and Kate.
class LitterStatsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        jack = fx.add({{u"Name"_s, u"Jack"_s}, {u"Sex"_s, u"Buck"_s}});
        jill = fx.add({{u"Name"_s, u"Jill"_s}, {u"Sex"_s, u"Doe"_s}});
        kate = fx.add({{u"Name"_s, u"Kate"_s}, {u"Sex"_s, u"Doe"_s}});
        young(QDate(2024, 3, 1), jill, u"Buck"_s, u"Black"_s, u"Rex"_s, u"Show"_s);
        young(QDate(2024, 3, 1), kate, u"Doe"_s, u"black"_s, u"Rex"_s, {});
        young(QDate(2023, 6, 15), kate, u"Doe"_s, u"Agouti"_s, u"Lop"_s, u"Sold"_s);
        young(QDate(), jill, {}, {}, u"Rex"_s, u"Show"_s);
        young(QDate(2023, 6, 15), kate, u"Buck"_s, u"Black"_s, u"Lop"_s, u"Show"_s);
    }
    void young(const QDate &dob, qint64 dam, const QString &sex, const QString &colour, const QString &type,
               const QString &status)
    {
        QVariantMap f{{u"Name"_s, u"Kit"_s}, {u"Sire"_s, jack}, {u"Dam"_s, dam}, {u"Type"_s, type}};
        if (dob.isValid())
            f.insert(u"DOB"_s, DaySerial::fromDate(dob));
        for (const auto &[field, value] : {std::pair{u"Sex"_s, sex}, {u"Colour"_s, colour}, {u"status"_s, status}})
            if (!value.isEmpty())
                f.insert(field, value);
        fx.add(f);
    }

    test::StudFixture fx;
    Database *db = nullptr;
    qint64 jack = 0, jill = 0, kate = 0;
};

TEST_F(LitterStatsTest, SummaryHasOneRowPerDayWithTheUndatedLast)
{
    LitterStats stats(fx.session, fx.prompts);
    ASSERT_TRUE(stats.load(jack, -1));
    ASSERT_EQ(stats.litters().size(), 3);
    const StatsTable t = stats.table(StatsView::Summary);
    EXPECT_EQ(t.caption, u"Litter Summary");
    EXPECT_EQ(t.heads, (QStringList{u"Date"_s, u"Number"_s, u"Bucks"_s, u"Does"_s, u"Dam"_s}));
    ASSERT_EQ(t.rows.size(), 4);
    EXPECT_EQ(t.rows[0], (QStringList{u"15/06/2023"_s, u"2"_s, u"1"_s, u"1"_s, u"Kate"_s}));
    EXPECT_EQ(t.rows[1], (QStringList{u"01/03/2024"_s, u"2"_s, u"1"_s, u"1"_s, u"Jill"_s}))
        << "two dams on one day make one litter, under the dam of its first young";
    EXPECT_EQ(t.rows[2], (QStringList{u"Unknown"_s, u"1"_s, u"0"_s, u"0"_s, u"Jill"_s}));
    EXPECT_EQ(t.rows[3], (QStringList{u"Total"_s, u"5"_s, u"2"_s, u"2"_s, QString()}));
    EXPECT_EQ(t.summaryRows, 1);
    EXPECT_TRUE(fx.prompts.messages.isEmpty());

    // A dam's litters name the sire.
    ASSERT_TRUE(stats.load(-1, kate));
    const StatsTable dam = stats.summary();
    EXPECT_EQ(dam.heads.last(), u"Sire");
    EXPECT_EQ(dam.rows, (QList<QStringList>{{u"15/06/2023"_s, u"2"_s, u"1"_s, u"1"_s, u"Jack"_s},
                                            {u"01/03/2024"_s, u"1"_s, u"0"_s, u"1"_s, u"Jack"_s},
                                            {u"Total"_s, u"3"_s, u"1"_s, u"2"_s, QString()}}));
}

TEST_F(LitterStatsTest, ValuesAreColumnsInOrderOfAppearanceWithTotalsAndAverages)
{
    LitterStats stats(fx.session, fx.prompts);
    ASSERT_TRUE(stats.load(jack, -1));

    const StatsTable colour = stats.table(StatsView::Colour);
    EXPECT_EQ(colour.caption, u"Colour");
    EXPECT_EQ(colour.heads, (QStringList{u"Date"_s, u"Black"_s, u"Agouti"_s, u"Unknown"_s, u"Totals"_s}))
        << "\"black\" counts with \"Black\"; a young with no colour is Unknown";
    EXPECT_EQ(colour.rows, (QList<QStringList>{{u"15/06/2023"_s, u"1"_s, u"1"_s, u"0"_s, u"2"_s},
                                               {u"01/03/2024"_s, u"2"_s, u"0"_s, u"0"_s, u"2"_s},
                                               {u"Unknown"_s, u"0"_s, u"0"_s, u"1"_s, u"1"_s},
                                               {u"Totals"_s, u"3"_s, u"1"_s, u"1"_s, u"5"_s},
                                               {u"Average"_s, u"1.00"_s, u"0.33"_s, u"0.33"_s, u"1.67"_s}}));
    EXPECT_EQ(colour.summaryRows, 2);
    EXPECT_EQ(colour.rightAligned, (QList<bool>{false, true, true, true, true}));

    const StatsTable status = stats.table(StatsView::Status);
    EXPECT_EQ(status.caption, u"Status");
    EXPECT_EQ(status.heads, (QStringList{u"Date"_s, u"Show"_s, u"Unknown"_s, u"Sold"_s, u"Totals"_s}));
    EXPECT_EQ(status.rows.last(), (QStringList{u"Average"_s, u"1.00"_s, u"0.33"_s, u"0.33"_s, u"1.67"_s}));

    const StatsTable sex = stats.table(StatsView::Sex);
    EXPECT_EQ(sex.caption, u"Sex");
    EXPECT_EQ(sex.heads, (QStringList{u"Date"_s, u"Buck"_s, u"Doe"_s, u"Unknown"_s, u"Totals"_s}));

    const StatsTable breed = stats.table(StatsView::Breed);
    EXPECT_EQ(breed.caption, u"Breed");
    EXPECT_EQ(breed.rows.at(3), (QStringList{u"Totals"_s, u"3"_s, u"2"_s, u"5"_s}));
    EXPECT_EQ(breed.rows.at(4), (QStringList{u"Average"_s, u"1.00"_s, u"0.67"_s, u"1.67"_s}));
}

TEST_F(LitterStatsTest, AnimalWithoutYoungIsToldSo)
{
    LitterStats stats(fx.session, fx.prompts);
    EXPECT_FALSE(stats.load(-1, jill + 1000));
    EXPECT_FALSE(stats.load(-1, -1));
    EXPECT_EQ(fx.prompts.texts(), (QStringList{u"No stock Found"_s, u"No stock Found"_s}));
    EXPECT_TRUE(stats.litters().isEmpty());
}

TEST(LitterDates, YoungOfOneDayAreOneLitterWhateverTheirOtherParent)
{
    const QDate day(2024, 5, 2);
    const QList<Offspring> young = {
        {{}, {}, {}, u"Buck"_s, day, 1, 10}, {{}, {}, {}, u"Doe"_s, day, 1, 11},
        {{}, {}, {}, u"Doe"_s, std::nullopt, 1, -1}, {{}, {}, {}, u"buck"_s, day.addDays(-300), 1, std::nullopt}};
    const QList<Litter> litters = Load_litter_Dates(young, u"Buck"_s, u"Doe"_s, true);
    ASSERT_EQ(litters.size(), 3);
    EXPECT_EQ(litters[0].date, day.addDays(-300));
    EXPECT_EQ(litters[0].males, 0) << "the sex is the stud's word as written";
    EXPECT_FALSE(litters[0].partner);
    EXPECT_EQ(litters[1].young, 2);
    EXPECT_EQ(litters[1].partner, 10);
    EXPECT_EQ(litters[1].members, (QList<qsizetype>{0, 1}));
    EXPECT_FALSE(litters[2].date);
    EXPECT_FALSE(litters[2].partner) << "an unknown dam (-1) is no partner";
}

// The printed table: the title and caption above it, the first column again at the start
// of every band of columns the page's width takes, and the heads again on every page.
TEST(LitterStatsPrint, WideAndLongTablesContinueInBandsAndPages)
{
    StatsTable t;
    t.caption = u"Colour"_s;
    t.heads << u"Date"_s;
    for (int c = 1; c <= 20; ++c)
        t.heads << u"Colour Number %1"_s.arg(c, 2, 10, QChar(u'0'));
    t.heads << u"Totals"_s;
    t.rightAligned = QList<bool>(t.heads.size(), true);
    t.rightAligned[0] = false;
    for (int r = 0; r < 80; ++r) {
        QStringList row{QDate(2000, 1, 1).addDays(r).toString(u"dd/MM/yyyy"_s)};
        for (int c = 1; c < t.heads.size(); ++c)
            row << QString::number(r % 2 ? 7 : 1234);
        t.rows << row;
    }
    t.rows << QStringList(t.heads.size(), u"9"_s);
    t.summaryRows = 1;

    test::RecordingSurface page;
    printStatsTable(page, u"Litter Statistics for : Jack"_s, t);
    ASSERT_NE(page.find(u"Litter Statistics for : Jack"_s), nullptr);
    EXPECT_TRUE(page.find(u"Litter Statistics for : Jack"_s)->bold);
    ASSERT_NE(page.find(u"Colour"_s), nullptr);
    ASSERT_FALSE(page.ops.isEmpty());
    EXPECT_EQ(page.ops.last().kind, test::RecordingSurface::Op::End);

    const double right = page.pageSize().width() - 720, foot = page.pageSize().height() - 720;
    QMap<QString, int> heads;
    int datesAtTop = 0;
    for (const auto &op : std::as_const(page.ops)) {
        if (op.kind != test::RecordingSurface::Op::Text)
            continue;
        EXPECT_LE(op.x + page.textWidth(op.text), right + 0.01) << op.text.toStdString();
        EXPECT_LE(op.y + 240, foot + 0.01) << op.text.toStdString();
        if (t.heads.contains(op.text))
            ++heads[op.text];
        if (op.text == u"Date" && op.y == 720)
            ++datesAtTop;
    }
    for (const QString &head : std::as_const(t.heads))
        EXPECT_GT(heads.value(head), 0) << head.toStdString();
    EXPECT_GT(heads.value(u"Date"_s), heads.value(u"Colour Number 01"_s) + heads.value(u"Totals"_s))
        << "twenty wide columns take more than one band, each beginning with the dates";
    EXPECT_GT(datesAtTop, 0) << "eighty rows run over a page, under their heads again";

    // Counts stand right-aligned under each other; the totals row is bold.
    const auto cells = [&](const QString &text) {
        QList<test::RecordingSurface::Op> found;
        for (const auto &op : std::as_const(page.ops))
            if (op.kind == test::RecordingSurface::Op::Text && op.text == text)
                found << op;
        return found;
    };
    const auto big = cells(u"1234"_s).first(), small = cells(u"7"_s).first();
    EXPECT_DOUBLE_EQ(big.x + page.textWidth(big.text), small.x + page.textWidth(small.text));
    EXPECT_TRUE(cells(u"9"_s).first().bold);
    EXPECT_FALSE(small.bold);
}

} // namespace
