#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QString>

#include <functional>

namespace tarvex {

/// The checks made each time a stud is opened, before the program holds it: first the
/// reminder of the external backup (externalBackup is called when the breeder agrees and
/// AutoFloppyBackup is on), then the rotating backup beside the stud.
void CheckBackups(Session &session, Prompts &prompts, const std::function<void()> &externalBackup);

/// The reminder of the external backup, every RemindEvery openings while RemindBackup is on:
/// true when the breeder pressed OK and the backup is to be carried out at once. The count of
/// openings starts again whatever the answer.
bool RemindExternalBackup(Session &session, Prompts &prompts);

/// The rotating backups of a stud: every BackUpEvery openings (with AutoBackup on) the stud
/// file is copied beside itself to "<name>_<cycle>.mdb", the cycle going round from 1 to
/// KeepBackUps, asking first when PromptBackup is on, and each copy is recorded as
/// "Backup <cycle>" with the file and the day. Run as the stud is being opened, before the
/// program holds it. A copy that fails says so ("Backup Failed") and leaves the ring where
/// it was; the earlier file of that number stays until a new copy has replaced it whole.
void RotatingBackup(Session &session, Prompts &prompts);

/// The ring file of a cycle: "<folder>/<name>_<cycle>.mdb".
QString ringFile(const Session &session, int cycle);
/// The cycle after the last one written, round to 1 after KeepBackUps (a number the
/// settings cannot read counts as 0, a ring of one).
int nextCycle(int lastCycle, int keep);

} // namespace tarvex
