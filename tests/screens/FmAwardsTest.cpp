#include "MainWindow.h"
#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "breeding/screens/FmAwards.h"
#include "store/StudDatabase.h"

#include <QApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class FmAwardsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        jet = fx.add({{u"Name"_s, u"Jet"_s}, {u"Sex"_s, u"Buck"_s}});
        fx.session.CurrentStockNo = jet;
        fx.session.CurrentStockName = u"Jet"_s;
    }
    /// The screen on Jet, shown and active so that the focus moves as a user moves it.
    FmAwards &open()
    {
        w = std::make_unique<FmAwards>(fx.session, fx.prompts);
        w->show();
        QApplication::setActiveWindow(w.get());
        return *w;
    }
    QTreeWidget *list() { return child<QTreeWidget>(*w, "lv"); }
    QStringList row(int i)
    {
        QStringList texts;
        for (int c = 0; c < list()->columnCount(); ++c)
            texts << list()->topLevelItem(i)->text(c);
        return texts;
    }
    QStringList heads()
    {
        QStringList texts;
        for (int c = 0; c < list()->columnCount(); ++c)
            texts << list()->headerItem()->text(c);
        return texts;
    }
    void typeList(const char *name, const QString &text)
    {
        auto *combo = child<QComboBox>(*w, name);
        combo->setFocus();
        combo->lineEdit()->clear();
        QTest::keyClicks(combo, text);
    }
    void clickHead(int column)
    {
        QHeaderView *head = list()->header();
        QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                          QPoint(head->sectionViewportPosition(column) + 4, head->height() / 2));
    }
    /// Moves the focus as a user's Tab or click would, so that the field left hears of it.
    void focus(const char *name) { child<QWidget>(*w, name)->setFocus(); }
    void typeField(const char *name, const QString &text)
    {
        focus(name);
        type(*w, name, text);
    }
    QString status() { return child<QStatusBar>(*w, "SBar")->currentMessage(); }
    void newAward(const QString &date, const QString &award, const QString &venue)
    {
        click(*w, "CmdNew");
        typeField("ADate", date);
        typeList("AVenue", venue);
        typeList("AAward", award);
        click(*w, "CmdUpdate");
    }

    StudFixture fx;
    Database *db = nullptr;
    qint64 jet = 0;
    std::unique_ptr<FmAwards> w;
};

TEST_F(FmAwardsTest, NewAwardsWithPointsAndTheirSecretaryAndColumnSorting)
{
    db->execute(u"INSERT INTO Awards (Number, Date, Venue, Secretary, Judge) VALUES (?, 45000, 'Bath RC', 'Ann Lee', 'R. Moss')"_s,
                {jet + 1});
    fx.session.PointsName = u"Stars"_s;
    fx.session.MaxPoints = 4;
    FmAwards &d = open();
    EXPECT_EQ(d.windowTitle(), u"Awards For Jet");
    EXPECT_TRUE(list()->isHidden()) << "no awards: no list";
    EXPECT_TRUE(child<QWidget>(d, "CmdAmend")->isHidden());
    EXPECT_TRUE(child<QWidget>(d, "CmdDelete")->isHidden());
    EXPECT_EQ(child<QGroupBox>(d, "FrAwardList")->title(), u"Awards List:");
    EXPECT_EQ(child<QLabel>(d, "Label3_1")->text(), u"Stars");

    click(d, "CmdNew");
    EXPECT_TRUE(child<QWidget>(d, "FrAwardList")->isHidden());
    EXPECT_EQ(child<QGroupBox>(d, "FrNewAmend")->title(), u"Create Award Details:");
    EXPECT_EQ(status(), u"Enter show date");
    EXPECT_EQ(child<QLineEdit>(d, "AEntered")->displayText(), u"___");
    EXPECT_EQ(child<QComboBox>(d, "AStars")->count(), 5);
    typeField("ADate", u"05032024"_s);
    typeList("AVenue", u"Bath RC"_s);
    typeList("AJudge", u"x"_s.repeated(21));
    EXPECT_EQ(child<QComboBox>(d, "AJudge")->currentText(), u"x"_s.repeated(20));
    EXPECT_EQ(fx.prompts.beeps, 1) << "the 21st letter is refused";
    EXPECT_EQ(child<QComboBox>(d, "ASecretary")->currentText(), u"Ann Lee") << "the club's secretary, on leaving the club";
    EXPECT_EQ(status(), u"Select or enter name of judge");
    pick(d, "AStars", u"3"_s);
    typeList("AAward", u"cc"_s);
    typeField("AEntered", u"12"_s);
    EXPECT_EQ(child<QComboBox>(d, "ACCStars")->currentText(), u"3") << "a challenge certificate takes the show's stars";
    typeField("AShown", u"9"_s);
    focus("AComments");
    QTest::keyClicks(child<QPlainTextEdit>(d, "AComments"), u"Good coat"_s);
    EXPECT_EQ(status(), u"Enter judge critique or comments");
    click(d, "CmdUpdate");
    EXPECT_TRUE(child<QWidget>(d, "FrNewAmend")->isHidden());
    ASSERT_EQ(list()->topLevelItemCount(), 1);
    EXPECT_EQ(row(0), (QStringList{u"05/03/24"_s, u"cc"_s, u"3"_s, u"3"_s, u"x"_s.repeated(20), u"Bath RC"_s, u"9"_s}));
    EXPECT_EQ(d.windowTitle(), u"Awards For Jet (Total CC Stars: 3)");
    EXPECT_EQ(status(), u"If required, click on award to amend/delete or Column heading to sort");
    EXPECT_EQ(db->scalar(u"SELECT Comments FROM Awards WHERE Number = ?"_s, {jet}).toString(), u"Good coat");
    EXPECT_EQ(db->scalar(u"SELECT NoEntered FROM Awards WHERE Number = ?"_s, {jet}).toInt(), 12);

    // A blank date keeps the award on screen.
    click(d, "CmdNew");
    typeList("AAward", u"BOB"_s);
    click(d, "CmdUpdate");
    EXPECT_EQ(fx.prompts.texts().last(), u"A valid date must be entered");
    EXPECT_FALSE(child<QWidget>(d, "FrNewAmend")->isHidden());
    EXPECT_EQ(child<QComboBox>(d, "AAward")->currentText(), u"BOB");
    typeField("ADate", u"20111999"_s);
    click(d, "CmdUpdate");
    newAward(u"01012024"_s, u"1st"_s, u"Avon"_s);
    EXPECT_EQ(child<QComboBox>(d, "AAward")->findText(u"BOB"_s), 1) << "a new award is offered at once";

    // Heads: "Date v" names the column in order; a click on it reverses it.
    ASSERT_EQ(list()->topLevelItemCount(), 3);
    EXPECT_EQ(heads(), (QStringList{u"Date v"_s, u"Award"_s, u"Stars"_s, u"Awarded"_s, u"Judge"_s, u"Club"_s,
                                    u"Shown"_s}));
    EXPECT_EQ(row(0).first(), u"20/11/99");
    clickHead(0);
    EXPECT_EQ(heads().first(), u"Date v");
    EXPECT_EQ(row(0).first(), u"05/03/24");
    EXPECT_EQ(row(2).first(), u"20/11/99") << "1999 sorts before 2024 although its text is larger";
    clickHead(0);
    EXPECT_EQ(heads().first(), u"Date ^");
    EXPECT_EQ(row(0).first(), u"20/11/99");
    clickHead(1);
    EXPECT_EQ(heads().mid(0, 2), (QStringList{u"Date"_s, u"Award ^"_s}));
    EXPECT_EQ(row(0).at(1), u"1st");
    clickHead(1);
    EXPECT_EQ(heads().at(1), u"Award v");
    EXPECT_EQ(row(0).at(1), u"cc");
    EXPECT_TRUE(list()->topLevelItem(0)->isSelected());
}

TEST_F(FmAwardsTest, AmendDeleteAndTheBestAward)
{
    fx.session.PointsOn = false;
    db->execute(u"INSERT INTO Awards (Number, Date, Award, Judge, Stars, CCStars, NoShown) "
                u"VALUES (?, 45000, 'CC', 'R. Moss', '2', '2', 14)"_s,
                {jet});
    FmAwards &d = open();
    EXPECT_TRUE(child<QWidget>(d, "AStars")->isHidden());
    EXPECT_TRUE(child<QWidget>(d, "Label2")->isHidden());
    EXPECT_EQ(d.windowTitle(), u"Awards For Jet") << "no total without the points system";
    newAward(u"01012024"_s, u"Best of Breed"_s, u"Avon"_s);
    ASSERT_EQ(list()->topLevelItemCount(), 2);
    EXPECT_EQ(heads(), (QStringList{u"Date v"_s, u"Award"_s, u"Judge"_s, u"Club"_s, u"Shown"_s}));
    EXPECT_EQ(row(0), (QStringList{u"15/03/23"_s, u"CC"_s, u"R. Moss"_s, QString(), u"14"_s}));

    // Amend the first award: its fields come back, and the stars stay untouched.
    list()->setCurrentItem(list()->topLevelItem(0));
    click(d, "CmdAmend");
    EXPECT_EQ(child<QGroupBox>(d, "FrNewAmend")->title(), u"Amend Award Details:");
    EXPECT_EQ(child<QLineEdit>(d, "ADate")->text(), u"15/03/2023");
    EXPECT_EQ(child<QComboBox>(d, "AJudge")->currentText(), u"R. Moss");
    EXPECT_EQ(child<QLineEdit>(d, "AShown")->text(), u"14");
    typeList("AJudge", u"J. Hale"_s);
    typeList("AVenue", u"Bath RC"_s);
    click(d, "CmdUpdate");
    EXPECT_EQ(row(0), (QStringList{u"15/03/23"_s, u"CC"_s, u"J. Hale"_s, u"Bath RC"_s, u"14"_s}));
    EXPECT_EQ(db->scalar(u"SELECT Stars || CCStars FROM Awards WHERE Award = 'CC'"_s).toString(), u"22");

    // Escape gives up an amendment; nothing selected is said so.
    click(d, "CmdAmend");
    typeList("AJudge", u"Nobody"_s);
    QTest::keyClick(child<QComboBox>(d, "AJudge"), Qt::Key_Escape);
    EXPECT_FALSE(child<QWidget>(d, "FrAwardList")->isHidden());
    EXPECT_TRUE(d.isVisible());
    EXPECT_EQ(row(0).at(2), u"J. Hale");
    list()->clearSelection();
    click(d, "CmdAmend");
    EXPECT_EQ(fx.prompts.texts().last(), u"Nothing Selected");

    // The best award: the animal's awards by date, free text cut to 25 letters.
    click(d, "CmdBest");
    EXPECT_FALSE(child<QWidget>(d, "FrmBestAward")->isHidden());
    EXPECT_EQ(status(), u"Enter/Select Best Award");
    auto *best = child<QComboBox>(d, "CmbBestAward");
    ASSERT_EQ(best->count(), 2);
    EXPECT_EQ(best->itemText(0), u"CC");
    EXPECT_EQ(best->itemText(1), u"Best of Breed");
    best->setEditText(u"Best in Show, Adult Bucks 2024"_s);
    click(d, "CCmdBestUpdate");
    EXPECT_EQ(db->scalar(u"SELECT BestAward FROM Stock WHERE Number = ?"_s, {jet}).toString(),
              u"Best in Show, Adult Bucks");
    EXPECT_FALSE(child<QWidget>(d, "FrAwardList")->isHidden());
    click(d, "CmdBest");
    EXPECT_EQ(best->currentText(), u"Best in Show, Adult Bucks");
    EXPECT_EQ(best->itemText(0), u"Best in Show, Adult Bucks");
    best->setEditText(u"Other"_s);
    click(d, "CmdBestCancel");
    EXPECT_EQ(db->scalar(u"SELECT BestAward FROM Stock WHERE Number = ?"_s, {jet}).toString(),
              u"Best in Show, Adult Bucks");

    // Delete: No keeps the award, Yes removes it; the last one gone hides the list.
    list()->setCurrentItem(list()->topLevelItem(1));
    fx.prompts.answerNo();
    click(d, "CmdDelete");
    EXPECT_EQ(list()->topLevelItemCount(), 2);
    fx.prompts.answerYes();
    list()->setCurrentItem(list()->topLevelItem(1));
    click(d, "CmdDelete");
    ASSERT_EQ(list()->topLevelItemCount(), 1);
    EXPECT_EQ(row(0).at(1), u"CC");
    fx.prompts.answerYes();
    click(d, "CmdDelete");
    EXPECT_EQ(fx.prompts.texts().last(), u"Remove This Award");
    EXPECT_TRUE(list()->isHidden());
    EXPECT_TRUE(child<QWidget>(d, "CmdDelete")->isHidden());
    EXPECT_TRUE(fx.prompts.allAnswered());
    click(d, "CmdCancel");
    EXPECT_FALSE(d.isVisible());
}

// The record screen's Award button opens the screen on the animal on show, and the best
// award chosen there is kept on it.
TEST(FmAwardsMainWindowTest, TheRecordScreenOpensTheAwardsOfTheAnimalInHand)
{
    StudFixture fx;
    auto window = startMainWindow(fx);
    ASSERT_TRUE(window);
    const qint64 hazel = fx.add({{u"Name"_s, u"Hazel"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
    ModalScript modals;
    modals.on(u"FmAwards"_s, [&](QDialog &dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Awards For Hazel");
        click(dialog, "CmdBest");
        child<QComboBox>(dialog, "CmbBestAward")->setEditText(u"Supreme Exhibit"_s);
        click(dialog, "CCmdBestUpdate");
        return int(QDialog::Rejected);
    });
    click(*window, "CmdBrowse");
    click(*window, "CmdAwards");
    EXPECT_EQ(modals.shown[u"FmAwards"_s], 1);
    EXPECT_EQ(fx.session.Stud->handle().scalar(u"SELECT BestAward FROM Stock WHERE Number = ?"_s, {hazel}).toString(),
              u"Supreme Exhibit");
}

} // namespace
