#pragma once

#include "care/Devices.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace tarvex {

/// "Backup to External Device": made for one backup. As soon as it comes up it compacts the
/// stud and copies it to the backup device, showing the step in hand and a bar, with Cancel,
/// and closes itself when the backup is over.
class FmBackup : public QDialog
{
public:
    FmBackup(Session &session, Prompts &prompts, Devices &devices, QWidget *parent = nullptr);

    /// Carries out the backup once (a second call does nothing) and closes the screen; true
    /// when the device holds the new copy.
    bool run();

protected:
    void showEvent(QShowEvent *event) override;

private:
    Session &m_session;
    Prompts &m_prompts;
    Devices &m_devices;
    bool m_started = false;
    bool m_running = false;
    bool m_backedUp = false;

    QLabel *LblFile;
    QProgressBar *PrbBackup;
    QPushButton *CmdCancel;
};

} // namespace tarvex
