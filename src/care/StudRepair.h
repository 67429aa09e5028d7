#pragma once

#include "core/Progress.h"

#include <QString>

namespace tarvex {

/// Compaction and repair of a stud file that no connection of this program holds.
///
/// CompactStud leaves the file as it was under "C_<name>.mdb" beside it and compacts the
/// stud itself in place: every connection another program may hold stays on the live file,
/// and a compaction that fails leaves the stud untouched.
///
/// RepairDatabase checks the whole file; a file that does not check out is rebuilt from
/// the template with every row that can still be read, table by table, and the damaged file
/// is kept as "C_<name>.mdb". Throws StoreError (its number and words are what the breeder
/// is told) when the file cannot be read at all or nothing sound could be made of it.
void CompactStud(const QString &studPath, Progress &progress = noProgress());
/// What a repair did.
enum class RepairOutcome { Sound, Rebuilt };
RepairOutcome RepairDatabase(const QString &studPath, const QString &templatePath);

/// "<folder>/C_<name>.mdb": the file as it was before the last compaction or repair.
QString uncompactedPath(const QString &studPath);
/// The verdict of the whole-file check: "ok", or the first of its findings.
QString checkStud(const QString &studPath);

} // namespace tarvex
