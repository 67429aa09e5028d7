#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "breeding/Matings.h"
#include "breeding/screens/FmMatings.h"
#include "core/Options.h"
#include "core/StudLoader.h"
#include "store/StudDatabase.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTreeWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class FmMatingsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        fx.session.clock = &clock;
        Options(fx.session).set(Opt::GestationInDays, u"31"_s);
        jet = fx.add({{u"Name"_s, u"Jet"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
        bramble = fx.add({{u"Name"_s, u"Bramble"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
        fern = fx.add({{u"Name"_s, u"Fern"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
        inHand(jet, u"Jet"_s);
    }
    void inHand(qint64 number, const QString &name)
    {
        fx.session.CurrentStockNo = number;
        fx.session.CurrentStockName = name;
    }
    /// A mating saved as the screen saves it, without diary lines.
    void mate(qint64 dam, const QString &mated, const QString &due)
    {
        Matings m(fx.session, fx.prompts, jet);
        ASSERT_TRUE(m.open());
        MatingForm f;
        f.partner = dam;
        f.matingDate = mated;
        f.birthDate = due;
        QString focus;
        ASSERT_TRUE(m.save(f, &focus));
    }
    /// The screen opened on the animal in hand, shown and active.
    std::unique_ptr<FmMatings> openScreen()
    {
        auto w = std::make_unique<FmMatings>(fx.session, fx.prompts);
        EXPECT_TRUE(w->start());
        w->show();
        QApplication::setActiveWindow(w.get());
        return w;
    }
    static QStringList row(QTreeWidget *lv, int i)
    {
        const QTreeWidgetItem *item = lv->topLevelItem(i);
        return item ? QStringList{item->text(0), item->text(1), item->text(2)} : QStringList();
    }
    static QStringList heads(QTreeWidget *lv)
    {
        return {lv->headerItem()->text(0), lv->headerItem()->text(1), lv->headerItem()->text(2)};
    }
    static QString status(QWidget &w) { return child<QStatusBar>(w, "SBar")->currentMessage(); }
    QStringList diary()
    {
        QStringList lines;
        db->eachRow(u"SELECT Number, Notes FROM BreedNote ORDER BY \"Unique\""_s, {},
                    [&](const Row &r) { lines << u"%1 %2"_s.arg(r.number(u"Number"_s)).arg(r.text(u"Notes"_s)); });
        return lines;
    }

    StudFixture fx;
    Database *db = nullptr;
    qint64 jet = 0, bramble = 0, fern = 0;
    struct FixedClock : Clock
    {
        QDateTime now() const override { return QDateTime(QDate(2024, 1, 15), QTime(9, 0)); }
    } clock;
};

TEST_F(FmMatingsTest, AnimalOfUnknownSexGetsNoScreen)
{
    inHand(fx.add({{u"Name"_s, u"Kit"_s}, {u"Archive"_s, u"No"_s}}), u"Kit"_s);
    FmMatings w(fx.session, fx.prompts);
    EXPECT_FALSE(w.start());
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"Matings Cannot be Recorded"_s}));
    EXPECT_EQ(fx.prompts.messages[0].title, u"Unknown Sex");
}

TEST_F(FmMatingsTest, NewMatingTakesTodayAndTheDueDateAndWritesBothDiaries)
{
    auto w = openScreen();
    EXPECT_EQ(w->windowTitle(), u"Matings For Jet");
    auto *lv = child<QTreeWidget>(*w, "lv");
    EXPECT_EQ(heads(lv), QStringList({u"Mating Date v"_s, u"Birth Date"_s, u"Dam"_s}));
    EXPECT_EQ(lv->topLevelItemCount(), 0);
    EXPECT_FALSE(child<QPushButton>(*w, "CmdAmend")->isEnabled());
    EXPECT_FALSE(child<QPushButton>(*w, "cmdDelete")->isEnabled());
    EXPECT_FALSE(child<QWidget>(*w, "FrNewAmend")->isVisible());

    click(*w, "cmdNew");
    EXPECT_FALSE(child<QWidget>(*w, "FrMatingList")->isVisible());
    EXPECT_FALSE(child<QWidget>(*w, "pbcontrol")->isVisible());
    EXPECT_TRUE(child<QWidget>(*w, "PbNewAmend")->isVisible());
    EXPECT_EQ(child<QGroupBox>(*w, "FrNewAmend")->title(), u"Create Mating Details:");
    EXPECT_EQ(child<QLabel>(*w, "LblSireDam")->text(), u"Dam");
    auto *partner = child<QComboBox>(*w, "MSireDam");
    EXPECT_EQ(partner->currentIndex(), -1);
    ASSERT_EQ(partner->count(), 2) << "the dams, without a blank entry";
    EXPECT_EQ(partner->itemText(0), u"Bramble");
    auto *diaryTick = child<QCheckBox>(*w, "ChkUpdateDiary");
    EXPECT_TRUE(diaryTick->isVisible());
    EXPECT_TRUE(diaryTick->isChecked());
    EXPECT_EQ(status(*w), u"Select Partner");

    // Ok without a partner is refused and the panel stays.
    click(*w, "CmdUpdate");
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"A partner must be selected"_s}));
    EXPECT_TRUE(child<QWidget>(*w, "FrNewAmend")->isVisible());

    // Leaving the blank mating day gives today and the day 31 days on.
    pick(*w, "MSireDam", u"Bramble"_s);
    auto *mated = child<QLineEdit>(*w, "MMatingDate");
    auto *due = child<QLineEdit>(*w, "MBirthDate");
    mated->setFocus();
    EXPECT_EQ(status(*w), u"Enter Mating Date or Tab for Today");
    QTest::keyClick(mated, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), due);
    EXPECT_EQ(mated->displayText(), u"15/01/2024");
    EXPECT_EQ(due->displayText(), u"15/02/2024");
    EXPECT_EQ(status(*w), u"Enter Expected Birth Date");
    diaryTick->setFocus();
    EXPECT_EQ(status(*w), u"Update Diary Entry for Sire and Dam");
    click(*w, "CmdUpdate");
    EXPECT_TRUE(child<QWidget>(*w, "FrMatingList")->isVisible());
    EXPECT_FALSE(child<QWidget>(*w, "FrNewAmend")->isVisible());
    ASSERT_EQ(lv->topLevelItemCount(), 1);
    EXPECT_EQ(row(lv, 0), QStringList({u"15/01/2024"_s, u"15/02/2024"_s, u"Bramble"_s}));
    EXPECT_EQ(status(*w), u"If required, click on mating to amend/delete or Column heading to sort");
    EXPECT_EQ(diary(), QStringList({u"%1 Mated to Bramble  - Due 15/02/2024"_s.arg(jet),
                                    u"%1 Mated to Jet  - Due 15/02/2024"_s.arg(bramble)}));

    // Ok pressed straight from the blank mating day fills it in on the way; no diary unticked.
    click(*w, "cmdNew");
    EXPECT_EQ(mated->displayText(), fx.session.Dates.BlankDate);
    EXPECT_EQ(partner->currentIndex(), -1);
    pick(*w, "MSireDam", u"Fern"_s);
    diaryTick->setChecked(false);
    mated->setFocus();
    click(*w, "CmdUpdate");
    ASSERT_EQ(lv->topLevelItemCount(), 2);
    EXPECT_EQ(row(lv, 1), QStringList({u"15/01/2024"_s, u"15/02/2024"_s, u"Fern"_s}));
    EXPECT_EQ(diary().size(), 2);
    EXPECT_EQ(fx.prompts.messages.size(), 1);

    // The doe sees the mating from her side.
    inHand(bramble, u"Bramble"_s);
    auto doe = openScreen();
    auto *doeList = child<QTreeWidget>(*doe, "lv");
    EXPECT_EQ(heads(doeList), QStringList({u"Mating Date v"_s, u"Birth Date"_s, u"Sire"_s}));
    ASSERT_EQ(doeList->topLevelItemCount(), 1);
    EXPECT_EQ(row(doeList, 0), QStringList({u"15/01/2024"_s, u"15/02/2024"_s, u"Jet"_s}));
}

TEST_F(FmMatingsTest, AmendingAMatingWhosePartnerIsGoneAndDeleting)
{
    mate(bramble, u"01/03/2024"_s, u"01/04/2024"_s);
    mate(fern, u"05/01/2024"_s, u"05/02/2024"_s);
    db->execute(u"DELETE FROM Stock WHERE Number = ?"_s, {fern});
    Refill_All_Lists(fx.session);
    auto w = openScreen();
    auto *lv = child<QTreeWidget>(*w, "lv");
    ASSERT_EQ(lv->topLevelItemCount(), 2);
    EXPECT_EQ(row(lv, 1), QStringList({u"05/01/2024"_s, u"05/02/2024"_s, u"Not Found"_s}));

    lv->setCurrentItem(lv->topLevelItem(1));
    EXPECT_TRUE(child<QPushButton>(*w, "CmdAmend")->isEnabled());
    EXPECT_TRUE(child<QPushButton>(*w, "cmdDelete")->isEnabled());
    click(*w, "CmdAmend");
    EXPECT_EQ(child<QGroupBox>(*w, "FrNewAmend")->title(), u"Amend Mating Details:");
    EXPECT_FALSE(child<QCheckBox>(*w, "ChkUpdateDiary")->isVisible());
    auto *partner = child<QComboBox>(*w, "MSireDam");
    EXPECT_EQ(partner->currentText(), u"<Not Found>");
    auto *mated = child<QLineEdit>(*w, "MMatingDate");
    auto *due = child<QLineEdit>(*w, "MBirthDate");
    EXPECT_EQ(mated->displayText(), u"05/01/2024");
    EXPECT_EQ(due->displayText(), u"05/02/2024");

    // A new mating day leaves the birth day as it stands.
    mated->setFocus();
    type(*w, "MMatingDate", u"06012024"_s);
    QTest::keyClick(mated, Qt::Key_Tab);
    EXPECT_EQ(mated->displayText(), u"06/01/2024");
    EXPECT_EQ(due->displayText(), u"05/02/2024");

    // "<Not Found>" is no partner: refused, and what was typed stays.
    click(*w, "CmdUpdate");
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"A partner must be selected"_s}));
    EXPECT_TRUE(child<QWidget>(*w, "FrNewAmend")->isVisible());
    EXPECT_EQ(mated->displayText(), u"06/01/2024");
    pick(*w, "MSireDam", u"Bramble"_s);
    click(*w, "CmdUpdate");
    ASSERT_EQ(lv->topLevelItemCount(), 2);
    EXPECT_EQ(row(lv, 1), QStringList({u"06/01/2024"_s, u"05/02/2024"_s, u"Bramble"_s}));
    EXPECT_TRUE(diary().isEmpty()) << "amending writes no diary line";

    // The next New starts without the "<Not Found>" entry.
    click(*w, "cmdNew");
    EXPECT_EQ(partner->count(), 1);
    click(*w, "CmdNACancel");
    EXPECT_TRUE(child<QWidget>(*w, "FrMatingList")->isVisible());

    // Delete asks; No keeps the mating, Yes removes it.
    lv->setCurrentItem(lv->topLevelItem(0));
    fx.prompts.answerNo();
    click(*w, "cmdDelete");
    EXPECT_EQ(lv->topLevelItemCount(), 2);
    fx.prompts.answerYes();
    click(*w, "cmdDelete");
    ASSERT_EQ(lv->topLevelItemCount(), 1);
    EXPECT_EQ(row(lv, 0)[0], u"06/01/2024");
    EXPECT_EQ(fx.prompts.texts().mid(1), QStringList({u"Remove This Mating"_s, u"Remove This Mating"_s}));
    EXPECT_FALSE(child<QPushButton>(*w, "CmdAmend")->isEnabled()) << "nothing selected after the list is filled";
    EXPECT_TRUE(fx.prompts.allAnswered());

    click(*w, "CmdCancel");
    EXPECT_FALSE(w->isVisible());
}

TEST_F(FmMatingsTest, ColumnHeadsSortByDateAndPartnerAndFlip)
{
    const qint64 acorn = fx.add({{u"Name"_s, u"Acorn"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
    mate(bramble, u"10/02/2024"_s, u"12/03/2024"_s);
    mate(fern, u"05/01/2025"_s, u"05/02/2025"_s);
    mate(acorn, u"20/12/2023"_s, u"20/01/2024"_s);
    auto w = openScreen();
    auto *lv = child<QTreeWidget>(*w, "lv");
    const auto partners = [&] {
        QStringList names;
        for (int i = 0; i < lv->topLevelItemCount(); ++i)
            names << lv->topLevelItem(i)->text(2);
        return names;
    };
    EXPECT_EQ(partners(), QStringList({u"Bramble"_s, u"Fern"_s, u"Acorn"_s})) << "in the order entered";

    // The list starts marked ascending on the mating day, so its first click reverses.
    Q_EMIT lv->header()->sectionClicked(0);
    EXPECT_EQ(heads(lv), QStringList({u"Mating Date ^"_s, u"Birth Date"_s, u"Dam"_s}));
    EXPECT_EQ(partners(), QStringList({u"Fern"_s, u"Bramble"_s, u"Acorn"_s}));
    EXPECT_TRUE(child<QPushButton>(*w, "CmdAmend")->isEnabled()) << "the first row is selected";
    Q_EMIT lv->header()->sectionClicked(0);
    EXPECT_EQ(heads(lv)[0], u"Mating Date v");
    EXPECT_EQ(partners(), QStringList({u"Acorn"_s, u"Bramble"_s, u"Fern"_s}));
    EXPECT_EQ(row(lv, 0), QStringList({u"20/12/2023"_s, u"20/01/2024"_s, u"Acorn"_s})) << "shown as the stud writes dates";

    Q_EMIT lv->header()->sectionClicked(1);
    EXPECT_EQ(heads(lv), QStringList({u"Mating Date"_s, u"Birth Date v"_s, u"Dam"_s}));
    EXPECT_EQ(partners(), QStringList({u"Acorn"_s, u"Bramble"_s, u"Fern"_s}));
    Q_EMIT lv->header()->sectionClicked(1);
    EXPECT_EQ(partners(), QStringList({u"Fern"_s, u"Bramble"_s, u"Acorn"_s}));

    Q_EMIT lv->header()->sectionClicked(2);
    EXPECT_EQ(heads(lv), QStringList({u"Mating Date"_s, u"Birth Date"_s, u"Dam v"_s}));
    EXPECT_EQ(partners(), QStringList({u"Acorn"_s, u"Bramble"_s, u"Fern"_s}));
    Q_EMIT lv->header()->sectionClicked(2);
    EXPECT_EQ(partners(), QStringList({u"Fern"_s, u"Bramble"_s, u"Acorn"_s}));

    // Amend works on the row selected whatever the order.
    lv->setCurrentItem(lv->topLevelItem(2));
    click(*w, "CmdAmend");
    EXPECT_EQ(child<QComboBox>(*w, "MSireDam")->currentText(), u"Acorn");
    EXPECT_EQ(child<QLineEdit>(*w, "MMatingDate")->displayText(), u"20/12/2023");
}

} // namespace
