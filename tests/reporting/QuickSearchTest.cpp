#include "support/StudFixture.h"

#include "reporting/QuickSearch.h"
#include "reporting/SearchComposer.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::SearchComposer;

namespace {

// Every animal a condition matches, read page by page to the end.
QList<QuickSearchRow> everyMatch(Database &db, const QString &where)
{
    QuickSearch::Results results(db, where);
    while (results.fetch(100) > 0) {
    }
    return results.rows();
}

TEST(SearchComposer, EscapesQuotesThroughBarsAndUpperCases)
{
    EXPECT_EQ(EscapeCriterionValue(u"O'Neil"_s), u"O''NEIL");
    EXPECT_EQ(EscapeCriterionValue(u"a||b"_s), u"A''B") << "typed bars become a quote as well";
    EXPECT_EQ(WrapWildcards(QString()), QString());
    EXPECT_EQ(WrapWildcards(u"ab"_s), u"*ab*");

    QString where;
    AddLikeCriterion(where, u"Name"_s, u"   "_s, u"Like"_s);
    EXPECT_EQ(where, QString());
    AddLikeCriterion(where, u"Name"_s, u" *Jo* "_s, u"Like"_s);
    AddLikeCriterion(where, u"Sex"_s, u"Buck"_s, u"="_s);
    AddLikeCriterion(where, u"Type"_s, u"*"_s, u"Like"_s);
    EXPECT_EQ(where, u"Name Like '*JO*' And Sex = 'BUCK' And Type Like '**'");
}

TEST(QuickSearch, ComposesInItsOrderWithTheFirstIdAsTyped)
{
    QuickSearchFields f;
    f.notes = u"lame"_s;
    f.ringNo = u"R1"_s;
    f.name = u"jo"_s;
    f.sex = u"Doe"_s;
    EXPECT_EQ(QuickSearch::compose(f), u"Name Like '*JO*' And RingNo Like 'R1' And Sex = 'DOE' And Notes Like '*LAME*'");
    EXPECT_EQ(QuickSearch::compose({}), QString());
}

TEST(QuickSearch, FindsAnimalsWithApostrophesAndAccentsInNameOrder)
{
    test::StudFixture fx;
    Database &db = fx.open();
    fx.add({{u"Name"_s, u"Zoë's Joy"_s}, {u"Sex"_s, u"Doe"_s}, {u"RingNo"_s, u"R1"_s}});
    fx.add({{u"Name"_s, u"Amélie's Joy"_s}, {u"Sex"_s, u"Doe"_s}});
    fx.add({{u"Name"_s, u"Joyful"_s}, {u"Sex"_s, u"Buck"_s}});
    QuickSearchFields f;
    f.name = u"'s joy"_s;
    QList<QString> names;
    for (const QuickSearchRow &r : everyMatch(db, QuickSearch::compose(f)))
        names << r.name;
    EXPECT_EQ(names, QStringList({u"Amélie's Joy"_s, u"Zoë's Joy"_s}));

    QuickSearchFields sex;
    sex.sex = u"Buck"_s;
    const auto bucks = everyMatch(db, QuickSearch::compose(sex));
    ASSERT_EQ(bucks.size(), 1);
    EXPECT_EQ(bucks[0].name, u"Joyful");
}

} // namespace

namespace {

// A search every animal matches reads its rows a page at a time, in name order, and a
// column chosen orders them again by that column, then by name.
TEST(QuickSearch, ResultsComePageByPageInTheOrderChosen)
{
    test::StudFixture fx;
    Database &db = fx.open();
    db.execute(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000) "
               u"INSERT INTO Stock (Name, Colour, Sex) SELECT printf('Kit %04d', 1001 - i), "
               u"CASE i % 3 WHEN 0 THEN 'black' WHEN 1 THEN 'Agouti' ELSE NULL END, 'Doe' FROM n"_s);
    QuickSearchFields all;
    all.name = u"*"_s;
    QuickSearch::Results results(db, QuickSearch::compose(all));
    EXPECT_TRUE(results.rows().isEmpty()) << "nothing is read before it is asked for";
    EXPECT_EQ(results.fetch(200), 200);
    EXPECT_EQ(results.rows().first().name, u"Kit 0001");
    EXPECT_EQ(results.rows().last().name, u"Kit 0200");
    EXPECT_FALSE(results.atEnd());
    while (results.fetch(300) > 0) {
    }
    EXPECT_EQ(results.rows().size(), 1000);
    EXPECT_TRUE(results.atEnd());

    results.sortBy(QuickSearch::Results::Colour, false);
    results.fetch(5);
    EXPECT_TRUE(results.rows().first().colour.isEmpty()) << "no colour first";
    results.sortBy(QuickSearch::Results::Colour, true);
    results.fetch(400);
    EXPECT_EQ(results.rows().first().colour, u"black") << "without regard to case: black after Agouti";
    EXPECT_EQ(results.rows().first().name, u"Kit 0002") << "then by name";
    EXPECT_EQ(results.rows().at(334).colour, u"Agouti");
}

} // namespace
