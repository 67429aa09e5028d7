#include "MainWindow.h"
#include "ScreenTestSupport.h"
#include "support/PdfWords.h"
#include "support/StudFixture.h"

#include "core/CRegSettings.h"
#include "reporting/screens/FmPrint.h"
#include "reporting/screens/FmReports.h"
#include "store/DaySerial.h"
#include "store/StudDatabase.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QImage>
#include <QLineEdit>
#include <QPdfWriter>
#include <QPushButton>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

/// Ticks or unticks a box as a user does, with a click on the box itself.
void tick(QWidget &w, const char *name)
{
    auto *box = child<QCheckBox>(w, name);
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(box->height() / 2, box->height() / 2));
}

// Words read back from a printed PDF stand within this much of the sheet's own numbers (the
// box of a word starts at its glyphs, a little inside the place the text was put).
constexpr double kNear = 1.5;

class FmReportsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        window = startMainWindow(fx);
        ASSERT_TRUE(window);
        db = &fx.session.Stud->handle();
        fx.session.PointsOn = false;
        sire = fx.add({{u"Name"_s, u"Warren Jack"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
        dam = fx.add({{u"Name"_s, u"Old Mother"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
        bramble = fx.add({{u"Name"_s, u"Bramble"_s},
                          {u"Sex"_s, u"Doe"_s},
                          {u"Type"_s, u"Rex"_s},
                          {u"Colour"_s, u"Black"_s},
                          {u"RingNo"_s, u"R101"_s},
                          {u"Sire"_s, sire},
                          {u"Dam"_s, dam},
                          {u"Archive"_s, u"No"_s},
                          {u"DOB"_s, DaySerial::fromDate(QDate(2023, 4, 2))},
                          {u"Notes"_s, u"Good doe"_s}});
    }

    QString pdf(const std::function<bool(QPdfWriter &)> &draw)
    {
        const QString file = dir.filePath(u"page%1.pdf"_s.arg(++files));
        QPdfWriter writer(file);
        writer.setPageSize(QPageSize(QPageSize::A4));
        // The whole sheet, edge to edge, so the words' places read straight off the page.
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        EXPECT_TRUE(draw(writer));
        return file;
    }

    StudFixture fx;
    ModalScript modals;
    QTemporaryDir dir;
    int files = 0;
    std::unique_ptr<FmStock> window;
    Database *db = nullptr;
    qint64 sire = 0, dam = 0, bramble = 0;
};

TEST_F(FmReportsTest, ChoosingAReportShowsItsOptionsAndCancelGoesBack)
{
    FmReports reports(fx.session, fx.prompts);
    reports.show();
    EXPECT_EQ(reports.windowTitle(), u"Reports Menu");
    EXPECT_EQ(child<QGroupBox>(reports, "FrSelRep")->title(), u"Select Report Type:");
    EXPECT_EQ(child<QPushButton>(reports, "CmdRepPrint")->toolTip(), u"Print selected report");
    EXPECT_EQ(child<QPushButton>(reports, "cmdCancel")->toolTip(), u"Cancel reports ");
    EXPECT_TRUE(child<QWidget>(reports, "PbControl")->isVisible());
    EXPECT_FALSE(child<QWidget>(reports, "PbReports")->isVisible());

    pick(reports, "CmbRepType", u"Blank Pedigree Form"_s);
    EXPECT_TRUE(child<QWidget>(reports, "FrmRepOptions_1")->isVisible());
    EXPECT_FALSE(child<QWidget>(reports, "FrmRepOptions_2")->isVisible());
    EXPECT_EQ(child<QComboBox>(reports, "CmbGen")->currentText(), u"5 Generations") << "the stud's default";
    EXPECT_TRUE(child<QWidget>(reports, "PbReports")->isVisible());
    EXPECT_FALSE(child<QWidget>(reports, "PbControl")->isVisible());

    type(reports, "SDOB", u"01012024"_s);
    pick(reports, "CmbRepType", u"Birth Date Report"_s);
    EXPECT_TRUE(child<QWidget>(reports, "FrmRepOptions_2")->isVisible());
    EXPECT_FALSE(child<QWidget>(reports, "FrmRepOptions_1")->isVisible());
    EXPECT_EQ(child<QLineEdit>(reports, "SDOB")->displayText(), u"__/__/____") << "the dates start empty";

    click(reports, "cmdCancel");
    EXPECT_EQ(child<QComboBox>(reports, "CmbRepType")->currentIndex(), -1);
    EXPECT_FALSE(child<QWidget>(reports, "FrmRepOptions_2")->isVisible());
    EXPECT_TRUE(child<QWidget>(reports, "PbControl")->isVisible());
}

TEST_F(FmReportsTest, BirthDateReportChecksItsDatesAndPrints)
{
    FmReports reports(fx.session, fx.prompts);
    reports.show();
    pick(reports, "CmbRepType", u"Birth Date Report"_s);
    click(reports, "CmdRepPrint");
    ASSERT_EQ(fx.prompts.texts(), QStringList{u"Date must be entered"_s});
    EXPECT_EQ(fx.prompts.messages.last().title, u"Date Error");

    type(reports, "SDOB", u"01032024"_s);
    type(reports, "SToDOB", u"31032024"_s);
    click(reports, "CmdRepPrint");
    EXPECT_EQ(fx.prompts.texts().last(), u"No Details To Print");
    EXPECT_EQ(fx.prompts.messages.last().title, u"No Records");
    EXPECT_EQ(modals.shown[u"fmPrintPreview"_s], 0);

    db->execute(u"INSERT INTO Matings (Sire, Dam, MatingDate, Birthdate) VALUES (?, ?, ?, ?)"_s,
                {sire, dam, DaySerial::fromDate(QDate(2024, 2, 1)), DaySerial::fromDate(QDate(2024, 3, 3))});
    modals.on(u"fmPrintPreview"_s, [](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Birth Date Report");
        return int(QDialog::Rejected);
    });
    click(reports, "CmdRepPrint");
    EXPECT_EQ(modals.shown[u"fmPrintPreview"_s], 1);

    const QString file = pdf([&](QPdfWriter &w) { return reports.printReport(&w); });
    if (pdfReaderMissing())
        GTEST_SKIP() << "pdftotext is not installed";
    const QList<PdfWord> words = pdfWords(file, 200, 280);
    for (const auto &[text, x] : {std::pair{u"Warren"_s, 0.0}, {u"Birth"_s, 2.0}, {u"From"_s, 110.0},
                                  {u"01/03/2024"_s, 119.0}, {u"03/03/2024"_s, 2.0}, {u"Old"_s, 25.0},
                                  {u"Warren"_s, 102.0}, {u"01/02/2024"_s, 176.0}}) {
        bool found = false;
        for (const PdfWord &w : words)
            found = found || (w.text == text && std::abs(w.xMin - x) < kNear + 2);
        EXPECT_TRUE(found) << text.toStdString() << " at " << x;
    }
    const PdfWord *name = findWord(words, u"Report"_s);
    ASSERT_TRUE(name);
    EXPECT_NEAR(name->yMin, 18, kNear);
    const PdfWord *mother = findWord(words, u"Mother"_s);
    ASSERT_TRUE(mother);
    const PdfWord *mated = findWord(words, u"Mated"_s);
    ASSERT_TRUE(mated);
    EXPECT_NEAR(mated->xMin, 176, kNear);
    EXPECT_LT(mated->yMin, mother->yMin) << "the column heads above the rows";
}

TEST_F(FmReportsTest, BlankPedigreeFormPrintsTheChosenGenerations)
{
    FmReports reports(fx.session, fx.prompts);
    reports.show();
    pick(reports, "CmbRepType", u"Blank Pedigree Form"_s);
    pick(reports, "CmbGen", u"3 Generations"_s);
    const QString file = pdf([&](QPdfWriter &w) { return reports.printReport(&w); });
    if (pdfReaderMissing())
        GTEST_SKIP() << "pdftotext is not installed";
    const QList<PdfWord> words = pdfWords(file, 200, 280);
    EXPECT_TRUE(findWord(words, u"Parents"_s));
    EXPECT_TRUE(findWord(words, u"Grandparents"_s));
    EXPECT_FALSE(findWord(words, u"G.G.G."_s)) << "three generations only";
    EXPECT_FALSE(findWord(words, u"Bramble"_s)) << "nobody's pedigree";
    EXPECT_FALSE(findWord(words, u"Warren Jack"_s));
}

TEST_F(FmReportsTest, AnimalSheetKeepsItsTicksAndPrintsAtThePageScale)
{
    CRegSettings store(fx.session.AppName);
    store.SaveSetting(u"Rabbits\\Report Options"_s, u"Print General"_s, u"1"_s);
    store.SaveSetting(u"Rabbits\\Report Options"_s, u"Print Award Comments"_s, u"1"_s);
    // The default picture: wide, so it is as wide as the sheet allows.
    const QString picture = dir.filePath(u"bramble.png"_s);
    QImage image(400, 200, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    ASSERT_TRUE(image.save(picture));
    db->execute(u"INSERT INTO Images (Number, imageno, Path, Caption, \"Default\") VALUES (?, 1, ?, 'Side', 1)"_s,
                {bramble, picture});

    modals.on(u"FmPrint"_s, [&](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Print Details");
        EXPECT_EQ(child<QGroupBox>(d, "FrmToPrint")->title(), u"Information to Print:");
        EXPECT_TRUE(child<QCheckBox>(d, "ChkToPrint_0")->isChecked());
        EXPECT_EQ(child<QCheckBox>(d, "ChkToPrint_5")->text(), u"Critique/Comments");
        EXPECT_TRUE(child<QCheckBox>(d, "ChkToPrint_5")->isChecked());
        EXPECT_FALSE(child<QCheckBox>(d, "ChkToPrint_5")->isEnabled()) << "critiques go with awards";
        tick(d, "ChkToPrint_3");
        EXPECT_TRUE(child<QCheckBox>(d, "ChkToPrint_5")->isEnabled());
        tick(d, "ChkToPrint_3");
        EXPECT_FALSE(child<QCheckBox>(d, "ChkToPrint_5")->isEnabled());
        EXPECT_TRUE(child<QCheckBox>(d, "ChkToPrint_5")->isChecked()) << "its tick is kept";
        tick(d, "ChkToPrint_2");
        tick(d, "ChkToPrint_7");
        EXPECT_EQ(child<QPushButton>(d, "CmdPrint")->toolTip(), u"Print the Selected Details");
        click(d, "CmdPrint");
        return d.result();
    });
    modals.on(u"fmPrintPreview"_s, [](QDialog &) { return int(QDialog::Rejected); });
    click(*window, "CmdBrowse");
    while (child<QLineEdit>(*window, "TxtName")->text() != u"Bramble")
        click(*window, "Stock", "CmdNext");
    ASSERT_TRUE(child<QWidget>(*window, "CmdPrint")->isEnabled());
    click(*window, "CmdPrint");
    ASSERT_EQ(modals.shown[u"FmPrint"_s], 1);
    EXPECT_EQ(modals.shown[u"fmPrintPreview"_s], 1);
    EXPECT_EQ(store.GetSetting(u"Rabbits\\Report Options"_s, u"Print Notes"_s), u"1");
    EXPECT_EQ(store.GetSetting(u"Rabbits\\Report Options"_s, u"Print Image"_s), u"1");
    EXPECT_EQ(store.GetSetting(u"Rabbits\\Report Options"_s, u"Print Awards"_s), u"0");

    FmPrint sheet(fx.session, bramble);
    const QString file = pdf([&](QPdfWriter &w) { return sheet.printSheet(&w); });
    if (pdfReaderMissing())
        GTEST_SKIP() << "pdftotext is not installed";
    const QList<PdfWord> words = pdfWords(file, 200, 280);
    const auto at = [&](const QString &text, double x, double y) {
        const PdfWord *w = findWord(words, text);
        ASSERT_TRUE(w) << text.toStdString();
        EXPECT_NEAR(w->xMin, x, kNear) << text.toStdString();
        if (y >= 0) {
            EXPECT_NEAR(w->yMin, y, kNear) << text.toStdString();
        }
    };
    at(u"Warren"_s, 0, 2);
    at(u"Name"_s, 2, 18);
    at(u"Bramble"_s, 21, 18);
    at(u"Breed"_s, 2, -1);
    at(u"Rex"_s, 21, -1);
    at(u"R101"_s, 145, -1);
    at(u"Good"_s, 21, -1);
    // The picture comes first: 175 wide, half as high, so the rows start below it.
    const PdfWord *breed = findWord(words, u"Breed"_s);
    const PdfWord *name = findWord(words, u"Name"_s);
    ASSERT_TRUE(breed && name);
    EXPECT_GT(breed->yMin - name->yMin, 80);
    EXPECT_LT(breed->yMin - name->yMin, 100);
}

} // namespace

namespace {

TEST_F(FmReportsTest, AwardsDiaryAndMatingsStandInTheirColumnsOnPaper)
{
    fx.session.PointsOn = true;
    fx.session.PointsName = u"Stars"_s;
    db->execute(u"INSERT INTO Awards (Number, Date, Venue, Judge, Secretary, Award, NoEntered, NoShown, Stars, "
                "CCStars, Comments) VALUES (?, ?, 'Derby', 'Judge', 'Secretary', 'BOB', 12, 10, '3', '1', "
                "'Dense coat')"_s,
                {bramble, DaySerial::fromDate(QDate(2024, 5, 4))});
    db->execute(u"INSERT INTO BreedNote (Number, Date, Notes) VALUES (?, ?, 'Wormed')"_s,
                {bramble, DaySerial::fromDate(QDate(2024, 6, 1))});
    db->execute(u"INSERT INTO Matings (Sire, Dam, MatingDate, Birthdate) VALUES (?, ?, ?, ?)"_s,
                {sire, bramble, DaySerial::fromDate(QDate(2024, 7, 1)), DaySerial::fromDate(QDate(2024, 8, 1))});
    CRegSettings store(fx.session.AppName);
    for (const QString &key : {u"Print Awards"_s, u"Print Award Comments"_s, u"Print Diary"_s, u"Print Matings"_s})
        store.SaveSetting(u"Rabbits\\Report Options"_s, key, u"1"_s);

    FmPrint sheet(fx.session, bramble);
    const QString file = pdf([&](QPdfWriter &w) { return sheet.printSheet(&w); });
    if (pdfReaderMissing())
        GTEST_SKIP() << "pdftotext is not installed";
    const QList<PdfWord> words = pdfWords(file, 200, 280);
    const auto left = [&](const QString &text, double x) {
        const PdfWord *w = findWord(words, text);
        ASSERT_TRUE(w) << text.toStdString();
        EXPECT_NEAR(w->xMin, x, kNear) << text.toStdString();
    };
    const auto right = [&](const QString &text, double x) {
        const PdfWord *w = findWord(words, text);
        ASSERT_TRUE(w) << text.toStdString();
        EXPECT_NEAR(w->xMax, x, kNear) << text.toStdString();
    };
    left(u"Awards"_s, 2);
    left(u"Club"_s, 18);
    left(u"Derby"_s, 18);
    left(u"Judge/Secretary"_s, 90);
    left(u"Judge"_s, 90);
    left(u"BOB"_s, 150);
    right(u"Entered"_s, 136);
    right(u"Shown"_s, 148);
    right(u"Awarded"_s, 197);
    right(u"12"_s, 136);
    left(u"Dense"_s, 21);
    left(u"Diary"_s, 2);
    left(u"Wormed"_s, 21);
    left(u"Matings"_s, 2);
    EXPECT_TRUE(std::any_of(words.begin(), words.end(), [](const PdfWord &w) {
        return w.text == u"Warren" && std::abs(w.xMin - 62) < kNear;
    })) << "the litters' sire in the partner's column";
    const PdfWord *secretary = findWord(words, u"Secretary"_s);
    const PdfWord *judge = findWord(words, u"Judge"_s);
    ASSERT_TRUE(secretary && judge);
    EXPECT_GT(secretary->yMin, judge->yMin) << "the secretary under the judge";
    EXPECT_LT(findWord(words, u"Awards"_s)->yMin, findWord(words, u"Diary"_s)->yMin);
    EXPECT_LT(findWord(words, u"Diary"_s)->yMin, findWord(words, u"Matings"_s)->yMin);
}

} // namespace
