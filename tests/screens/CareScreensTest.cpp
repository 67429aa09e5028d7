#include "MainWindow.h"
#include "ScreenTestSupport.h"
#include "support/FakeDevices.h"
#include "support/StudFixture.h"

#include "care/screens/FmDatabaseUtil.h"
#include "care/screens/FmImpExp.h"
#include "core/CRegSettings.h"
#include "core/StudLoader.h"
#include "ui/DeviceSelector.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class CareScreensTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(device.isValid()); }

    /// The backup device of the settings: the temporary folder.
    void backUpToDevice()
    {
        CRegSettings(fx.session.AppName).SaveSetting(u"Options"_s, u"BackupDrive"_s, device.path());
    }
    template <typename Screen> std::unique_ptr<Screen> openScreen()
    {
        auto w = std::make_unique<Screen>(fx.session, fx.prompts, devices);
        w->show();
        QApplication::setActiveWindow(w.get());
        return w;
    }
    static QStringList items(QWidget &w, const char *combo)
    {
        auto *c = child<QComboBox>(w, combo);
        QStringList texts;
        for (int i = 0; i < c->count(); ++i)
            texts << c->itemText(i);
        return texts;
    }
    static bool enabled(QWidget &w, const char *button) { return child<QPushButton>(w, button)->isEnabled(); }

    StudFixture fx;
    FakeDevices devices;
    ModalScript modals;
    QTemporaryDir device;
};

TEST_F(CareScreensTest, UtilitiesOfferTheirWorkOnlyForAStudChosen)
{
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    fx.registerStud(u"Cavies"_s, u"Piggery"_s);
    fx.session.StockType = u"Cavies"_s;
    auto w = openScreen<FmDatabaseUtil>();
    EXPECT_EQ(w->windowTitle(), u"Database Utilities");
    EXPECT_EQ(qobject_cast<QGroupBox *>(child<QComboBox>(*w, "Cmbdatabases")->parentWidget())->title(),
              u"Select Database");
    EXPECT_EQ(items(*w, "Cmbdatabases"), (QStringList{u"Rabbits"_s, u"Cavies"_s}));
    EXPECT_EQ(child<QComboBox>(*w, "Cmbdatabases")->currentText(), u"Cavies") << "the session's stud";

    const std::tuple<const char *, QString, QString> buttons[] = {
        {"CmdCompact", u"&Compact"_s, u"Compact database"_s},
        {"CmdRepair", u"&Repair"_s, u"Repair damaged database"_s},
        {"CmdRestore", u"&Restore"_s, u"Restore database from backup copy"_s},
        {"CmdRemove", u"&Remove"_s, u"Remove a database which is no longer required"_s},
        {"CmdBrowseCancel", u"Cancel"_s, u"Cancel database utilities"_s},
        {"Comrestore", u"&Restore "_s, u"Restore the selected backup database"_s},
        {"CmdCancel", u"&Cancel"_s, u"Cancel restore function"_s},
    };
    for (const auto &[name, caption, tip] : buttons) {
        EXPECT_EQ(child<QPushButton>(*w, name)->text(), caption) << name;
        EXPECT_EQ(child<QPushButton>(*w, name)->toolTip(), tip) << name;
    }
    const char *work[] = {"CmdCompact", "CmdRepair", "CmdRestore", "CmdRemove"};
    for (const char *name : work)
        EXPECT_TRUE(enabled(*w, name)) << name;

    child<QComboBox>(*w, "Cmbdatabases")->setCurrentIndex(-1);
    for (const char *name : work)
        EXPECT_FALSE(enabled(*w, name)) << name;
    EXPECT_TRUE(enabled(*w, "CmdBrowseCancel"));
    click(*w, "CmdRemove");
    EXPECT_TRUE(fx.prompts.messages.isEmpty()) << "no stud, no work";

    pick(*w, "Cmbdatabases", u"Rabbits"_s);
    for (const char *name : work)
        EXPECT_TRUE(enabled(*w, name)) << name;

    // Without a stud in the session nothing is chosen at first.
    fx.session.StockType.clear();
    auto fresh = openScreen<FmDatabaseUtil>();
    EXPECT_EQ(child<QComboBox>(*fresh, "Cmbdatabases")->currentIndex(), -1);
    EXPECT_FALSE(enabled(*fresh, "CmdCompact"));
}

TEST_F(CareScreensTest, RestoreListTakesThePlaceOfTheButtonsUntilARestoreIsDone)
{
    fx.open();
    Close_Databases(fx.session);
    backUpToDevice();
    copyTemplate(device.path());
    auto w = openScreen<FmDatabaseUtil>();
    auto *list = child<QListWidget>(*w, "LbDatabase");
    const auto showing = [&](bool restore) {
        EXPECT_EQ(child<QGroupBox>(*w, "FrmRestore")->isVisible(), restore);
        EXPECT_EQ(child<QWidget>(*w, "PbUtils")->isVisible(), !restore);
        EXPECT_EQ(child<QMenuBar>(*w, "MenuBar")->isVisible(), !restore);
    };
    showing(false);
    EXPECT_EQ(child<QGroupBox>(*w, "FrmRestore")->title(), u"Select Database To Restore");

    click(*w, "CmdRestore");
    showing(true);
    ASSERT_GE(list->count(), 1);
    EXPECT_EQ(list->item(0)->text(), device.path() + u"/Rabbits.mdb "_s) << "the external copy comes first";
    click(*w, "Comrestore");
    EXPECT_TRUE(fx.prompts.messages.isEmpty()) << "no copy chosen, nothing happens";
    click(*w, "CmdCancel");
    showing(false);

    // A restore that is declined keeps the list; one carried out brings the buttons back.
    click(*w, "CmdRestore");
    list->setCurrentRow(0);
    fx.prompts.answerNo();
    click(*w, "Comrestore");
    showing(true);
    fx.prompts.answerYes();
    fx.prompts.answerYes();
    click(*w, "Comrestore");
    EXPECT_TRUE(fx.prompts.allAnswered());
    showing(false);
    ASSERT_EQ(fx.prompts.messages.size(), 3) << fx.prompts.texts().join(u'|').toStdString();
    EXPECT_EQ(fx.prompts.messages[2].title, u"Overwrite Existing Database");
    EXPECT_EQ(Load_Stud_Details(fx.session, fx.prompts), LoadResult::Opened) << "the stud restored opens";
}

TEST_F(CareScreensTest, RemovedStudLeavesTheListAndTheButtonsFollow)
{
    fx.open();
    Close_Databases(fx.session);
    auto w = openScreen<FmDatabaseUtil>();
    fx.prompts.answerYes();
    fx.prompts.answerNo();
    click(*w, "CmdRemove");
    EXPECT_EQ(items(*w, "Cmbdatabases"), QStringList{u"Rabbits"_s}) << "declined at the second question";
    EXPECT_TRUE(enabled(*w, "CmdRemove"));

    fx.prompts.answerYes();
    fx.prompts.answerYes();
    click(*w, "CmdRemove");
    EXPECT_TRUE(fx.prompts.allAnswered());
    EXPECT_EQ(fx.prompts.messages.last().text, u"All records will be lost? Are You Sure?");
    EXPECT_TRUE(items(*w, "Cmbdatabases").isEmpty());
    EXPECT_EQ(child<QComboBox>(*w, "Cmbdatabases")->currentIndex(), -1);
    for (const char *name : {"CmdCompact", "CmdRepair", "CmdRestore", "CmdRemove"})
        EXPECT_FALSE(enabled(*w, name)) << name;
    EXPECT_FALSE(QFile::exists(fx.session.DataFolder + u"Rabbits.mdb"_s));
    EXPECT_TRUE(fx.prompts.statuses.isEmpty()) << "the steps are shown on the screen's own bar";
}

TEST_F(CareScreensTest, ExportNeedsADeviceThenCopiesTheStudsAndCloses)
{
    fx.open();
    devices.listed = {{u"STICK"_s, device.path()}};
    auto w = openScreen<FmImpExp>();
    EXPECT_EQ(w->windowTitle(), u"Import/Export Database(s)");
    EXPECT_TRUE(child<QLabel>(*w, "LblInfo")->text().startsWith(u"Use this facility when transferring Tarvex"));
    EXPECT_EQ(child<QPushButton>(*w, "cmdexport")->text(), u"&Export");
    EXPECT_EQ(child<QPushButton>(*w, "cmdimport")->text(), u"&Import");
    auto *exportTo = child<DeviceSelector>(*w, "drvexp");
    EXPECT_EQ(items(*w, "drvexp"), (QStringList{u"STICK ("_s + device.path() + u')', u"Other folder..."_s}));
    EXPECT_EQ(exportTo->currentIndex(), -1);
    EXPECT_TRUE(exportTo->folder().isEmpty());
    exportTo->setFolder(device.path() + u'/');
    EXPECT_EQ(exportTo->currentIndex(), 0) << "a listed device is chosen, not added";
    exportTo->setFolder({});

    click(*w, "cmdexport");
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].text, u"A Drive Must Be Selected");
    EXPECT_EQ(fx.prompts.messages[0].title, u"Tarvex Export");
    EXPECT_TRUE(w->isVisible());

    QTemporaryDir other;
    exportTo->setFolder(other.path());
    EXPECT_EQ(exportTo->folder(), other.path());
    EXPECT_EQ(exportTo->currentText(), other.path());
    click(*w, "cmdexport");
    EXPECT_TRUE(QFile::exists(other.filePath(u"Rabbits.mdb"_s)));
    EXPECT_EQ(fx.prompts.messages.last().title, u"Database(s) Exported");
    EXPECT_FALSE(w->isVisible());
    EXPECT_EQ(w->result(), QDialog::Accepted);
}

TEST_F(CareScreensTest, BackupReminderAgreedCopiesTheStudToTheDeviceThenOpensIt)
{
    backUpToDevice();
    CRegSettings store(fx.session.AppName);
    store.SaveSetting(u"Options"_s, u"RemindBackup"_s, u"1"_s);
    store.SaveSetting(u"Options"_s, u"RemindEvery"_s, u"0"_s);
    fx.prompts.answer(Prompts::Answer::Ok);
    modals.on(u"FmBackup"_s, [&](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Backup to External Device");
        EXPECT_EQ(child<QLabel>(d, "LblBuDevice")->text(), u"Backing up to "_s + device.path());
        // The backup starts by itself once the screen is up, and closes it.
        EXPECT_TRUE(QTest::qWaitFor([&] { return !d.isVisible(); }, 20000));
        EXPECT_EQ(child<QLabel>(d, "LblFile")->text(), u"Copying to "_s + device.path());
        return d.result();
    });
    auto w = startMainWindow(fx);
    ASSERT_TRUE(w);
    EXPECT_EQ(modals.shown[u"FmBackup"_s], 1);
    EXPECT_TRUE(fx.prompts.allAnswered());
    EXPECT_EQ(fx.prompts.messages.value(0).title, u"Automatic Backup Reminder");
    EXPECT_TRUE(QFile::exists(device.filePath(u"Rabbits.mdb"_s)));
}

TEST_F(CareScreensTest, MainWindowClosesTheStudForItsUtilitiesAndOpensItAgain)
{
    auto w = startMainWindow(fx);
    ASSERT_TRUE(w);
    w->setDevices(&devices);
    for (const char *name : {"Utilities", "mnuImpExp"}) {
        modals.on(name == std::string("Utilities") ? u"FmDatabaseUtil"_s : u"FmImpExp"_s, [&](QDialog &d) {
            EXPECT_FALSE(fx.session.studOpen()) << "no stud is held while its files are worked on";
            if (auto *exit = d.findChild<QAction *>(u"Sel_Exit"_s))
                exit->trigger();
            else
                d.reject();
            return d.result();
        });
        auto *action = w->findChild<QAction *>(QString::fromLatin1(name));
        ASSERT_NE(action, nullptr);
        EXPECT_TRUE(action->isEnabled()) << name;
        action->trigger();
        EXPECT_TRUE(fx.session.studOpen()) << name;
    }
    EXPECT_EQ(modals.shown[u"FmDatabaseUtil"_s], 1);
    EXPECT_EQ(modals.shown[u"FmImpExp"_s], 1);

    // Exit Program ends the run from the utilities.
    modals.on(u"FmDatabaseUtil"_s, [](QDialog &d) {
        d.findChild<QAction *>(u"Exitprogram"_s)->trigger();
        return d.result();
    });
    w->findChild<QAction *>(u"Utilities"_s)->trigger();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !w->isVisible(); }, 5000));
    EXPECT_FALSE(fx.session.studOpen());
}

} // namespace
