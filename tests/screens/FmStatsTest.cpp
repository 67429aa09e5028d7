#include "MainWindow.h"
#include "ScreenTestSupport.h"
#include "support/StudFixture.h"

#include "reporting/screens/FmStats.h"
#include "store/DaySerial.h"

#include <QFileInfo>
#include <QGroupBox>
#include <QPdfWriter>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

QStringList heads(QWidget &w)
{
    auto *grid = child<QTableWidget>(w, "GrSum");
    QStringList texts;
    for (int c = 0; c < grid->columnCount(); ++c)
        texts << grid->horizontalHeaderItem(c)->text();
    return texts;
}

QStringList row(QWidget &w, int r)
{
    auto *grid = child<QTableWidget>(w, "GrSum");
    QStringList texts;
    for (int c = 0; c < grid->columnCount(); ++c)
        texts << grid->item(r, c)->text();
    return texts;
}

/// Picks a view as a user does, with a click on the option's round button.
void choose(QWidget &w, const char *name)
{
    auto *option = child<QRadioButton>(w, name);
    QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(option->height() / 2, option->height() / 2));
}

class FmStatsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        window = startMainWindow(fx);
        ASSERT_TRUE(window);
        amber = fx.add({{u"Name"_s, u"Amber"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
        zorro = fx.add({{u"Name"_s, u"Zorro"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
        const double spring = DaySerial::fromDate(QDate(2024, 4, 2));
        for (const auto &[name, sex, colour] :
             {std::tuple{u"Kit A"_s, u"Buck"_s, u"Black"_s}, {u"Kit B"_s, u"Doe"_s, u"Blue"_s},
              {u"Kit C"_s, u"Doe"_s, u"Black"_s}})
            fx.add({{u"Name"_s, name}, {u"Sex"_s, sex}, {u"Colour"_s, colour}, {u"Sire"_s, zorro},
                    {u"Dam"_s, amber}, {u"DOB"_s, spring}, {u"Archive"_s, u"No"_s}});
        fx.add({{u"Name"_s, u"Kit D"_s}, {u"Sire"_s, zorro}, {u"Dam"_s, amber}, {u"Archive"_s, u"No"_s}});
    }

    StudFixture fx;
    ModalScript modals;
    std::unique_ptr<FmStock> window;
    qint64 amber = 0, zorro = 0;
};

TEST_F(FmStatsTest, OpensFromTheRecordScreenAndSwitchesViews)
{
    modals.on(u"FmStats"_s, [&](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Litter Statistics for : Amber");
        QStringList captions;
        for (const char *name : {"OStatType_0", "OStatType_1", "OStatType_2", "OStatType_3", "OStatType_4"})
            captions << child<QRadioButton>(d, name)->text();
        EXPECT_EQ(captions, (QStringList{u"&Sex"_s, u"&Breed"_s, u"&Colour"_s, u"S&tatus"_s, u"S&ummary"_s}));
        EXPECT_EQ(child<QRadioButton>(d, "OStatType_2")->toolTip(), u"Show Statistics by Colour");
        EXPECT_EQ(child<QPushButton>(d, "CmdCancel")->toolTip(), u"Leave Statistics");

        EXPECT_TRUE(child<QRadioButton>(d, "OStatType_4")->isChecked()) << "the litters first";
        EXPECT_EQ(child<QGroupBox>(d, "FrmSum")->title(), u"Litter Summary");
        EXPECT_EQ(heads(d), (QStringList{u"Date"_s, u"Number"_s, u"Bucks"_s, u"Does"_s, u"Sire"_s}));
        EXPECT_EQ(row(d, 0), (QStringList{u"02/04/2024"_s, u"3"_s, u"1"_s, u"2"_s, u"Zorro"_s}));
        EXPECT_EQ(row(d, 1), (QStringList{u"Unknown"_s, u"1"_s, u"0"_s, u"0"_s, u"Zorro"_s}));
        EXPECT_EQ(row(d, 2), (QStringList{u"Total"_s, u"4"_s, u"1"_s, u"2"_s, QString()}));
        EXPECT_TRUE(child<QTableWidget>(d, "GrSum")->item(2, 0)->font().bold());

        choose(d, "OStatType_2");
        EXPECT_EQ(child<QGroupBox>(d, "FrmSum")->title(), u"Colour");
        EXPECT_EQ(heads(d), (QStringList{u"Date"_s, u"Black"_s, u"Blue"_s, u"Unknown"_s, u"Totals"_s}));
        EXPECT_EQ(row(d, 3), (QStringList{u"Average"_s, u"1.00"_s, u"0.50"_s, u"0.50"_s, u"2.00"_s}));
        EXPECT_EQ(child<QTableWidget>(d, "GrSum")->item(0, 1)->textAlignment(),
                  int(Qt::AlignRight | Qt::AlignVCenter));

        choose(d, "OStatType_0");
        EXPECT_EQ(child<QGroupBox>(d, "FrmSum")->title(), u"Sex");
        EXPECT_EQ(row(d, 2), (QStringList{u"Totals"_s, u"1"_s, u"2"_s, u"1"_s, u"4"_s}));
        choose(d, "OStatType_4");
        EXPECT_EQ(child<QTableWidget>(d, "GrSum")->rowCount(), 3);

        click(d, "CmdCancel");
        return d.result();
    });
    click(*window, "CmdBrowse");
    ASSERT_TRUE(child<QWidget>(*window, "CmdLitter")->isEnabled()) << "Amber has young";
    click(*window, "CmdLitter");
    EXPECT_EQ(modals.shown[u"FmStats"_s], 1);
    EXPECT_EQ(fx.session.CurrentStockNo, amber);

    click(*window, "Stock", "CmdNext");
    EXPECT_FALSE(child<QWidget>(*window, "CmdLitter")->isEnabled()) << "Kit A has none";

    // A buck's young are those he sired; the other parent's column is the dam's.
    modals.on(u"FmStats"_s, [&](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Litter Statistics for : Zorro");
        EXPECT_EQ(heads(d).last(), u"Dam");
        EXPECT_EQ(row(d, 0).last(), u"Amber");
        return int(QDialog::Rejected);
    });
    for (int i = 0; i < 4; ++i)
        click(*window, "Stock", "CmdNext");
    click(*window, "CmdLitter");
    EXPECT_EQ(modals.shown[u"FmStats"_s], 2);
}

TEST_F(FmStatsTest, PrintsTheViewOnShowAndRefusesAnAnimalWithoutYoung)
{
    FmStats stats(fx.session, fx.prompts, zorro, -1, u"Zorro"_s);
    ASSERT_TRUE(stats.start());
    choose(stats, "OStatType_2");
    bool previewed = false;
    modals.on(u"fmPrintPreview"_s, [&](QDialog &d) {
        previewed = true;
        EXPECT_EQ(d.windowTitle(), u"Litter Statistics for : Zorro");
        return int(QDialog::Rejected);
    });
    click(stats, "CmdPrint");
    EXPECT_TRUE(previewed);

    QTemporaryDir dir;
    const QString file = dir.filePath(u"stats.pdf"_s);
    {
        QPdfWriter pdf(file);
        EXPECT_TRUE(stats.printTable(&pdf));
    }
    EXPECT_GT(QFileInfo(file).size(), 1000);

    FmStats none(fx.session, fx.prompts, -1, amber + 100, u"Nobody"_s);
    EXPECT_FALSE(none.start());
    EXPECT_EQ(fx.prompts.texts().last(), u"No stock Found");
}

} // namespace
