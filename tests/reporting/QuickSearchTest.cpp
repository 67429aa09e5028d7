#include "support/StudFixture.h"

#include "reporting/QuickSearch.h"
#include "reporting/SearchComposer.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::SearchComposer;

namespace {

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
    for (const QuickSearchRow &r : QuickSearch::run(db, QuickSearch::compose(f)))
        names << r.name;
    EXPECT_EQ(names, QStringList({u"Amélie's Joy"_s, u"Zoë's Joy"_s}));

    QuickSearchFields sex;
    sex.sex = u"Buck"_s;
    const auto bucks = QuickSearch::run(db, QuickSearch::compose(sex));
    ASSERT_EQ(bucks.size(), 1);
    EXPECT_EQ(bucks[0].name, u"Joyful");
}

} // namespace
