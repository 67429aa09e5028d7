#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "core/screens/FmRegister.h"

#include <QApplication>
#include <QGroupBox>
#include <QStatusBar>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class FmRegisterTest : public ::testing::Test
{
protected:
    StudFixture fx;
};

TEST_F(FmRegisterTest, RefusedNameStaysOnScreenWithTheFocus)
{
    FmRegister screen(fx.session, fx.prompts, true);
    ASSERT_TRUE(screen.load());
    screen.show();
    QApplication::setActiveWindow(&screen);
    pick(screen, "TStockType", u"Rabbits"_s);
    type(screen, "TStudName", u"Jo"_s);
    click(screen, "CmdOkay");
    ASSERT_EQ(fx.prompts.texts(), QStringList({u"At Least 3 character Breeder/Stud Name must be entered"_s}));
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(child<QLineEdit>(screen, "TStudName")->text(), u"Jo");
    EXPECT_EQ(QApplication::focusWidget(), child<QWidget>(screen, "TStudName"));
    EXPECT_EQ(child<QStatusBar>(screen, "StatusBar")->currentMessage(),
              u"Enter your Stud Name or the Name under which you breed");
}

TEST_F(FmRegisterTest, AddedKindIsSelectedAfterwards)
{
    FmRegister screen(fx.session, fx.prompts, true);
    ASSERT_TRUE(screen.load());
    screen.show();
    auto *panel = child<QGroupBox>(screen, "FrmAdd");
    EXPECT_FALSE(panel->isVisible());
    click(screen, "CmdAdd");
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(child<QLineEdit>(screen, "AFather")->text(), u"Sire");
    EXPECT_EQ(child<QLineEdit>(screen, "AMother")->text(), u"Dam");
    type(screen, "AStockType", u"Llamas"_s);
    click(screen, "CmdAddOk");
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"All Details Must Be Entered"_s}));
    EXPECT_TRUE(panel->isVisible());
    type(screen, "AMale", u"Macho"_s);
    type(screen, "AFemale", u"Hembra"_s);
    click(screen, "CmdAddOk");
    EXPECT_FALSE(panel->isVisible());
    EXPECT_EQ(child<QComboBox>(screen, "TStockType")->currentText(), u"Llamas");
}

TEST_F(FmRegisterTest, KindTypedWithAQuoteIsSelectedAsTheListReadsIt)
{
    FmRegister screen(fx.session, fx.prompts, true);
    ASSERT_TRUE(screen.load());
    screen.show();
    click(screen, "CmdAdd");
    type(screen, "AStockType", u"Mini \"Rex\""_s);
    type(screen, "AMale", u"Buck"_s);
    type(screen, "AFemale", u"Doe"_s);
    click(screen, "CmdAddOk");
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
    EXPECT_EQ(child<QComboBox>(screen, "TStockType")->currentText(), u"Mini Rex");
}

TEST_F(FmRegisterTest, ChangingARegisteredStudShowsItsDetailsAndExitEndsTheProgram)
{
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    fx.session.StockType = u"Rabbits"_s;
    FmRegister screen(fx.session, fx.prompts, false);
    ASSERT_TRUE(screen.load());
    EXPECT_EQ(child<QComboBox>(screen, "TStockType")->currentText(), u"Rabbits");
    EXPECT_EQ(child<QLineEdit>(screen, "TStudName")->text(), u"Warren End");
    EXPECT_EQ(child<QLineEdit>(screen, "TTelNo")->text(), u"0123 456");

    fx.prompts.answerNo();
    pick(screen, "TStockType", u"Cavies"_s);
    EXPECT_EQ(child<QComboBox>(screen, "TStockType")->currentText(), u"Rabbits") << "No keeps the kind in hand";

    FmRegister first(fx.session, fx.prompts, true);
    ASSERT_TRUE(first.load());
    first.show();
    click(first, "CmdExit");
    EXPECT_EQ(first.result(), FmRegister::EndProgram);
}

} // namespace
