#include "support/ScriptedPrompts.h"

#include "core/DateFormat.h"

#include <QLocale>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

struct MachineFormat
{
    const char *name;
    QString christmas1999; // how the machine writes 25 December 1999
    QString newYear2000;   // and 1 January 2000
    QString format, mask, blank;
};

class DetectDateFormatTest : public ::testing::TestWithParam<MachineFormat>
{
};

ShortDateFunction machine(const MachineFormat &m)
{
    return [m](const QDate &d) { return d == QDate(1999, 12, 25) ? m.christmas1999 : m.newYear2000; };
}

TEST_P(DetectDateFormatTest, TakesTheMachinesFormatApart)
{
    const MachineFormat &m = GetParam();
    const auto s = Detect_Date_Format(machine(m));
    ASSERT_TRUE(s.has_value());
    EXPECT_EQ(s->DateFormat, m.format);
    EXPECT_EQ(s->DateMask, m.mask);
    EXPECT_EQ(s->BlankDate, m.blank);
}

INSTANTIATE_TEST_SUITE_P(
    Machines, DetectDateFormatTest,
    ::testing::Values(
        MachineFormat{"DayMonthYear", u"25/12/1999"_s, u"01/01/2000"_s, u"dd/mm/yyyy"_s, u"##/##/####"_s,
                      u"__/__/____"_s},
        MachineFormat{"MonthDayShortYear", u"12-25-99"_s, u"01-01-00"_s, u"mm/dd/yy"_s, u"##-##-##"_s,
                      u"__-__-__"_s},
        MachineFormat{"YearMonthDayDots", u"1999.12.25"_s, u"2000.01.01"_s, u"yyyy/mm/dd"_s, u"####\\.##\\.##"_s,
                      u"____.__.__"_s},
        MachineFormat{"MonthNameIsReadAsNumber", u"25-DEC-99"_s, u"01-JAN-00"_s, u"dd/mm/yy"_s, u"##-##-##"_s,
                      u"__-__-__"_s},
        MachineFormat{"UnpaddedDayMonth", u"25/12/99"_s, u"1/1/00"_s, u"dd/mm/yy"_s, u"##/##/##"_s,
                      u"__/__/__"_s},
        // Blanks or nothing between the parts are no separator: the program's own is "/".
        MachineFormat{"BlanksBetweenTheParts", u"25 12  1999"_s, u"1 1  2000"_s, u"dd/mm/yyyy"_s,
                      u"##/##/####"_s, u"__/__/____"_s},
        MachineFormat{"MonthNameBetweenBlanks", u" Dec 25 99"_s, u" Jan 1 00"_s, u"mm/dd/yy"_s, u"##/##/##"_s,
                      u"__/__/__"_s},
        MachineFormat{"NothingBetweenTheParts", u"19991225"_s, u"20000101"_s, u"yyyy/mm/dd"_s, u"####/##/##"_s,
                      u"____/__/__"_s}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(DateFormat, TheCLocalesShortDateIsWrittenWithSlashes)
{
    const ShortDateFunction cLocale = [](const QDate &d) {
        return QLocale::c().toString(d, QLocale::ShortFormat);
    };
    const auto c = Detect_Date_Format(cLocale);
    ASSERT_TRUE(c) << cLocale(QDate(1999, 12, 25)).toStdString();
    EXPECT_EQ(c->DateFormat, u"dd/mm/yyyy");
    EXPECT_EQ(c->DateMask, u"##/##/####");
    EXPECT_EQ(c->BlankDate, u"__/__/____");
    EXPECT_EQ(c->format(QDate(2024, 3, 7)), u"07/03/2024");
    EXPECT_EQ(c->parse(u"07/03/2024"_s), QDate(2024, 3, 7));
    EXPECT_TRUE(c->fitsMask(u"07/03/2024"_s));
}

TEST(DateFormat, UnusableFormatsFail)
{
    EXPECT_FALSE(Detect_Date_Format([](const QDate &) { return u"Saturday, 25 December 1999"_s; }));
    EXPECT_FALSE(Detect_Date_Format([](const QDate &) { return u"25/12"_s; }));
    EXPECT_FALSE(Detect_Date_Format([](const QDate &) { return u"SAT 25/12/1999"_s; }))
        << "letters in the mask refuse the formatted date";
    EXPECT_EQ(dateFormattingErrorTitle(), u"Date Formatting Error");
    EXPECT_EQ(dateFormattingErrorText(),
              u"Sorry - Tarvex cannot format your selected Short Date Setting\n\n"
              u"Please change the setting in your Regional Settings accessible from Control Panel\n"
              u"or Contact Tarvex Systems with your setting details - Sorry!");
}

TEST(DateFormat, FormatsAndReadsDatesInTheMachinesOrder)
{
    const auto uk = Detect_Date_Format([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
    ASSERT_TRUE(uk);
    EXPECT_EQ(uk->format(QDate(2024, 3, 7)), u"07/03/2024");
    EXPECT_EQ(uk->parse(u"07/03/2024"_s), QDate(2024, 3, 7));
    EXPECT_FALSE(uk->parse(u"31/02/2024"_s));
    EXPECT_FALSE(uk->parse(u"07/__/____"_s));

    const auto us = Detect_Date_Format([](const QDate &d) { return d.toString(u"MM-dd-yy"_s); });
    ASSERT_TRUE(us);
    EXPECT_EQ(us->format(QDate(2024, 3, 7)), u"03-07-24");
    EXPECT_EQ(us->parse(u"03-07-24"_s), QDate(2024, 3, 7));
    EXPECT_EQ(us->parse(u"03-07-45"_s), QDate(1945, 3, 7)) << "two-digit years from 30 on are last century";
}

TEST(DateFormat, IsValidDateAcceptsBlankAndDatesAndNamesTheBadOne)
{
    const auto uk = Detect_Date_Format([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
    ASSERT_TRUE(uk);
    test::ScriptedPrompts prompts;
    EXPECT_TRUE(Is_Valid_Date(u"__/__/____"_s, *uk, prompts));
    EXPECT_TRUE(Is_Valid_Date(u"29/02/2024"_s, *uk, prompts));
    EXPECT_TRUE(prompts.messages.isEmpty());

    EXPECT_FALSE(Is_Valid_Date(u"29/02/2023"_s, *uk, prompts));
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].text, u"Date: 29/02/2023 is not valid");
    EXPECT_EQ(prompts.messages[0].title, QString());
    EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Exclamation);
}

} // namespace
