#pragma once

#include "core/Session.h"
#include "reporting/AnimalSheet.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QPagedPaintDevice;

namespace tarvex {

/// "Print Details": which sections of the animal's sheet to print, kept for the stud, and
/// the sheet itself through the print preview.
class FmPrint : public QDialog
{
public:
    FmPrint(Session &session, qint64 number, QWidget *parent = nullptr);

    /// The ticks as they stand.
    SheetSections sections() const;
    /// Draws the sheet with the ticked sections on a printer or a PDF file.
    bool printSheet(QPagedPaintDevice *device);

private:
    void CmdPrint_Click();

    Session &m_session;
    qint64 m_number;
    std::array<QCheckBox *, kSheetSections> ChkToPrint{};
};

} // namespace tarvex
