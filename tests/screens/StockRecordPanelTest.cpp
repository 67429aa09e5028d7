#include "MainWindow.h"
#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "stock/screens/FmStock.h"
#include "stock/screens/StockRecordPanel.h"
#include "store/Recordset.h"
#include "store/StudDatabase.h"
#include "core/StudLoader.h"

#include <QCheckBox>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTreeView>
#include <QTreeWidget>
#include <QHeaderView>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class StockRecordPanelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        w = startMainWindow(fx);
        ASSERT_TRUE(w);
    }

    Database &db() { return fx.session.Stud->handle(); }
    QWidget &win() { return *w; }
    QString text(const char *name) { return child<QLineEdit>(win(), name)->text(); }
    void choose(const char *combo, const QString &entry)
    {
        auto *c = child<QComboBox>(win(), combo);
        if (c->isEditable()) {
            c->setEditText(entry);
            return;
        }
        c->setCurrentIndex(c->findText(entry));
    }

    StudFixture fx;
    ModalScript modals;
    std::unique_ptr<FmStock> w;
};

TEST_F(StockRecordPanelTest, NewAnimalIsEnteredSavedAndShown)
{
    addAnimal(db(), {{u"Name"_s, u"Jack"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}, {u"Type"_s, u"Rex"_s}});
    Refill_All_Lists(fx.session);
    w->recordPanel()->fillLists();

    click(win(), "CmdNew");
    EXPECT_FALSE(child<QWidget>(win(), "FrmControl")->isVisible());
    EXPECT_TRUE(child<QWidget>(win(), "pbNew")->isVisible());
    EXPECT_FALSE(w->findChild<QAction *>(u"mnuRegister"_s)->isEnabled()) << "no stud changes while a record is open";
    EXPECT_EQ(child<QComboBox>(win(), "Rtype")->currentText(), u"Rex") << "the only breed is offered";
    EXPECT_EQ(child<QLineEdit>(win(), "RDOB")->displayText(), u"__/__/____");

    type(win(), "TxtName", u"Thumper"_s);
    type(win(), "TxtId1", u"R 2024/17"_s);
    type(win(), "TxtId2", u"T-9"_s);
    choose("RSex", u"Doe"_s);
    choose("RColour", u"Black"_s);
    choose("RSire", u"Jack"_s);
    auto *dob = child<QLineEdit>(win(), "RDOB");
    dob->setFocus();
    dob->home(false);
    QTest::keyClicks(dob, u"01022024"_s);
    type(win(), "RWeight", u"3.50"_s);
    child<QPlainTextEdit>(win(), "RNotes")->setPlainText(u"Good doe"_s);
    fx.prompts.answerYes(); // new colour Black
    fx.prompts.answerYes(); // pedigree now? (dam unknown)
    modals.on(u"fmPedigree"_s, [](QDialog &d) {
        // The pedigree opens ready to create: the unknown dam is offered.
        EXPECT_EQ(child<QLabel>(d, "RPed_2")->text(), u"Click Here To Create");
        EXPECT_FALSE(child<QWidget>(d, "CmdCreate")->isVisible());
        return int(QDialog::Rejected);
    });
    click(win(), "CmdNewUpdate");
    EXPECT_EQ(modals.shown[u"fmPedigree"_s], 1);
    EXPECT_TRUE(fx.prompts.allAnswered());
    EXPECT_EQ(fx.prompts.messages[0].text, u"This is the first time this Colour has been entered\n\nCreate it?");

    EXPECT_TRUE(child<QWidget>(win(), "PbBrowse")->isVisible());
    EXPECT_EQ(text("TxtName"), u"Thumper");
    EXPECT_EQ(text("RWeight"), u"3.50");
    EXPECT_EQ(child<QLineEdit>(win(), "RDOB")->displayText(), u"01/02/2024");
    EXPECT_EQ(child<QComboBox>(win(), "RSire")->currentText(), u"Jack");
    Recordset rs(db(), u"SELECT * FROM Stock WHERE Name = 'Thumper'"_s);
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(rs.field(u"Colour"_s).toString(), u"Black");
    EXPECT_EQ(rs.field(u"Notes"_s).toString(), u"Good doe");
    EXPECT_EQ(rs.field(u"Weight"_s).toDouble(), 3.5);
    EXPECT_EQ(rs.field(u"RingNo"_s).toString(), u"R 2024/17") << "the identifications are saved";
    EXPECT_EQ(rs.field(u"id2"_s).toString(), u"T-9");
    EXPECT_EQ(text("TxtId1"), u"R 2024/17");

    click(win(), "CmdBrowseModify");
    type(win(), "TxtId1", u"R 2024/18"_s);
    type(win(), "TxtId2", QString());
    click(win(), "CmdModifyOK");
    Recordset changed(db(), u"SELECT RingNo, id2 FROM Stock WHERE Name = 'Thumper'"_s);
    EXPECT_EQ(changed.field(u"RingNo"_s).toString(), u"R 2024/18") << "and changed in an update";
    EXPECT_TRUE(changed.field(u"id2"_s).isNull());
}

TEST_F(StockRecordPanelTest, AutomaticNameAndWeightShowAsSavedAfterSave)
{
    click(win(), "CmdNew");
    type(win(), "RWeight", u"3.50"_s);
    fx.prompts.answerNo(); // no pedigree now
    click(win(), "CmdNewUpdate");
    const qint64 number = db().scalar(u"SELECT max(Number) FROM Stock"_s).toLongLong();
    EXPECT_EQ(fx.prompts.texts().first(), u"Automatic Name Assigned : A%1"_s.arg(number));
    EXPECT_EQ(text("TxtName"), u"A%1"_s.arg(number));
    EXPECT_EQ(text("RWeight"), u"3.50");

    // A name given and then refused at a later step stays in its field.
    click(win(), "CmdBrowseCancel");
    click(win(), "CmdNew");
    type(win(), "RWeight", u"heavy"_s);
    click(win(), "CmdNewUpdate");
    EXPECT_EQ(fx.prompts.texts().last(), u"Must be a valid weight");
    EXPECT_EQ(text("TxtName"), u"A%1"_s.arg(number + 1));
    EXPECT_EQ(text("RWeight"), u"heavy");
}

TEST_F(StockRecordPanelTest, RefusedRecordStaysAsTypedWithTheFocusOnTheField)
{
    click(win(), "CmdNew");
    type(win(), "TxtName", u"Kit"_s);
    type(win(), "RWeight", u"-2"_s);
    click(win(), "CmdNewUpdate");
    ASSERT_EQ(fx.prompts.texts(), QStringList({u"Must be a valid weight"_s}));
    EXPECT_EQ(fx.prompts.messages[0].title, u"Invalid Archive");
    EXPECT_TRUE(child<QWidget>(win(), "pbNew")->isVisible());
    EXPECT_EQ(text("TxtName"), u"Kit");
    EXPECT_EQ(QApplication::focusWidget(), child<QWidget>(win(), "RWeight"));
    EXPECT_EQ(db().scalar(u"SELECT count(*) FROM Stock"_s).toInt(), 0);

    click(win(), "CmdNewCancel");
    EXPECT_TRUE(child<QWidget>(win(), "FrmControl")->isVisible());
    EXPECT_EQ(db().scalar(u"SELECT count(*) FROM Stock"_s).toInt(), 0);
}

TEST_F(StockRecordPanelTest, BrowseUpdateAndDelete)
{
    addAnimal(db(), {{u"Name"_s, u"Bramble"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
    addAnimal(db(), {{u"Name"_s, u"Acorn"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
    click(win(), "CmdBrowse");
    EXPECT_EQ(text("TxtName"), u"Acorn");
    EXPECT_TRUE(child<QLineEdit>(win(), "TxtName")->isReadOnly()) << "a browsed record is locked";
    click(win(), "CmdNext");
    EXPECT_EQ(text("TxtName"), u"Bramble");
    click(win(), "CmdNext");
    EXPECT_EQ(text("TxtName"), u"Bramble");

    click(win(), "CmdBrowseModify");
    EXPECT_TRUE(child<QWidget>(win(), "PbModify")->isVisible());
    EXPECT_FALSE(child<QWidget>(win(), "Stock")->isVisible());
    type(win(), "TxtName", u"Bramble Rose"_s);
    click(win(), "CmdModifyOK");
    EXPECT_EQ(text("TxtName"), u"Bramble Rose");
    EXPECT_EQ(db().scalar(u"SELECT count(*) FROM Stock WHERE Name = 'Bramble Rose'"_s).toInt(), 1);

    fx.prompts.answerYes();
    click(win(), "CmdBrowseRemove");
    EXPECT_EQ(fx.prompts.texts().last(), u"Remove this Stock Record?");
    EXPECT_EQ(text("TxtName"), u"Acorn");
    fx.prompts.answerYes();
    click(win(), "CmdBrowseRemove");
    EXPECT_TRUE(child<QWidget>(win(), "FrmControl")->isVisible()) << "removing the only animal goes back";
    EXPECT_TRUE(w->findChild<QAction *>(u"mnuRegister"_s)->isEnabled());
}

TEST_F(StockRecordPanelTest, BreedingPageListsRelativesAndOpensTheirSummary)
{
    const qint64 sire = addAnimal(db(), {{u"Name"_s, u"Sire"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
    const qint64 dam = addAnimal(db(), {{u"Name"_s, u"Dam"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
    addAnimal(db(), {{u"Name"_s, u"Kit A"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}, {u"Sire"_s, sire},
                     {u"Dam"_s, dam}, {u"Colour"_s, u"Agouti"_s}});
    addAnimal(db(), {{u"Name"_s, u"Kit B"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"Yes"_s}, {u"Sire"_s, sire},
                     {u"Dam"_s, dam}});
    Refill_All_Lists(fx.session);
    click(win(), "CmdBrowse");
    click(win(), "CmdNext");
    ASSERT_EQ(text("TxtName"), u"Kit A");
    auto *full = child<QTreeWidget>(win(), "lvrels_2");
    EXPECT_EQ(full->topLevelItemCount(), 0) << "the archived full sibling is hidden";
    child<QCheckBox>(win(), "chkbrarchive")->setChecked(true);
    ASSERT_EQ(full->topLevelItemCount(), 1);
    EXPECT_EQ(full->topLevelItem(0)->text(0), u"Kit B");
    EXPECT_EQ(full->topLevelItem(0)->text(1), u"Buck");
    EXPECT_EQ(child<QPushButton>(win(), "lblbrrel_0")->text(), u"Sire (Buck)");

    auto *offspringOfSire = child<QTreeWidget>(win(), "lvrels_1");
    EXPECT_EQ(offspringOfSire->topLevelItemCount(), 0);
    Q_EMIT full->header()->sectionClicked(0);
    EXPECT_EQ(full->headerItem()->text(0), u"Name v");
    Q_EMIT full->header()->sectionClicked(0);
    EXPECT_EQ(full->headerItem()->text(0), u"Name ^") << "a second click reverses";

    bool shown = false;
    modals.on(u"fmStockenq"_s, [&](QDialog &d) {
        shown = true;
        EXPECT_EQ(child<QLineEdit>(d, "TxtName")->text(), u"Kit B");
        EXPECT_EQ(child<QLineEdit>(d, "RSire")->text(), u"Sire");
        EXPECT_EQ(child<QLineEdit>(d, "RDam")->text(), u"Dam");
        click(d, "CmdExit");
        return d.result();
    });
    Q_EMIT full->itemClicked(full->topLevelItem(0), 0);
    EXPECT_TRUE(shown);
    EXPECT_EQ(text("TxtName"), u"Kit A") << "the animal in hand stays";
}

TEST_F(StockRecordPanelTest, SireButtonSearchesWhileEditing)
{
    addAnimal(db(), {{u"Name"_s, u"Old Jack"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"Yes"_s}});
    Refill_All_Lists(fx.session);
    click(win(), "CmdNew");
    modals.on(u"FmQuickSrch"_s, [](QDialog &d) {
        EXPECT_FALSE(child<QComboBox>(d, "CmbfSex")->isEnabled());
        EXPECT_EQ(child<QComboBox>(d, "CmbfSex")->currentText(), u"Buck");
        type(d, "TxtFName", u"jack"_s);
        click(d, "CmdSearch");
        auto *list = child<QTreeView>(d, "SList");
        EXPECT_EQ(list->model()->rowCount(), 1);
        list->setCurrentIndex(list->model()->index(0, 0));
        click(d, "CmdSelect");
        return d.result();
    });
    click(win(), "pbSire");
    EXPECT_EQ(child<QComboBox>(win(), "RSire")->currentText(), u"Old Jack") << "an archived sire can be picked";
    type(win(), "TxtName", u"Young Jack"_s);
    fx.prompts.answerNo();
    click(win(), "CmdNewUpdate");
    EXPECT_EQ(db().scalar(u"SELECT Sire FROM Stock WHERE Name = 'Young Jack'"_s).toLongLong(), 1);
}

TEST_F(StockRecordPanelTest, AutoArchiveRewritesArchiveFromTheTicks)
{
    addAnimal(db(), {{u"Name"_s, u"A"_s}, {u"status"_s, u"Sold"_s}, {u"Archive"_s, u"No"_s}, {u"Sex"_s, u"Buck"_s}});
    addAnimal(db(), {{u"Name"_s, u"B"_s}, {u"status"_s, u"Breeding"_s}, {u"Archive"_s, u"No"_s}, {u"Sex"_s, u"Buck"_s}});
    Refill_All_Lists(fx.session);
    modals.on(u"FmArchive"_s, [](QDialog &d) {
        auto *list = child<QListWidget>(d, "LstStatus");
        EXPECT_EQ(list->count(), 2);
        list->item(1)->setCheckState(Qt::Checked); // Sold
        click(d, "CmdUpdate");
        return d.result();
    });
    click(win(), "CmdArchive");
    EXPECT_EQ(db().scalar(u"SELECT Archive FROM Stock WHERE Name = 'A'"_s).toString(), u"Yes");
    EXPECT_EQ(db().scalar(u"SELECT Archive FROM Stock WHERE Name = 'B'"_s).toString(), u"No");
    EXPECT_EQ(sireList(fx.session)->size(), 2) << "the archived buck left the sire list";
}

TEST_F(StockRecordPanelTest, NothingToBrowseOrArchiveIsSaid)
{
    click(win(), "CmdBrowse");
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"No Records to Browse"_s}));
    EXPECT_TRUE(child<QWidget>(win(), "FrmControl")->isVisible());
    click(win(), "CmdArchive");
    EXPECT_EQ(fx.prompts.texts().last(), u"No animals with a Status have been entered");
    EXPECT_EQ(fx.prompts.messages.last().title, u"No Stock Entered");
}

} // namespace

namespace {

TEST_F(StockRecordPanelTest, NameAffixesListLimitsAndDateChecksWhileTyping)
{
    fx.session.NamePrefix = u"Warren"_s;
    fx.session.NameSuffix = u"of Kent"_s;
    click(win(), "CmdNew");
    auto *name = child<QLineEdit>(win(), "TxtName");
    name->setFocus();
    QTest::keyClicks(name, u"Rose"_s);
    QTest::keyClick(name, Qt::Key_P, Qt::AltModifier);
    EXPECT_EQ(name->text(), u"Warren Rose");
    EXPECT_EQ(name->cursorPosition(), 7) << "the caret stands behind the prefix";
    QTest::keyClick(name, Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(name->text(), u"Warren Rose of Kent");

    auto *breed = child<QComboBox>(win(), "Rtype");
    breed->lineEdit()->setFocus();
    QTest::keyClicks(breed->lineEdit(), QString(32, u'x'));
    EXPECT_EQ(breed->currentText().size(), 30);
    EXPECT_EQ(fx.prompts.beeps, 2) << "each refused key rings the bell";
    auto *breeder = child<QComboBox>(win(), "RBreeder");
    breeder->setFocus();
    QTest::keyClicks(breeder, QString(40, u'y'));
    EXPECT_EQ(breeder->currentText().size(), 35) << "keys typed into the list itself stop at the breeder's 35";
    EXPECT_EQ(fx.prompts.beeps, 7);

    auto *dob = child<QLineEdit>(win(), "RDOB");
    dob->setFocus();
    dob->home(false);
    QTest::keyClicks(dob, u"3102"_s);
    name->setFocus();
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"Date: 31/02/____ is not valid"_s}));
    QApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), dob) << "the focus goes back to the bad date";
}

} // namespace

namespace {

// The short pedigree is drawn as the pedigree window draws it: each parent joined by lines
// to its own sire and dam.
TEST_F(StockRecordPanelTest, ShortPedigreeJoinsEachParentToItsParents)
{
    auto *lines = w->findChild<QWidget *>(u"LinShortPedigree"_s);
    ASSERT_NE(lines, nullptr);
    auto *sire = child<QWidget>(win(), "lblbrrel_0");
    auto *sireOfSire = child<QWidget>(win(), "lblbrrel_2");
    auto *damOfSire = child<QWidget>(win(), "lblbrrel_3");
    EXPECT_EQ(lines->parentWidget(), sire->parentWidget());
    // The lines run between the boxes: from below the sire to the left edge of each of its parents.
    for (QWidget *parent : {sireOfSire, damOfSire}) {
        const QPoint joined(parent->x(), parent->y() + parent->height() / 2);
        bool found = false;
        const QImage drawn = lines->grab().toImage();
        for (int dx = -6; dx <= -1 && !found; ++dx)
            found = drawn.pixelColor(joined + QPoint(dx, 0)) == lines->palette().color(QPalette::WindowText);
        EXPECT_TRUE(found) << parent->objectName().toStdString() << " is not joined";
    }
    EXPECT_LT(sire->x(), sireOfSire->x()) << "the grandparents stand to the right of their child";
}

} // namespace
