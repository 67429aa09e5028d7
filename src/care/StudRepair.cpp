#include "StudRepair.h"

#include "care/StudCopy.h"
#include "store/Database.h"
#include "store/StoreError.h"

#include <QFile>
#include <QFileInfo>

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <filesystem>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// Rows read from the damaged file between two looks for the next readable row.
constexpr int kRowsPerRead = 1000;

QString quoted(const QString &identifier)
{
    return u'"' + QString(identifier).replace(u'"', u"\"\""_s) + u'"';
}

QStringList tablesOf(SQLite::Database &db)
{
    QStringList tables;
    SQLite::Statement query(db, "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' "
                                "ESCAPE '\\' ORDER BY rowid");
    while (query.executeStep())
        tables << QString::fromStdString(query.getColumn(0).getString());
    return tables;
}

QStringList columnsOf(SQLite::Database &db, const QString &table)
{
    QStringList columns;
    SQLite::Statement query(db, u"PRAGMA table_info(%1)"_s.arg(quoted(table)).toStdString());
    while (query.executeStep())
        columns << QString::fromStdString(query.getColumn(1).getString());
    return columns;
}

void rename(const QString &from, const QString &to)
{
    std::error_code error;
    std::filesystem::rename(from.toStdString(), to.toStdString(), error);
    if (error)
        throw StoreError(StoreError::CannotOpenFile, u"The file '%1' cannot be renamed to '%2' (%3)."_s.arg(
                                                         from, to, QString::fromStdString(error.message())));
}

/// A value read binds as what it is: whole number, real, text, bytes or nothing.
void bindAs(SQLite::Statement &statement, int index, const SQLite::Column &value)
{
    switch (value.getType()) {
    case SQLITE_INTEGER:
        statement.bind(index, static_cast<int64_t>(value.getInt64()));
        break;
    case SQLITE_FLOAT:
        statement.bind(index, value.getDouble());
        break;
    case SQLITE_TEXT:
        statement.bind(index, value.getString());
        break;
    case SQLITE_BLOB:
        statement.bind(index, value.getBlob(), value.getBytes());
        break;
    default:
        statement.bind(index);
    }
}

/// Copies the readable rows of one table from the damaged file into the rebuilt one. A read
/// that meets a damaged page is taken up again past it: the next row that can be read is
/// found by looking further and further ahead, then back towards the damage.
qint64 salvageTable(SQLite::Database &damaged, SQLite::Database &fresh, const QString &table)
{
    QStringList wanted;
    QStringList found;
    try {
        found = columnsOf(damaged, table);
    } catch (const SQLite::Exception &) {
        return 0;
    }
    for (const QString &column : columnsOf(fresh, table)) {
        for (const QString &have : found) {
            if (have.compare(column, Qt::CaseInsensitive) == 0) {
                wanted << column;
                break;
            }
        }
    }
    if (wanted.isEmpty())
        return 0;
    QStringList names;
    for (const QString &column : wanted)
        names << quoted(column);
    const QString select =
        u"SELECT rowid, %1 FROM %2 WHERE rowid > ? ORDER BY rowid LIMIT %3"_s.arg(names.join(u", "_s), quoted(table))
            .arg(kRowsPerRead);
    const QString insert = u"INSERT OR IGNORE INTO %1 (rowid, %2) VALUES (?%3)"_s.arg(
        quoted(table), names.join(u", "_s), u", ?"_s.repeated(wanted.size()));
    SQLite::Statement into(fresh, insert.toStdString());
    const auto readable = [&](qint64 after) -> bool {
        try {
            SQLite::Statement probe(damaged, u"SELECT rowid FROM %1 WHERE rowid > ? ORDER BY rowid LIMIT 1"_s
                                                  .arg(quoted(table))
                                                  .toStdString());
            probe.bind(1, static_cast<int64_t>(after));
            probe.executeStep();
            return true;
        } catch (const SQLite::Exception &) {
            return false;
        }
    };

    qint64 copied = 0;
    qint64 last = std::numeric_limits<qint64>::min();
    while (true) {
        bool more = false;
        try {
            SQLite::Statement rows(damaged, select.toStdString());
            rows.bind(1, static_cast<int64_t>(last));
            while (rows.executeStep()) {
                more = true;
                into.reset();
                into.clearBindings();
                for (int i = 0; i <= wanted.size(); ++i)
                    bindAs(into, i + 1, rows.getColumn(i));
                into.exec();
                last = rows.getColumn(0).getInt64();
                ++copied;
            }
            if (!more)
                break;
            continue;
        } catch (const SQLite::Exception &) {
        }
        // Past the damage: the first place ahead that reads, then as close to the damage as
        // reading allows, so that few sound rows beyond it are passed over.
        const qint64 from = last == std::numeric_limits<qint64>::min() ? 0 : last;
        qint64 stride = 1;
        while (stride < (qint64(1) << 50) && !readable(from + stride))
            stride *= 2;
        if (stride >= (qint64(1) << 50))
            break;
        qint64 low = from + stride / 2;
        qint64 high = from + stride;
        while (high - low > 1) {
            const qint64 mid = low + (high - low) / 2;
            (readable(mid) ? high : low) = mid;
        }
        last = high;
    }
    return copied;
}

/// The counters of the damaged file (numbers given out and never to be given again), where
/// they can still be read.
void carryCounters(SQLite::Database &damaged, SQLite::Database &fresh)
{
    try {
        SQLite::Statement counters(damaged, "SELECT name, seq FROM sqlite_sequence");
        while (counters.executeStep()) {
            SQLite::Statement raise(fresh, "UPDATE sqlite_sequence SET seq = max(seq, ?) WHERE name = ?");
            raise.bind(1, counters.getColumn(1).getInt64());
            raise.bind(2, counters.getColumn(0).getString());
            if (raise.exec() == 0) {
                SQLite::Statement add(fresh, "INSERT INTO sqlite_sequence (name, seq) VALUES (?, ?)");
                add.bind(1, counters.getColumn(0).getString());
                add.bind(2, counters.getColumn(1).getInt64());
                add.exec();
            }
        }
    } catch (const SQLite::Exception &) {
    }
}

[[noreturn]] void cannotRebuild(const QString &path, const QString &detail)
{
    throw StoreError(StoreError::CorruptDatabase,
                     u"The database '%1' is damaged and could not be rebuilt (%2)."_s.arg(path, detail));
}

/// The stud rebuilt from the template with every row of it that can be read, in a new file
/// beside it under a temporary name: the path of that file.
QString rebuild(const QString &studPath, const QString &templatePath)
{
    const QString partial = StudCopy::partialName(studPath);
    QFile::remove(partial);
    if (!QFile::copy(templatePath, partial))
        throw StoreError(StoreError::CannotOpenFile,
                         u"The database could not be rebuilt: '%1' cannot be written."_s.arg(partial));
    QFile::setPermissions(partial, QFile::permissions(studPath) | QFile::WriteOwner | QFile::ReadOwner);
    try {
        qint64 rows = 0;
        bool anyTable = false;
        {
            SQLite::Database damaged(studPath.toStdString(), SQLite::OPEN_READONLY);
            // The catalogue is read as it stands, even where it names pages the file has lost.
            damaged.exec("PRAGMA writable_schema = ON");
            SQLite::Database fresh(partial.toStdString(), SQLite::OPEN_READWRITE);
            SQLite::Transaction work(fresh);
            QStringList present;
            try {
                present = tablesOf(damaged);
            } catch (const SQLite::Exception &e) {
                cannotRebuild(studPath, QString::fromUtf8(e.what()));
            }
            for (const QString &table : tablesOf(fresh)) {
                if (!present.contains(table, Qt::CaseInsensitive))
                    continue;
                anyTable = true;
                rows += salvageTable(damaged, fresh, table);
            }
            carryCounters(damaged, fresh);
            work.commit();
            const std::string verdict = fresh.execAndGet("PRAGMA integrity_check").getString();
            if (verdict != "ok")
                cannotRebuild(studPath, QString::fromStdString(verdict));
        }
        if (!anyTable)
            cannotRebuild(studPath, u"none of its tables can be read"_s);
        (void)rows;
    } catch (const SQLite::Exception &e) {
        QFile::remove(partial);
        if ((e.getErrorCode() & 0xff) == SQLITE_NOTADB)
            throw StoreError(StoreError::UnrecognizedFormat,
                             u"Unrecognized database format '%1'."_s.arg(studPath));
        cannotRebuild(studPath, QString::fromUtf8(e.what()));
    } catch (...) {
        QFile::remove(partial);
        throw;
    }
    return partial;
}

} // namespace

QString uncompactedPath(const QString &studPath)
{
    const QFileInfo stud(studPath);
    return stud.absolutePath() + u"/C_"_s + stud.fileName();
}

QString checkStud(const QString &studPath)
{
    auto stud = Database::open(studPath);
    return stud->scalar(u"PRAGMA integrity_check(1)"_s).toString();
}

void CompactStud(const QString &studPath, Progress &progress)
{
    auto stud = Database::open(studPath);
    // The file as it is, page for page, is kept first: the last resort should anything go
    // wrong, replaced at the next compaction.
    if (StudCopy::copy(*stud, uncompactedPath(studPath), progress) == StudCopy::Outcome::Stopped)
        return;
    progress.start(0, u"Compacting"_s);
    // In place, under the engine's own lock: it either finishes or leaves the stud as it was,
    // and another program holding the stud keeps working on the same file.
    stud->execute(u"VACUUM"_s);
}

RepairOutcome RepairDatabase(const QString &studPath, const QString &templatePath)
{
    if (!QFileInfo::exists(studPath))
        throw StoreError(StoreError::FileNotFound, u"Could not find file '%1'."_s.arg(studPath));
    try {
        if (checkStud(studPath) == u"ok")
            return RepairOutcome::Sound;
    } catch (const StoreError &e) {
        // A file that cannot be read as a database at all is beyond repair; a damaged one is
        // rebuilt from what can be read.
        if (e.number() != StoreError::CorruptDatabase && e.number() != StoreError::QueryFailed)
            throw;
    }
    const QString rebuilt = rebuild(studPath, templatePath);
    // The damaged file is kept, with the journal or log that belongs to it, under the name
    // of the last-resort copy; the rebuilt one takes the stud's name.
    const QString kept = uncompactedPath(studPath);
    StudCopy::removeStudFile(kept);
    for (const QString &suffix : StudCopy::companionSuffixes()) {
        if (QFileInfo::exists(studPath + suffix))
            rename(studPath + suffix, kept + suffix);
    }
    rename(studPath, kept);
    rename(rebuilt, studPath);
    return RepairOutcome::Rebuilt;
}

} // namespace tarvex
