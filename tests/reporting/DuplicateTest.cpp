#include "support/StudFixture.h"

#include "core/Options.h"
#include "reporting/Duplicate.h"
#include "store/Recordset.h"
#include "store/StudDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

// The condition is the one the program has always composed, character for character: the
// typed texts trimmed, upper-cased and quoted, each clause led by a blank.
TEST(DuplicateCondition, ComposedTextsAndTheirDescriptions)
{
    const auto condition = [](const QString &name, const QString &id) {
        const DuplicateCondition c = duplicateCondition(name, id, u"Ring No."_s);
        return c.condition + u'|' + c.description;
    };
    EXPECT_EQ(condition(u"  Sooty "_s, QString()), u" ucase(NAME) = 'SOOTY'|Name");
    EXPECT_EQ(condition(QString(), u" r1* "_s), u" RingNo LIKE 'R1*'|Ring No.");
    EXPECT_EQ(condition(u"Sooty"_s, u"R1"_s), u" ucase(NAME) = 'SOOTY' AND  RingNo LIKE 'R1'|Name & Ring No.");
    EXPECT_EQ(condition(u"O'Brien"_s, QString()), u" ucase(NAME) = 'O''BRIEN'|Name");
    EXPECT_EQ(condition(u"A||B"_s, QString()), u" ucase(NAME) = 'A''B'|Name") << "a typed \"||\" is quoted too";
    EXPECT_EQ(condition(u"  "_s, u"\t"_s), u"|") << "nothing to look for";
    EXPECT_EQ(duplicateQuery(duplicateCondition(u"Sooty"_s, {}, {}).condition),
              u"Select * From Stock Where  ucase(NAME) = 'SOOTY';");
}

TEST(DuplicateCondition, OneAnimalHasItsOwnWordingMoreAreCounted)
{
    EXPECT_EQ(duplicateText(1, u"Name"_s), u"Another animal already exists with the same Name");
    EXPECT_EQ(duplicateText(2, u"Name & Ring No."_s), u"2 other animals already exist with the same Name & Ring No.");
}

// Which texts each box passes on, for every combination of the three ticks.
TEST(DuplicateCondition, StudOptionsDecideWhatEachBoxChecks)
{
    test::StudFixture fx;
    fx.open();
    Options options(fx.session);
    const auto texts = [&](DuplicateField left) {
        const auto t = duplicateCheckTexts(options, left, u"Sooty"_s, u"R1"_s);
        return t ? t->name + u'/' + t->id : u"none"_s;
    };
    struct Case
    {
        bool name, id, both;
        const char16_t *onName, *onId;
    };
    const Case cases[] = {
        {false, false, false, u"none", u"none"},   {true, false, false, u"Sooty/", u"none"},
        {false, true, false, u"none", u"/R1"},     {false, false, true, u"none", u"Sooty/R1"},
        {true, true, false, u"Sooty/", u"/R1"},    {true, false, true, u"Sooty/", u"Sooty/R1"},
        {false, true, true, u"none", u"/R1"},      {true, true, true, u"Sooty/", u"/R1"},
    };
    for (const Case &c : cases) {
        options.setFlag(Opt::DedupeOption, c.name, u"0"_s);
        options.setFlag(Opt::DedupeOption, c.id, u"1"_s);
        options.setFlag(Opt::DedupeOption, c.both, u"2"_s);
        const std::string ticks = std::to_string(c.name) + std::to_string(c.id) + std::to_string(c.both);
        EXPECT_EQ(texts(DuplicateField::Name), QString::fromUtf16(c.onName)) << ticks;
        EXPECT_EQ(texts(DuplicateField::Identifier), QString::fromUtf16(c.onId)) << ticks;
    }

    for (const int tick : {0, 1, 2})
        options.remove(Opt::DedupeOption, QString::number(tick));
    EXPECT_EQ(texts(DuplicateField::Name), u"none") << "an absent tick makes no check";
    EXPECT_EQ(texts(DuplicateField::Identifier), u"none");
}

class DuplicateTest : public ::testing::Test
{
protected:
    void SetUp() override { db = &fx.open(); }
    qint64 add(const QString &name, const QString &ringNo = {}, QVariantMap more = {})
    {
        more.insert(u"Name"_s, name);
        if (!ringNo.isEmpty())
            more.insert(u"RingNo"_s, ringNo);
        return test::addAnimal(*db, more);
    }
    QList<qint64> found(const QString &name, const QString &id = {})
    {
        return findDuplicates(*db, name, id, u"Ring No."_s).numbers;
    }
    /// The animals the condition finds when it is run as written.
    QList<qint64> asWritten(const QString &name, const QString &id = {})
    {
        Recordset rows(*db, duplicateQuery(duplicateCondition(name, id, {}).condition));
        QList<qint64> numbers;
        for (; !rows.eof(); rows.moveNext())
            numbers << rows.field(u"Number"_s).toLongLong();
        std::sort(numbers.begin(), numbers.end());
        return numbers;
    }

    test::StudFixture fx;
    Database *db = nullptr;
};

TEST_F(DuplicateTest, NamesMatchUpperCasedAndIdentificationsAsPatterns)
{
    const qint64 sooty = add(u"sooty"_s, u"R1"_s);
    const qint64 sooty2 = add(u"SOOTY"_s, u"r10"_s);
    add(u"Sooty Two"_s, u"R2"_s);
    add(u" Sooty"_s, u"X1"_s);
    const qint64 brien = add(u"O'Brien"_s);

    EXPECT_EQ(found(u"Sooty"_s), (QList<qint64>{sooty, sooty2})) << "a name differing in case only";
    EXPECT_EQ(found(u"o'brien"_s), QList<qint64>{brien}) << "the apostrophe is quoted, not a fault";
    EXPECT_EQ(found(u"Sooty"_s, u"r1"_s), QList<qint64>{sooty}) << "both must match";
    EXPECT_EQ(found({}, u"R1*"_s), (QList<qint64>{sooty, sooty2})) << "the user's wildcards work";
    EXPECT_EQ(found({}, u"R#"_s).size(), 2);
    EXPECT_TRUE(found(u"Snowy"_s).isEmpty());
    EXPECT_TRUE(found({}, {}).isEmpty());
}

// A typed name is looked up through the name index, which folds the case of ASCII letters
// only; what it finds must be exactly what the condition finds when every name is
// upper-cased: letters that upper-case to ASCII ("ß", the dotless "ı", the long "ſ", the
// ligatures), letters that upper-case to more than one character ("ǰ"), several lower cases
// of one capital (Greek sigma), and characters beyond the first 65,536.
TEST_F(DuplicateTest, IndexedLookUpFindsWhatTheWrittenConditionFinds)
{
    for (const QString &name :
         {u"Strauss"_s, u"Strauß"_s, u"STRAUSS"_s, u"straus"_s, u"Miles"_s, u"M\u0131les"_s, u"\u017Fam"_s,
          u"Sam"_s, u"o\uFB03ce"_s, u"OFFICE"_s, u"o\uFB00ice"_s, u"Zoë"_s, u"ZOË"_s, u"Zoe"_s, u"\u0131"_s,
          u"Fa\uFB06"_s, u"Abc%_"_s, u"Abc[1]"_s, u"Bob's"_s, u"Bob"_s, u"\u01F0a"_s, u"J\u030Ca"_s,
          u"Οδυσσεύς"_s, u"ΟΔΥΣΣΕΎΣ"_s, u"Οδυσσευς"_s, u"\U00010428x"_s, u"ÿes"_s, u"Ÿes"_s, u"yes"_s})
        add(name, u"R1"_s);
    add(u"Strauss"_s, u"R2"_s);
    for (const QString &typed :
         {u"strauss"_s, u"STRAUß"_s, u"miles"_s, u"sam"_s, u"office"_s, u"Zoë"_s, u"zoe"_s, u"I"_s, u"fast"_s,
          u"abc%_"_s, u"ABC[1]"_s, u"bob's"_s, u"bob"_s, u"\u01F0A"_s, u"οδυσσεύς"_s, u"\U00010428X"_s, u"ÿES"_s}) {
        const QList<qint64> written = asWritten(typed);
        EXPECT_FALSE(written.isEmpty()) << typed.toStdString();
        EXPECT_EQ(found(typed), written) << typed.toStdString();
        EXPECT_EQ(found(typed, u"r1"_s), asWritten(typed, u"r1"_s)) << typed.toStdString();
    }
    EXPECT_EQ(found(u"strauss"_s).size(), 4) << "Strauss twice, Strauß, STRAUSS";
    EXPECT_EQ(found(u"strauss"_s, u"R2"_s).size(), 1);
    EXPECT_EQ(found(u"office"_s).size(), 3);
    EXPECT_EQ(found(u"zoë"_s).size(), 2);
    EXPECT_EQ(found(u"\u01F0a"_s).size(), 2) << "one letter, or a J and its mark";
    EXPECT_EQ(found(u"ΟΔΥΣΣΕΎΣ"_s).size(), 2);
}

// The few characters the look-up allows for must be all there are, for the Unicode tables
// of the Qt in use: any other character beyond ASCII that upper-cased to ASCII would let a
// duplicate through.
TEST(DuplicateDetail, EveryCharacterUpperCasingToAsciiIsAllowedFor)
{
    QList<char32_t> toAscii;
    for (char32_t c = 0x80; c <= 0x10FFFF; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF)
            continue;
        const QString upper = QStringView(QChar::fromUcs4(c)).toString().toUpper();
        if (std::all_of(upper.cbegin(), upper.cend(), [](QChar u) { return u.unicode() < 0x80; }))
            toAscii << c;
    }
    const std::span<const char32_t> allowed = DuplicateDetail::upperToAscii();
    EXPECT_EQ(toAscii, QList<char32_t>(allowed.begin(), allowed.end()));
}

TEST_F(DuplicateTest, WarningStepsThroughTheAnimalsWithTheirParents)
{
    const qint64 sire = add(u"Jack"_s);
    const qint64 gone = add(u"Gone"_s);
    const qint64 first = add(u"Sooty"_s, u"R1"_s, {{u"Sex"_s, u"Doe"_s}, {u"Sire"_s, sire}, {u"Dam"_s, gone}});
    const qint64 second = add(u"SOOTY"_s, {}, {{u"Sire"_s, -1}});
    db->execute(u"DELETE FROM Stock WHERE Number = ?"_s, {gone});

    DuplicateWarning w(*db, findDuplicates(*db, u"sooty"_s, {}, u"Ring No."_s));
    EXPECT_EQ(w.text(), u"2 other animals already exist with the same Name");
    EXPECT_EQ(w.current().number, first);
    EXPECT_EQ(w.current().name, u"Sooty");
    EXPECT_EQ(w.current().sex, u"Doe");
    EXPECT_EQ(w.current().id, u"R1");
    EXPECT_EQ(w.current().sire, u"Jack");
    EXPECT_EQ(w.current().dam, u"Not Found") << "a parent gone from the stud";
    EXPECT_FALSE(w.hasPrevious());
    EXPECT_TRUE(w.hasNext());
    w.previous();
    EXPECT_EQ(w.current().number, first) << "no neighbour: nothing happens";

    w.next();
    EXPECT_EQ(w.current().number, second);
    EXPECT_EQ(w.current().sire, QString()) << "an unknown parent shows nothing";
    EXPECT_EQ(w.current().dam, QString());
    EXPECT_EQ(w.current().sex, QString());
    EXPECT_TRUE(w.hasPrevious());
    EXPECT_FALSE(w.hasNext());
    w.next();
    EXPECT_EQ(w.current().number, second);
    w.previous();
    EXPECT_EQ(w.current().number, first);
}

TEST_F(DuplicateTest, WarningIsShownOnlyForAnimalsFoundAndGivesTheAnswer)
{
    add(u"Sooty"_s, u"R1"_s);
    int shown = 0;
    QString text;
    DuplicateAnswer answer = DuplicateAnswer::Kept;
    const InformDuplicate inform = [&](DuplicateWarning &w) {
        ++shown;
        text = w.text();
        return answer;
    };
    EXPECT_EQ(CheckDuplicate(fx.session, u" "_s, QString(), inform), DuplicateAnswer::NoneFound);
    EXPECT_EQ(CheckDuplicate(fx.session, u"Snowy"_s, QString(), inform), DuplicateAnswer::NoneFound);
    EXPECT_EQ(shown, 0);

    EXPECT_EQ(CheckDuplicate(fx.session, u"SOOTY"_s, QString(), inform), DuplicateAnswer::Kept);
    EXPECT_EQ(text, u"Another animal already exists with the same Name");
    answer = DuplicateAnswer::GivenUp;
    EXPECT_EQ(CheckDuplicate(fx.session, QString(), u"r1"_s, inform), DuplicateAnswer::GivenUp);
    EXPECT_EQ(text, u"Another animal already exists with the same Ring No.");
    EXPECT_EQ(shown, 2);
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
}

} // namespace
