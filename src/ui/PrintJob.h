#pragma once

#include <QPageLayout>
#include <QString>

#include <optional>

#include <functional>

class QPagedPaintDevice;
class QPrinter;
class QWidget;

namespace tarvex {

/// One printout, whatever it prints: the print preview with the system's print dialog,
/// "Save as PDF", and the page setup chosen under Printer Setup, which every printout of the
/// run uses. The page drawer paints the whole document on the device it is given (a
/// printer, a PDF file) through a print surface; it gives false when there is nothing to
/// print after all (the document is then abandoned).
class PrintJob
{
public:
    using Drawer = std::function<bool(QPagedPaintDevice *device)>;

    PrintJob(QWidget *parent, const QString &title, Drawer draw);

    /// A printout that always takes one orientation (a wide list prints landscape) whatever
    /// the page setup says; the page setup itself is left as the user chose it.
    void setOrientation(QPageLayout::Orientation orientation) { m_orientation = orientation; }
    /// The print preview; from it the user prints or saves a PDF. False when the drawer
    /// gave up (the preview then closes by itself).
    bool preview();
    /// The document straight into a PDF file at the page setup of the run; false when the
    /// drawer gave up (no file is left). A file that cannot be written is a fault, told by
    /// the action that asked for it; an earlier file of that name is then left as it was.
    bool saveAsPdf(const QString &path);

    /// Printer Setup: the page size, orientation and printer that later printouts use.
    static void pageSetup(QWidget *parent, const QString &title = {});
    /// The printer of the run, with the page setup last chosen.
    static QPrinter &printer();

private:
    QWidget *m_parent;
    QString m_title;
    Drawer m_draw;
    std::optional<QPageLayout::Orientation> m_orientation;
};

} // namespace tarvex
