#include "support/StudFixture.h"

#include "store/DaySerial.h"
#include "store/LikePattern.h"
#include "store/Recordset.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

struct LikeCase
{
    const char *name;
    QString pattern;
    QString text;
    bool matches;
};

class LikePatternTest : public ::testing::TestWithParam<LikeCase>
{
};

TEST_P(LikePatternTest, Matches)
{
    const LikeCase &c = GetParam();
    EXPECT_EQ(LikePattern(c.pattern).matches(c.text), c.matches)
        << c.pattern.toStdString() << " against " << c.text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Dialect, LikePatternTest,
    ::testing::Values(LikeCase{"StarAnyRun", u"Bl*"_s, u"Black Otter"_s, true},
                      LikeCase{"StarEmptyRun", u"Black*"_s, u"Black"_s, true},
                      LikeCase{"StarInside", u"*ott*"_s, u"Black Otter"_s, true},
                      LikeCase{"CaseIgnored", u"BLACK"_s, u"black"_s, true},
                      LikeCase{"NonAsciiCaseIgnored", u"émile*"_s, u"Émile Zola"_s, true},
                      LikeCase{"QuestionOneChar", u"B?ck"_s, u"Buck"_s, true},
                      LikeCase{"QuestionNotEmpty", u"Buck?"_s, u"Buck"_s, false},
                      LikeCase{"HashDigit", u"R##"_s, u"R42"_s, true},
                      LikeCase{"HashRefusesLetter", u"R##"_s, u"R4x"_s, false},
                      LikeCase{"SetRange", u"[a-c]*"_s, u"Bramble"_s, true},
                      LikeCase{"SetNegated", u"[!a-c]*"_s, u"Bramble"_s, false},
                      LikeCase{"SetList", u"[xyz]oe"_s, u"Zoe"_s, true},
                      LikeCase{"BracketedStarIsLiteral", u"A[*]"_s, u"A*"_s, true},
                      LikeCase{"BracketedStarNotWild", u"A[*]"_s, u"AB"_s, false},
                      LikeCase{"PercentIsLiteral", u"50%"_s, u"50%"_s, true},
                      LikeCase{"PercentNotWild", u"50%"_s, u"500"_s, false},
                      LikeCase{"UnderscoreIsLiteral", u"a_b"_s, u"axb"_s, false},
                      LikeCase{"Apostrophe", u"O'Neil*"_s, u"O'Neill's Pride"_s, true},
                      LikeCase{"BacktracksOverStars", u"*a*b"_s, u"xaxbxab"_s, true},
                      LikeCase{"WholeTextMustMatch", u"Black"_s, u"Black Otter"_s, false},
                      LikeCase{"UnclosedBracketIsLiteral", u"[ab"_s, u"[ab"_s, true}),
    [](const auto &info) { return std::string(info.param.name); });

class SqlDialectTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = Database::open(test::copyTemplate(dir.path()));
        test::addAnimal(*db, {{u"Name"_s, u"Black Otter"_s}, {u"Colour"_s, u"Black"_s},
                              {u"DOB"_s, DaySerial::fromDate(QDate(1999, 12, 31))}});
        test::addAnimal(*db, {{u"Name"_s, u"bluebell"_s}, {u"Colour"_s, u"Blue"_s},
                              {u"DOB"_s, DaySerial::fromDate(QDate(2000, 1, 1))}});
        test::addAnimal(*db, {{u"Name"_s, u"Castor 7"_s}, {u"Colour"_s, u"Castor"_s}});
    }

    QStringList names(const QString &where)
    {
        QStringList out;
        Recordset rs(*db, u"SELECT Name FROM Stock WHERE "_s + where + u" ORDER BY Number"_s);
        for (; !rs.eof(); rs.moveNext())
            out << rs.field(u"name"_s).toString();
        return out;
    }

    QTemporaryDir dir;
    std::unique_ptr<Database> db;
};

TEST_F(SqlDialectTest, LikeUsesTheProgramsWildcardsWithoutCase)
{
    EXPECT_EQ(names(u"Name LIKE 'b*'"_s), QStringList({u"Black Otter"_s, u"bluebell"_s}));
    EXPECT_EQ(names(u"Name LIKE '*#'"_s), QStringList({u"Castor 7"_s}));
    EXPECT_EQ(names(u"Colour LIKE 'Bl?\?'"_s), QStringList({u"bluebell"_s}));
    EXPECT_EQ(names(u"Name LIKE '[!b]*'"_s), QStringList({u"Castor 7"_s}));
    EXPECT_TRUE(names(u"Name LIKE 'b%'"_s).isEmpty()) << "% is no wildcard in this dialect";
    EXPECT_TRUE(names(u"Name LIKE NULL"_s).isEmpty());
}

TEST_F(SqlDialectTest, UcaseAndLcase)
{
    EXPECT_EQ(names(u"ucase(Name) = 'BLUEBELL'"_s), QStringList({u"bluebell"_s}));
    EXPECT_EQ(db->scalar(u"SELECT ucase('émile')"_s).toString(), u"ÉMILE");
    EXPECT_EQ(db->scalar(u"SELECT lcase('ÉMILE')"_s).toString(), u"émile");
    EXPECT_TRUE(db->scalar(u"SELECT ucase(NULL)"_s).isNull());
}

TEST_F(SqlDialectTest, DatesCompareAsDaySerials)
{
    EXPECT_EQ(DaySerial::fromDate(QDate(2000, 1, 1)), 36526.0);
    EXPECT_EQ(DaySerial::toDate(36526.75), QDate(2000, 1, 1)) << "the time of day is the fraction";
    EXPECT_EQ(names(u"DOB >= 36526"_s), QStringList({u"bluebell"_s}));
    EXPECT_EQ(names(u"DOB < 36526"_s), QStringList({u"Black Otter"_s}));
    EXPECT_TRUE(DaySerial::toDate(QVariant()).isNull());
}

} // namespace
