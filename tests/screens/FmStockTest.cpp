#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "core/SingleInstance.h"
#include "stock/screens/FmStock.h"
#include "store/StudDatabase.h"
#include "ui/ClsResizer.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QGuiApplication>
#include <QScreen>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class FmStockTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        session.ProgramFolder = programFolder();
    }

    std::unique_ptr<FmStock> window()
    {
        auto w = std::make_unique<FmStock>(session, prompts);
        w->setShortDateFunction([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
        return w;
    }

    void registerThroughTheScreen(const QString &kind, const QString &name)
    {
        modals.on(u"FmRegister"_s, [=](QDialog &d) {
            pick(d, "TStockType", kind);
            type(d, "TStudName", name);
            type(d, "TTelNo", u"0123"_s);
            click(d, "CmdOkay");
            return d.result();
        });
    }

    TempHome home;
    Session session;
    ScriptedPrompts prompts;
    ModalScript modals;
};

TEST_F(FmStockTest, FirstStartRegistersThenOpensStraightAway)
{
    registerThroughTheScreen(u"Rabbits"_s, u"Warren End"_s);
    prompts.answerNo(); // keep Buck and Doe
    prompts.answerNo(); // options later
    {
        auto w = window();
        ASSERT_TRUE(w->start({}));
        EXPECT_EQ(w->windowTitle(), u"Tarvex-Rabbits   Warren End");
        EXPECT_TRUE(session.studOpen());
        EXPECT_EQ(session.Dates.DateFormat, u"dd/mm/yyyy");
        w->close();
    }
    EXPECT_EQ(modals.shown[u"FmRegister"_s], 1);

    Session again;
    again.ProgramFolder = programFolder();
    FmStock w2(again, prompts);
    w2.setShortDateFunction([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
    ASSERT_TRUE(w2.start({}));
    EXPECT_EQ(modals.shown[u"FmRegister"_s], 1) << "a registered stud opens without questions";
    EXPECT_EQ(w2.windowTitle(), u"Tarvex-Rabbits   Warren End");
}

TEST_F(FmStockTest, MainPanelHasEveryButtonWithItsCaptionAndTip)
{
    registerThroughTheScreen(u"Rabbits"_s, u"Warren End"_s);
    prompts.answerNo();
    prompts.answerNo();
    auto w = window();
    ASSERT_TRUE(w->start({}));
    const struct
    {
        const char *name;
        QString caption, tip;
        bool enabled;
    } buttons[] = {
        {"CmdBrowse", u"&Browse"_s, u"Browse Livestock in alphabetic order"_s, true},
        {"CmdSearch", u"&Search"_s, u"Search for animals"_s, true},
        {"CmdCancel", u"E&xit"_s, u"Exit Tarvex"_s, true},
        {"CmdNew", u"&New Animal"_s, u"Enter details of new animal"_s, true},
        {"CMdNewLit", u"New &Litter"_s, u"Enter details of new offspring"_s, true},
        {"CmdMassDiary", u"&Diary"_s, u"Enter Diary Entry for a number of animals"_s, true},
        {"CmdLabels", u"Lab&els"_s, u"Print hutch/cage Labels"_s, true},
        {"CmdReports", u"&Reports"_s, u"Report Options"_s, true},
        {"CmdGenetic", u"&Genetics"_s, u"Genetics functions"_s, true},
        {"CmdTestMate", u"&Test Mate"_s, u"Produce Pedigree for a Test Mating"_s, true},
        {"CmdAutoGenetics", u"Auto &Check"_s,
         u"Automatically Check Genetics of Entire Database and Update if Applicable"_s, true},
        {"CmdArchive", u"&Auto Archive"_s, u"Automatically Archive according to Status"_s, true},
    };
    // The shipped rabbit genetics files switch genetics on at registration.
    EXPECT_TRUE(session.GeneticsOn);
    for (const auto &b : buttons) {
        auto *button = child<QPushButton>(*w, b.name);
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->text(), b.caption);
        EXPECT_EQ(button->toolTip(), b.tip);
        EXPECT_EQ(button->isEnabled(), b.enabled) << b.name;
    }
    for (const char *frame : {"FraView", "FraCreate", "FraReports", "FraMatings", "FraUtility"})
        EXPECT_NE(w->findChild<QGroupBox *>(QString::fromLatin1(frame)), nullptr);
    const auto action = [&](const char *name) { return w->findChild<QAction *>(QString::fromLatin1(name)); };
    EXPECT_EQ(action("Sel_Database")->text(), u"&Select Type of Livestock");
    EXPECT_EQ(action("mnuRegister")->text(), u"&Register Database");
    EXPECT_EQ(action("Utilities")->text(), u"Database &Utilities");
    EXPECT_TRUE(action("Utilities")->isEnabled());
    EXPECT_EQ(action("BrowseFilter_2")->text(), u"&Male Only");
    EXPECT_EQ(action("AboutTarvex")->text(), u"&About Tarvex Livestock Management System");
}

TEST_F(FmStockTest, TwoStudsAskWhichAndTheMenuSwitches)
{
    StudFixture fx;
    session.DataFolder = fx.session.DataFolder;
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    fx.registerStud(u"Cavies"_s, u"Piggery"_s);
    modals.on(u"FmSelDatabase"_s, [](QDialog &d) {
        pick(d, "Cmbdatabases", u"Cavies"_s);
        click(d, "CmdOk");
        return d.result();
    });
    auto w = window();
    ASSERT_TRUE(w->start({}));
    EXPECT_EQ(w->windowTitle(), u"Tarvex-Cavies   Piggery");

    modals.on(u"FmSelDatabase"_s, [](QDialog &d) {
        pick(d, "Cmbdatabases", u"Rabbits"_s);
        click(d, "CmdOk");
        return d.result();
    });
    w->findChild<QAction *>(u"Sel_Database"_s)->trigger();
    EXPECT_EQ(w->windowTitle(), u"Tarvex-Rabbits   Warren End");
    EXPECT_EQ(CRegSettings(session.AppName).GetSetting(u"General"_s, u"LastDatabase"_s), u"Rabbits");
    EXPECT_EQ(modals.shown[u"FmSelDatabase"_s], 2);
}

TEST_F(FmStockTest, SecondCopyIsRefused)
{
    SingleInstance running(home.dataFolder());
    ASSERT_TRUE(running.acquire());
    auto w = window();
    EXPECT_FALSE(w->start({}));
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].text, u"Program already running");
    EXPECT_EQ(prompts.messages[0].title, QString());
    EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Stop);
}

TEST_F(FmStockTest, UnusableDateFormatEndsTheStart)
{
    auto w = window();
    w->setShortDateFunction([](const QDate &) { return u"Saturday, 25 December 1999"_s; });
    EXPECT_FALSE(w->start({}));
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].title, u"Date Formatting Error");
    EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Stop);
}

TEST_F(FmStockTest, DevelopmentStartHasItsOwnCatalogue)
{
    StudFixture fx;
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    modals.on(u"FmRegister"_s, [](QDialog &d) {
        click(d, "CmdExit");
        return d.result();
    });
    auto w = window();
    EXPECT_FALSE(w->start({u"/DEV"_s})) << "an empty catalogue and Exit end the program";
    EXPECT_EQ(session.AppName, u"Tarvex Development");
    EXPECT_EQ(modals.shown[u"FmRegister"_s], 1);
}

TEST_F(FmStockTest, ClosingStoresTheWindowPlaceWithTheTopInBothEdges)
{
    StudFixture fx;
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    auto w = window();
    ASSERT_TRUE(w->start({}));
    w->show();
    w->move(300, 100);
    w->resize(800, 600);
    w->close();
    CRegSettings s(session.AppName);
    EXPECT_EQ(s.GetSetting(u"Options"_s, u"FormState"_s), u"0");
    EXPECT_EQ(s.GetSetting(u"Options"_s, u"FormLeft"_s), QString::number(w->pos().y()));
    EXPECT_EQ(s.GetSetting(u"Options"_s, u"FormWidth"_s), u"800");
    EXPECT_FALSE(session.studOpen()) << "closing the window closes the stud";
}

// Settings that cannot be written are told once, and the program goes on without them.
TEST_F(FmStockTest, SettingsThatCannotBeSavedAreToldOnce)
{
    StudFixture fx;
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    auto w = window();
    ASSERT_TRUE(w->start({}));
    const QString file = CRegSettings(session.AppName).filePath();
    ASSERT_TRUE(QFile::remove(file));
    // A folder in the file's place: nothing can be written there.
    ASSERT_TRUE(QDir().mkpath(file));
    prompts.messages.clear();
    w->close();
    ASSERT_EQ(prompts.messages.size(), 1) << "the window's several keys are told as one";
    EXPECT_EQ(prompts.messages[0].title, u"Settings Not Saved");
    EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Exclamation);
    EXPECT_EQ(prompts.messages[0].text,
              u"Tarvex could not save its settings in\n"_s + file +
                  u"\n\nThe disk may be full or the folder read-only. Settings changed from now on will be "
                  u"lost when Tarvex closes."_s);
}

TEST_F(FmStockTest, FirstStartOpensAtTheSizeOfAnyFormAndAKeptSizeWins)
{
    StudFixture fx;
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    const QSize design(640, 440);
    const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
    {
        auto w = window();
        ASSERT_TRUE(w->start({}));
        w->showRestored();
        EXPECT_EQ(w->centralWidget()->size(), ClsResizer::openingSize(design, screen))
            << "the panel opens as a form of its design opens on this screen";
        const ClsResizer *r = ClsResizer::of(w.get());
        ASSERT_NE(r, nullptr);
        EXPECT_DOUBLE_EQ(r->fontScale(), std::min(qreal(w->centralWidget()->width()) / design.width(),
                                                   qreal(w->centralWidget()->height()) / design.height()));
        w->resize(700, 560);
        w->close();
    }
    auto w = window();
    ASSERT_TRUE(w->start({}));
    w->showRestored();
    EXPECT_EQ(w->size(), QSize(700, 560)) << "the size kept at the last exit";
}

TEST_F(FmStockTest, RegisteringAnotherStudFromTheMenuOpensIt)
{
    StudFixture fx;
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    auto w = window();
    ASSERT_TRUE(w->start({}));
    modals.on(u"FmRegister"_s, [](QDialog &d) {
        EXPECT_EQ(child<QComboBox>(d, "TStockType")->currentText(), u"Rabbits") << "the open stud is in hand";
        pick(d, "TStockType", u"Goats"_s);
        type(d, "TStudName", u"Hill Farm"_s);
        click(d, "CmdOkay");
        return d.result();
    });
    prompts.answerYes(); // register a new database
    prompts.answerNo();  // keep Buck and Doe
    prompts.answerNo();  // options later
    w->findChild<QAction *>(u"mnuRegister"_s)->trigger();
    EXPECT_TRUE(prompts.allAnswered());
    EXPECT_EQ(w->windowTitle(), u"Tarvex-Goats   Hill Farm");
    EXPECT_EQ(session.Catalogue.size(), 2);
    EXPECT_TRUE(session.studOpen());
}

TEST_F(FmStockTest, UnreadableStudStillShowsTheWindowWithNoStudOpen)
{
    StudFixture fx;
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s, false);
    QFile f(fx.session.DataFolder + u"Rabbits.mdb"_s);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("not a database");
    f.close();
    // The database utilities come up, where the file can be repaired or restored.
    modals.on(u"FmDatabaseUtil"_s, [](QDialog &d) {
        EXPECT_EQ(d.findChild<QComboBox *>(u"Cmbdatabases"_s)->currentText(), u"Rabbits");
        return int(QDialog::Rejected);
    });
    auto w = window();
    ASSERT_TRUE(w->start({}));
    EXPECT_EQ(modals.shown[u"FmDatabaseUtil"_s], 1);
    EXPECT_FALSE(session.studOpen());
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].title, u"Error Opening Database");
    EXPECT_TRUE(w->findChild<QAction *>(u"Sel_Database"_s)->isEnabled());
    EXPECT_TRUE(w->isEnabled()) << "the hourglass is gone";
}

} // namespace
