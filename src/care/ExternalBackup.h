#pragma once

#include "care/Backups.h"
#include "care/Devices.h"
#include "core/Progress.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QString>

namespace tarvex {

/// The backup device of the settings, a trailing "\" or "/" dropped.
QString backupDrive(const Session &session);
/// The path of a file on a device or in a folder.
QString onDevice(const QString &drive, const QString &fileName);
/// The compacted copy of the open stud's file that an external backup leaves beside it:
/// "<folder>/<name>_Compact.Mdb".
QString compactCopyPath(const Session &session);

/// An external backup: the stud compacted into a copy beside it, which is then copied to the
/// backup device under the stud's own file name, so the device holds a file that can stand in
/// for the stud as it is. Every step says what it is doing on progress; every fault is told
/// in the breeder's words and offers another try where another medium could help.
class ExternalBackup
{
public:
    ExternalBackup(Session &session, Prompts &prompts, Devices &devices, Progress &progress = noProgress());

    /// Compacts the stud and copies the compacted file to the backup device; true when the
    /// device holds the new copy.
    bool RunExternalBackup();
    /// Checks the device (there, big enough, room enough with an older copy of the same
    /// name counted as free) until the copy can be made or the breeder gives up, then copies.
    bool CopyToDevice(const QString &source, const QString &destination);
    /// Copies, telling a failure once (the box has no button to try again).
    bool CopyFile(const QString &source, const QString &destination);

private:
    Session &m_session;
    Prompts &m_prompts;
    Devices &m_devices;
    Progress &m_progress;
};

} // namespace tarvex
