#include "MainWindow.h"
#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "core/Options.h"
#include "pedigree/screens/fmPedCreate.h"
#include "reporting/screens/FmDuplicate.h"
#include "stock/screens/StockRecordPanel.h"
#include "store/StudDatabase.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

QString label(QWidget &w, const char *name)
{
    return child<QLabel>(w, name)->text();
}

TEST(FmDuplicate, StepsThroughTheMatchesAndGivesTheAnswer)
{
    StudFixture fx;
    Database &db = fx.open();
    fx.session.FatherWord = u"  Sire"_s;
    const qint64 jack = addAnimal(db, {{u"Name"_s, u"Jack"_s}});
    const qint64 first = addAnimal(db, {{u"Name"_s, u"Sooty"_s}, {u"Sex"_s, u"Doe"_s}, {u"RingNo"_s, u"R7"_s},
                                        {u"Sire"_s, jack}});
    addAnimal(db, {{u"Name"_s, u"SOOTY"_s}, {u"Sex"_s, u"Buck"_s}});
    addAnimal(db, {{u"Name"_s, u"sooty"_s}});
    DuplicateWarning warning(db, findDuplicates(db, u"Sooty"_s, {}, fx.session.IdWord));

    FmDuplicate w(fx.session, warning);
    EXPECT_EQ(w.windowTitle(), u"Duplicate Warning");
    EXPECT_EQ(child<QGroupBox>(w, "FrmDuplicate")->title(), u"Possible Duplicate Found");
    EXPECT_EQ(label(w, "lblDupeText"), u"3 other animals already exist with the same Name");
    EXPECT_EQ(label(w, "lblsire"), u"Sire") << "the term trimmed on the left";
    EXPECT_EQ(label(w, "lbldam"), u"Dam");
    EXPECT_EQ(label(w, "lblid"), u"Ring No.");
    EXPECT_EQ(label(w, "lblQuestion"), u"Do you want to continue creating this record?");
    EXPECT_EQ(child<QPushButton>(w, "CmdPrevious")->text(), u"< Previous Match");
    EXPECT_EQ(child<QPushButton>(w, "CmdNext")->text(), u"Next Match >");
    EXPECT_EQ(child<QPushButton>(w, "CmdEnquiry")->text(), u"Show Details");
    EXPECT_EQ((QStringList{label(w, "lblAName"), label(w, "lblASex"), label(w, "lblAid"), label(w, "lblASire"),
                           label(w, "lblADam")}),
              (QStringList{u"Sooty"_s, u"Doe"_s, u"R7"_s, u"Jack"_s, QString()}));
    EXPECT_FALSE(child<QWidget>(w, "CmdPrevious")->isEnabled());
    EXPECT_TRUE(child<QWidget>(w, "CmdNext")->isEnabled());

    click(w, "CmdNext");
    EXPECT_EQ(label(w, "lblAName"), u"SOOTY");
    EXPECT_EQ(label(w, "lblASex"), u"Buck");
    EXPECT_EQ(label(w, "lblASire"), QString());
    EXPECT_TRUE(child<QWidget>(w, "CmdPrevious")->isEnabled());
    EXPECT_TRUE(child<QWidget>(w, "CmdNext")->isEnabled());
    click(w, "CmdNext");
    EXPECT_EQ(label(w, "lblAName"), u"sooty");
    EXPECT_FALSE(child<QWidget>(w, "CmdNext")->isEnabled());
    click(w, "CmdPrevious");
    click(w, "CmdPrevious");
    EXPECT_EQ(label(w, "lblAName"), u"Sooty");
    EXPECT_FALSE(child<QWidget>(w, "CmdPrevious")->isEnabled());

    ModalScript modals;
    modals.on(u"fmStockenq"_s, [&](QDialog &d) {
        EXPECT_EQ(child<QLineEdit>(d, "TxtName")->text(), u"Sooty");
        EXPECT_EQ(child<QLineEdit>(d, "RSire")->text(), u"Jack");
        return int(QDialog::Rejected);
    });
    click(w, "CmdEnquiry");
    EXPECT_EQ(modals.shown[u"fmStockenq"_s], 1);
    EXPECT_EQ(warning.current().number, first) << "the details leave the warning where it was";

    modals.on(u"FmDuplicate"_s, [](QDialog &d) {
        click(d, "CmdYesNo_1");
        return d.result();
    });
    EXPECT_EQ(w.CreateRecord(), DuplicateAnswer::GivenUp);
    modals.on(u"FmDuplicate"_s, [](QDialog &d) {
        click(d, "CmdYesNo_0");
        return d.result();
    });
    EXPECT_EQ(w.CreateRecord(), DuplicateAnswer::Kept);
    modals.on(u"FmDuplicate"_s, [](QDialog &) { return int(QDialog::Rejected); });
    EXPECT_EQ(w.CreateRecord(), DuplicateAnswer::Kept) << "closed without an answer, the animal stays";
}

// On the record screen: leaving the name or the identification of a new animal warns of the
// animal already there, as the stud's options ask; No gives the new animal up.
TEST(FmDuplicate, NewAnimalOnTheRecordScreenIsWarnedOfAndGivenUp)
{
    StudFixture fx;
    ModalScript modals;
    auto w = startMainWindow(fx);
    ASSERT_TRUE(w);
    Database &db = fx.session.Stud->handle();
    addAnimal(db, {{u"Name"_s, u"Sooty"_s}, {u"RingNo"_s, u"R7"_s}});
    Options options(fx.session);
    options.setFlag(Opt::DedupeOption, true, u"0"_s);
    options.setFlag(Opt::DedupeOption, true, u"2"_s);

    QStringList warnings;
    DuplicateAnswer answer = DuplicateAnswer::Kept;
    modals.on(u"FmDuplicate"_s, [&](QDialog &d) {
        warnings << label(d, "lblDupeText");
        click(d, answer == DuplicateAnswer::GivenUp ? "CmdYesNo_1" : "CmdYesNo_0");
        return d.result();
    });
    const auto leave = [&](const char *field, const QString &text, const char *next) {
        auto *edit = child<QLineEdit>(*w, field);
        edit->setFocus();
        type(*w, field, text);
        child<QWidget>(*w, next)->setFocus();
        QApplication::processEvents();
        // The main window comes back to the front after the warning, as the desktop brings it.
        QApplication::setActiveWindow(w.get());
    };

    click(*w, "CmdNew");
    leave("TxtName", u"SOOTY"_s, "TxtId1");
    EXPECT_EQ(warnings, QStringList{u"Another animal already exists with the same Name"_s})
        << "the warning taking the focus from the identification is no leaving of it";
    leave("TxtId1", u"R7"_s, "TxtId2");
    EXPECT_EQ(warnings.last(), u"Another animal already exists with the same Name & Ring No.");
    leave("TxtName", u"Sooty"_s, "CmdNewCancel");
    EXPECT_EQ(warnings.size(), 2) << "cancelling raises no warning";

    options.setFlag(Opt::DedupeOption, true, u"1"_s);
    answer = DuplicateAnswer::GivenUp;
    leave("TxtId1", u"r7"_s, "TxtId2");
    EXPECT_EQ(warnings.last(), u"Another animal already exists with the same Ring No.");
    EXPECT_EQ(w->recordPanel()->state(), StockRecordPanel::State::Closed) << "the new animal is given up";
    EXPECT_EQ(db.scalar(u"SELECT count(*) FROM Stock"_s).toInt(), 1);
}

// The pedigree's new ancestor: each box passes on its own text as its tick asks, and a
// declined ancestor goes back to the choice between searching and a new one.
TEST(FmDuplicate, NewAncestorIsCheckedOnLeavingItsBoxes)
{
    StudFixture fx;
    Database &db = fx.open();
    const qint64 kit = addAnimal(db, {{u"Name"_s, u"Kit"_s}});
    Options options(fx.session);
    options.setFlag(Opt::DedupeOption, true, u"0"_s);
    options.setFlag(Opt::DedupeOption, true, u"2"_s);
    fmPedCreate d(fx.session, fx.prompts, kit, u"Rex"_s, true);
    d.show();
    QApplication::setActiveWindow(&d);
    fx.shell.calls.clear();

    click(d, "CmdNew");
    type(d, "TxtFName", u"Jack"_s);
    child<QWidget>(d, "TxtFRingNo")->setFocus();
    type(d, "TxtFRingNo", u"R1"_s);
    fx.shell.duplicate = DuplicateAnswer::GivenUp;
    child<QWidget>(d, "CmbFType")->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(fx.shell.calls, (QStringList{u"duplicate Jack "_s, u"duplicate Jack R1"_s}));
    EXPECT_TRUE(child<QWidget>(d, "PbSelect")->isVisible()) << "the ancestor is given up";
    EXPECT_FALSE(child<QWidget>(d, "pbNew")->isVisible());
}

} // namespace
