#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;
class QTableView;

namespace tarvex {

class InbreedingTable;

/// "Inbreeding": every animal of the stud with its coefficient, the generations it rests
/// on and how complete they are, worked out once the window is up (with a bar and Cancel),
/// sortable by any column, copied to a spreadsheet on request. A double click shows the
/// animal.
class FmInbreeding : public QDialog
{
public:
    FmInbreeding(Session &session, Prompts &prompts, QWidget *parent = nullptr);

    /// Works the table out (or takes it from the stud's cache); false when cancelled or
    /// stopped by a loop, which has been told.
    bool fill();
    InbreedingTable *table() const { return m_table; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    void copyToSpreadsheet();

    Session &m_session;
    Prompts &m_prompts;
    InbreedingTable *m_table;
    bool m_started = false;

    QLabel *LblSummary;
    QTableView *LvInbreeding;
    QPushButton *CmdExcel, *CmdBack;
    QWidget *FrmProgress;
    QLabel *Lblprogress;
    QProgressBar *Prb;
    QPushButton *CmdStop;
};

} // namespace tarvex
