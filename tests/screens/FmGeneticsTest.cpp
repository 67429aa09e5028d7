#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "core/StudLoader.h"
#include "genetics/Genotypes.h"
#include "genetics/screens/FmColourMatch.h"
#include "genetics/screens/FmGenetics.h"
#include "store/StudDatabase.h"
#include "ui/ListToSheet.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QUrl>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

class FmGeneticsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.copyShippedGenetics();
        Database &db = fx.open();
        ASSERT_TRUE(fx.session.GeneticsOn);
        ASSERT_TRUE(Ensure_Genetics_Loaded(fx.session, fx.prompts));
        const auto animal = [&](const QString &name, const QString &sex, const QString &colour,
                                const QString &breed = u"Rex"_s) {
            const qint64 n = addAnimal(db, {{u"Name"_s, name},
                                            {u"Sex"_s, sex},
                                            {u"Archive"_s, u"No"_s},
                                            {u"Colour"_s, colour},
                                            {u"Type"_s, breed}});
            if (!colour.isEmpty())
                Update_Genes(fx.session, fx.prompts, colour, QString(), n, sex);
            return n;
        };
        animal(u"Jet"_s, u"Buck"_s, u"Black"_s);
        ivory = animal(u"Ivory"_s, u"Doe"_s, u"Ruby-Eyed White"_s);
        animal(u"Plain"_s, u"Doe"_s, QString());
        animal(u"Sable"_s, u"Doe"_s, u"Black"_s, u"Lop"_s);
        Refill_All_Lists(fx.session);
    }

    StudFixture fx;
    ModalScript modals;
    qint64 ivory = 0;
};

TEST_F(FmGeneticsTest, TestMateListsTheColoursWithTheirShares)
{
    FmGenetics w(fx.session, fx.prompts);
    w.show();
    click(w, "CmdTestMate");
    EXPECT_TRUE(child<QWidget>(w, "FrmMate")->isVisible());
    EXPECT_TRUE(child<QCheckBox>(w, "ChkColOnly")->isChecked());
    click(w, "CmdCalculate"); // nothing chosen: nothing happens
    EXPECT_TRUE(fx.prompts.messages.isEmpty());

    pick(w, "CmbSire", u"Jet"_s);
    pick(w, "CmbDam", u"Plain"_s);
    click(w, "CmdCalculate");
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].title, u"Not Found");
    EXPECT_EQ(fx.prompts.messages[0].text, u"No Genetic Information for Dam");

    pick(w, "CmbDam", u"Ivory"_s);
    click(w, "CmdCalculate");
    auto *list = child<QTreeWidget>(w, "lv_0");
    ASSERT_TRUE(list->isVisible());
    ASSERT_GT(list->topLevelItemCount(), 0);
    double total = 0;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        QString share = list->topLevelItem(i)->text(2);
        ASSERT_TRUE(share.endsWith(u'%'));
        share.chop(1);
        total += share.toDouble();
    }
    EXPECT_NEAR(total, 100.0, 1.0) << "the shares of all colours come to 100%, less the rounding of each";
    EXPECT_EQ(child<QLabel>(w, "LblTotal")->text(),
              u"Total Possible Colours : "_s + QString::number(list->topLevelItemCount()));
    EXPECT_EQ(list->headerItem()->text(0), u"Colour");

    Q_EMIT list->header()->sectionClicked(2);
    EXPECT_EQ(list->currentItem(), list->topLevelItem(0)) << "the first row is selected after a sort";
    EXPECT_EQ(list->headerItem()->text(2), u"Percent v");
    QString previous = list->topLevelItem(0)->text(2);
    previous.chop(1);
    for (int i = 1; i < list->topLevelItemCount(); ++i) {
        QString share = list->topLevelItem(i)->text(2);
        share.chop(1);
        EXPECT_LE(previous.toDouble(), share.toDouble()) << "shares sort as numbers";
        previous = share;
    }

    child<QCheckBox>(w, "ChkColOnly")->setChecked(false);
    EXPECT_TRUE(child<QLabel>(w, "LblTotal")->text().startsWith(u"Total Possible Genotypes : "_s));
    click(w, "CmdTMCancel");
    EXPECT_TRUE(child<QWidget>(w, "PbMenu")->isVisible());
}

TEST_F(FmGeneticsTest, UnknownColourIsMatchedOnScreenAndTheColoursCanBeListed)
{
    fx.shell.onColourMatch = [&](const QString &colour, bool *save) {
        FmColourMatch match(fx.session, colour);
        Modal::exec(match);
        *save = match.saveMatch();
        return match.chosen();
    };
    modals.on(u"FmColourMatch"_s, [](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Select Genetic Colour");
        EXPECT_EQ(child<QLabel>(d, "LblColour")->text(), u"Jet Black");
        pick(d, "CmbGColour", u"Black"_s);
        child<QCheckBox>(d, "ChkColMatch")->setChecked(true);
        click(d, "CmdOk");
        return d.result();
    });
    Database &db = fx.session.Stud->handle();
    const qint64 n = addAnimal(db, {{u"Name"_s, u"Coal"_s}, {u"Sex"_s, u"Buck"_s}});
    Update_Genes(fx.session, fx.prompts, u"Jet Black"_s, QString(), n, u"Buck"_s);
    EXPECT_EQ(modals.shown[u"FmColourMatch"_s], 1);
    EXPECT_EQ(db.scalar(u"SELECT GenoType FROM Stock WHERE Number = ?"_s, {n}).toString(),
              u"aa B _ C _ D _ E _ _ _ enen Du _ V _ R _");
    EXPECT_EQ(CRegSettings(fx.session.AppName).GetSetting(u"Rabbits\\Genetics Map"_s, u"Jet Black"_s), u"Black");

    modals.on(u"FmListColours"_s, [](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Possible Colours in Database (Total 1316)");
        EXPECT_EQ(child<QTreeWidget>(d, "lv")->topLevelItemCount(), 1316);
        return int(QDialog::Rejected);
    });
    FmGenetics w(fx.session, fx.prompts);
    click(w, "CmdListColours_0");
    EXPECT_EQ(modals.shown[u"FmListColours"_s], 1);
}

TEST_F(FmGeneticsTest, FindColourListsEveryPairThatCanGiveIt)
{
    FmGenetics w(fx.session, fx.prompts);
    w.show();
    click(w, "CmdColour");
    EXPECT_EQ(child<QPushButton>(w, "CmdColour")->text(), u"&Find Colour");
    ASSERT_TRUE(child<QWidget>(w, "FrmColour")->isVisible());
    EXPECT_TRUE(child<QCheckBox>(w, "ChkColColOnly")->isChecked());

    // Lop with Lop: only Sable is a Lop, so no pair at all.
    pick(w, "CmbColour", u"Black"_s);
    pick(w, "CmbBreed", u"Lop"_s);
    click(w, "CmdCalculate");
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].text, u"No Matings Found for Colour Selected");
    EXPECT_EQ(fx.prompts.messages[0].title, u"No Match");
    EXPECT_FALSE(child<QWidget>(w, "FrmProgress")->isVisible());
    EXPECT_TRUE(child<QWidget>(w, "PbProcess")->isVisible()) << "the user may choose again";

    pick(w, "CmbBreed", QString());
    click(w, "CmdCalculate");
    auto *list = child<QTreeWidget>(w, "lv_1");
    ASSERT_TRUE(list->isVisible());
    EXPECT_FALSE(child<QComboBox>(w, "CmbColour")->isEnabled());
    EXPECT_TRUE(child<QWidget>(w, "pbcolres")->isVisible());
    const QString blackGenotype = child<QLabel>(w, "PbGeneCode_2")->text();
    EXPECT_TRUE(blackGenotype.contains(u"aa"_s));
    QStringList pairs;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        pairs << list->topLevelItem(i)->text(0) + u" x "_s + list->topLevelItem(i)->text(1);
    EXPECT_EQ(pairs, QStringList({u"Jet x Ivory"_s, u"Jet x Sable"_s}))
        << "one line per pair; Plain has no genes";
    const QString whole = list->topLevelItem(0)->text(3);

    // Each genotype of the colour on its own line; their shares add up to the pair's.
    child<QCheckBox>(w, "ChkColColOnly")->setChecked(false);
    double sum = 0;
    int ivoryLines = 0;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *item = list->topLevelItem(i);
        if (item->text(1) != u"Ivory")
            continue;
        ++ivoryLines;
        sum += item->text(3).chopped(1).toDouble();
    }
    EXPECT_GT(ivoryLines, 1);
    EXPECT_NEAR(sum, whole.chopped(1).toDouble(), 0.01 * ivoryLines);
    EXPECT_EQ(list->headerItem()->text(3), u"Percent");

    click(w, "pbcolres", "CmdTMCancel");
    EXPECT_TRUE(child<QWidget>(w, "PbMenu")->isVisible());
    EXPECT_TRUE(child<QComboBox>(w, "CmbColour")->isEnabled());
}

TEST_F(FmGeneticsTest, OpenedForOneAnimalGoesStraightToTheTestMating)
{
    fx.session.Stud->handle().execute(u"UPDATE Stock SET Archive = 'Yes' WHERE Number = ?"_s, {ivory});
    FmGenetics w(fx.session, fx.prompts, nullptr, animalInHand(fx.session, ivory));
    w.show();
    EXPECT_TRUE(child<QWidget>(w, "FrmMate")->isVisible());
    EXPECT_FALSE(child<QWidget>(w, "PbMenu")->isVisible());
    auto *dam = child<QComboBox>(w, "CmbDam");
    EXPECT_EQ(dam->currentText(), u"Ivory") << "archived, so added to the list";
    EXPECT_EQ(dam->currentData().toLongLong(), ivory);
    EXPECT_FALSE(dam->isEnabled());
    pick(w, "CmbSire", u"Jet"_s);
    click(w, "CmdCalculate");
    EXPECT_TRUE(child<QTreeWidget>(w, "lv_0")->isVisible());
    click(w, "pbTestMate", "CmdTMCancel");
    EXPECT_EQ(w.result(), int(QDialog::Rejected)) << "cancel closes the window";
    EXPECT_FALSE(w.isVisible());
}

/// The list export with a spreadsheet program that opens nothing, only counts the sheets
/// it is given; the desktop's own comes back afterwards.
struct SpreadsheetProgram
{
    SpreadsheetProgram()
    {
        clslvtoExcel &excel = clslvtoExcel::shared();
        excel.setProgramQuery([] { return true; });
        excel.setOpener([this](const QUrl &url) {
            opened << url.toLocalFile();
            return true;
        });
        excel.setWorkFolder(folder.path());
    }
    ~SpreadsheetProgram()
    {
        clslvtoExcel &excel = clslvtoExcel::shared();
        excel.setProgramQuery({});
        excel.setOpener({});
        excel.setWorkFolder({});
    }
    static const ListSheet &sheet() { return clslvtoExcel::shared().lastSheet(); }

    QTemporaryDir folder;
    QStringList opened;
};

QList<QStringList> rowsOf(const QTreeWidget &list)
{
    QList<QStringList> rows;
    for (int i = 0; i < list.topLevelItemCount(); ++i) {
        QStringList row;
        for (int c = 0; c < list.columnCount(); ++c)
            row << list.topLevelItem(i)->text(c);
        rows << row;
    }
    return rows;
}

TEST_F(FmGeneticsTest, CopyToExcelHandsOverTheMatingAsShown)
{
    SpreadsheetProgram program;
    FmGenetics w(fx.session, fx.prompts);
    w.show();
    click(w, "CmdTestMate");
    auto *copy = child<QPushButton>(w, "cmdexcel_0");
    EXPECT_FALSE(copy->isVisible()) << "nothing to copy before a mating";
    pick(w, "CmbSire", u"Jet"_s);
    pick(w, "CmbDam", u"Ivory"_s);
    click(w, "CmdCalculate");
    ASSERT_TRUE(copy->isVisible());
    ASSERT_TRUE(copy->isEnabled());
    EXPECT_EQ(copy->text(), u"Copy to Excel");
    auto *list = child<QTreeWidget>(w, "lv_0");
    Q_EMIT list->header()->sectionClicked(2);
    Q_EMIT list->header()->sectionClicked(2);

    click(w, "cmdexcel_0");
    ASSERT_EQ(program.opened.size(), 1);
    EXPECT_TRUE(QFileInfo::exists(program.opened[0]));
    EXPECT_EQ(QFileInfo(program.opened[0]).fileName(), u"Testmate Results - Jet and Ivory.xlsx");
    EXPECT_EQ(program.sheet().title, u"Testmate Results : Jet and Ivory");
    EXPECT_EQ(program.sheet().headings, QStringList({u"Colour"_s, u"Genetic Code"_s, u"Percent ^"_s}));
    ASSERT_GT(list->topLevelItemCount(), 1);
    EXPECT_EQ(program.sheet().rows, rowsOf(*list)) << "every row, in the order sorted on screen";
    EXPECT_TRUE(fx.prompts.messages.isEmpty());

    // A click on the frame itself, away from its controls, copies the same list as "hello".
    auto *frame = child<QGroupBox>(w, "FrmMate");
    QTest::mouseClick(frame, Qt::LeftButton, {}, QPoint(3, 3));
    ASSERT_EQ(program.opened.size(), 2);
    EXPECT_EQ(program.sheet().title, u"hello");
    EXPECT_EQ(program.sheet().rows, rowsOf(*list));
    auto *label = child<QLabel>(w, "LblSire");
    QTest::mouseClick(label, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_EQ(program.opened.size(), 2) << "a click on a control inside the frame is that control's";

    click(w, "CmdTMCancel");
    EXPECT_FALSE(copy->isVisible());
}

TEST_F(FmGeneticsTest, CopyToExcelOfAColourSearchNamesTheColourAndBreed)
{
    SpreadsheetProgram program;
    FmGenetics w(fx.session, fx.prompts);
    w.show();
    click(w, "CmdColour");
    pick(w, "CmbColour", u"Black"_s);
    pick(w, "CmbBreed", u"Rex"_s);
    click(w, "CmdCalculate");
    auto *list = child<QTreeWidget>(w, "lv_1");
    ASSERT_TRUE(list->isVisible());
    ASSERT_TRUE(child<QPushButton>(w, "cmdexcel_1")->isEnabled());

    click(w, "cmdexcel_1");
    ASSERT_EQ(program.opened.size(), 1);
    EXPECT_EQ(program.sheet().title, u"Find Colour Results : Black (Rex)");
    EXPECT_EQ(program.sheet().headings, QStringList({u"Sire"_s, u"Dam"_s, u"Genetic Code"_s, u"Percent"_s, u"COI"_s}));
    EXPECT_EQ(program.sheet().rows, rowsOf(*list));
    EXPECT_EQ(program.sheet().rows.value(0).value(1), u"Ivory");
}

TEST_F(FmGeneticsTest, FindColourGivesEachPairsOffspringsCoi)
{
    // Ivory is Jet's daughter: their offspring would be 25% inbred. Sable's sire is Jet's
    // grandsire: 6.25%.
    Database &db = fx.session.Stud->handle();
    const qint64 jet = db.scalar(u"SELECT Number FROM Stock WHERE Name = 'Jet'"_s).toLongLong();
    const qint64 sable = db.scalar(u"SELECT Number FROM Stock WHERE Name = 'Sable'"_s).toLongLong();
    const qint64 greatGrandsire = addAnimal(db, {{u"Name"_s, u"Old Line"_s}});
    const qint64 grandsire = addAnimal(db, {{u"Name"_s, u"Middle Line"_s}, {u"Sire"_s, greatGrandsire}});
    db.execute(u"UPDATE Stock SET Sire = ? WHERE Number = ?"_s, {grandsire, jet});
    db.execute(u"UPDATE Stock SET Sire = ? WHERE Number = ?"_s, {jet, ivory});
    db.execute(u"UPDATE Stock SET Sire = ? WHERE Number = ?"_s, {greatGrandsire, sable});
    FmGenetics w(fx.session, fx.prompts);
    w.show();
    click(w, "CmdColour");
    pick(w, "CmbColour", u"Black"_s);
    click(w, "CmdCalculate");
    auto *list = child<QTreeWidget>(w, "lv_1");
    ASSERT_TRUE(list->isVisible());
    EXPECT_EQ(list->headerItem()->text(4), u"COI");
    QStringList seen;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *row = list->topLevelItem(i);
        seen << row->text(1) + u' ' + row->text(4);
    }
    EXPECT_TRUE(seen.contains(u"Ivory 25.00%"_s)) << seen.join(u", "_s).toStdString();
    EXPECT_TRUE(seen.contains(u"Sable 6.25%"_s)) << seen.join(u", "_s).toStdString();

    // Sorted as numbers, not as texts: the least inbred pair first, then the most.
    Q_EMIT list->header()->sectionClicked(4);
    EXPECT_EQ(list->topLevelItem(0)->text(4), u"6.25%");
    Q_EMIT list->header()->sectionClicked(4);
    EXPECT_EQ(list->topLevelItem(0)->text(4), u"25.00%");
    EXPECT_EQ(list->headerItem()->text(4), u"COI ^");
}

} // namespace
