#include "ui/ClsResizer.h"

#include <QComboBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

TEST(ClsResizerArithmetic, OpensAsIfTheDesignWereForA640By480Screen)
{
    EXPECT_EQ(ClsResizer::openingSize({640, 480}, {640, 480}), QSize(640, 480));
    EXPECT_EQ(ClsResizer::openingSize({400, 300}, {1280, 960}), QSize(800, 600));
    EXPECT_EQ(ClsResizer::openingSize({640, 480}, {1920, 1080}), QSize(1920, 1080)) << "never larger than the screen";
    EXPECT_EQ(ClsResizer::scaledFontSize(10, 2.0, 1.0), 10) << "the smaller ratio wins";
    EXPECT_EQ(ClsResizer::scaledFontSize(10, 1.5, 3.0), 15);
}

class ClsResizerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        form.resize(200, 100);
        button = new QPushButton(u"OK"_s, &form);
        button->setObjectName(u"CmdOk"_s);
        button->setGeometry(10, 20, 100, 30);
        QFont f = button->font();
        f.setPointSizeF(10);
        button->setFont(f);
        tree = new QTreeWidget(&form);
        tree->setObjectName(u"lvList"_s);
        tree->setColumnCount(2);
        tree->header()->setStretchLastSection(false);
        tree->setGeometry(0, 50, 200, 50);
        tree->setColumnWidth(0, 50);
        tree->setColumnWidth(1, 100);
        combo = new QComboBox(&form);
        combo->setObjectName(u"CmbList"_s);
        combo->setGeometry(120, 10, 70, 24);
        resizer = new ClsResizer(&form, QSize(200, 100));
        resizer->Initialise();
        form.show();
    }

    QWidget form;
    QPushButton *button;
    QTreeWidget *tree;
    QComboBox *combo;
    ClsResizer *resizer;
};

TEST_F(ClsResizerTest, DoublingTheWidthStretchesAcrossAndKeepsFonts)
{
    form.resize(400, 100);
    EXPECT_EQ(button->geometry(), QRect(20, 20, 200, 30));
    EXPECT_DOUBLE_EQ(button->font().pointSizeF(), 10.0);
    EXPECT_EQ(tree->columnWidth(0), 100);
    EXPECT_EQ(tree->columnWidth(1), 200) << "list columns keep their proportions";
    EXPECT_EQ(combo->geometry().topLeft(), QPoint(240, 10));
    EXPECT_EQ(combo->width(), 140);
}

TEST_F(ClsResizerTest, DoublingBothScalesFontsAndPlaces)
{
    form.resize(400, 200);
    EXPECT_EQ(button->geometry(), QRect(20, 40, 200, 60));
    EXPECT_DOUBLE_EQ(button->font().pointSizeF(), 20.0);
    EXPECT_EQ(combo->height(), combo->sizeHint().height()) << "a drop-down list keeps the height of its font";
}

TEST_F(ClsResizerTest, BelowTheDesignSizeSnapsBack)
{
    form.resize(150, 60);
    EXPECT_EQ(form.size(), QSize(200, 100));
    EXPECT_EQ(button->geometry(), QRect(10, 20, 100, 30));
}

} // namespace
