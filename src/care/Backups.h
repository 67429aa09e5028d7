#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QString>

namespace tarvex {

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
