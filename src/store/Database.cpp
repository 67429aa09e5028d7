#include "Database.h"

#include "LikePattern.h"
#include "Table.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

QString textArg(sqlite3_value *v)
{
    const auto *p = reinterpret_cast<const char *>(sqlite3_value_text(v));
    return QString::fromUtf8(p, sqlite3_value_bytes(v));
}

void likeFunction(sqlite3_context *ctx, int argc, sqlite3_value **argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return;
    }
    (void)argc;
    if (const auto *cached = static_cast<const LikePattern *>(sqlite3_get_auxdata(ctx, 0))) {
        sqlite3_result_int(ctx, cached->matches(textArg(argv[1])) ? 1 : 0);
        return;
    }
    // The pattern is usually the same for every row: keep it compiled for the next call.
    auto *pattern = new LikePattern(textArg(argv[0]));
    const bool match = pattern->matches(textArg(argv[1]));
    sqlite3_set_auxdata(ctx, 0, pattern, [](void *p) { delete static_cast<LikePattern *>(p); });
    sqlite3_result_int(ctx, match ? 1 : 0);
}

void caseFunction(sqlite3_context *ctx, sqlite3_value **argv, bool upper)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return;
    }
    const QString s = textArg(argv[0]);
    const QByteArray out = (upper ? s.toUpper() : s.toLower()).toUtf8();
    sqlite3_result_text(ctx, out.constData(), int(out.size()), SQLITE_TRANSIENT);
}

bool isSqliteFile(const QString &path, qint64 *pageBytes)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    const QByteArray header = f.read(100);
    if (header.size() < 100 || !header.startsWith(QByteArrayLiteral("SQLite format 3\0")))
        return false;
    const auto byte = [&](int i) { return quint32(quint8(header.at(i))); };
    quint32 pageSize = (byte(16) << 8) | byte(17);
    if (pageSize == 1)
        pageSize = 65536;
    const quint32 pageCount = (byte(28) << 24) | (byte(29) << 16) | (byte(30) << 8) | byte(31);
    const quint32 changeCounter = (byte(24) << 24) | (byte(25) << 16) | (byte(26) << 8) | byte(27);
    const quint32 validFor = (byte(92) << 24) | (byte(93) << 16) | (byte(94) << 8) | byte(95);
    // The page count in the header is only trustworthy when it was written by the same
    // change as the change counter.
    *pageBytes = (validFor == changeCounter) ? qint64(pageSize) * pageCount : 0;
    return true;
}

} // namespace

Database::Database(const QString &path) : m_path(path) {}

Database::~Database()
{
    m_prepared.clear();
    if (!m_db)
        return;
    try {
        // A closed stud is one file: the log goes back into it. When another program still
        // has the stud open the log stays until that program lets go of it.
        m_db->setBusyTimeout(0);
        if (inTransaction())
            m_db->exec("ROLLBACK");
        if (journalMode() == u"wal")
            m_db->exec("PRAGMA journal_mode = DELETE");
    } catch (...) {
    }
}

std::unique_ptr<Database> Database::open(const QString &path, int busyTimeoutMs)
{
    const QFileInfo info(path);
    if (!info.exists() || !info.isFile())
        throw StoreError(StoreError::FileNotFound, u"Could not find file '%1'."_s.arg(path));
    // A file with no write permission at all is read-only by intent, even for an
    // administrator who could write it anyway.
    const auto anyWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    if (!info.isReadable() || !info.isWritable() || !(info.permissions() & anyWrite) ||
        !QFileInfo(info.absolutePath()).isWritable())
        throw StoreError(StoreError::CannotOpenFile,
                         u"The file '%1' cannot be opened for changes: it is read-only or you have no "
                         u"permission to change it."_s.arg(path));
    qint64 pageBytes = 0;
    if (!isSqliteFile(path, &pageBytes))
        throw StoreError(StoreError::UnrecognizedFormat, u"Unrecognized database format '%1'."_s.arg(path));
    const auto shorterThanItSays = [&] {
        return StoreError(StoreError::CorruptDatabase,
                          u"The database '%1' is damaged: the file is shorter than it should be."_s.arg(path));
    };
    // A save cut short by a crash leaves its journal beside the file: the header then
    // describes the unfinished save, and the journal puts the file back at the first read.
    // A log beside the file holds saves the file does not have yet (a crash part way
    // through writing them back leaves the file shorter than its header): the file is
    // whole together with its log, which SQLite reads first.
    const bool unfinishedSave = QFileInfo::exists(path + u"-journal"_s);
    const bool log = QFileInfo::exists(path + u"-wal"_s);
    if (!unfinishedSave && !log && pageBytes > info.size())
        throw shorterThanItSays();

    std::unique_ptr<Database> db(new Database(path));
    try {
        // The wait for another program's lock is set before the first statement.
        db->m_db = std::make_unique<SQLite::Database>(path.toStdString(), SQLite::OPEN_READWRITE, busyTimeoutMs);
        registerFunctions(*db->m_db);
        db->m_db->exec("PRAGMA synchronous = FULL");
        // A large stud is tens of megabytes; keeping most of it in memory makes the walks over
        // every animal (checks, searches, reports) read the disk once.
        db->m_db->exec("PRAGMA cache_size = -131072");
        // The first read of the catalogue tells a damaged file from a sound one, and finishes
        // any save a crash left behind.
        db->m_db->execAndGet("SELECT count(*) FROM sqlite_master");
    } catch (const SQLite::Exception &e) {
        fail(e, path);
    }
    if (unfinishedSave && isSqliteFile(path, &pageBytes) && pageBytes > QFileInfo(path).size())
        throw shorterThanItSays();
    try {
        // Other programs may read the stud while the breeder saves. Where the file system
        // cannot share the log, or another program holds the stud just now, the stud keeps
        // its rollback journal, which is as safe.
        db->m_db->exec("PRAGMA journal_mode = WAL");
    } catch (const SQLite::Exception &) {
    }
    return db;
}

void Database::registerFunctions(SQLite::Database &db)
{
    sqlite3 *h = db.getHandle();
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(h, "like", 2, flags, nullptr, likeFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(h, "like", 3, flags, nullptr, likeFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(
        h, "ucase", 1, flags, nullptr,
        [](sqlite3_context *c, int, sqlite3_value **v) { caseFunction(c, v, true); }, nullptr, nullptr,
        nullptr);
    sqlite3_create_function_v2(
        h, "lcase", 1, flags, nullptr,
        [](sqlite3_context *c, int, sqlite3_value **v) { caseFunction(c, v, false); }, nullptr, nullptr,
        nullptr);
}

void Database::fail(const SQLite::Exception &e, const QString &path)
{
    const QString where = path.isEmpty() ? QString() : u" '%1'"_s.arg(path);
    const QString detail = QString::fromUtf8(e.what());
    switch (e.getErrorCode()) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw StoreError(StoreError::Locked, StoreError::inUseText());
    case SQLITE_NOTADB:
        throw StoreError(StoreError::UnrecognizedFormat, u"Unrecognized database format%1."_s.arg(where));
    case SQLITE_CORRUPT:
        throw StoreError(StoreError::CorruptDatabase,
                         u"The database%1 is damaged (%2)."_s.arg(where, detail));
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:
        throw StoreError(StoreError::CannotOpenFile,
                         u"The database%1 cannot be written (%2)."_s.arg(where, detail));
    case SQLITE_FULL:
        throw StoreError(StoreError::DiskFull, u"There is not enough space on the disk."_s);
    case SQLITE_CONSTRAINT:
        switch (e.getExtendedErrorCode()) {
        case SQLITE_CONSTRAINT_UNIQUE:
        case SQLITE_CONSTRAINT_PRIMARYKEY:
            throw StoreError(StoreError::DuplicateKey,
                             u"The changes were not made because they would create a duplicate key."_s);
        case SQLITE_CONSTRAINT_CHECK:
            if (detail.contains(u"length("))
                throw StoreError(
                    StoreError::FieldTooSmall,
                    u"The field is too small to accept the amount of data you attempted to add."_s);
            throw StoreError(StoreError::ValidationRule, u"A value is outside what the field allows."_s);
        default:
            break;
        }
        break;
    default:
        break;
    }
    throw StoreError(StoreError::QueryFailed, detail);
}

bool Database::hasTable(const QString &table)
{
    return scalar(u"SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE"_s,
                  {table})
               .toInt() > 0;
}

bool Database::inTransaction() const
{
    return sqlite3_get_autocommit(m_db->getHandle()) == 0;
}

QString Database::journalMode()
{
    return scalar(u"PRAGMA journal_mode"_s).toString().toLower();
}

void Database::setBusyTimeout(int milliseconds)
{
    m_db->setBusyTimeout(milliseconds);
}

void Database::bind(SQLite::Statement &st, int index, const QVariant &value)
{
    if (value.isNull() || !value.isValid()) {
        st.bind(index);
        return;
    }
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::UChar:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::Long:
    case QMetaType::ULong:
        st.bind(index, static_cast<int64_t>(value.toLongLong()));
        return;
    case QMetaType::Double:
    case QMetaType::Float:
        st.bind(index, value.toDouble());
        return;
    case QMetaType::QByteArray: {
        const QByteArray b = value.toByteArray();
        st.bind(index, b.constData(), int(b.size()));
        return;
    }
    default:
        st.bind(index, value.toString().toStdString());
        return;
    }
}

QVariant Database::columnValue(const SQLite::Statement &st, int index)
{
    const SQLite::Column c = st.getColumn(index);
    switch (c.getType()) {
    case SQLITE_INTEGER:
        return QVariant(qlonglong(c.getInt64()));
    case SQLITE_FLOAT:
        return QVariant(c.getDouble());
    case SQLITE_TEXT:
        return QVariant(QString::fromUtf8(c.getText(), c.getBytes()));
    case SQLITE_BLOB:
        return QVariant(QByteArray(static_cast<const char *>(c.getBlob()), c.getBytes()));
    default:
        return QVariant();
    }
}

QString Database::quoted(const QString &identifier)
{
    QString s = identifier;
    s.replace(u'"', u"\"\""_s);
    return u'"' + s + u'"';
}

int Database::execute(const QString &statement, const QVariantList &params)
{
    try {
        SQLite::Statement st(*m_db, statement.toStdString());
        bindAll(st, params);
        return st.exec();
    } catch (const SQLite::Exception &e) {
        fail(e);
    }
}

QVariant Database::scalar(const QString &query, const QVariantList &params)
{
    try {
        SQLite::Statement st(*m_db, query.toStdString());
        bindAll(st, params);
        if (!st.executeStep())
            return {};
        return columnValue(st, 0);
    } catch (const SQLite::Exception &e) {
        fail(e);
    }
}

std::shared_ptr<Database::Prepared> Database::prepared(const QString &sql)
{
    std::shared_ptr<Prepared> &p = m_prepared[sql];
    if (!p) {
        auto made = std::make_shared<Prepared>();
        try {
            made->statement = std::make_unique<SQLite::Statement>(*m_db, sql.toStdString());
        } catch (const SQLite::Exception &e) {
            m_prepared.remove(sql);
            fail(e);
        }
        made->columns = Row::columnsOf(*made->statement);
        p = std::move(made);
    }
    p->statement->reset();
    p->statement->clearBindings();
    return p;
}

void Database::bindAll(SQLite::Statement &st, const QVariantList &params)
{
    for (int i = 0; i < params.size(); ++i)
        bind(st, i + 1, params.at(i));
}

SQLite::Statement &Database::cached(const QString &sql)
{
    return *prepared(sql)->statement;
}

namespace {
// A statement left part way through holds its read of the file; it is reset whichever way
// its walk ends.
struct ResetOnExit
{
    SQLite::Statement &st;
    ~ResetOnExit()
    {
        try {
            st.reset();
        } catch (const SQLite::Exception &) {
        }
    }
};
} // namespace

void Database::eachRow(const QString &query, const QVariantList &params,
                       const std::function<void(const Row &row)> &visit)
{
    try {
        const std::shared_ptr<Prepared> p = prepared(query);
        bindAll(*p->statement, params);
        ResetOnExit reset{*p->statement};
        const Row row(*p->statement, p->columns);
        while (p->statement->executeStep())
            visit(row);
    } catch (const SQLite::Exception &e) {
        fail(e);
    }
}

int Database::executeRepeated(const QString &statement, const QVariantList &params)
{
    try {
        SQLite::Statement &st = cached(statement);
        bindAll(st, params);
        ResetOnExit reset{st};
        return st.exec();
    } catch (const SQLite::Exception &e) {
        fail(e);
    }
}

void Database::resetStatements()
{
    for (const auto &p : std::as_const(m_prepared)) {
        try {
            p->statement->reset();
        } catch (const SQLite::Exception &) {
        }
    }
}

qint64 Database::reserveCounter(const QString &table)
{
    Transaction tx(*this);
    const QString maxRow = u"(SELECT ifnull(max(rowid), 0) FROM %1)"_s.arg(quoted(table));
    const int changed =
        execute(u"UPDATE sqlite_sequence SET seq = max(seq, %1) + 1 WHERE name = ?"_s.arg(maxRow), {table});
    if (changed == 0)
        execute(u"INSERT INTO sqlite_sequence (name, seq) VALUES (?, %1 + 1)"_s.arg(maxRow), {table});
    const qint64 value = scalar(u"SELECT seq FROM sqlite_sequence WHERE name = ?"_s, {table}).toLongLong();
    tx.commit();
    return value;
}

void Database::abandonTransaction()
{
    resetStatements();
    for (int attempt = 0; attempt < 2 && inTransaction(); ++attempt) {
        try {
            m_db->exec("ROLLBACK");
        } catch (const SQLite::Exception &) {
        }
    }
    m_transactionDepth = 0;
    ++m_transactionGeneration;
}

QHash<QString, int> Row::columnsOf(const SQLite::Statement &statement)
{
    QHash<QString, int> columns;
    for (int c = 0; c < statement.getColumnCount(); ++c)
        columns.insert(QString::fromUtf8(statement.getColumnName(c)).toLower(), c);
    return columns;
}

int Row::index(const QString &field) const
{
    const auto it = m_columns.constFind(field.toLower());
    if (it == m_columns.cend())
        throw StoreError(StoreError::ItemNotFound, u"Item not found in this collection: %1."_s.arg(field));
    return it.value();
}

QVariant Row::value(const QString &field) const
{
    return Database::columnValue(m_st, index(field));
}

QString Row::text(const QString &field) const
{
    const SQLite::Column c = m_st.getColumn(index(field));
    return c.isNull() ? QString() : QString::fromUtf8(c.getText(), c.getBytes());
}

qint64 Row::number(const QString &field, qint64 ifNull) const
{
    const SQLite::Column c = m_st.getColumn(index(field));
    return c.isNull() ? ifNull : c.getInt64();
}

bool Row::isNull(const QString &field) const
{
    return m_st.getColumn(index(field)).isNull();
}

// The outermost transaction takes the write lock at once, waiting out another program's
// lock; those inside it are savepoints, named by their depth: transactions end in the
// reverse order they began, so a name is never in use twice, and the same few statements
// serve every save.
Transaction::Transaction(Database &db)
    : m_db(db), m_depth(db.m_transactionDepth), m_generation(db.m_transactionGeneration)
{
    // A transaction the program did not open is never one to keep.
    if (m_depth == 0 && m_db.inTransaction()) {
        m_db.abandonTransaction();
        m_generation = m_db.m_transactionGeneration;
    }
    m_db.executeRepeated(m_depth == 0 ? u"BEGIN IMMEDIATE"_s : u"SAVEPOINT tx%1"_s.arg(m_depth));
    ++m_db.m_transactionDepth;
}

Transaction::~Transaction()
{
    if (m_done || isVoid())
        return;
    try {
        if (m_depth == 0) {
            m_db.resetStatements();
            m_db.executeRepeated(u"ROLLBACK"_s);
        } else {
            m_db.executeRepeated(u"ROLLBACK TO tx%1"_s.arg(m_depth));
            m_db.executeRepeated(u"RELEASE tx%1"_s.arg(m_depth));
        }
        m_db.m_transactionDepth = m_depth;
    } catch (...) {
        // A part that cannot be undone on its own takes the whole change with it.
        m_db.abandonTransaction();
    }
}

void Transaction::commit()
{
    if (isVoid())
        throw StoreError(StoreError::Locked, StoreError::inUseText());
    if (m_depth > 0) {
        m_db.executeRepeated(u"RELEASE tx%1"_s.arg(m_depth));
        m_done = true;
        m_db.m_transactionDepth = m_depth;
        return;
    }
    try {
        // The commit waits up to the busy timeout for readers of the rollback journal.
        m_db.executeRepeated(u"COMMIT"_s);
    } catch (const StoreError &) {
        m_done = true;
        m_db.abandonTransaction();
        throw;
    }
    m_done = true;
    m_db.m_transactionDepth = 0;
    // The file itself follows the log after each save, so a copy made while the program
    // runs holds it.
    sqlite3_wal_checkpoint_v2(m_db.m_db->getHandle(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

} // namespace tarvex
