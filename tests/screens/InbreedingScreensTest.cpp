// The coefficient of inbreeding where the breeder sees it: beside the pedigree with the
// common ancestors framed, on the printed sheet when asked, under the weight of the record
// screen, for a test mating, and as the whole stud's table.
#include "MainWindow.h"
#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "core/StudLoader.h"
#include "pedigree/InbreedingTable.h"
#include "pedigree/screens/FmInbreeding.h"
#include "pedigree/screens/FmTestMate.h"
#include "pedigree/screens/fmPedigree.h"
#include "stock/screens/FmStock.h"
#include "store/StudDatabase.h"

#include <QAction>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPdfWriter>
#include <QProcess>
#include <QStandardPaths>
#include <QTableView>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

/// Old Grandad sired both Warren Jack and Hazel; Bramble is their daughter, a half-sibling
/// mating's: 12.5% inbred through him.
class InbreedingScreensTest : public ::testing::Test
{
protected:
    /// The family, in the stud opened alone or by the main window.
    void family()
    {
        Database &db = fx.session.Stud->handle();
        grandad = addAnimal(db, {{u"Name"_s, u"Old Grandad"_s}, {u"Sex"_s, u"Buck"_s}});
        jack = addAnimal(db, {{u"Name"_s, u"Warren Jack"_s}, {u"Sire"_s, grandad}, {u"Sex"_s, u"Buck"_s},
                              {u"Archive"_s, u"No"_s}});
        hazel = addAnimal(db, {{u"Name"_s, u"Hazel"_s}, {u"Sire"_s, grandad}, {u"Sex"_s, u"Doe"_s},
                               {u"Archive"_s, u"No"_s}});
        bramble = addAnimal(db, {{u"Name"_s, u"Bramble"_s}, {u"Sire"_s, jack}, {u"Dam"_s, hazel}});
        Refill_All_Lists(fx.session);
        fx.session.CurrentStockNo = bramble;
        fx.session.CurrentStockName = u"Bramble"_s;
    }
    void SetUp() override
    {
        fx.open();
        family();
    }

    QString pdfText(fmPedigree &w)
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(u"pedigree.pdf"_s);
        {
            QPdfWriter pdf(file);
            pdf.setPageSize(QPageSize(QPageSize::A4));
            EXPECT_TRUE(w.printSheet(&pdf));
        }
        QProcess reader;
        reader.start(QStandardPaths::findExecutable(u"pdftotext"_s), {u"-layout"_s, file, u"-"_s});
        reader.waitForFinished(20000);
        return QString::fromUtf8(reader.readAllStandardOutput());
    }

    StudFixture fx;
    ModalScript modals;
    qint64 grandad = 0, jack = 0, hazel = 0, bramble = 0;
};

TEST_F(InbreedingScreensTest, ThePedigreeShowsTheCoiAndFramesTheCommonAncestor)
{
    fmPedigree w(fx.session, fx.prompts);
    ASSERT_TRUE(w.start());
    w.show();
    EXPECT_EQ(child<QLabel>(w, "LblCoi")->text(), u"COI 12.50% (2 gen, 67% of ancestors known)");
    EXPECT_EQ(child<QLabel>(w, "LblRelationship")->text(), u"Relationship of Sire and Dam 25.00%");
    auto *common = child<QTreeWidget>(w, "LvCommon");
    ASSERT_EQ(common->topLevelItemCount(), 1);
    const QTreeWidgetItem *row = common->topLevelItem(0);
    EXPECT_EQ(QStringList({row->text(0), row->text(1), row->text(2), row->text(3)}),
              QStringList({u"Old Grandad"_s, u"1"_s, u"1"_s, u"12.50%"_s}));
    EXPECT_FALSE(row->icon(0).isNull()) << "the list shows the frame's colour";

    // Old Grandad's two places, as the sire's sire and the dam's sire, in one colour.
    const QString mark = child<QLabel>(w, "RPed_3")->property("mark").toString();
    EXPECT_EQ(mark, u"#e6194b");
    EXPECT_EQ(child<QLabel>(w, "RPed_5")->property("mark").toString(), mark);
    EXPECT_EQ(child<QLabel>(w, "RPed_1")->property("mark").toString(), QString());

    // Shown three generations or five, he is in sight; double-clicked, he is opened.
    bool opened = false;
    modals.on(u"fmStockenq"_s, [&](QDialog &d) {
        opened = child<QLineEdit>(d, "TxtName")->text() == u"Old Grandad";
        return int(QDialog::Accepted);
    });
    Q_EMIT common->itemActivated(common->topLevelItem(0), 0);
    EXPECT_TRUE(opened);
    EXPECT_EQ(fx.session.CurrentStockNo, bramble);
}

TEST_F(InbreedingScreensTest, TheSheetCarriesTheCoiOnlyWhenTicked)
{
    if (QStandardPaths::findExecutable(u"pdftotext"_s).isEmpty())
        GTEST_SKIP() << "pdftotext is not installed";
    fmPedigree w(fx.session, fx.prompts);
    ASSERT_TRUE(w.start());
    EXPECT_FALSE(fx.session.PrintInbreeding) << "off at every opening";
    EXPECT_FALSE(pdfText(w).contains(u"COI"_s));

    modals.on(u"fmPedOptions"_s, [](QDialog &d) {
        EXPECT_FALSE(child<QCheckBox>(d, "ChkPrintInbreeding")->isChecked());
        child<QCheckBox>(d, "ChkPrintInbreeding")->setChecked(true);
        click(d, "CmdOk");
        return int(QDialog::Accepted);
    });
    click(w, "CmdOptions");
    EXPECT_TRUE(fx.session.PrintInbreeding);
    const QString text = pdfText(w);
    EXPECT_TRUE(text.contains(u"COI 12.50% (2 gen, 67% of ancestors known)"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"Relationship of Sire and Dam 25.00%"_s)) << text.toStdString();
}

TEST_F(InbreedingScreensTest, ATestMatingShowsTheOffspringsCoiAndThePairsRelationship)
{
    FmTestMate mate(fx.session, fx.prompts);
    mate.show();
    QString coi, relationship;
    modals.on(u"fmPedigree"_s, [&](QDialog &d) {
        coi = child<QLabel>(d, "LblCoi")->text();
        relationship = child<QLabel>(d, "LblRelationship")->text();
        return int(QDialog::Rejected);
    });
    pick(mate, "CmbSire", u"Warren Jack"_s);
    pick(mate, "CmbDam", u"Hazel"_s);
    click(mate, "CmdCalculate");
    EXPECT_EQ(coi, u"COI 12.50% (2 gen, 67% of ancestors known)");
    EXPECT_EQ(relationship, u"Relationship of Sire and Dam 25.00%");
}

/// The same family in the stud the main window opens.
class InbreedingMainWindowTest : public InbreedingScreensTest
{
protected:
    void SetUp() override {}
    std::unique_ptr<FmStock> mainWindow()
    {
        auto w = startMainWindow(fx);
        if (w)
            family();
        return w;
    }
};

TEST_F(InbreedingMainWindowTest, TheRecordScreenShowsTheCoiAndFollowsAChangedParent)
{
    auto w = mainWindow();
    ASSERT_TRUE(w);
    click(*w, "CmdBrowse");
    while (child<QLineEdit>(*w, "TxtName")->text() != u"Bramble")
        click(*w, "CmdNext");
    EXPECT_EQ(child<QLabel>(*w, "LblCoi")->text(), u"COI 12.50% (2 gen, 67% of ancestors known)");

    // Hazel's sire put right elsewhere: Bramble is no longer inbred.
    fx.session.Stud->handle().execute(u"UPDATE Stock SET Sire = NULL WHERE Number = ?"_s, {hazel});
    click(*w, "CmdNext");
    click(*w, "CmdPrevious");
    EXPECT_EQ(child<QLineEdit>(*w, "TxtName")->text(), u"Bramble");
    EXPECT_EQ(child<QLabel>(*w, "LblCoi")->text(), u"COI 0.00% (2 gen, 50% of ancestors known)");
}

TEST_F(InbreedingMainWindowTest, TheWholeStudTableSortsAndNamesALoop)
{
    auto w = mainWindow();
    ASSERT_TRUE(w);
    modals.on(u"FmInbreeding"_s, [](QDialog &d) {
        auto &table = dynamic_cast<FmInbreeding &>(d);
        EXPECT_TRUE(table.fill());
        EXPECT_EQ(child<QLabel>(d, "LblSummary")->text(), u"4 animals, average COI 3.13%, highest 12.50%");
        auto *view = child<QTableView>(d, "LvInbreeding");
        view->horizontalHeader()->setSortIndicator(InbreedingTable::Coi, Qt::DescendingOrder);
        const QAbstractItemModel *m = view->model();
        EXPECT_EQ(m->data(m->index(0, InbreedingTable::Name)).toString(), u"Bramble");
        EXPECT_EQ(m->data(m->index(0, InbreedingTable::Coi)).toString(), u"12.50");
        EXPECT_EQ(m->headerData(InbreedingTable::Known, Qt::Horizontal).toString(), u"Ancestors Known %");
        return int(QDialog::Rejected);
    });
    w->findChild<QAction *>(u"mnuInbreeding"_s)->trigger();
    EXPECT_EQ(modals.shown[u"FmInbreeding"_s], 1);

    // Old Grandad entered, by a slip, as Bramble's son.
    fx.session.Stud->handle().execute(u"UPDATE Stock SET Sire = ? WHERE Number = ?"_s, {bramble, grandad});
    modals.on(u"FmInbreeding"_s, [](QDialog &d) {
        EXPECT_FALSE(dynamic_cast<FmInbreeding &>(d).fill());
        return int(QDialog::Rejected);
    });
    w->findChild<QAction *>(u"mnuInbreeding"_s)->trigger();
    ASSERT_FALSE(fx.prompts.messages.isEmpty());
    EXPECT_TRUE(fx.prompts.messages.last().text.contains(u" is its own ancestor: "_s))
        << fx.prompts.messages.last().text.toStdString();
    EXPECT_EQ(fx.prompts.messages.last().title, u"Inbreeding");
}

} // namespace
