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
    for (Table *cursor : std::as_const(m_cursors))
        cursor->release();
}

void Database::attach(Table *cursor)
{
    m_cursors.append(cursor);
}

void Database::detach(Table *cursor)
{
    m_cursors.removeOne(cursor);
}

std::unique_ptr<Database> Database::open(const QString &path)
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
    if (pageBytes > info.size())
        throw StoreError(StoreError::CorruptDatabase,
                         u"The database '%1' is damaged: the file is shorter than it should be."_s.arg(path));

    std::unique_ptr<Database> db(new Database(path));
    try {
        db->m_db = std::make_unique<SQLite::Database>(path.toStdString(), SQLite::OPEN_READWRITE);
        db->m_db->exec("PRAGMA journal_mode = DELETE");
        db->m_db->exec("PRAGMA synchronous = FULL");
        // A large stud is tens of megabytes; keeping most of it in memory makes the walks over
        // every animal (checks, searches, reports) read the disk once.
        db->m_db->exec("PRAGMA cache_size = -131072");
        db->m_db->setBusyTimeout(2000);
        registerFunctions(*db->m_db);
        // The first read of the catalogue tells a damaged file from a sound one.
        db->m_db->execAndGet("SELECT count(*) FROM sqlite_master");
    } catch (const SQLite::Exception &e) {
        fail(e, path);
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
        for (int i = 0; i < params.size(); ++i)
            bind(st, i + 1, params.at(i));
        return st.exec();
    } catch (const SQLite::Exception &e) {
        fail(e);
    }
}

QVariant Database::scalar(const QString &query, const QVariantList &params)
{
    try {
        SQLite::Statement st(*m_db, query.toStdString());
        for (int i = 0; i < params.size(); ++i)
            bind(st, i + 1, params.at(i));
        if (!st.executeStep())
            return {};
        return columnValue(st, 0);
    } catch (const SQLite::Exception &e) {
        fail(e);
    }
}

SQLite::Statement &Database::prepared(const QString &sql, const QVariantList &params)
{
    std::shared_ptr<SQLite::Statement> &st = m_prepared[sql];
    if (!st)
        st = std::make_shared<SQLite::Statement>(*m_db, sql.toStdString());
    st->reset();
    st->clearBindings();
    for (int i = 0; i < params.size(); ++i)
        bind(*st, i + 1, params.at(i));
    return *st;
}

void Database::eachRow(const QString &query, const QVariantList &params,
                       const std::function<void(const SQLite::Statement &row)> &visit)
{
    try {
        SQLite::Statement &st = prepared(query, params);
        while (st.executeStep())
            visit(st);
        st.reset();
    } catch (const SQLite::Exception &e) {
        m_prepared.remove(query);
        fail(e);
    }
}

int Database::executeRepeated(const QString &statement, const QVariantList &params)
{
    try {
        SQLite::Statement &st = prepared(statement, params);
        const int changed = st.exec();
        st.reset();
        return changed;
    } catch (const SQLite::Exception &e) {
        m_prepared.remove(statement);
        fail(e);
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

// Savepoints are named by their depth: transactions end in the reverse order they began,
// so a name is never in use twice, and the same few statements serve every save.
Transaction::Transaction(Database &db) : m_db(db)
{
    m_name = u"tx%1"_s.arg(m_db.m_transactionDepth);
    m_db.executeRepeated(u"SAVEPOINT "_s + m_name, {});
    ++m_db.m_transactionDepth;
}

Transaction::~Transaction()
{
    if (m_done)
        return;
    --m_db.m_transactionDepth;
    try {
        m_db.executeRepeated(u"ROLLBACK TO "_s + m_name, {});
        m_db.executeRepeated(u"RELEASE "_s + m_name, {});
    } catch (...) {
        // A rollback that cannot run leaves the engine to discard the open transaction.
    }
}

void Transaction::commit()
{
    m_db.executeRepeated(u"RELEASE "_s + m_name, {});
    m_done = true;
    --m_db.m_transactionDepth;
}

} // namespace tarvex
