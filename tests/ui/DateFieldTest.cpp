#include "ui/DateField.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

DateSettings machine(const QString &format)
{
    const auto s = Detect_Date_Format([format](const QDate &d) { return d.toString(format); });
    EXPECT_TRUE(s.has_value());
    return s.value_or(DateSettings{});
}

TEST(DateField, MasksTurnIntoLineEditMasks)
{
    EXPECT_EQ(qtInputMask(u"##/##/####"_s), u"99/99/9999;_");
    EXPECT_EQ(qtInputMask(u"####\\.##\\.##"_s), u"9999\\.99\\.99;_");
    EXPECT_EQ(qtInputMask(u"##-AAA-##"_s), u"99-\\A\\A\\A-99;_");
}

TEST(DateField, EmptyFieldShowsTheBlankDateAndTypedDigitsFillTheMask)
{
    const DateSettings uk = machine(u"dd/MM/yyyy"_s);
    QLineEdit field;
    Apply_Date_Mask(&field, uk);
    field.show();
    EXPECT_EQ(field.displayText(), uk.BlankDate);
    EXPECT_EQ(field.maxLength(), 10);
    field.setFocus();
    field.home(false);
    QTest::keyClicks(&field, u"25121999"_s);
    EXPECT_EQ(field.displayText(), u"25/12/1999");
    EXPECT_EQ(uk.parse(field.displayText()), QDate(1999, 12, 25));

    const DateSettings dots = machine(u"yyyy.MM.dd"_s);
    QLineEdit other;
    Apply_Date_Mask(&other, dots);
    other.show();
    EXPECT_EQ(other.displayText(), u"____.__.__");
    EXPECT_GT(other.width(), other.fontMetrics().horizontalAdvance(dots.BlankDate));
}

} // namespace
