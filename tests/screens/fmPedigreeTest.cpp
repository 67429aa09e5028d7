#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "core/StudLoader.h"
#include "pedigree/screens/FmTestMate.h"
#include "pedigree/screens/fmPedigree.h"
#include "store/StudDatabase.h"

#include <QFileInfo>
#include <QLabel>
#include <QPdfWriter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QRadioButton>
#include <QCheckBox>

#include <QTreeView>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class fmPedigreeTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Database &db = fx.open();
        grandsire = addAnimal(db, {{u"Name"_s, u"Old Grandad"_s}, {u"Colour"_s, u"Black"_s}});
        sire = addAnimal(db, {{u"Name"_s, u"Warren Jack"_s}, {u"Sire"_s, grandsire}, {u"Colour"_s, u"Otter"_s},
                              {u"Type"_s, u"Rex"_s}});
        subject = addAnimal(db, {{u"Name"_s, u"Bramble"_s}, {u"Sire"_s, sire}});
        fx.session.CurrentStockNo = subject;
        fx.session.CurrentStockName = u"Bramble"_s;
        fx.session.StudName = u"Warren End"_s;
    }

    StudFixture fx;
    ModalScript modals;
    qint64 grandsire = 0, sire = 0, subject = 0;
};

TEST_F(fmPedigreeTest, ShowsTheAncestorsAndOpensOneOnAClick)
{
    fmPedigree w(fx.session, fx.prompts);
    ASSERT_TRUE(w.start());
    w.show();
    EXPECT_EQ(w.windowTitle(), u"Pedigree For Bramble");
    EXPECT_EQ(child<QLabel>(w, "RPed_1")->text(), u"Sire: Warren Jack\nRex\nOtter");
    EXPECT_EQ(child<QLabel>(w, "RPed_2")->text(), u"Dam: \n\n");
    EXPECT_EQ(child<QLabel>(w, "RPed_3")->text(), u"Sire: Old Grandad\n\nBlack");
    EXPECT_EQ(child<QLabel>(w, "RPed_62")->text(), u"Dam: ");
    EXPECT_EQ(child<QComboBox>(w, "CmbGen")->currentText(), u"5 Generations");
    EXPECT_EQ(child<QComboBox>(w, "CmbGen")->toolTip(),
              u"Generations to Display/Print - Set  the default on the options screen");

    auto *gen3 = child<QLabel>(w, "RPed_7");
    auto *surface = child<QWidget>(w, "pb");
    const int fiveColumnWidth = gen3->width();
    QComboBox *generations = child<QComboBox>(w, "CmbGen");
    generations->setCurrentIndex(0);
    Q_EMIT generations->activated(0);
    EXPECT_EQ(fx.session.Generations, 3);
    EXPECT_GT(gen3->width(), fiveColumnWidth) << "three columns share the surface";
    EXPECT_GE(child<QLabel>(w, "RPed_15")->x(), surface->width()) << "the fourth column lies off the surface";

    pick(w, "CmbPedStyle", u"Name Based"_s);
    EXPECT_EQ(child<QLabel>(w, "RPed_1")->text(), u"Sire: Warren Jack\n");

    bool opened = false;
    modals.on(u"fmStockenq"_s, [&](QDialog &d) {
        opened = true;
        EXPECT_EQ(child<QLineEdit>(d, "TxtName")->text(), u"Old Grandad");
        return int(QDialog::Accepted);
    });
    QTest::mouseClick(child<QLabel>(w, "RPed_3"), Qt::LeftButton);
    EXPECT_TRUE(opened);
    EXPECT_EQ(fx.session.CurrentStockNo, subject);
    QTest::mouseClick(child<QLabel>(w, "RPed_4"), Qt::LeftButton); // empty: nothing opens
    EXPECT_EQ(modals.shown[u"fmStockenq"_s], 1);
}

TEST_F(fmPedigreeTest, RightButtonShowsTheSummaryWhileHeld)
{
    fmPedigree w(fx.session, fx.prompts);
    ASSERT_TRUE(w.start());
    w.show();
    auto *box = child<QLabel>(w, "RPed_1");
    QTest::mousePress(box, Qt::RightButton);
    auto *summary = child<QLabel>(w, "lbrfull");
    EXPECT_TRUE(summary->isVisible());
    EXPECT_EQ(summary->text(), u"Sire: Warren Jack\nRex\nOtter");
    QTest::mouseRelease(box, Qt::RightButton);
    EXPECT_FALSE(summary->isVisible());
}

TEST_F(fmPedigreeTest, PrintOptionsChangeTheTitle)
{
    fmPedigree w(fx.session, fx.prompts);
    ASSERT_TRUE(w.start());
    modals.on(u"fmPedOptions"_s, [](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Pedigree Print Options");
        EXPECT_EQ(child<QCheckBox>(d, "ChkPrintName")->text(), u"Print Name on Pedigree");
        child<QRadioButton>(d, "OptPrintType_1")->setChecked(true);
        click(d, "CmdOk");
        return d.result();
    });
    click(w, "CmdOptions");
    EXPECT_EQ(fx.session.PrintType, 1);
    EXPECT_EQ(w.windowTitle(), u"Stud Certificate For Bramble");
}

TEST_F(fmPedigreeTest, MissingSubjectIsReported)
{
    fx.session.CurrentStockNo = 777;
    fmPedigree w(fx.session, fx.prompts);
    EXPECT_FALSE(w.start());
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].text, u"Requested Stock Not Found");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Stop);
}

TEST_F(fmPedigreeTest, CreatingFillsAYellowPlaceWithANewOrAPickedAnimal)
{
    Database &db = fx.session.Stud->handle();
    const qint64 ancient = addAnimal(db, {{u"Name"_s, u"Ancient"_s}, {u"Sex"_s, u"Buck"_s}});
    const qint64 picked = addAnimal(db, {{u"Name"_s, u"Picked Doe"_s}, {u"Sex"_s, u"Doe"_s}, {u"Sire"_s, ancient}});
    fmPedigree w(fx.session, fx.prompts);
    ASSERT_TRUE(w.start());
    w.show();
    click(w, "CmdCreate");
    EXPECT_EQ(child<QLabel>(w, "RPed_2")->text(), u"Click Here To Create");

    modals.on(u"fmPedCreate"_s, [](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Fasttrack Pedigree Creation");
        click(d, "CmdNew");
        type(d, "TxtFName", u"New Dam"_s);
        click(d, "CmdAdd");
        return d.result();
    });
    QTest::mouseClick(child<QLabel>(w, "RPed_2"), Qt::LeftButton);
    EXPECT_EQ(child<QLabel>(w, "RPed_2")->text(), u"Dam: New Dam\n\n");
    EXPECT_EQ(child<QLabel>(w, "RPed_5")->text(), u"Click Here To Create") << "the new dam's own sire is next";
    const qint64 newDam = db.scalar(u"SELECT Dam FROM Stock WHERE Number = ?"_s, {subject}).toLongLong();
    EXPECT_EQ(db.scalar(u"SELECT Name FROM Stock WHERE Number = ?"_s, {newDam}).toString(), u"New Dam");

    fx.session.QuickSearchSex = u"Doe"_s;
    modals.on(u"fmPedCreate"_s, [](QDialog &d) {
        click(d, "CmdSearch");
        return d.result();
    });
    modals.on(u"FmQuickSrch"_s, [](QDialog &d) {
        type(d, "TxtFName", u"picked"_s);
        click(d, "CmdSearch");
        auto *list = child<QTreeView>(d, "SList");
        list->setCurrentIndex(list->model()->index(0, 0));
        click(d, "CmdSelect");
        return d.result();
    });
    QTest::mouseClick(child<QLabel>(w, "RPed_6"), Qt::LeftButton); // the dam's dam
    EXPECT_EQ(child<QLabel>(w, "RPed_6")->text(), u"Dam: Picked Doe\n\n");
    EXPECT_EQ(child<QLabel>(w, "RPed_13")->text(), u"Sire: Ancient\n\n") << "a picked animal brings its ancestors";
    EXPECT_EQ(db.scalar(u"SELECT Dam FROM Stock WHERE Number = ?"_s, {newDam}).toLongLong(), picked);
}

TEST_F(fmPedigreeTest, PrintsTheSheetThroughThePreviewAndToAPdfFile)
{
    fmPedigree w(fx.session, fx.prompts);
    ASSERT_TRUE(w.start());
    bool previewed = false;
    modals.on(u"fmPrintPreview"_s, [&](QDialog &d) {
        previewed = true;
        EXPECT_EQ(d.windowTitle(), u"Pedigree For Bramble");
        return int(QDialog::Rejected);
    });
    click(w, "CmdPrint");
    EXPECT_TRUE(previewed);

    QTemporaryDir dir;
    const QString file = dir.filePath(u"pedigree.pdf"_s);
    {
        QPdfWriter pdf(file);
        pdf.setPageSize(QPageSize(QPageSize::A4));
        EXPECT_TRUE(w.printSheet(&pdf));
    }
    EXPECT_GT(QFileInfo(file).size(), 1000);
    EXPECT_FALSE(child<QWidget>(w, "FrmProgress")->isVisible());

    // What the sheet says, read back from the PDF.
    const QString pdftotext = QStandardPaths::findExecutable(u"pdftotext"_s);
    if (pdftotext.isEmpty())
        GTEST_SKIP() << "pdftotext is not installed";
    QProcess reader;
    reader.start(pdftotext, {u"-layout"_s, file, u"-"_s});
    ASSERT_TRUE(reader.waitForFinished(20000));
    const QString text = QString::fromUtf8(reader.readAllStandardOutput());
    for (const QString &expected : {u"Warren End"_s, u"Pedigree of:"_s, u"Bramble"_s, u"Warren Jack"_s,
                                    u"Old Grandad"_s, u"Parents"_s, u"Grandparents"_s, u"G.G.G. GrandParents"_s,
                                    u"I certify this Pedigree to be correct to the best of my knowledge"_s})
        EXPECT_TRUE(text.contains(expected)) << expected.toStdString() << " not in:\n" << text.toStdString();
}

TEST_F(fmPedigreeTest, TestMatingShowsThePairsAncestorsAndStaysOpen)
{
    Database &db = fx.session.Stud->handle();
    db.execute(u"UPDATE Stock SET Sex = 'Buck', Archive = 'No' WHERE Number = ?"_s, {sire});
    const qint64 dam = addAnimal(db, {{u"Name"_s, u"Test Doe"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
    Refill_All_Lists(fx.session);
    FmTestMate mate(fx.session, fx.prompts);
    mate.show();
    click(mate, "CmdCalculate"); // nothing chosen: nothing happens
    EXPECT_EQ(modals.shown[u"fmPedigree"_s], 0);
    modals.on(u"fmPedigree"_s, [](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Pedigree For Test Mating");
        EXPECT_FALSE(child<QWidget>(d, "CmdCreate")->isVisible()) << "nothing can be created in a test mating";
        EXPECT_EQ(child<QLabel>(d, "RPed_1")->text(), u"Sire: Warren Jack\nRex\nOtter");
        EXPECT_EQ(child<QLabel>(d, "RPed_2")->text(), u"Dam: Test Doe\n\n");
        EXPECT_EQ(child<QLabel>(d, "RPed_3")->text(), u"Sire: Old Grandad\n\nBlack");
        return int(QDialog::Rejected);
    });
    pick(mate, "CmbSire", u"Warren Jack"_s);
    pick(mate, "CmbDam", u"Test Doe"_s);
    click(mate, "CmdCalculate");
    EXPECT_EQ(modals.shown[u"fmPedigree"_s], 1);
    EXPECT_EQ(fx.session.CurrentStockNo, 0);
    EXPECT_EQ(fx.session.TestMatingDam, dam);
    EXPECT_TRUE(mate.isVisible()) << "the window stays open for another pair";
}

} // namespace
