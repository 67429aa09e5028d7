#pragma once

#include "StoreError.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <functional>
#include <memory>

namespace tarvex {

/// One row of a query, its fields read by name without regard to case. Lives only as long
/// as the visit that hands it out. Throws StoreError 3265 for a field the query lacks.
class Row
{
public:
    Row(const SQLite::Statement &statement, const QHash<QString, int> &columns)
        : m_st(statement), m_columns(columns)
    {
    }

    QVariant value(const QString &field) const;
    /// The text of a field; an empty text for null.
    QString text(const QString &field) const;
    /// The whole number of a field, or ifNull when it is null.
    qint64 number(const QString &field, qint64 ifNull = 0) const;
    bool isNull(const QString &field) const;

    /// The columns of a statement by their lower-case names, as a Row looks them up.
    static QHash<QString, int> columnsOf(const SQLite::Statement &statement);

private:
    int index(const QString &field) const;

    const SQLite::Statement &m_st;
    const QHash<QString, int> &m_columns;
};

/// One open stud database file. Every connection understands the program's condition
/// dialect: LIKE with "*", "?", "#" and "[...]" without regard to case, and ucase()/lcase().
///
/// Saves are durable and never half-made. While the stud is open its changes go through a
/// write-ahead log with full sync, so other programs may read the file while the breeder
/// saves; when the connection closes the log is written back and removed, so a closed stud
/// is one self-contained file that can be copied. A file left by a crash (a journal or a
/// log beside it) is put right by the next opening.
class Database
{
public:
    /// How long a statement waits for another program's lock before it gives up.
    static constexpr int kBusyTimeoutMs = 2000;

    /// Opens an existing stud file; never creates one. Throws StoreError: 3024 when the
    /// file is missing, 3051 when it cannot be written, 3343 when it is not a database,
    /// 3049 when it is damaged, 3218 when another program holds it locked.
    static std::unique_ptr<Database> open(const QString &path, int busyTimeoutMs = kBusyTimeoutMs);

    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    QString path() const { return m_path; }
    SQLite::Database &sql() { return *m_db; }

    bool hasTable(const QString &table);
    /// Whether a transaction is open on this connection.
    bool inTransaction() const;
    /// "wal" while other programs may read during saves, "delete" for the rollback journal.
    QString journalMode();
    void setBusyTimeout(int milliseconds);

    /// Runs an action query with positional parameters; returns the rows it changed.
    int execute(const QString &statement, const QVariantList &params = {});
    /// The first column of the first row of a query, or a null QVariant.
    QVariant scalar(const QString &query, const QVariantList &params = {});
    /// Runs a query the program repeats many times (prepared once for the connection) and
    /// hands each row to the visitor, which must not run the same query itself.
    void eachRow(const QString &query, const QVariantList &params, const std::function<void(const Row &row)> &visit);
    /// An action query the program repeats many times, prepared once; the rows it changed.
    int executeRepeated(const QString &statement, const QVariantList &params = {});
    /// The connection's prepared statement for a query, reset and without bindings. The one
    /// statement cache of the connection: cursors and repeated queries share it.
    SQLite::Statement &cached(const QString &sql);

    /// Takes the next value of the table's counter and never gives it out again, even
    /// if the row it was taken for is never saved.
    qint64 reserveCounter(const QString &table);

    /// Makes the program's functions (like, ucase, lcase) known to a connection.
    static void registerFunctions(SQLite::Database &db);

    static void bind(SQLite::Statement &st, int index, const QVariant &value);
    /// Binds positional parameters from the first on.
    static void bindAll(SQLite::Statement &st, const QVariantList &params);
    static QVariant columnValue(const SQLite::Statement &st, int index);
    static QString quoted(const QString &identifier);
    /// Turns an engine failure into the program's numbered store error.
    [[noreturn]] static void fail(const SQLite::Exception &e, const QString &path = {});

private:
    struct Prepared
    {
        std::unique_ptr<SQLite::Statement> statement;
        QHash<QString, int> columns; // lower-case name -> column
    };

    explicit Database(const QString &path);
    /// The cache's entry for a query, prepared at its first use; shared, so that a walk keeps
    /// it even when the visitor's work empties the cache.
    std::shared_ptr<Prepared> prepared(const QString &sql);
    /// Gives up the whole open transaction: every change since it began is undone and
    /// every Transaction still alive on this connection becomes void.
    void abandonTransaction();
    void resetStatements();

    QString m_path;
    std::unique_ptr<SQLite::Database> m_db;
    // Declared after the connection so they are finalised before it closes.
    QHash<QString, std::shared_ptr<Prepared>> m_prepared;
    int m_transactionDepth = 0;
    quint64 m_transactionGeneration = 0;
    friend class Transaction;
};

/// How a text is stored: an empty one as null, so that "no breed" and "no award" read the
/// same however they were entered.
inline QVariant textOrNull(const QString &text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

/// One change to the stud: everything in it is saved together or not at all. Rolled back
/// on destruction unless committed. Transactions nest; only the outermost reaches the file.
///
/// The outermost transaction takes the stud's write lock when it begins, waiting for
/// another program's lock up to the busy timeout. When its commit cannot be written (the
/// stud held by another program, a full disk) the whole transaction is rolled back, the
/// connection is left with no transaction open, and commit() throws StoreError; the next
/// transaction starts afresh.
class Transaction
{
public:
    explicit Transaction(Database &db);
    ~Transaction();
    void commit();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

private:
    bool isVoid() const { return m_generation != m_db.m_transactionGeneration; }

    Database &m_db;
    int m_depth;
    quint64 m_generation;
    bool m_done = false;
};

} // namespace tarvex
