// Every printout goes through one print job: the preview with the printer dialog and Save
// as PDF, and the page setup chosen once for the run.
#include "screens/ScreenTestSupport.h"

#include "platform/QPainterSurface.h"
#include "ui/PrintJob.h"

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QPrinter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

TEST(PrintJob, PreviewOffersPdfAndTheDrawerPaintsWhatIsSaved)
{
    QSizeF pageDrawn;
    int drawn = 0;
    PrintJob job(nullptr, u"Birth Date Report"_s, [&](QPagedPaintDevice *device) {
        ++drawn;
        QPainterSurface page(device);
        pageDrawn = page.pageSize();
        page.setFontSize(12);
        page.print(u"Warren End"_s);
        page.endDoc();
        return true;
    });
    ModalScript modals;
    modals.on(u"fmPrintPreview"_s, [](QDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Birth Date Report");
        EXPECT_NE(d.findChild<QAction *>(u"SaveAsPdf"_s), nullptr) << "the preview saves a PDF";
        return int(QDialog::Rejected);
    });
    EXPECT_TRUE(job.preview());
    EXPECT_EQ(modals.shown[u"fmPrintPreview"_s], 1);

    // The page setup chosen under Printer Setup holds for the PDF too.
    PrintJob::printer().setPageOrientation(QPageLayout::Landscape);
    QTemporaryDir dir;
    const QString file = dir.filePath(u"report.pdf"_s);
    const int before = drawn;
    ASSERT_TRUE(job.saveAsPdf(file));
    EXPECT_EQ(drawn, before + 1);
    EXPECT_GT(QFileInfo(file).size(), 500);
    EXPECT_GT(pageDrawn.width(), pageDrawn.height()) << "landscape, as set up";
    PrintJob::printer().setPageOrientation(QPageLayout::Portrait);
}

// A PDF that cannot be written is told, and a PDF already there is never left half-written.
TEST(PrintJob, PdfThatCannotBeWrittenIsToldAndAnEarlierOneIsKept)
{
    bool giveUp = false;
    PrintJob job(nullptr, u"Stud Certificate"_s, [&](QPagedPaintDevice *device) {
        QPainterSurface page(device);
        page.print(u"Warren End"_s);
        if (giveUp) {
            page.killDoc();
            return false;
        }
        page.endDoc();
        return true;
    });
    QTemporaryDir dir;
    const QString missing = dir.filePath(u"no such folder/certificate.pdf"_s);
    try {
        job.saveAsPdf(missing);
        ADD_FAILURE() << "a file in a missing folder was reported written";
    } catch (const std::runtime_error &e) {
        EXPECT_TRUE(QString::fromUtf8(e.what()).startsWith(u"The PDF file could not be written:\n"_s + missing + u"\n\n"_s))
            << e.what();
    }

    const QString kept = dir.filePath(u"certificate.pdf"_s);
    ASSERT_TRUE(job.saveAsPdf(kept));
    QFile earlier(kept);
    ASSERT_TRUE(earlier.open(QIODevice::ReadOnly));
    const QByteArray before = earlier.readAll();
    earlier.close();
    giveUp = true;
    EXPECT_FALSE(job.saveAsPdf(kept));
    ASSERT_TRUE(earlier.open(QIODevice::ReadOnly));
    EXPECT_EQ(earlier.readAll(), before) << "the drawer gave up: the earlier file stands";
}

TEST(PrintJob, DrawerThatGivesUpClosesThePreview)
{
    PrintJob job(nullptr, u"Pedigree For Gone"_s, [](QPagedPaintDevice *) { return false; });
    ModalScript modals;
    modals.on(u"fmPrintPreview"_s, [](QDialog &d) { return d.result(); });
    EXPECT_FALSE(job.preview());
}

} // namespace
