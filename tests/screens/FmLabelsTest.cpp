#include "ScreenTestSupport.h"
#include "support/PdfWords.h"
#include "support/StudFixture.h"

#include "core/CRegSettings.h"
#include "reporting/screens/FmLabels.h"
#include "store/DaySerial.h"

#include <QApplication>
#include <QCheckBox>
#include <QFrame>
#include <QGroupBox>
#include <QListView>
#include <QPdfWriter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

// Positions read back from a PDF are a glyph's box, a little off the point it was drawn at.
constexpr double kNear = 0.05;

class FmLabelsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.open();
        fx.add({{u"Name"_s, u"Jet"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
        fx.add({{u"Name"_s, u"Fern"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
        fx.add({{u"Name"_s, u"Thistle"_s},
                {u"Sex"_s, u"Doe"_s},
                {u"Archive"_s, u"No"_s},
                {u"DOB"_s, DaySerial::fromDate(QDate(2024, 4, 2))}});
    }
    void TearDown() override { FmLabels::setColourChooser({}); }

    std::unique_ptr<FmLabels> openScreen()
    {
        auto w = std::make_unique<FmLabels>(fx.session, fx.prompts);
        w->show();
        QApplication::setActiveWindow(w.get());
        return w;
    }
    /// Ticks or unticks a row as the user does, with the space bar on it.
    static void toggle(QWidget &w, const char *list, const QString &text)
    {
        auto *view = child<QAbstractItemView>(w, list);
        const QModelIndexList found =
            view->model()->match(view->model()->index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << text.toStdString();
        view->setCurrentIndex(found[0]);
        QTest::keyClick(view, Qt::Key_Space);
    }
    static QStringList ticked(QWidget &w, const char *list)
    {
        const QAbstractItemModel *m = child<QAbstractItemView>(w, list)->model();
        QStringList texts;
        for (int r = 0; r < m->rowCount(); ++r)
            if (m->index(r, 0).data(Qt::CheckStateRole) == Qt::Checked)
                texts << m->index(r, 0).data().toString();
        return texts;
    }
    /// A click on a tick box's own square.
    static void clickTick(QWidget &w, const char *name)
    {
        auto *box = child<QCheckBox>(w, name);
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(6, box->height() / 2));
    }
    static QColor swatch(QWidget &w, const char *name)
    {
        return child<QFrame>(w, name)->palette().color(QPalette::Window);
    }
    QString stored(const QString &key) const
    {
        return CRegSettings(fx.session.AppName).GetSetting(u"Rabbits\\Label Options"_s, key, u"absent"_s);
    }

    StudFixture fx;
    ModalScript modals;
    QTemporaryDir dir;
};

TEST_F(FmLabelsTest, ShowsItsControlsWithTheStudsWordsAndHints)
{
    auto w = openScreen();
    EXPECT_EQ(w->windowTitle(), u"Hutch Labels");
    const std::pair<const char *, QString> captions[] = {
        {"LblStock", u"Print Labels for:"_s},
        {"LblInclude", u"Include On Label"_s},
        {"LblLabSize", u"Size (Width X Height):"_s},
        {"ChkAllStock", u"Include All"_s},
        {"ChkIncludeAll", u"Include All"_s},
        {"LblPrtCol_0", u"Buck"_s},
        {"LblPrtCol_1", u"Doe"_s},
        {"CmdPrtCol_0", u"Select"_s},
        {"CmdPrtCol_1", u"Select"_s},
        {"CmdPrint", u"&Print"_s},
        {"CmdCancel", u"&Cancel"_s},
    };
    for (const auto &[name, caption] : captions)
        EXPECT_EQ(child<QWidget>(*w, name)->property("text").toString(), caption) << name;
    EXPECT_EQ(child<QGroupBox>(*w, "FrmColours")->title(), u"Colours");
    EXPECT_EQ(child<QPushButton>(*w, "CmdPrint")->toolTip(), u"Print the Selected Details");
    EXPECT_EQ(child<QPushButton>(*w, "CmdCancel")->toolTip(), u"Cancel Print");

    auto *sizes = child<QComboBox>(*w, "CmbLabSize");
    QStringList sizeCaptions;
    for (int i = 0; i < sizes->count(); ++i)
        sizeCaptions << sizes->itemText(i);
    EXPECT_EQ(sizeCaptions, (QStringList{u"6cm X 9cm"_s, u"8cm X 9cm"_s, u"12cm X 9cm"_s, u"6cm X 4cm"_s,
                                         u"10cm X 3.5cm"_s}));
    EXPECT_EQ(sizes->currentIndex(), 0);
    const QAbstractItemModel *items = child<QAbstractItemView>(*w, "LstInclude")->model();
    EXPECT_EQ(items->index(1, 0).data().toString(), u"Ring No.") << "the stud's identifier word";
    EXPECT_EQ(items->index(8, 0).data().toString(), u"Comments Box");
    EXPECT_TRUE(ticked(*w, "LstInclude").isEmpty()) << "nothing ticked before anything is saved";
    EXPECT_EQ(swatch(*w, "PbPrtCol_0"), QColor(Qt::black));
    // Every animal, in the order of the parent lists: bucks, then does, by name.
    const QAbstractItemModel *stock = child<QListView>(*w, "LstStock")->model();
    ASSERT_EQ(stock->rowCount(), 3);
    EXPECT_EQ(stock->index(1, 0).data().toString(), u"Fern");

    const std::pair<const char *, QString> hints[] = {
        {"ChkAllStock", u"Include all non-archived livestock"_s},
        {"ChkIncludeAll", u"Include all details on label"_s},
        {"CmbLabSize", u"Select the hutch label size required"_s},
        {"LstInclude", u"Select the details to print on the hutch label"_s},
        {"LstStock", u"Select the Livestock to print labels for"_s},
    };
    for (const auto &[name, hint] : hints) {
        child<QWidget>(*w, name)->setFocus();
        EXPECT_EQ(child<QStatusBar>(*w, "SBar")->currentMessage(), hint) << name;
    }
}

TEST_F(FmLabelsTest, TicksOneByOneOrAllAtOnceAndPicksColours)
{
    auto w = openScreen();
    toggle(*w, "LstStock", u"Thistle"_s);
    toggle(*w, "LstStock", u"Jet"_s);
    EXPECT_EQ(ticked(*w, "LstStock"), (QStringList{u"Jet"_s, u"Thistle"_s}));
    clickTick(*w, "ChkAllStock");
    toggle(*w, "LstStock", u"Fern"_s);
    EXPECT_EQ(ticked(*w, "LstStock"), (QStringList{u"Jet"_s, u"Thistle"_s}));
    clickTick(*w, "ChkAllStock");
    EXPECT_TRUE(ticked(*w, "LstStock").isEmpty());

    toggle(*w, "LstInclude", u"Sex"_s);
    clickTick(*w, "ChkIncludeAll");
    EXPECT_EQ(ticked(*w, "LstInclude").size(), 9);
    clickTick(*w, "ChkIncludeAll");
    EXPECT_TRUE(ticked(*w, "LstInclude").isEmpty());

    // The colour dialog starts from the swatch; a cancelled one leaves it.
    QList<int> presets;
    std::optional<int> answer = 0x0000FF; // red, as 0xBBGGRR
    FmLabels::setColourChooser([&](QWidget *, int current) {
        presets << current;
        return answer;
    });
    click(*w, "CmdPrtCol_0");
    answer = std::nullopt;
    click(*w, "CmdPrtCol_0");
    answer = 0xFF8000;
    click(*w, "CmdPrtCol_1");
    EXPECT_EQ(swatch(*w, "PbPrtCol_0"), QColor(255, 0, 0));
    EXPECT_EQ(swatch(*w, "PbPrtCol_1"), QColor(0, 0x80, 0xFF));
    EXPECT_EQ(presets, (QList<int>{0, 0x0000FF, 0}));
}

TEST_F(FmLabelsTest, PrintSavesTheChoicesAndTurnsThePaperTheSizesWay)
{
    FmLabels::setColourChooser([](QWidget *, int) { return std::optional<int>(0x0000FF); });
    auto w = openScreen();
    toggle(*w, "LstInclude", u"Name"_s);
    toggle(*w, "LstInclude", u"Dam"_s);
    pick(*w, "CmbLabSize", u"6cm X 4cm"_s);
    click(*w, "CmdPrtCol_0");

    // No animal ticked: told, the choices saved and kept on screen, nothing printed.
    click(*w, "CmdPrint");
    EXPECT_EQ(fx.prompts.texts(),
              (QStringList{u"No Livestock Selected\nTick the animals to print labels for."_s}));
    EXPECT_EQ(modals.shown[u"fmPrintPreview"_s], 0);
    EXPECT_TRUE(w->isVisible());
    EXPECT_EQ(stored(u"Name"_s), u"Include");
    EXPECT_EQ(stored(u"Sire"_s), QString());
    EXPECT_EQ(stored(u"Label Size"_s), u"3");
    EXPECT_EQ(stored(u"LabelColour_0"_s), u"255");
    EXPECT_EQ(stored(u"LabelColour_1"_s), u"0");

    QPageLayout::Orientation turned = QPageLayout::Portrait;
    modals.on(u"fmPrintPreview"_s, [&](QDialog &d) {
        turned = static_cast<QPrintPreviewDialog &>(d).printer()->pageLayout().orientation();
        return int(QDialog::Accepted);
    });
    toggle(*w, "LstStock", u"Thistle"_s);
    click(*w, "CmdPrint");
    EXPECT_EQ(turned, QPageLayout::Landscape);
    EXPECT_EQ(w->result(), QDialog::Accepted) << "the screen closes once printed";

    // The next time, the screen opens with those choices; the compact size prints portrait.
    auto again = openScreen();
    EXPECT_EQ(ticked(*again, "LstInclude"), (QStringList{u"Name"_s, u"Dam"_s}));
    EXPECT_EQ(child<QComboBox>(*again, "CmbLabSize")->currentIndex(), 3);
    EXPECT_EQ(swatch(*again, "PbPrtCol_0"), QColor(255, 0, 0));
    EXPECT_TRUE(ticked(*again, "LstStock").isEmpty()) << "animals are picked afresh";
    toggle(*again, "LstStock", u"Jet"_s);
    pick(*again, "CmbLabSize", u"10cm X 3.5cm"_s);
    click(*again, "CmdPrint");
    EXPECT_EQ(turned, QPageLayout::Portrait);
    EXPECT_EQ(modals.shown[u"fmPrintPreview"_s], 2);
}

TEST_F(FmLabelsTest, PdfHasEachLabelInItsPlaceOnThePage)
{
    if (pdfReaderMissing())
        GTEST_SKIP() << "pdftotext is not installed";
    auto w = openScreen();
    toggle(*w, "LstStock", u"Jet"_s);
    toggle(*w, "LstStock", u"Thistle"_s);
    for (const QString &item : {u"Name"_s, u"Sex"_s, u"Date Of Birth"_s})
        toggle(*w, "LstInclude", item);
    // A4 without margins, turned the size's way, so that a word's place is the page's own;
    // read back in centimetres.
    const auto printed = [&](QPageLayout::Orientation orientation) {
        const QString file = dir.filePath(u"labels.pdf"_s);
        {
            QPdfWriter pdf(file);
            pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), orientation, QMarginsF()));
            pdf.setResolution(600);
            EXPECT_TRUE(w->printLabels(&pdf));
        }
        const bool landscape = orientation == QPageLayout::Landscape;
        return pdfWords(file, landscape ? 29.7 : 21.0, landscape ? 21.0 : 29.7);
    };

    // 6 by 9 cm: Jet in the first place, Thistle one column over (6 cm and a gap of 0.5),
    // each text 0.2 cm in from its label's edge and 0.125 cm down from its top. The name is
    // 20 points, so the next line is 20 points of Arial's 1.117 line lower.
    const QList<PdfWord> words = printed(QPageLayout::Landscape);
    const PdfWord *jet = findWord(words, u"Jet"_s), *thistle = findWord(words, u"Thistle"_s);
    const PdfWord *buck = findWord(words, u"Buck"_s), *born = findWord(words, u"02/04/2024"_s);
    ASSERT_TRUE(jet && thistle && buck && born);
    EXPECT_NEAR(jet->xMin, 0.0625 + 0.2, kNear);
    EXPECT_NEAR(jet->yMin, 0.0625 + 0.125, kNear);
    EXPECT_NEAR(thistle->xMin, 6.5625 + 0.2, kNear);
    EXPECT_NEAR(thistle->yMin, jet->yMin, kNear);
    EXPECT_NEAR(buck->xMin, jet->xMin, kNear);
    EXPECT_NEAR(buck->yMin - jet->yMin, 20 * 1.117 * 2.54 / 72, kNear);
    EXPECT_GT(born->xMin, thistle->xMin);
    EXPECT_GT(born->yMin, buck->yMin);
    for (const PdfWord &word : words)
        EXPECT_EQ(word.page, 1);

    // 10 by 3.5 cm, two across: Thistle at 10.35 cm, her sex in the second column 6 cm
    // along, beside her name.
    pick(*w, "CmbLabSize", u"10cm X 3.5cm"_s);
    const QList<PdfWord> compact = printed(QPageLayout::Portrait);
    const PdfWord *name = findWord(compact, u"Thistle"_s), *sex = findWord(compact, u"Doe"_s);
    ASSERT_TRUE(name && sex);
    EXPECT_NEAR(name->xMin, 10.4125 + 0.2, kNear);
    EXPECT_NEAR(sex->xMin, 10.4125 + 0.2 + 6, kNear);
    EXPECT_NEAR(sex->yMin, name->yMin, kNear);
}

} // namespace
