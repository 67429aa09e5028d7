#pragma once

#include "care/DatabaseUtilities.h"
#include "care/Devices.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

#include <memory>

class QComboBox;
class QGroupBox;
class QListWidget;
class QMenuBar;
class QPushButton;
class QStatusBar;

namespace tarvex {

/// "Database Utilities": a registered stud chosen from the list is compacted, repaired,
/// restored from one of its backups or removed. No stud is open while the screen is up;
/// the main window opens one again afterwards, or ends the program when the breeder chose
/// Exit Program.
class FmDatabaseUtil : public QDialog
{
public:
    /// The result of the screen when the breeder chose to end the program.
    static constexpr int EndProgram = 2;

    FmDatabaseUtil(Session &session, Prompts &prompts, Devices &devices, QWidget *parent = nullptr);
    ~FmDatabaseUtil() override;

private:
    void Cmbdatabases_Click();
    /// The stud chosen; empty when none is.
    QString chosenStud() const;
    void CmdCompact_Click();
    void CmdRepair_Click();
    void CmdRemove_Click();
    void CmdRestore_Click();
    void Comrestore_Click();
    /// Shows the list of backups in place of the buttons, or the buttons again.
    void showRestore(bool on);

    std::unique_ptr<Prompts> m_prompts; // the caller's, with the status lines on this screen
    std::unique_ptr<DatabaseUtilities> m_utilities;

    QMenuBar *m_menu = nullptr;
    QComboBox *Cmbdatabases = nullptr;
    QWidget *PbUtils = nullptr;
    QPushButton *CmdCompact = nullptr;
    QPushButton *CmdRepair = nullptr;
    QPushButton *CmdRestore = nullptr;
    QPushButton *CmdRemove = nullptr;
    QGroupBox *FrmRestore = nullptr;
    QListWidget *LbDatabase = nullptr;
    QStatusBar *Sb = nullptr;
};

} // namespace tarvex
