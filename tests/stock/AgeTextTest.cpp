#include "stock/AgeText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

struct AgeCase
{
    const char *name;
    int days;
    QString text;
};

class AgeTextTest : public ::testing::TestWithParam<AgeCase>
{
};

TEST_P(AgeTextTest, CountsYearsOf365DaysAndWeeksWithOddDays)
{
    const QDate birth(2020, 3, 1);
    const QDate today = birth.addDays(GetParam().days);
    EXPECT_EQ(AgeText(birth, u"Breeding"_s, QDate(), today, {}), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Ages, AgeTextTest,
                         ::testing::Values(AgeCase{"NoDays", 0, QString()}, AgeCase{"Future", -5, QString()},
                                           AgeCase{"ThreeDays", 3, u"0.3 Wks"_s},
                                           AgeCase{"OneWeek", 7, u"1 Wks"_s},
                                           AgeCase{"EightDays", 8, u"1.1 Wks"_s},
                                           AgeCase{"TenDays", 10, u"1.3 Wks"_s},
                                           AgeCase{"FiveWeeks", 35, u"5 Wks"_s},
                                           AgeCase{"YearExactly", 365, u"52.1 Wks"_s},
                                           AgeCase{"OneYear", 366, u"1 Yr 0 Wks"_s},
                                           AgeCase{"TwoYears", 730, u"2 Yrs 0 Wks"_s},
                                           AgeCase{"TwoYearsFiveWeeks", 768, u"2 Yrs 5 Wks"_s}),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(AgeText, StatusMarkedDontShowAgeHidesTheAgeOfLivingAnimalsOnly)
{
    const CRegSettings::Values options = {{u"Dead Young"_s, u"Don't Show Age"_s}};
    const QDate birth(2020, 1, 1);
    EXPECT_EQ(AgeText(birth, u"dead young"_s, QDate(), QDate(2020, 2, 5), options), QString());
    EXPECT_EQ(AgeText(birth, u"Dead Young"_s, QDate(2020, 1, 15), QDate(2024, 1, 1), options), u"2 Wks")
        << "the age at death is still shown";
}

} // namespace
