#include "ui/ClsResizer.h"
#include "ui/MessageBoxPrompts.h"
#include "ui/ScaledStyle.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QRadioButton>
#include <QStyle>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

/// A form of 200 by 100 pixels in design, kept in proportion, with a check box and a radio
/// button on it.
class FontScaleTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        check = new QCheckBox(u"Show Archived"_s, &form);
        check->setObjectName(u"ChkArchive"_s);
        check->setGeometry(10, 10, 120, 20);
        radio = new QRadioButton(u"Both"_s, &form);
        radio->setObjectName(u"OptBoth"_s);
        radio->setGeometry(10, 40, 120, 20);
        form.resize(200, 100);
        resizer = FormResizeSetup(&form, QSize(200, 100));
        form.show();
    }

    /// Reads the font of the next box a prompt shows while it is up, then closes it.
    void readNextBox()
    {
        boxFont = QFont();
        QTimer::singleShot(0, &form, [this] {
            auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            boxFont = box->font();
            box->reject();
        });
    }

    static qreal points(const QFont &f) { return f.pointSizeF(); }

    QDialog form;
    QCheckBox *check = nullptr;
    QRadioButton *radio = nullptr;
    ClsResizer *resizer = nullptr;
    QFont boxFont;
};

TEST_F(FontScaleTest, IndicatorsOfCheckBoxesAndRadioButtonsGrowWithTheirText)
{
    const QStyle *style = QApplication::style();
    form.resize(200, 100);
    ASSERT_DOUBLE_EQ(resizer->fontScale(), 1.0);
    ASSERT_DOUBLE_EQ(points(check->font()), points(ScaledStyle::desktopFont())) << "design size: the desktop's font";
    const int box = style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, check);
    const int boxHeight = style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, check);
    const int gap = style->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, check);
    const int dot = style->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, radio);
    const int dotHeight = style->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, nullptr, radio);
    const int dotGap = style->pixelMetric(QStyle::PM_RadioButtonLabelSpacing, nullptr, radio);

    form.resize(400, 200);
    EXPECT_DOUBLE_EQ(resizer->fontScale(), 2.0);
    EXPECT_DOUBLE_EQ(points(check->font()), 2 * points(ScaledStyle::desktopFont()));
    EXPECT_EQ(style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, check), 2 * box);
    EXPECT_EQ(style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, check), 2 * boxHeight);
    EXPECT_EQ(style->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, check), 2 * gap);
    EXPECT_EQ(style->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, radio), 2 * dot);
    EXPECT_EQ(style->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, nullptr, radio), 2 * dotHeight);
    EXPECT_EQ(style->pixelMetric(QStyle::PM_RadioButtonLabelSpacing, nullptr, radio), 2 * dotGap);
    EXPECT_GE(check->sizeHint().height(), 2 * boxHeight) << "the check box makes room for its box";

    form.resize(400, 100);
    EXPECT_DOUBLE_EQ(resizer->fontScale(), 1.0) << "the smaller ratio wins";
    EXPECT_EQ(style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, check), box);
}

TEST_F(FontScaleTest, MessageAndInputBoxesReadAtTheSizeOfTheWindowInFront)
{
    MessageBoxPrompts prompts(&form);
    const qreal desktop = points(ScaledStyle::desktopFont());

    form.resize(300, 150);
    readNextBox();
    prompts.show(u"No Matching Stock Found"_s, QString(), Prompts::Icon::Information);
    EXPECT_DOUBLE_EQ(points(boxFont), 1.5 * desktop) << "a box over a form at half as large again";
    readNextBox();
    EXPECT_FALSE(prompts.input(u"Name"_s, QString(), QString()));
    EXPECT_DOUBLE_EQ(points(boxFont), 1.5 * desktop) << "and the input box";

    // A screen opened in front of the form: the box belongs to it.
    QDialog front;
    front.resize(100, 50);
    FormResizeSetup(&front, QSize(100, 50));
    front.setWindowModality(Qt::ApplicationModal);
    front.show();
    front.resize(200, 100);
    readNextBox();
    prompts.message(u"Remove this Stock Record?"_s, QString(), Prompts::Icon::Question, Prompts::Buttons::YesNo);
    EXPECT_DOUBLE_EQ(points(boxFont), 2 * desktop) << "a box over the screen in front reads at its size";
    front.hide();

    // A window with no proportions of its own: the desktop's font.
    QWidget plain;
    plain.show();
    MessageBoxPrompts over(&plain);
    readNextBox();
    over.show(u"No Details Selected"_s, u"Quick Search"_s, Prompts::Icon::Information);
    EXPECT_DOUBLE_EQ(points(boxFont), desktop);
}

} // namespace
