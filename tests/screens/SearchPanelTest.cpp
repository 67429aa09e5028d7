#include "MainWindow.h"
#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "stock/screens/FmStock.h"
#include "store/DaySerial.h"
#include "store/StudDatabase.h"
#include "ui/ListToSheet.h"
#include "ui/PrintJob.h"

#include <QApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QRadioButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTreeView>
#include <QUrl>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class SearchPanelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        w = startMainWindow(fx);
        ASSERT_TRUE(w);
        const auto add = [&](const QString &name, const QString &sex, QDate dob, const QString &genotype) {
            return fx.add({{u"Name"_s, name}, {u"Sex"_s, sex}, {u"RingNo"_s, u"R-"_s + name},
                           {u"DOB"_s, DaySerial::fromDate(dob)}, {u"Genotype"_s, genotype}, {u"Type"_s, u"Rex"_s}});
        };
        bella = add(u"Bella"_s, u"Doe"_s, QDate(2020, 3, 1), u"Aa"_s);
        abby = add(u"Abby"_s, u"Doe"_s, QDate(2019, 1, 1), u"aA"_s);
        carl = add(u"Carl"_s, u"Buck"_s, QDate(2021, 6, 5), u"Aa"_s);
    }

    QWidget &win() { return *w; }
    QTreeView *list() { return child<QTreeView>(win(), "lvSList"); }
    QStringList column(int c)
    {
        QStringList texts;
        for (int r = 0; r < list()->model()->rowCount(); ++r)
            texts << list()->model()->index(r, c).data().toString();
        return texts;
    }
    QString head(int c) { return list()->model()->headerData(c, Qt::Horizontal).toString(); }
    void startSearch()
    {
        click(win(), "CmdSearch");
        ASSERT_TRUE(child<QWidget>(win(), "PbSearch")->isVisible());
    }

    StudFixture fx;
    ModalScript modals;
    std::unique_ptr<FmStock> w;
    qint64 bella = 0, abby = 0, carl = 0;
};

TEST_F(SearchPanelTest, FindsSortsStepsThroughAndGoesBack)
{
    startSearch();
    type(win(), "SName", u"b"_s);
    click(win(), "CmdSearchOk");
    ASSERT_TRUE(list()->isVisible());
    EXPECT_EQ(child<QGroupBox>(win(), "FrmSearchRes")->title(), u"Search Results (2 Found) :");
    EXPECT_EQ(column(0), (QStringList{u"Abby"_s, u"Bella"_s}));
    EXPECT_EQ(head(0), u"Name v");
    EXPECT_EQ(head(1), fx.session.IdWord);
    EXPECT_EQ(head(4), u"Breed");
    EXPECT_EQ(column(3), (QStringList{u"01/01/2019"_s, u"01/03/2020"_s}));

    list()->header()->sectionClicked(0);
    EXPECT_EQ(head(0), u"Name ^");
    EXPECT_EQ(column(0), (QStringList{u"Bella"_s, u"Abby"_s}));

    // A row shows its animal on the stock view; the search's buttons step through the list.
    list()->setCurrentIndex(list()->model()->index(0, 0));
    list()->clicked(list()->currentIndex());
    EXPECT_FALSE(list()->isVisible());
    EXPECT_EQ(child<QLineEdit>(win(), "TxtName")->text(), u"Bella");
    EXPECT_TRUE(child<QWidget>(win(), "pbDataSearch")->isVisible());
    EXPECT_FALSE(child<QWidget>(win(), "Stock")->isVisible()) << "the stud's own order is not stepped through";
    click(win(), "CmdDataSearch_1");
    EXPECT_EQ(child<QLineEdit>(win(), "TxtName")->text(), u"Abby");
    click(win(), "CmdDataSearch_1");
    EXPECT_EQ(child<QLineEdit>(win(), "TxtName")->text(), u"Abby") << "the last row stays";

    // Back to the list, kept in its order with the row last shown selected.
    click(win(), "CmdBrowseCancel");
    ASSERT_TRUE(list()->isVisible());
    EXPECT_EQ(head(0), u"Name ^");
    EXPECT_EQ(list()->currentIndex().row(), 1);

    // Back to the criteria, still filled in, and out of the search.
    click(win(), "CmdSchResCancel");
    EXPECT_EQ(child<QLineEdit>(win(), "SName")->text(), u"b");
    click(win(), "CmdSearchCancel");
    EXPECT_TRUE(child<QWidget>(win(), "FrmControl")->isVisible());
}

TEST_F(SearchPanelTest, NothingFoundBadDatesAndEmptyCriteria)
{
    startSearch();
    click(win(), "CmdSearchOk");
    EXPECT_TRUE(fx.prompts.texts().isEmpty()) << "nothing asked: no message";

    type(win(), "SGenotype", u"AA"_s);
    click(win(), "CmdSearchOk");
    EXPECT_EQ(fx.prompts.texts().value(0), u"No Matching Stock Found");
    EXPECT_TRUE(child<QWidget>(win(), "PbSearch")->isVisible());

    child<QLineEdit>(win(), "SGenotype")->clear();
    type(win(), "SGenotype", u"Aa"_s);
    click(win(), "CmdSearchOk");
    EXPECT_EQ(column(0), (QStringList{u"Bella"_s, u"Carl"_s})) << "genotypes match with case";
    click(win(), "CmdSchResCancel");

    click(win(), "CmdSearchClear");
    child<QRadioButton>(win(), "SDOBOpt_3")->setChecked(true);
    EXPECT_TRUE(child<QLineEdit>(win(), "SToDOB")->isVisibleTo(&win()));
    type(win(), "SToDOB", u"31/02/2020"_s);
    click(win(), "CmdSearchOk");
    EXPECT_EQ(fx.prompts.texts().value(1), u"Date: 31/02/2020 is not valid");
    EXPECT_EQ(QApplication::focusWidget(), child<QLineEdit>(win(), "SToDOB"));

    child<QLineEdit>(win(), "SToDOB")->clear();
    type(win(), "SToDOB", u"31/12/2019"_s);
    click(win(), "CmdSearchOk");
    EXPECT_EQ(column(0), QStringList{u"Abby"_s}) << "a to-date alone under Range";
}

TEST_F(SearchPanelTest, PedigreeTabFindsOffspringButNeverTheChosenAnimal)
{
    const qint64 kit = fx.add({{u"Name"_s, u"Kit"_s}, {u"Sex"_s, u"Doe"_s}, {u"Dam"_s, bella}});
    (void)kit;
    startSearch();
    child<QTabWidget>(win(), "TbSearch")->setCurrentIndex(1);
    auto *root = child<QComboBox>(win(), "SPedigree");
    root->setCurrentIndex(root->findText(u"Bella"_s));
    child<QRadioButton>(win(), "OptPedDir_0")->setChecked(true);
    click(win(), "CmdSearchOk");
    EXPECT_EQ(column(0), QStringList{u"Kit"_s});
}

TEST_F(SearchPanelTest, PrintsTheListLandscape)
{
    startSearch();
    type(win(), "SName", u"*"_s);
    click(win(), "CmdSearchOk");
    ASSERT_EQ(list()->model()->rowCount(), 3);
    bool landscape = false;
    modals.on(u"fmPrintPreview"_s, [&](QDialog &d) {
        auto &preview = static_cast<QPrintPreviewDialog &>(d);
        (void)preview;
        landscape = PrintJob::printer().pageLayout().orientation() == QPageLayout::Landscape;
        return int(QDialog::Accepted);
    });
    click(win(), "CmdSearchResPrint");
    EXPECT_EQ(modals.shown[u"fmPrintPreview"_s], 1);
    EXPECT_TRUE(landscape);
    EXPECT_EQ(PrintJob::printer().pageLayout().orientation(), QPageLayout::Portrait) << "the page setup is kept";
}

TEST_F(SearchPanelTest, ResultsGoToASpreadsheetInTheirShownOrder)
{
    QTemporaryDir work;
    QStringList opened;
    clslvtoExcel &excel = clslvtoExcel::shared();
    excel.setWorkFolder(work.path());
    excel.setProgramQuery([] { return true; });
    excel.setOpener([&](const QUrl &file) {
        opened << file.toLocalFile();
        return true;
    });
    startSearch();
    type(win(), "SName", u"*"_s);
    click(win(), "CmdSearchOk");
    list()->header()->sectionClicked(3);
    list()->header()->sectionClicked(3);
    click(win(), "cmdsearchexcel");
    excel.setOpener({});
    excel.setProgramQuery({});
    excel.setWorkFolder({});

    EXPECT_EQ(opened.size(), 1);
    const ListSheet &sheet = excel.lastSheet();
    EXPECT_EQ(sheet.title, u"Search Results");
    EXPECT_EQ(sheet.headings, (QStringList{u"Name"_s, fx.session.IdWord, u"Sex"_s, u"DOB ^"_s, u"Breed"_s,
                                           fx.session.ColourWord}));
    ASSERT_EQ(sheet.rows.size(), 3);
    EXPECT_EQ(sheet.rows[0], (QStringList{u"Carl"_s, u"R-Carl"_s, u"Buck"_s, u"05/06/2021"_s, u"Rex"_s, QString()}));
    EXPECT_EQ(sheet.rows[2].value(0), u"Abby") << "newest first, as the list shows";
}

TEST_F(SearchPanelTest, EachControlHintsInTheStatusBar)
{
    startSearch();
    auto *bar = child<QStatusBar>(win(), "StatusBar1");
    const std::pair<const char *, QString> hints[] = {
        {"SName", u"Enter Name  (* and ? wildcards can be used)"_s},
        {"SRingNo", u"Enter Ring Number  (* and ? wildcards can be used)"_s},
        {"Stype", u"Select or Enter Type  (* and ? wildcards can be used)"_s},
        {"SGenotype", u"Select or Enter Genotype (* and ? wildcards can be used)"_s},
        {"SSex", u"Select Sex "_s},
        {"SSire", u"Select Sire "_s},
        {"ChkAllDam", u"Include Archived Dams for Selection"_s},
        {"SDOB", u"Enter Date of birth"_s},
        {"SDOBOpt_2", u"Select the search criteria for the Date of Birth"_s},
        {"CmdSearchClear", u"Clear search details entered"_s},
    };
    for (const auto &[name, hint] : hints) {
        child<QWidget>(win(), name)->setFocus();
        EXPECT_EQ(bar->currentMessage(), hint) << name;
    }
    child<QTabWidget>(win(), "TbSearch")->setCurrentIndex(1);
    child<QWidget>(win(), "SPedigree")->setFocus();
    EXPECT_EQ(bar->currentMessage(), u"Select Animal whose pedigree is to be searched");
}

TEST_F(SearchPanelTest, AnAnimalRemovedSinceTheSearchIsSaidAndTheListStays)
{
    startSearch();
    type(win(), "SName", u"*"_s);
    click(win(), "CmdSearchOk");
    ASSERT_EQ(column(0).value(0), u"Abby");
    fx.session.Stud->handle().execute(u"DELETE FROM Stock WHERE Number = ?1"_s, {abby});
    list()->setCurrentIndex(list()->model()->index(0, 0));
    list()->clicked(list()->currentIndex());
    EXPECT_EQ(fx.prompts.texts().value(0), u"This animal is no longer in the stud.");
    EXPECT_TRUE(list()->isVisible());
    EXPECT_FALSE(child<QWidget>(win(), "pbDataSearch")->isVisible());
}

} // namespace
