// The options screen: what is stored shows when it opens, OK stops at the first fault with
// its tab brought forward, writes only what was changed, and the main window takes the new
// settings at once; Cancel keeps everything as it was.
#include "MainWindow.h"
#include "ScreenTestSupport.h"
#include "support/FakeDevices.h"
#include "support/StudFixture.h"

#include "core/CRegSettings.h"
#include "core/screens/FmOptions.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QStackedWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class FmOptionsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.open();
        fx.session.Lists.breeds = {u"Rex"_s, u"Dutch"_s};
        fx.session.Lists.statuses = {u"Sold"_s, u"Died"_s};
        store.SaveSetting(u"Rabbits\\Options"_s, u"Weight Unit"_s, u"kg"_s);
        store.SaveSetting(u"Options"_s, u"WordDetected"_s, u"1"_s);
    }
    QString setting(const QString &section, const QString &key) { return store.GetSetting(section, key, u"(absent)"_s); }

    StudFixture fx;
    CRegSettings store{fx.session.AppName};
    FakeDevices devices;
    ModalScript modals;
};

TEST_F(FmOptionsTest, TheStoredSettingsShowAndEachTabBringsItsPageForward)
{
    FmOptions w(fx.session, fx.prompts, devices);
    w.show();
    auto *tabs = child<QListWidget>(w, "Tab1");
    ASSERT_EQ(tabs->count(), 14);
    EXPECT_EQ(tabs->item(0)->text(), u"Breed Specifics");
    EXPECT_EQ(tabs->item(12)->text(), u"Pedigree Header/Footer");
    EXPECT_EQ(tabs->item(13)->text(), u"Inbreeding");
    EXPECT_EQ(child<QComboBox>(w, "CmbInbreedingGens")->currentText(), u"All known generations");
    EXPECT_EQ(child<QLineEdit>(w, "TxtWeightUnit")->text(), u"kg");
    EXPECT_EQ(child<QLabel>(w, "LblWordDetected")->text(), u"Detected");
    EXPECT_TRUE(child<QCheckBox>(w, "CbPoints")->isChecked()) << "stars offered to a rabbit breeder";
    EXPECT_EQ(child<QLineEdit>(w, "TxtPoints")->text(), u"Stars");
    tabs->setCurrentRow(5);
    EXPECT_EQ(child<QStackedWidget>(w, "FrmTabs")->currentWidget()->objectName(), u"FrmTab_5");

    // Genetics off: the files list goes with it.
    auto *genetics = child<QCheckBox>(w, "ChkGen");
    genetics->setChecked(true);
    genetics->click();
    EXPECT_FALSE(child<QComboBox>(w, "CmbGenDatabase")->isEnabled());
    EXPECT_FALSE(child<QLabel>(w, "Label25")->isEnabled());
}

TEST_F(FmOptionsTest, OkStopsAtTheFirstFaultWithItsTabAndWritesOnlyWhatChanged)
{
    FmOptions w(fx.session, fx.prompts, devices);
    w.show();
    child<QLineEdit>(w, "TxtPoints")->clear();
    click(w, "CmdOk");
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].text, u"Points System Name must be Entered");
    EXPECT_EQ(fx.prompts.messages[0].title, u"Error");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Exclamation);
    EXPECT_EQ(child<QListWidget>(w, "Tab1")->currentItem()->text(), u"Awards System");
    EXPECT_TRUE(w.isVisible()) << "the screen stays for the fault to be put right";

    type(w, "TxtPoints", u"Stars"_s);
    type(w, "MskMaxPoints", u"5x"_s);
    EXPECT_EQ(child<QLineEdit>(w, "MskMaxPoints")->text(), u"5") << "only digits go into a number box";
    type(w, "TxtHead_0", u"Warren End Rabbitry"_s);
    pick(w, "CmbInbreedingGens", u"12 Generations"_s);
    click(w, "CmdOk");
    EXPECT_FALSE(w.isVisible());
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Header_0"_s), u"Warren End Rabbitry");
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"PointsSystem"_s), u"1");
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"MaxPoints"_s), u"5");
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Inbreeding Generations"_s), u"12");
    EXPECT_EQ(setting(u"Options"_s, u"AutoBackup"_s), u"(absent)") << "not changed, not written";
}

TEST_F(FmOptionsTest, CancelKeepsTheBreedsEditedOnTheScreenUnsaved)
{
    FmOptions w(fx.session, fx.prompts, devices);
    w.show();
    pick(w, "CmbBreed", u"Dutch"_s);
    type(w, "MskBrGestation", u"33"_s);
    pick(w, "CmbBreed", u"Rex"_s);
    pick(w, "CmbBreed", u"Dutch"_s);
    EXPECT_EQ(child<QLineEdit>(w, "MskBrGestation")->text(), u"33") << "kept while the screen is up";
    click(w, "CmdCancel");
    EXPECT_EQ(setting(u"Rabbits"_s, u"Dutch Gestation"_s), u"(absent)");
}

TEST_F(FmOptionsTest, TheMainWindowTakesTheNewSettingsAtOnce)
{
    auto window = startMainWindow(fx);
    ASSERT_TRUE(window);
    window->setDevices(&devices);
    fx.session.Lists.breeds = {u"Rex"_s};
    modals.on(u"FmOptions"_s, [](QDialog &d) {
        type(d, "TxtWeightUnit", u"g"_s);
        click(d, "CmdOk");
        return d.result();
    });
    window->findChild<QAction *>(u"Options"_s)->trigger();
    EXPECT_EQ(modals.shown[u"FmOptions"_s], 1);
    EXPECT_EQ(fx.session.WeightUnit, u"g");
}

} // namespace
