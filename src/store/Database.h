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

/// One open stud database file. Every connection understands the program's condition
/// dialect: LIKE with "*", "?", "#" and "[...]" without regard to case, and ucase()/lcase().
/// Saves are durable: rollback journal with full sync, so a closed file is one
/// self-contained file that can be copied.
class Database
{
public:
    /// Opens an existing stud file; never creates one. Throws StoreError: 3024 when the
    /// file is missing, 3051 when it cannot be written, 3343 when it is not a database,
    /// 3049 when it is damaged.
    static std::unique_ptr<Database> open(const QString &path);

    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    QString path() const { return m_path; }
    SQLite::Database &sql() { return *m_db; }

    bool hasTable(const QString &table);

    /// Runs an action query with positional parameters; returns the rows it changed.
    int execute(const QString &statement, const QVariantList &params = {});
    /// The first column of the first row of a query, or a null QVariant.
    QVariant scalar(const QString &query, const QVariantList &params = {});
    /// Runs a query the program repeats many times (prepared once for the connection) and
    /// hands each row to the visitor, which must not run the same query itself.
    void eachRow(const QString &query, const QVariantList &params,
                 const std::function<void(const SQLite::Statement &row)> &visit);
    /// An action query the program repeats many times, prepared once; the rows it changed.
    int executeRepeated(const QString &statement, const QVariantList &params);

    /// Takes the next value of the table's counter and never gives it out again, even
    /// if the row it was taken for is never saved.
    qint64 reserveCounter(const QString &table);

    /// Makes the program's functions (like, ucase, lcase) known to a connection.
    static void registerFunctions(SQLite::Database &db);

    static void bind(SQLite::Statement &st, int index, const QVariant &value);
    static QVariant columnValue(const SQLite::Statement &st, int index);
    static QString quoted(const QString &identifier);
    /// Turns an engine failure into the program's numbered store error.
    [[noreturn]] static void fail(const SQLite::Exception &e, const QString &path = {});

    /// Cursors register here so that their prepared queries are let go before the
    /// connection closes, whichever of the two goes first.
    void attach(class Table *cursor);
    void detach(class Table *cursor);

private:
    explicit Database(const QString &path);
    SQLite::Statement &prepared(const QString &sql, const QVariantList &params);

    QString m_path;
    std::unique_ptr<SQLite::Database> m_db;
    QList<class Table *> m_cursors;
    // Declared after the connection so they are finalised before it closes.
    QHash<QString, std::shared_ptr<SQLite::Statement>> m_prepared;
    int m_transactionDepth = 0;
    friend class Transaction;
};

/// One transaction: rolled back on destruction unless committed. Transactions nest.
class Transaction
{
public:
    explicit Transaction(Database &db);
    ~Transaction();
    void commit();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

private:
    Database &m_db;
    QString m_name;
    bool m_done = false;
};

} // namespace tarvex
