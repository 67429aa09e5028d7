#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

#include <array>

class QComboBox;
class QGroupBox;
class QLineEdit;
class QPagedPaintDevice;
class QWidget;

namespace tarvex {

/// "Reports Menu": the reports of the whole stud, the blank pedigree form and the birth
/// date report, each with its options, printed through the print preview.
class FmReports : public QDialog
{
public:
    FmReports(Session &session, Prompts &prompts, QWidget *parent = nullptr);

    /// Draws the chosen report on a printer or a PDF file; false when there is nothing to
    /// print (no report chosen, or no litters born in the range).
    bool printReport(QPagedPaintDevice *device);

private:
    void CmbRepType_Click(int index);
    void CmdRepPrint_Click();
    void cmdCancel_Click();

    Session &m_session;
    Prompts &m_prompts;

    QComboBox *CmbRepType;
    std::array<QGroupBox *, 3> FrmRepOptions{};
    QComboBox *CmbGen;
    QLineEdit *SDOB;
    QLineEdit *SToDOB;
    QWidget *PbControl;
    QWidget *PbReports;
};

} // namespace tarvex
