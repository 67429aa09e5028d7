#pragma once

#include "care/Devices.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace tarvex {

/// The database utilities: compact, repair, restore from a backup, or remove a registered
/// stud with all its copies and settings. Every question and message goes through prompts,
/// and the step in hand is shown as its status line. The program holds no stud open while
/// they run; afterwards it opens the stud again as at the start.
class DatabaseUtilities
{
public:
    DatabaseUtilities(Session &session, Prompts &prompts, Devices &devices);

    /// The registered studs, in the catalogue's order.
    QStringList studs() const;

    /// Asks, then compacts the stud, leaving the file as it was as "C_<name>.mdb". True when
    /// it was compacted.
    bool Compact(const QString &name);
    /// Asks, then checks the whole stud and rebuilds it from what can be read when it does
    /// not check out; a failure is told with its number and reason.
    bool Repair(const QString &name);
    /// The copies a stud can be restored from: the external one first (always offered, as
    /// "<drive>/<name>.mdb "), then each recorded ring file still on disk, as recorded
    /// ("<file> - <date>").
    QStringList restoreList(const QString &name);
    /// Restores the stud from the entry at index of restoreList, after two questions. The
    /// live file is deleted before the copy; a copy that then fails says which backup still
    /// holds the stud. A file that is not a stud is refused before anything is deleted.
    bool Restore(const QString &name, int index, const QString &entry);
    /// Asks twice, then deletes the stud, every "<name>_*.mdb" beside it, its compaction copy
    /// and its settings; each step runs even when an earlier one failed.
    bool Remove(const QString &name);

private:
    QString studPath(const QString &name) const;
    /// Asks whether to verb the stud, then does the work with status shown, telling a failure
    /// as "Could not <verb> database - Error <n>" and its reason. True when it was done.
    bool workOnStud(const QString &name, const QString &verb, const QString &status,
                    const std::function<void()> &work);

    Session &m_session;
    Prompts &m_prompts;
    Devices &m_devices;
};

} // namespace tarvex
