#include "support/RecordingProgress.h"
#include "support/StudFixture.h"

#include "pedigree/PedigreeLayout.h"
#include "pedigree/PedigreeStyles.h"
#include "pedigree/PedigreeTable.h"
#include "store/StudDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

TEST(LocateCell, GivesGenerationCellsAndBase)
{
    const struct
    {
        int i, generation, cells, base, position;
    } rows[] = {{1, 1, 2, 1, 1}, {2, 1, 2, 1, 2}, {3, 2, 4, 3, 1}, {6, 2, 4, 3, 4}, {7, 3, 8, 7, 1},
                {14, 3, 8, 7, 8}, {15, 4, 16, 15, 1}, {30, 4, 16, 15, 16}, {31, 5, 32, 31, 1}, {62, 5, 32, 31, 32}};
    for (const auto &r : rows) {
        const CellLocation at = Locate_Cell(r.i);
        EXPECT_EQ(at.generation, r.generation) << r.i;
        EXPECT_EQ(at.cells, r.cells) << r.i;
        EXPECT_EQ(at.base, r.base) << r.i;
        EXPECT_EQ(at.position(r.i), r.position) << r.i;
    }
}

class PedigreeTableTest : public ::testing::Test
{
protected:
    void SetUp() override { db = &fx.open(); }

    qint64 add(const QString &name, const QVariant &sire = {}, const QVariant &dam = {}, QVariantMap more = {})
    {
        more.insert(u"Name"_s, name);
        more.insert(u"Sire"_s, sire);
        more.insert(u"Dam"_s, dam);
        return test::addAnimal(*db, more);
    }
    bool load(qint64 subject, qint64 testSire = -1, qint64 testDam = -1)
    {
        return Load_Pedigree_Table(fx.session, table, subject, testSire, testDam, &type, progress);
    }

    test::StudFixture fx;
    Database *db = nullptr;
    PedigreeTable table;
    QString type;
    test::RecordingProgress progress;
};

TEST_F(PedigreeTableTest, WalksFiveGenerationsOfTheMaleLineWhenTheDamIsUnknown)
{
    qint64 father = add(u"G5"_s);
    for (int g = 4; g >= 1; --g)
        father = add(u"G%1"_s.arg(g), father);
    const qint64 subject = add(u"Subject"_s, father, QVariant(), {{u"Type"_s, u"Rex"_s}});
    ASSERT_TRUE(load(subject));
    EXPECT_EQ(type, u"Rex");
    ASSERT_EQ(progress.steps.size(), 62) << "every place is counted, occupied or not";
    EXPECT_EQ(progress.steps.last().done, 62);
    EXPECT_EQ(progress.title, u"Accessing Pedigree");
    for (int g = 1; g <= 5; ++g)
        EXPECT_EQ(table.cell(g, 1).Name, u"G%1"_s.arg(g));
    for (int g = 1; g <= 5; ++g)
        for (int p = (1 << g) / 2 + 1; p <= (1 << g); ++p)
            EXPECT_EQ(table.cell(g, p).Number, -1) << g << "," << p;
}

TEST_F(PedigreeTableTest, OwnGrandparentFillsEveryPlaceItsPlaceDemands)
{
    const qint64 a = add(u"A"_s);
    const qint64 b = add(u"B"_s, a);
    db->execute(u"UPDATE Stock SET Sire = ? WHERE Number = ?"_s, {b, a}); // a loop in the data
    ASSERT_TRUE(load(b));
    EXPECT_EQ(table.cell(1, 1).Name, u"A");
    EXPECT_EQ(table.cell(2, 1).Name, u"B");
    EXPECT_EQ(table.cell(5, 1).Name, u"A") << "the walk ends at generation five, without a message";
    EXPECT_EQ(table.cell(6, 1).Number, b) << "the overflow row receives the last parents";
}

TEST_F(PedigreeTableTest, MissingParentRecordAndZeroKeepTheirNumberAndNoName)
{
    const qint64 subject = add(u"Subject"_s, 0, 9999);
    ASSERT_TRUE(load(subject));
    EXPECT_EQ(table.cell(1, 1).Number, 0);
    EXPECT_TRUE(table.cell(1, 1).Name.isEmpty());
    EXPECT_EQ(table.cell(1, 2).Number, 9999);
    EXPECT_EQ(table.cell(2, 3).Number, -1);
}

TEST_F(PedigreeTableTest, TestMatingNeverReadsTheSubjectAndMissingSubjectFails)
{
    const qint64 sire = add(u"Buck"_s);
    const qint64 dam = add(u"Doe"_s);
    table.cell(0, 1).Name = u"stale"_s;
    ASSERT_TRUE(load(0, sire, dam));
    EXPECT_EQ(table.cell(0, 1).Number, 0);
    EXPECT_EQ(table.cell(0, 1).Name, u"stale") << "an unread place keeps its old text";
    EXPECT_EQ(table.cell(1, 1).Name, u"Buck");
    EXPECT_EQ(table.cell(1, 2).Name, u"Doe");
    EXPECT_TRUE(type.isEmpty());
    EXPECT_FALSE(load(4242));
}

TEST_F(PedigreeTableTest, DetailsAreFormattedAndPointsAddUpWhenCounted)
{
    const qint64 n = add(u"Champion"_s, {}, {}, {{u"DOB"_s, 45323.0}, {u"BestAward"_s, u"BIS"_s}});
    const auto award = [&](qint64 who, const QVariant &stars) {
        db->execute(u"INSERT INTO Awards (Number, Date, CCStars) VALUES (?, 45000, ?)"_s, {who, stars});
    };
    award(n, u"3"_s);
    award(n, u"2.5 stars"_s);
    award(n, u"none"_s);
    award(n, QVariant());
    award(n + 1, u"40"_s);
    EXPECT_EQ(Total_Stars(fx.session, n), 6) << "3 + 2.5 rounds to the even 6";
    PedigreeCell c;
    ASSERT_TRUE(Get_Animal_Details(fx.session, n, c));
    EXPECT_EQ(c.DOB, u"01/02/2024");
    EXPECT_EQ(c.Weight, u"0.00 lbs") << "a missing weight reads as 0.00 here";
    EXPECT_EQ(c.Points, u"6 Stars");
    fx.session.PointsOn = false;
    ASSERT_TRUE(Get_Animal_Details(fx.session, n, c));
    EXPECT_TRUE(c.Points.isEmpty());
}

TEST_F(PedigreeTableTest, DefaultPicturesAreLookedUpForEveryOccupiedPlace)
{
    const qint64 sire = add(u"Sire"_s);
    const qint64 subject = add(u"Subject"_s, sire);
    db->execute(u"INSERT INTO Images (Number, imageno, Path, \"Default\") VALUES (?, 1, '/p/other.jpg', 0)"_s, {sire});
    db->execute(u"INSERT INTO Images (Number, imageno, Path, \"Default\") VALUES (?, 2, '/p/sire.jpg', 1)"_s, {sire});
    ASSERT_TRUE(load(subject));
    LoadImages(fx.session, table);
    EXPECT_EQ(table.cell(1, 1).Image, u"/p/sire.jpg");
    EXPECT_TRUE(table.cell(0, 1).Image.isEmpty()) << "no picture, no path";
}

TEST_F(PedigreeTableTest, DefaultsOfGenerationsAndStyle)
{
    CRegSettings s(fx.session.AppName);
    EXPECT_EQ(Default_Generations(fx.session), 5);
    for (const auto &[stored, expected] : {std::pair{u"0"_s, 3}, {u"2"_s, 5}, {u"3"_s, 3}}) {
        s.SaveSetting(u"Rabbits\\Options"_s, u"Default Generations"_s, stored);
        EXPECT_EQ(Default_Generations(fx.session), expected) << stored.toStdString();
    }
    s.SaveSetting(u"Rabbits\\Options"_s, u"Default Pedigree Type"_s, u"7"_s);
    EXPECT_EQ(defaultPedigreeStyle(fx.session), 1);
    s.SaveSetting(u"Rabbits\\Options"_s, u"Default Pedigree Type"_s, u"5"_s);
    EXPECT_EQ(defaultPedigreeStyle(fx.session), 5);
    EXPECT_EQ(pedigreeStyles(u"Color"_s).first(), (PedigreeStyle{u"Color Based"_s, 1}));
    EXPECT_EQ(pedigreeStyles(u"Colour"_s).at(3), (PedigreeStyle{u"Colour Based Without ID"_s, 4}));

    const ReportTitles t = Set_Report_Titles(1, u"Pedigree"_s, u"Bramble"_s, false);
    EXPECT_EQ(t.certify, u"I certify this Stud Certificate to be correct to the best of my knowledge");
    EXPECT_EQ(t.caption, u"Stud Certificate For Bramble");
    EXPECT_EQ(Set_Report_Titles(0, u"Family Tree"_s, QString(), true).caption, u"Family Tree For Test Mating");
}

} // namespace
