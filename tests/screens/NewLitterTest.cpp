#include "MainWindow.h"
#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "core/StudLoader.h"
#include "stock/screens/FmStock.h"
#include "stock/screens/StockRecordPanel.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"

#include <QAction>
#include <QCheckBox>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class NewLitterTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        w = startMainWindow(fx);
        ASSERT_TRUE(w);
        buck = addAnimal(db(), {{u"Name"_s, u"Jack"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
        doe = addAnimal(db(), {{u"Name"_s, u"Jill"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s},
                               {u"Colour"_s, u"Black"_s}, {u"Type"_s, u"Rex"_s}});
        Refill_All_Lists(fx.session);
        w->recordPanel()->fillLists();
    }

    Database &db() { return fx.session.Stud->handle(); }
    QWidget &win() { return *w; }
    int animals() { return db().scalar(u"SELECT count(*) FROM Stock"_s).toInt(); }
    /// Opens the litter panel and fills in a litter of Jack and Jill born on 2 March 2024.
    void enterLitter(const QString &young, bool automatic)
    {
        click(win(), "CMdNewLit");
        EXPECT_FALSE(child<QWidget>(win(), "FrmControl")->isVisible());
        EXPECT_TRUE(child<QWidget>(win(), "FrmNewLit")->isVisible());
        EXPECT_FALSE(w->findChild<QAction *>(u"mnuRegister"_s)->isEnabled());
        EXPECT_FALSE(child<QCheckBox>(win(), "CbNLAuto")->isChecked()) << "one by one is the default";
        EXPECT_EQ(child<QComboBox>(win(), "NlType")->currentText(), u"Rex") << "the only breed is offered";
        EXPECT_EQ(child<QComboBox>(win(), "NlArchive")->currentText(), u"No");
        EXPECT_EQ(child<QLineEdit>(win(), "NLNo")->displayText(), u"__");
        type(win(), "NLNo", young);
        type(win(), "NLDOB", u"02032024"_s);
        pick(win(), "NLSire", u"Jack"_s);
        pick(win(), "NLDam", u"Jill"_s);
        child<QCheckBox>(win(), "CbNLAuto")->setChecked(automatic);
        click(win(), "CmdNLOK");
    }

    StudFixture fx;
    ModalScript modals;
    std::unique_ptr<FmStock> w;
    qint64 buck = 0, doe = 0;
};

TEST_F(NewLitterTest, AutomaticLitterIsCreatedAndTheMainPanelComesBack)
{
    enterLitter(u"3"_s, true);
    EXPECT_EQ(animals(), 5);
    EXPECT_EQ(fx.prompts.texts(),
              QStringList{u"Names A%1 To A%2 Automatically Created"_s.arg(doe + 1).arg(doe + 3)});
    EXPECT_TRUE(child<QWidget>(win(), "FrmControl")->isVisible());
    EXPECT_FALSE(child<QWidget>(win(), "FrmNewLit")->isVisible());
    EXPECT_TRUE(w->findChild<QAction *>(u"mnuRegister"_s)->isEnabled());
    const StockRow young = *readAnimal(db(), doe + 2);
    EXPECT_EQ(young.sire, buck);
    EXPECT_EQ(young.dam, doe);
    EXPECT_EQ(young.dob, QDate(2024, 3, 2));
}

TEST_F(NewLitterTest, NoYoungIsRefusedOnThePanel)
{
    enterLitter(QString(), true);
    EXPECT_EQ(fx.prompts.texts(), QStringList{u"Number in Litter Must be Entered"_s});
    EXPECT_TRUE(child<QWidget>(win(), "FrmNewLit")->isVisible());
    EXPECT_EQ(animals(), 2);
    click(win(), "CmdNLCan");
    EXPECT_TRUE(child<QWidget>(win(), "FrmControl")->isVisible());
}

TEST_F(NewLitterTest, YoungEnteredOneByOneKeepTheLittersDayAndParents)
{
    enterLitter(u"2"_s, false);
    EXPECT_FALSE(child<QWidget>(win(), "FrmNewLit")->isVisible());
    EXPECT_TRUE(child<QWidget>(win(), "pbNew")->isVisible());
    auto *dob = child<QLineEdit>(win(), "RDOB");
    EXPECT_EQ(dob->displayText(), u"02/03/2024");
    EXPECT_TRUE(dob->isReadOnly());
    EXPECT_EQ(child<QComboBox>(win(), "RSire")->currentText(), u"Jack");
    EXPECT_EQ(child<QComboBox>(win(), "RDam")->currentText(), u"Jill");
    EXPECT_FALSE(child<QComboBox>(win(), "RSire")->isEnabled());
    EXPECT_FALSE(child<QComboBox>(win(), "RDam")->isEnabled());
    EXPECT_FALSE(child<QLineEdit>(win(), "TxtAge")->text().isEmpty());

    type(win(), "TxtName", u"Pip"_s);
    click(win(), "CmdNewUpdate");
    EXPECT_TRUE(child<QWidget>(win(), "pbNew")->isVisible()) << "the second young follows";
    EXPECT_TRUE(child<QLineEdit>(win(), "TxtName")->text().isEmpty());
    EXPECT_EQ(child<QComboBox>(win(), "RDam")->currentText(), u"Jill");
    type(win(), "TxtName", u"Pop"_s);
    click(win(), "CmdNewUpdate");
    EXPECT_TRUE(child<QWidget>(win(), "FrmControl")->isVisible()) << "the last young ends the litter";
    EXPECT_EQ(animals(), 4);
    EXPECT_TRUE(fx.prompts.texts().isEmpty()) << fx.prompts.texts().join(u'|').toStdString();

    // An ordinary new animal has its day of birth and parents free again.
    click(win(), "CmdNew");
    EXPECT_FALSE(child<QLineEdit>(win(), "RDOB")->isReadOnly());
    EXPECT_TRUE(child<QComboBox>(win(), "RSire")->isEnabled());
    click(win(), "CmdNewCancel");
}

TEST_F(NewLitterTest, CancelInTheMiddleKeepsTheYoungSaved)
{
    enterLitter(u"3"_s, false);
    type(win(), "TxtName", u"Pip"_s);
    click(win(), "CmdNewUpdate");
    click(win(), "CmdNewCancel");
    EXPECT_TRUE(child<QWidget>(win(), "FrmControl")->isVisible());
    EXPECT_EQ(animals(), 3);
    EXPECT_EQ(w->recordPanel()->records().litterRemaining(), 0);
}

TEST_F(NewLitterTest, TheRecordScreenOpensTheBreedingScreensOfTheAnimalInHand)
{
    click(win(), "CmdBrowse");
    // Jack is shown first, by name; he is male, so his matings can be kept.
    EXPECT_TRUE(child<QPushButton>(win(), "CmdMatings")->isEnabled());
    EXPECT_TRUE(child<QPushButton>(win(), "CmdAwards")->isEnabled());
    EXPECT_TRUE(child<QPushButton>(win(), "CmdBreed")->isEnabled());
    for (const char *button : {"CmdMatings", "CmdAwards", "CmdBreed"}) {
        const QString screen = QString::fromLatin1(button) == u"CmdMatings"   ? u"FmMatings"_s
                               : QString::fromLatin1(button) == u"CmdAwards" ? u"FmAwards"_s
                                                                              : u"FmBrNote"_s;
        qint64 seen = 0;
        modals.on(screen, [&](QDialog &) {
            seen = fx.session.CurrentStockNo;
            return int(QDialog::Rejected);
        });
        click(win(), button);
        EXPECT_EQ(seen, buck) << button;
    }
    click(win(), "CmdBrowseCancel");
    modals.on(u"FmBulkDiary"_s, [](QDialog &) { return int(QDialog::Rejected); });
    click(win(), "CmdMassDiary");
    EXPECT_EQ(modals.shown[u"FmBulkDiary"_s], 1);
}

} // namespace
