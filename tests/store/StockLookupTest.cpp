#include "support/StudFixture.h"

#include "store/IndexCatalogue.h"
#include "store/StockLookup.h"
#include "store/StockRow.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

class StockLookupTest : public ::testing::Test
{
protected:
    void SetUp() override { db = Database::open(test::copyTemplate(dir.path())); }
    qint64 add(const QVariantMap &fields) { return test::addAnimal(*db, fields); }

    QTemporaryDir dir;
    std::unique_ptr<Database> db;
};

TEST_F(StockLookupTest, NameOfAMissingAnimalIsNotFound)
{
    const qint64 n = add({{u"Name"_s, u"Kate's Pride"_s}});
    EXPECT_EQ(Get_Stock_Name(*db, n), u"Kate's Pride");
    EXPECT_EQ(Get_Stock_Name(*db, n + 50), u"Not Found");
    EXPECT_EQ(Get_Stock_Name(*db, 0), u"Not Found");
}

TEST_F(StockLookupTest, VocabularyHoldsEachValueOnceInOrderAndSkipsBlanks)
{
    add({{u"Colour"_s, u"Black"_s}});
    add({{u"Colour"_s, u"black"_s}});
    add({{u"Colour"_s, u"Agouti"_s}});
    add({{u"Colour"_s, QString()}});
    add({{u"Colour"_s, QVariant()}});
    add({{u"Colour"_s, u"Étoile"_s}});
    Table t(*db, u"Stock"_s);
    EXPECT_EQ(walkVocabulary(t, u"ColourKey"_s, u"Colour"_s),
              QStringList({u"Agouti"_s, u"Black"_s, u"Étoile"_s}));
    EXPECT_TRUE(walkVocabulary(t, u"TypeKey"_s, u"Type"_s).isEmpty());
}

TEST_F(StockLookupTest, ParentListsHoldOneSexInNameOrderBehindABlank)
{
    add({{u"Name"_s, u"Zorro"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
    const qint64 able = add({{u"Name"_s, u"Able"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
    add({{u"Name"_s, u"Gone"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"Yes"_s}});
    add({{u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"Yes"_s}});
    add({{u"Name"_s, u"Daisy"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
    add({{u"Name"_s, u"Nobody"_s}, {u"Archive"_s, u"No"_s}});

    const QList<ParentEntry> sires = parentList(*db, u"Buck"_s).entries();
    ASSERT_EQ(sires.size(), 3);
    EXPECT_EQ(sires[0], (ParentEntry{QString(), -1}));
    EXPECT_EQ(sires[1], (ParentEntry{u"Able"_s, able}));
    EXPECT_EQ(sires[2].name, u"Zorro");

    QStringList all;
    const ParentList withArchived = parentList(*db, u"Buck"_s, true);
    for (const ParentEntry &e : withArchived.entries())
        all << e.name;
    EXPECT_EQ(all, QStringList({QString(), u"Able"_s, u"Zorro"_s, u"Gone"_s}));

    EXPECT_EQ(parentList(*db, u"Doe"_s).size(), 2);
    EXPECT_EQ(parentList(*db, QString()).size(), 1) << "an animal without a sex is in neither list";
    const ParentList list = parentList(*db, u"Buck"_s);
    EXPECT_EQ(list.indexOf(able), 1);
    EXPECT_EQ(list.indexOf(-1), 0) << "the blank entry";
    EXPECT_EQ(list.indexOf(9999), -1);
}

} // namespace

namespace {

// The program's named indexes and the schema's are one list: each index the cursors know
// exists in the template with the same fields, and the template has no index they do not
// know. An index on a table's counter alone is its row order and has no index of its own.
TEST_F(StockLookupTest, IndexCatalogueIsTheSchemasIndexes)
{
    QStringList inFile;
    db->eachRow(u"SELECT tbl_name, name FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL"_s, {},
                [&](const Row &row) { inFile << row.text(u"name"_s); });
    QStringList known;
    for (const IndexDefinition &d : indexCatalogue()) {
        const QString name = d.table + u'_' + d.name;
        QStringList fields;
        db->eachRow(u"SELECT name FROM pragma_index_info(?) ORDER BY seqno"_s, {name},
                    [&](const Row &row) { fields << row.text(u"name"_s); });
        if (fields.isEmpty()) {
            // Only the counter of the table stands without an index of its own.
            const QString counter = db->scalar(u"SELECT name FROM pragma_table_info(?) WHERE pk = 1"_s, {d.table}).toString();
            EXPECT_EQ(d.fields, QStringList({counter})) << name.toStdString() << " is not in the schema";
            continue;
        }
        known << name;
        QStringList expected;
        for (const QString &f : d.fields)
            expected << f.toLower();
        for (QString &f : fields)
            f = f.toLower();
        EXPECT_EQ(fields, expected) << name.toStdString();
    }
    for (const QString &index : inFile)
        EXPECT_TRUE(known.contains(index)) << index.toStdString() << " is not known to the cursors";
}

} // namespace
