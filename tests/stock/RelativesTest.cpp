#include "support/StudFixture.h"

#include "stock/Relatives.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

QStringList names(const QList<RelativeRow> &list)
{
    QStringList out;
    for (const RelativeRow &r : list)
        out << r.name;
    return out;
}

class RelativesTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        sire = add(u"Sire One"_s, u"Buck"_s);
        otherSire = add(u"Sire Two"_s, u"Buck"_s);
        dam = add(u"Dam One"_s, u"Doe"_s);
        otherDam = add(u"Dam Two"_s, u"Doe"_s);
        subject = add(u"Subject"_s, u"Doe"_s, sire, dam);
        add(u"Full O'Brien"_s, u"Buck"_s, sire, dam, {{u"Archive"_s, u"Yes"_s}, {u"Weight"_s, 2.5}});
        add(u"Half By Sire"_s, u"Doe"_s, sire, otherDam);
        add(u"Half By Dam"_s, u"Buck"_s, otherSire, dam);
        add(u"Sire Only"_s, u"Doe"_s, sire, QVariant());
        add(u"Daughter"_s, u"Doe"_s, otherSire, subject);
    }

    qint64 add(const QString &name, const QString &sex, const QVariant &s = {}, const QVariant &d = {},
               QVariantMap more = {})
    {
        more.insert(u"Name"_s, name);
        more.insert(u"Sex"_s, sex);
        more.insert(u"Sire"_s, s);
        more.insert(u"Dam"_s, d);
        if (!more.contains(u"Archive"_s))
            more.insert(u"Archive"_s, u"No"_s);
        return fx.add(more);
    }

    RelativesCache relativesOf(qint64 number, const QVariant &s, const QVariant &d, const QString &sex)
    {
        return RefreshRelatives(
            *db, {number, s, d, sex}, u"Buck"_s, [](const QDate &date) { return date.toString(u"dd/MM/yyyy"_s); },
            u"lbs"_s);
    }

    test::StudFixture fx;
    Database *db = nullptr;
    qint64 sire = 0, otherSire = 0, dam = 0, otherDam = 0, subject = 0;
};

TEST_F(RelativesTest, QueriesReadAsTheyAlwaysHave)
{
    const RelativesSubject a{42, 7, QVariant(), u"Buck"_s};
    EXPECT_EQ(fullSiblingsQuery(a), u"SELECT * FROM stock WHERE sire = 7 AND dam = -999 AND number <> 42 ORDER BY name ASC;");
    EXPECT_EQ(halfSiblingsQuery(a), u"SELECT * FROM stock WHERE (sire = 7 AND dam <> -999) OR (sire <> 7 AND dam = -999)  "
                                    u"AND number <> 42 ORDER BY name ASC;");
    EXPECT_EQ(offspringQuery(a, u"Buck"_s), u"SELECT * FROM stock WHERE sire = 42 ORDER BY name ASC;");
    EXPECT_EQ(offspringQuery({42, 0, 0, QString()}, u"Buck"_s), u"SELECT * FROM stock WHERE dam = 42 ORDER BY name ASC;");
    EXPECT_EQ(fullSiblingsQuery({42, 0, -3, QString()}),
              u"SELECT * FROM stock WHERE sire = -999 AND dam = -999 AND number <> 42 ORDER BY name ASC;");
}

TEST_F(RelativesTest, FamilyWithBothParentsKnown)
{
    const RelativesCache c = relativesOf(subject, sire, dam, u"Doe"_s);
    EXPECT_EQ(names(c.lists[RelativesCache::FullSiblings]), QStringList({u"Full O'Brien"_s}));
    EXPECT_EQ(names(c.lists[RelativesCache::HalfSiblings]), QStringList({u"Half By Dam"_s, u"Half By Sire"_s}))
        << "a sibling with an unknown dam is not a half sibling: null never compares";
    EXPECT_EQ(names(c.lists[RelativesCache::Offspring]), QStringList({u"Daughter"_s}));
    EXPECT_EQ(c.lists[RelativesCache::FullSiblings][0].weight, u"2.50 lbs");
}

TEST_F(RelativesTest, OneParentUnknownMakesTheOthersOffspringHalfSiblings)
{
    const qint64 lone = add(u"Lone"_s, u"Buck"_s, sire, QVariant());
    const RelativesCache c = relativesOf(lone, sire, QVariant(), u"Buck"_s);
    EXPECT_TRUE(c.lists[RelativesCache::FullSiblings].isEmpty());
    EXPECT_EQ(names(c.lists[RelativesCache::HalfSiblings]),
              QStringList({u"Full O'Brien"_s, u"Half By Sire"_s, u"Subject"_s}));
}

TEST_F(RelativesTest, BothParentsUnknownHasNoSiblings)
{
    const RelativesCache c = relativesOf(sire, QVariant(), 0, u"Buck"_s);
    EXPECT_TRUE(c.lists[RelativesCache::FullSiblings].isEmpty());
    EXPECT_TRUE(c.lists[RelativesCache::HalfSiblings].isEmpty());
    EXPECT_EQ(c.lists[RelativesCache::Offspring].size(), 4);
}

TEST_F(RelativesTest, ListsStopAtTheLimitAndAtANamelessRelative)
{
    Transaction tx(*db);
    for (int i = 0; i < 1002; ++i)
        test::addAnimal(*db, {{u"Name"_s, u"Kit %1"_s.arg(i, 4, 10, QChar(u'0'))}, {u"Dam"_s, otherDam}});
    tx.commit();
    EXPECT_EQ(relativesOf(otherDam, {}, {}, u"Doe"_s).lists[RelativesCache::Offspring].size(), 1001);

    test::addAnimal(*db, {{u"Name"_s, QVariant()}, {u"Sire"_s, otherSire}});
    // Nameless sorts first and ends the list at once.
    EXPECT_TRUE(relativesOf(otherSire, {}, {}, u"Buck"_s).lists[RelativesCache::Offspring].isEmpty());
}

TEST_F(RelativesTest, DetailsAndFiltersOfTheBreedingPage)
{
    RelativeRow r;
    r.sex = u"Buck"_s;
    r.ringNo = u" R12 "_s;
    r.archive = u"Yes"_s;
    EXPECT_EQ(relativeDetail(r, u"Sex"_s, u"Ring No."_s, {}, {}), u"Buck");
    EXPECT_EQ(relativeDetail(r, u"RING NO."_s, u"Ring No."_s, {}, {}), u"R12");
    EXPECT_EQ(relativeDetail(r, u"Nonsense"_s, u"Ring No."_s, {}, {}), QString());
    EXPECT_EQ(detailChoices(u"Ring No."_s, QString(), u"GC"_s).last(), u"GC");
    EXPECT_FALSE(relativeShown(r, false, 2, u"Buck"_s, u"Doe"_s));
    EXPECT_TRUE(relativeShown(r, true, 0, u"Buck"_s, u"Doe"_s));
    EXPECT_FALSE(relativeShown(r, true, 1, u"Buck"_s, u"Doe"_s));
}

TEST_F(RelativesTest, ShortPedigreeMarksEmptyPlacesAndMissingRows)
{
    const qint64 gone = 9999;
    db->execute(u"UPDATE Stock SET Sire = ? WHERE Number = ?"_s, {gone, dam});
    const auto cells = shortPedigree(
        *db, dam, QVariant(), [](const QDate &) { return QString(); }, u"lbs"_s);
    EXPECT_EQ(cells[0].name, u"Dam One");
    EXPECT_EQ(cells[1].number, -9999);
    EXPECT_EQ(cells[2].name, u"Not Found");
    EXPECT_EQ(cells[2].number, gone);
    EXPECT_EQ(cells[3].number, -9999);
    EXPECT_EQ(cells[4].number, -9999);
}

} // namespace
