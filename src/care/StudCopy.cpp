#include "StudCopy.h"

#include "store/StoreError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <filesystem>
#include <memory>

using namespace Qt::StringLiterals;

namespace tarvex::StudCopy {

namespace {

// Pages copied between two looks at the progress and the Cancel button (4 MB of 4 KB pages).
constexpr int kPagesPerStep = 1024;
// Another program holding the stud locked is waited for this long, a little at a time.
constexpr int kBusyWaitMs = 20;
constexpr int kBusyTries = 250;

[[noreturn]] void failWith(int code, const QString &target, const QString &detail)
{
    switch (code & 0xff) {
    case SQLITE_FULL:
        throw StoreError(StoreError::DiskFull, u"There is not enough space on the disk."_s);
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:
    case SQLITE_IOERR:
        throw StoreError(StoreError::CannotOpenFile,
                         u"The copy '%1' cannot be written (%2)."_s.arg(target, detail));
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw StoreError(StoreError::Locked, u"The stud is in use by another program; no copy was made."_s);
    default:
        throw StoreError(StoreError::QueryFailed, u"The copy '%1' could not be made (%2)."_s.arg(target, detail));
    }
}

/// The connection to the copy being written; closed, and its file removed unless kept.
struct PartialFile
{
    explicit PartialFile(QString path) : path(std::move(path)) {}
    ~PartialFile()
    {
        close();
        if (!kept)
            removeFiles();
    }
    void close()
    {
        if (db)
            sqlite3_close_v2(db);
        db = nullptr;
    }
    void removeFiles() const { removeStudFile(path); }
    QString detail() const { return db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString(); }

    QString path;
    sqlite3 *db = nullptr;
    bool kept = false;
};

void execOn(PartialFile &file, const char *sql, const QString &target)
{
    char *error = nullptr;
    const int rc = sqlite3_exec(file.db, sql, nullptr, nullptr, &error);
    const QString detail = error ? QString::fromUtf8(error) : QString();
    sqlite3_free(error);
    if (rc != SQLITE_OK)
        failWith(rc, target, detail);
}

/// The copy checked whole and turned into one self-contained file, then given its name and
/// the stud's own permissions (a breeder's private stud stays private in its copies).
void finish(PartialFile &file, const QString &target, const QString &source)
{
    if (!file.db) {
        const int rc = sqlite3_open_v2(file.path.toUtf8().constData(), &file.db, SQLITE_OPEN_READWRITE, nullptr);
        if (rc != SQLITE_OK)
            failWith(rc, target, file.detail());
    }
    execOn(file, "PRAGMA journal_mode = DELETE", target);
    sqlite3_stmt *check = nullptr;
    QString verdict;
    if (sqlite3_prepare_v2(file.db, "PRAGMA quick_check", -1, &check, nullptr) == SQLITE_OK &&
        sqlite3_step(check) == SQLITE_ROW)
        verdict = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(check, 0)));
    sqlite3_finalize(check);
    if (verdict != u"ok")
        throw StoreError(StoreError::CorruptDatabase,
                         u"The copy '%1' did not check out whole (%2); it was not kept."_s.arg(target, verdict));
    file.close();
    putInPlace(file.path, target, source);
    file.kept = true;
}

} // namespace

void putInPlace(const QString &partial, const QString &target, const QString &source)
{
    // A breeder's private stud stays private in its copies.
    QFile::setPermissions(partial, QFile::permissions(source));
    std::error_code error;
    std::filesystem::rename(partial.toStdString(), target.toStdString(), error);
    if (error)
        throw StoreError(StoreError::CannotOpenFile, u"The copy '%1' cannot be written (%2)."_s.arg(
                                                         target, QString::fromStdString(error.message())));
}

const QStringList &companionSuffixes()
{
    static const QStringList suffixes{u"-journal"_s, u"-wal"_s, u"-shm"_s};
    return suffixes;
}

void removeStudFile(const QString &path)
{
    QFile::remove(path);
    for (const QString &suffix : companionSuffixes())
        QFile::remove(path + suffix);
}

QString partialName(const QString &target)
{
    const QFileInfo info(target);
    return info.absolutePath() + u"/."_s + info.fileName() + u".partial"_s;
}

Outcome copy(Database &source, const QString &target, Progress &progress)
{
    PartialFile file(partialName(target));
    file.removeFiles(); // left by a copy the machine stopped in the middle of
    int rc = sqlite3_open_v2(file.path.toUtf8().constData(), &file.db,
                             SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (rc != SQLITE_OK)
        failWith(rc, target, file.detail());
    sqlite3_backup *backup = sqlite3_backup_init(file.db, "main", source.sql().getHandle(), "main");
    if (!backup)
        failWith(sqlite3_errcode(file.db), target, file.detail());
    const auto release = [&] { return sqlite3_backup_finish(std::exchange(backup, nullptr)); };
    int busy = 0;
    int step = kPagesPerStep;
    int lastRemaining = -1;
    int total = -1;
    while (true) {
        rc = sqlite3_backup_step(backup, step);
        const int remaining = sqlite3_backup_remaining(backup);
        // The stud grows when another connection saves during the copy: the bar is told.
        if (sqlite3_backup_pagecount(backup) != total) {
            total = sqlite3_backup_pagecount(backup);
            progress.start(total, u"Copying"_s);
        }
        if (rc == SQLITE_DONE)
            break;
        if (rc == SQLITE_BUSY || rc == SQLITE_LOCKED) {
            if (++busy > kBusyTries) {
                release();
                failWith(rc, target, file.detail());
            }
            QThread::msleep(kBusyWaitMs);
            continue;
        }
        if (rc != SQLITE_OK) {
            release();
            failWith(rc, target, file.detail());
        }
        // A save through another connection starts the copy again; the rest is then copied
        // in one step, which holds the stud's state still until it is done.
        if (lastRemaining >= 0 && remaining > lastRemaining)
            step = -1;
        lastRemaining = remaining;
        progress.step(total - remaining);
        if (progress.cancelled()) {
            release();
            return Outcome::Stopped;
        }
    }
    rc = release();
    if (rc != SQLITE_OK)
        failWith(rc, target, file.detail());
    progress.step(total);
    finish(file, target, source.path());
    return Outcome::Done;
}

void compact(Database &source, const QString &target)
{
    PartialFile file(partialName(target));
    file.removeFiles();
    try {
        SQLite::Statement vacuum(source.sql(), "VACUUM INTO ?");
        vacuum.bind(1, file.path.toStdString());
        vacuum.exec();
    } catch (const SQLite::Exception &e) {
        failWith(e.getErrorCode(), target, QString::fromUtf8(e.what()));
    }
    finish(file, target, source.path());
}

} // namespace tarvex::StudCopy
