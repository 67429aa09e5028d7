#include "support/StudFixture.h"

#include "store/Table.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using tarvex::test::addAnimal;

namespace {

class TableTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = Database::open(test::copyTemplate(dir.path()));
    }

    qint64 animal(const QVariant &name, const QVariantMap &more = {})
    {
        QVariantMap fields = more;
        fields.insert(u"Name"_s, name);
        return addAnimal(*db, fields);
    }

    static QStringList walk(Table &t)
    {
        QStringList names;
        for (t.moveFirst(); !t.eof(); t.moveNext())
            names << (t.field(u"Name"_s).isNull() ? u"<null>"_s : t.field(u"Name"_s).toString());
        return names;
    }

    QTemporaryDir dir;
    std::unique_ptr<Database> db;
};

TEST_F(TableTest, SeeksOnOneFieldCompareWithoutCaseAndKeepAddedOrderAmongEquals)
{
    animal(u"Cherry"_s);
    animal(u"banana"_s);
    animal(QVariant());
    animal(u"Apple"_s);
    animal(u"cherry"_s);
    Table t(*db, u"Stock"_s);
    t.setIndex(u"PrimaryKey"_s);

    EXPECT_EQ(walk(t), QStringList({u"<null>"_s, u"Apple"_s, u"banana"_s, u"Cherry"_s, u"cherry"_s}));

    t.seek(u"="_s, {u"BANANA"_s});
    ASSERT_FALSE(t.noMatch());
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"banana");

    t.seek(u">"_s, {u"banana"_s});
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"Cherry");

    t.seek(u">="_s, {u"b"_s});
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"banana");

    t.seek(u"<"_s, {u"cherry"_s});
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"banana");

    t.seek(u"<="_s, {u"CHERRY"_s});
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"cherry") << "the last of the equal names";

    // Unknown names sort before every name.
    t.seek(u"<"_s, {u"Apple"_s});
    ASSERT_FALSE(t.noMatch());
    EXPECT_TRUE(t.field(u"Name"_s).isNull());

    t.seek(u"="_s, {u"Zebra"_s});
    EXPECT_TRUE(t.noMatch());
    EXPECT_TRUE(t.eof());
    t.seek(u">"_s, {u"cherry"_s});
    EXPECT_TRUE(t.noMatch());
}

TEST_F(TableTest, WalksBothWaysAndStopsAtTheEnds)
{
    animal(u"B"_s);
    animal(u"A"_s);
    animal(u"C"_s);
    Table t(*db, u"Stock"_s);
    t.setIndex(u"PrimaryKey"_s);

    t.moveLast();
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"C");
    t.movePrevious();
    t.movePrevious();
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"A");
    t.movePrevious();
    EXPECT_TRUE(t.bof());
    EXPECT_FALSE(t.eof());
    t.moveNext();
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"A") << "from before the first row, the next row is the first";

    t.moveLast();
    t.moveNext();
    EXPECT_TRUE(t.eof());
    try {
        t.field(u"Name"_s);
        FAIL() << "no current row past the end";
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number(), 3021);
        EXPECT_EQ(e.description(), u"No current record.");
    }
    t.movePrevious();
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"C");
}

TEST_F(TableTest, EmptyTableIsAtBothEnds)
{
    Table t(*db, u"Stock"_s);
    t.setIndex(u"PrimaryKey"_s);
    t.moveFirst();
    EXPECT_TRUE(t.eof());
    EXPECT_TRUE(t.bof());
    EXPECT_EQ(t.recordCount(), 0);
}

TEST_F(TableTest, MultiFieldSeekWalksTheParentListOfOneSex)
{
    animal(u"Zed"_s, {{u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
    animal(u"Old"_s, {{u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"Yes"_s}});
    animal(u"Amy"_s, {{u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
    animal(u"Bob"_s, {{u"Sex"_s, u"buck"_s}, {u"Archive"_s, u"no"_s}});
    animal(u"Nosex"_s, {{u"Archive"_s, u"No"_s}});
    Table t(*db, u"Stock"_s);
    t.setIndex(u"ParentKey"_s);

    QStringList bucks;
    t.seek(u"="_s, {u"Buck"_s, u"No"_s});
    while (!t.noMatch() && !t.eof() && t.field(u"Sex"_s).toString().compare(u"Buck"_s, Qt::CaseInsensitive) == 0 &&
           t.field(u"Archive"_s).toString().compare(u"No"_s, Qt::CaseInsensitive) == 0) {
        bucks << t.field(u"Name"_s).toString();
        t.moveNext();
    }
    EXPECT_EQ(bucks, QStringList({u"Bob"_s, u"Zed"_s}));

    // ">" on a partial key skips every row that shares it.
    t.seek(u">"_s, {u"Buck"_s});
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"Amy");
    // A row without a sex sorts first.
    t.moveFirst();
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"Nosex");
    // "<" lands on the nearest smaller key.
    t.seek(u"<"_s, {u"Buck"_s, u"Yes"_s});
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"Zed");
}

TEST_F(TableTest, WalksAcrossNullKeysInAddedOrder)
{
    animal(u"n1"_s);
    animal(u"s5"_s, {{u"Sire"_s, 5}});
    animal(u"n2"_s);
    animal(u"s3"_s, {{u"Sire"_s, 3}});
    Table t(*db, u"Stock"_s);
    t.setIndex(u"SireKey"_s);
    EXPECT_EQ(walk(t), QStringList({u"n1"_s, u"n2"_s, u"s3"_s, u"s5"_s}));

    t.moveLast();
    QStringList back;
    for (; !t.bof(); t.movePrevious())
        back << t.field(u"Name"_s).toString();
    EXPECT_EQ(back, QStringList({u"s5"_s, u"s3"_s, u"n2"_s, u"n1"_s}));

    t.seek(u"="_s, {QVariant()});
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"n1");
    t.seek(u">="_s, {4});
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"s5");
}

TEST_F(TableTest, BookmarksReturnToTheSameRow)
{
    animal(u"A"_s);
    const qint64 b = animal(u"B"_s);
    Table t(*db, u"Stock"_s);
    t.setIndex(u"PrimaryKey"_s);
    t.seek(u"="_s, {u"B"_s});
    const qint64 mark = t.bookmark();
    EXPECT_EQ(mark, b);
    t.moveFirst();
    t.setBookmark(mark);
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"B");
    t.moveNext();
    EXPECT_TRUE(t.eof()) << "moves go on from a restored bookmark in index order";
    try {
        t.setBookmark(9999);
        FAIL();
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number(), 3159);
    }
}

TEST_F(TableTest, CounterIsReadableAtAddNewAndNeverReused)
{
    Table t(*db, u"Stock"_s);
    t.setIndex(u"NumberKey"_s);
    t.addNew();
    const qint64 first = t.field(u"Number"_s).toLongLong();
    EXPECT_GT(first, 0);
    EXPECT_EQ(t.field(u"Archive"_s).toString(), u"No") << "a new row starts with the field's default";
    t.cancelUpdate();

    t.addNew();
    const qint64 second = t.field(u"Number"_s).toLongLong();
    EXPECT_EQ(second, first + 1) << "a cancelled number is not given out again";
    t.setField(u"Name"_s, u"Kept"_s);
    t.update();
    EXPECT_EQ(t.lastModified(), second);
    t.seek(u"="_s, {second});
    ASSERT_FALSE(t.noMatch());
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"Kept");

    t.deleteCurrent();
    t.addNew();
    EXPECT_EQ(t.field(u"Number"_s).toLongLong(), second + 1) << "the number of a removed animal stays retired";
    t.cancelUpdate();

    // A fresh connection continues from the same counter.
    db.reset();
    db = Database::open(dir.filePath(u"Rabbits.mdb"_s));
    Table again(*db, u"Stock"_s);
    again.addNew();
    EXPECT_EQ(again.field(u"Number"_s).toLongLong(), second + 2);
}

TEST_F(TableTest, EditUpdatesInPlaceAndRefusesMisuse)
{
    animal(u"A"_s, {{u"status"_s, u"Breeding"_s}});
    Table t(*db, u"Stock"_s);
    t.setIndex(u"PrimaryKey"_s);
    t.moveFirst();
    try {
        t.setField(u"Name"_s, u"X"_s);
        FAIL();
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number(), 3020);
        EXPECT_EQ(e.description(), u"Update or CancelUpdate without AddNew or Edit.");
    }
    t.edit();
    t.setField(u"STATUS"_s, u"Sold"_s);
    EXPECT_EQ(t.field(u"Status"_s).toString(), u"Sold") << "an edited value reads back before it is saved";
    t.update();
    EXPECT_EQ(t.field(u"status"_s).toString(), u"Sold");
    EXPECT_EQ(db->scalar(u"SELECT status FROM Stock"_s).toString(), u"Sold");

    t.edit();
    t.setField(u"Type"_s, QString(31, u'x'));
    try {
        t.update();
        FAIL();
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number(), 3163);
        EXPECT_EQ(t.editMode(), Table::EditMode::Edit) << "a refused save keeps what was typed";
    }
    t.cancelUpdate();
}

TEST_F(TableTest, FieldNamesMatchWithoutRegardToCaseInEverySpelling)
{
    animal(u"A"_s, {{u"id2"_s, u"T1"_s}, {u"id3"_s, u"G1"_s}, {u"Genotype"_s, u"aa"_s}});
    Table t(*db, u"Stock"_s);
    t.moveFirst();
    EXPECT_EQ(t.field(u"Id2"_s).toString(), u"T1");
    EXPECT_EQ(t.field(u"ID3"_s).toString(), u"G1");
    EXPECT_EQ(t.field(u"GenoType"_s).toString(), u"aa");
    try {
        t.field(u"Colur"_s);
        FAIL();
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number(), 3265);
    }
}

TEST_F(TableTest, NextAfterDeleteGoesOnFromTheRemovedRow)
{
    animal(u"Same"_s);
    animal(u"Same"_s);
    animal(u"Same"_s);
    Table t(*db, u"Stock"_s);
    t.setIndex(u"PrimaryKey"_s);
    t.moveFirst();
    t.moveNext();
    const qint64 middle = t.bookmark();
    t.deleteCurrent();
    EXPECT_FALSE(t.hasCurrent());
    t.moveNext();
    EXPECT_EQ(t.bookmark(), middle + 1);
    EXPECT_EQ(t.recordCount(), 2);
}

TEST_F(TableTest, HistoryIndexesFindAnAnimalsFirstAndNewestRows)
{
    const auto award = [&](qint64 number, double date) {
        db->execute(u"INSERT INTO Awards (Number, Date, Award) VALUES (?, ?, 'BOB')"_s, {number, date});
        return db->sql().getLastInsertRowid();
    };
    award(1, 40000);
    const qint64 firstOf2 = award(2, 39000);
    award(2, 41000);
    const qint64 newestOf2 = award(2, 41000);
    award(3, 38000);
    Table t(*db, u"Awards"_s);
    t.setIndex(u"PrimaryKey"_s);
    t.seek(u">="_s, {2, 0, 0});
    EXPECT_EQ(t.field(u"Unique"_s).toLongLong(), firstOf2);
    t.seek(u"<"_s, {3, 0, 0});
    EXPECT_EQ(t.field(u"Unique"_s).toLongLong(), newestOf2);
}

TEST_F(TableTest, UnknownTablesAndIndexesAreReportedByNumber)
{
    try {
        Table t(*db, u"Litters"_s);
        FAIL();
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number(), 3011);
    }
    Table t(*db, u"Stock"_s);
    try {
        t.setIndex(u"NoSuchKey"_s);
        FAIL();
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number(), 3800);
    }
}

} // namespace
