#include "PrintJob.h"

#include "Action.h"
#include "FileChooser.h"
#include "Modal.h"

#include <QAction>
#include <QPageSetupDialog>
#include <QPdfWriter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QSaveFile>
#include <QScopeGuard>
#include <QToolBar>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarvex {

PrintJob::PrintJob(QWidget *parent, const QString &title, Drawer draw)
    : m_parent(parent), m_title(title), m_draw(std::move(draw))
{
}

QPrinter &PrintJob::printer()
{
    // One printer for the run, so the page setup chosen once holds for every printout.
    static QPrinter *shared = [] {
        auto *p = new QPrinter(QPrinter::HighResolution);
        p->setPageSize(QPageSize(QPageSize::A4));
        return p;
    }();
    return *shared;
}

void PrintJob::pageSetup(QWidget *parent, const QString &title)
{
    QPageSetupDialog dialog(&printer(), parent);
    dialog.setObjectName(u"PrinterSetup"_s);
    if (!title.isEmpty())
        dialog.setWindowTitle(title);
    Modal::exec(dialog);
}

bool PrintJob::preview()
{
    QPrinter &target = printer();
    target.setDocName(m_title);
    const QPageLayout chosen = target.pageLayout();
    if (m_orientation)
        target.setPageOrientation(*m_orientation);
    const auto restore = qScopeGuard([&] { target.setPageLayout(chosen); });
    // The preview may have printed to a file last time; it starts from the printer.
    target.setOutputFileName(QString());
    QPrintPreviewDialog dialog(&target, m_parent);
    dialog.setObjectName(u"fmPrintPreview"_s);
    dialog.setWindowTitle(m_title);
    bool gaveUp = false;
    onAction(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&](QPrinter *device) {
        if (!gaveUp && !m_draw(device)) {
            gaveUp = true;
            dialog.reject();
        }
    });
    if (auto *tools = dialog.findChild<QToolBar *>()) {
        tools->addSeparator();
        QAction *pdf = tools->addAction(u"Save as PDF"_s);
        pdf->setObjectName(u"SaveAsPdf"_s);
        pdf->setToolTip(u"Save the printout as a PDF file"_s);
        onAction(pdf, &QAction::triggered, &dialog, [&] {
            const QString path =
                FileChooser::save(&dialog, u"Save as PDF"_s, m_title + u".pdf"_s, {u"PDF files (*.pdf)"_s}).path;
            if (!path.isEmpty())
                saveAsPdf(path);
        });
    }
    Modal::exec(dialog);
    return !gaveUp;
}

bool PrintJob::saveAsPdf(const QString &path)
{
    // The file takes the place of any earlier one only once it is whole.
    QSaveFile file(path);
    const auto notWritten = [&] {
        return std::runtime_error(
            u"The PDF file could not be written:\n%1\n\n%2"_s.arg(path, file.errorString()).toStdString());
    };
    if (!file.open(QIODevice::WriteOnly))
        throw notWritten();
    {
        QPdfWriter pdf(&file);
        pdf.setTitle(m_title);
        pdf.setCreator(u"Tarvex"_s);
        QPageLayout layout = printer().pageLayout();
        if (m_orientation)
            layout.setOrientation(*m_orientation);
        pdf.setPageLayout(layout);
        pdf.setResolution(600);
        if (!m_draw(&pdf))
            return false;
    }
    if (!file.commit())
        throw notWritten();
    return true;
}

} // namespace tarvex
