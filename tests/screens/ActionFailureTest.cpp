// A user's action that meets a failing stud: one box says what was being done and why,
// nothing is half-saved, the screen stays usable and the program goes on.
#include "MainWindow.h"
#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "core/StudLoader.h"
#include "stock/screens/FmStock.h"
#include "stock/screens/StockRecordPanel.h"
#include "store/Recordset.h"
#include "store/StudDatabase.h"
#include "ui/Application.h"

#include <QApplication>
#include <QLabel>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class ActionFailureTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.copyShippedGenetics();
        w = startMainWindow(fx);
        ASSERT_TRUE(w);
        Application::setPrompts(&fx.prompts);
        db().setBusyTimeout(50);
    }
    void TearDown() override { Application::setPrompts(nullptr); }

    Database &db() { return fx.session.Stud->handle(); }
    QWidget &win() { return *w; }
    int animals() { return db().scalar(u"SELECT count(*) FROM Stock"_s).toInt(); }

    /// Another program takes the stud's write lock and keeps it until released.
    void lockStud()
    {
        other = std::make_unique<SQLite::Database>(db().path().toStdString(), SQLite::OPEN_READWRITE);
        other->exec("BEGIN IMMEDIATE");
    }
    void releaseStud() { other.reset(); }

    static QString boxFor(const QString &action)
    {
        return u"The action \""_s + action +
               u"\" could not be completed.\n\nThe stud is in use by another program. Close it and try again."_s;
    }

    StudFixture fx;
    ModalScript modals;
    std::unique_ptr<FmStock> w;
    std::unique_ptr<SQLite::Database> other;
};

TEST_F(ActionFailureTest, SaveRefusedByALockKeepsTheFormAndTheNextSaveWorks)
{
    click(win(), "CmdNew");
    type(win(), "TxtName", u"Thumper"_s);
    type(win(), "TxtId1", u"R17"_s);
    type(win(), "RWeight", u"2.5"_s);
    lockStud();
    click(win(), "CmdNewUpdate");
    ASSERT_EQ(fx.prompts.texts(),
              QStringList({u"The stud is in use by another program; nothing was saved. Close it and press Save again."_s}));
    EXPECT_EQ(fx.prompts.messages.last().title, u"Error Saving Record");
    EXPECT_TRUE(child<QWidget>(win(), "pbNew")->isVisible()) << "the new animal is still in hand";
    EXPECT_EQ(child<QLineEdit>(win(), "TxtName")->text(), u"Thumper");
    EXPECT_EQ(child<QLineEdit>(win(), "TxtId1")->text(), u"R17");

    releaseStud();
    EXPECT_EQ(animals(), 0);
    fx.prompts.answerNo(); // no pedigree now
    click(win(), "CmdNewUpdate");
    EXPECT_TRUE(child<QWidget>(win(), "PbBrowse")->isVisible());
    EXPECT_EQ(animals(), 1);
    EXPECT_EQ(db().scalar(u"SELECT RingNo FROM Stock WHERE Name = 'Thumper'"_s).toString(), u"R17");
    EXPECT_FALSE(db().inTransaction());
}

// The animal and its genes are one save: a failure while the genes are written leaves
// neither, and the same Save then stores both.
TEST_F(ActionFailureTest, AnimalAndItsGenesAreSavedTogetherOrNotAtAll)
{
    ASSERT_TRUE(fx.session.GeneticsOn);
    db().execute(u"CREATE TRIGGER Refused BEFORE INSERT ON Genes BEGIN SELECT RAISE(ABORT, 'no genes'); END"_s);
    click(win(), "CmdNew");
    type(win(), "TxtName", u"Sooty"_s);
    child<QComboBox>(win(), "RColour")->setEditText(u"Black"_s);
    fx.prompts.answerYes(); // a new colour
    click(win(), "CmdNewUpdate");
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(fx.prompts.messages.last().title, u"Error Saving Record");
    EXPECT_TRUE(fx.prompts.texts().last().startsWith(u"The record could not be saved.\n\n"_s));
    EXPECT_EQ(animals(), 0) << "the animal went with its genes";
    EXPECT_TRUE(child<QWidget>(win(), "pbNew")->isVisible());

    db().execute(u"DROP TRIGGER Refused"_s);
    fx.prompts.answerNo(); // no pedigree now
    click(win(), "CmdNewUpdate");
    EXPECT_EQ(animals(), 1);
    EXPECT_GT(db().scalar(u"SELECT count(*) FROM Genes"_s).toInt(), 0);
    EXPECT_FALSE(db().scalar(u"SELECT GenoType FROM Stock"_s).toString().isEmpty());
}

TEST_F(ActionFailureTest, NewAnimalRefusedByALockLeavesTheMainPanel)
{
    lockStud();
    click(win(), "CmdNew");
    ASSERT_EQ(fx.prompts.texts(), QStringList({boxFor(u"New Animal"_s)}));
    EXPECT_EQ(fx.prompts.messages.last().title, u"Action Not Completed");
    EXPECT_TRUE(child<QWidget>(win(), "FrmControl")->isVisible());
    EXPECT_EQ(w->recordPanel()->state(), StockRecordPanel::State::Closed);

    releaseStud();
    click(win(), "CmdNew");
    EXPECT_TRUE(child<QWidget>(win(), "pbNew")->isVisible()) << "the program went on";
}

TEST_F(ActionFailureTest, RemovalRefusedByALockKeepsTheAnimalInHand)
{
    addAnimal(db(), {{u"Name"_s, u"Bramble"_s}, {u"Sex"_s, u"Doe"_s}});
    addAnimal(db(), {{u"Name"_s, u"Clover"_s}, {u"Sex"_s, u"Doe"_s}});
    Refill_All_Lists(fx.session);
    click(win(), "CmdBrowse");
    lockStud();
    fx.prompts.answerYes();
    click(win(), "CmdBrowseRemove");
    EXPECT_EQ(fx.prompts.texts().last(), boxFor(u"Delete"_s));
    EXPECT_EQ(animals(), 2);
    EXPECT_EQ(child<QLineEdit>(win(), "TxtName")->text(), u"Bramble");

    releaseStud();
    fx.prompts.answerYes();
    click(win(), "CmdBrowseRemove");
    EXPECT_EQ(animals(), 1);
    EXPECT_EQ(child<QLineEdit>(win(), "TxtName")->text(), u"Clover");
}

TEST_F(ActionFailureTest, GenotypeStoredOnItsScreenWhileLockedShowsWhatTheStudHolds)
{
    addAnimal(db(), {{u"Name"_s, u"Bramble"_s}, {u"Sex"_s, u"Doe"_s}});
    click(win(), "CmdBrowse");
    modals.on(u"FmStockGenetics"_s, [&](QDialog &d) {
        const QString before = child<QLabel>(d, "PbGeneticCode")->text();
        click(d, "CmdUpdate");
        child<QComboBox>(d, "CmbAllele1_0")->setCurrentIndex(1);
        lockStud();
        click(d, "CmdOk");
        EXPECT_EQ(fx.prompts.texts().last(), boxFor(u"Ok"_s));
        EXPECT_EQ(child<QLabel>(d, "PbGeneticCode")->text(), before) << "the stored genotype stays on show";
        EXPECT_FALSE(child<QComboBox>(d, "CmbAllele1_0")->isEnabled());
        releaseStud();
        click(d, "CmdBack");
        return int(QDialog::Accepted);
    });
    click(win(), "CmdGenes");
    EXPECT_EQ(modals.shown[u"FmStockGenetics"_s], 1);
    EXPECT_EQ(db().scalar(u"SELECT count(*) FROM Genes"_s).toInt(), 0);
}

TEST_F(ActionFailureTest, WholeStudCheckRefusedByALockCanBeRunAgain)
{
    addAnimal(db(), {{u"Name"_s, u"Sooty"_s}, {u"Sex"_s, u"Doe"_s}, {u"Colour"_s, u"Black"_s}});
    modals.on(u"FmGenCheck"_s, [&](QDialog &d) {
        lockStud();
        click(d, "CmdCheck");
        EXPECT_EQ(fx.prompts.texts().last(), boxFor(u"Run"_s));
        EXPECT_TRUE(child<QWidget>(d, "CmdCheck")->isEnabled()) << "the screen can be used again";
        releaseStud();
        click(d, "CmdCheck");
        return int(QDialog::Accepted);
    });
    click(win(), "CmdAutoGenetics");
    EXPECT_EQ(modals.shown[u"FmGenCheck"_s], 1);
    EXPECT_GT(db().scalar(u"SELECT count(*) FROM Genes"_s).toInt(), 0) << "the second run did the work";
}

} // namespace
