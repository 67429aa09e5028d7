#include "FmBackup.h"

#include "care/ExternalBackup.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/WorkProgress.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {

constexpr int kWidth = 6000, kHeight = 2100;

} // namespace

FmBackup::FmBackup(Session &session, Prompts &prompts, Devices &devices, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts), m_devices(devices)
{
    setObjectName(u"FmBackup"_s);
    setWindowTitle(u"Backup to External Device"_s);

    auto *device = make<QLabel>(this, "LblBuDevice", u"Backing up to "_s + backupDrive(session));
    place(device, 240, 240, 5520, 300);
    LblFile = make<QLabel>(this, "LblFile");
    place(LblFile, 240, 630, 5520, 300);
    PrbBackup = make<QProgressBar>(this, "PrbBackup");
    PrbBackup->setRange(0, 100);
    PrbBackup->setValue(0);
    PrbBackup->setTextVisible(false);
    place(PrbBackup, 240, 1050, 5520, 300);
    CmdCancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    CmdCancel->setToolTip(u"Stop the backup"_s);
    place(CmdCancel, 2250, 1530, 1500, 420);
    // While the backup runs the bar's own Cancel stops it; before, Cancel leaves without one.
    onAction(CmdCancel, &QPushButton::clicked, this, [this] {
        if (!m_running)
            reject();
    });

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

void FmBackup::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (m_started)
        return;
    // The backup starts once the screen is up and painted.
    QTimer::singleShot(0, this, [this] {
        if (m_started || !isVisible())
            return;
        runAction(windowTitle(), [this] { run(); });
        // A fault has been told; there is nothing more this screen can do.
        if (isVisible())
            reject();
    });
}

bool FmBackup::run()
{
    if (m_started)
        return m_backedUp;
    m_started = true;
    m_running = true;
    struct Finished
    {
        bool &running;
        ~Finished() { running = false; }
    } finished{m_running};
    {
        WorkProgress progress(this, PrbBackup, {LblFile}, CmdCancel);
        m_backedUp = ExternalBackup(m_session, m_prompts, m_devices, progress).RunExternalBackup();
    }
    accept();
    return m_backedUp;
}

} // namespace tarvex
