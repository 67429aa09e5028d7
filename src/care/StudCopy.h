#pragma once

#include "store/Database.h"

#include "core/Progress.h"

#include <QString>
#include <QStringList>

namespace tarvex {

/// Copies of a stud that may be open and being written, for backups, compaction and moving
/// a stud to another computer. A copy is always a whole, consistent database: it is made by
/// the database engine itself (its online backup, or a vacuum into a new file), never by
/// copying the file's bytes. It is written beside its target under a temporary name, checked,
/// and only then given the target's name, so a copy that fails or is stopped part way leaves
/// the target as it was (an earlier copy of that name stays) and nothing half-written behind.
/// The copy is one self-contained file with a rollback journal, ready to be moved.
namespace StudCopy {

enum class Outcome { Done, Stopped };

/// Copies the stud open on source into target, a few megabytes at a time, telling progress
/// (pages) and stopping when it asks. Saves made meanwhile through other connections are
/// either wholly in the copy or wholly not. Throws StoreError: 3026 when the device is full,
/// 3051 when the target cannot be written, 3049 when the copy does not check out whole.
Outcome copy(Database &source, const QString &target, Progress &progress = noProgress());

/// Writes a compacted copy of the stud open on source into target: the same rows in a file
/// without the room that deleted rows left. Throws StoreError as copy does.
void compact(Database &source, const QString &target);

/// The temporary name a copy to target is written under until it is whole.
QString partialName(const QString &target);

/// Gives a finished copy written under its temporary name the target's name, with the
/// permissions of the file it copies. Throws StoreError 3051 when it cannot.
void putInPlace(const QString &partial, const QString &target, const QString &source);

/// The files the database engine may keep beside a stud: its journal and its log.
const QStringList &companionSuffixes();
/// Deletes a stud file with the journal or log beside it, which would otherwise be played
/// into whatever file takes its name next. A file that is not there is no fault.
void removeStudFile(const QString &path);

} // namespace StudCopy

} // namespace tarvex
