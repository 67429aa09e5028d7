#pragma once

#include "Database.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <optional>

namespace tarvex {

/// A cursor over one table of the stud database, moving along a named index as the
/// program's screens expect: seek to a key, walk forward and back, keep a bookmark,
/// add and edit rows in place. Rows are ordered by the index's fields, then by the order
/// they were added; null keys sort first. Field names are matched without regard to case.
///
/// A cursor must not outlive its database.
///
/// Failures throw StoreError: 3011 for a missing table, 3800 for an unknown index,
/// 3265 for an unknown field, 3021 when there is no current row, 3020 for an update
/// without AddNew or Edit.
class Table
{
public:
    enum class EditMode { None, Edit, Add };

    Table(Database &db, const QString &table);
    ~Table();
    Table(const Table &) = delete;
    Table &operator=(const Table &) = delete;

    QString tableName() const { return m_table; }
    Database &database() { return m_db; }

    void setIndex(const QString &name);
    QString index() const { return m_indexName; }

    /// Seeks along the current index with "=", ">", ">=", "<" or "<=" on the leading
    /// fields of the index. Sets noMatch() when nothing qualifies.
    void seek(const QString &comparison, const QVariantList &keys);
    bool noMatch() const { return m_noMatch; }
    bool eof() const { return m_eof; }
    bool bof() const { return m_bof; }
    bool hasCurrent() const { return m_hasRow; }

    void moveFirst();
    void moveLast();
    void moveNext();
    void movePrevious();

    qint64 bookmark() const;
    void setBookmark(qint64 bookmark);
    /// The row added or changed by the last update().
    qint64 lastModified() const { return m_lastModified; }

    void addNew();
    void edit();
    void update();

    /// The row in hand between addNew() or edit() and update(): taken before update() so
    /// that, when the change it belongs to is given up after all, the row can be taken up
    /// again and written once more.
    struct Pending
    {
        EditMode mode = EditMode::None;
        QVariantList buffer;
        QList<bool> dirty;
        qint64 rowid = 0;
    };
    Pending pending() const { return {m_mode, m_buffer, m_dirty, m_rowid}; }
    void resume(const Pending &row);
    void cancelUpdate();
    void deleteCurrent();
    EditMode editMode() const { return m_mode; }

    QVariant field(const QString &name) const;
    void setField(const QString &name, const QVariant &value);
    bool hasField(const QString &name) const;
    QStringList fieldNames() const { return m_columns; }

    int recordCount();
    /// Reads the current row again from the file.
    void refresh();

private:
    struct Step
    {
        QString where;
        QVariantList params;
    };

    int column(const QString &name) const;
    QVariantList keyOf(const QVariantList &values, qint64 rowid) const;
    QStringList orderFields() const;
    bool locate(const QVariantList &keys, bool upward, bool inclusive, bool equalOnly = false);
    bool runStep(const Step &step, bool upward);
    bool loadRow(qint64 rowid);
    void setRow(SQLite::Statement &st);
    void clearPosition(bool eof, bool bof);
    SQLite::Statement &statement(const QString &sql);

    Database &m_db;
    QString m_table;
    QStringList m_columns;
    QHash<QString, int> m_columnIndex;
    QVariantList m_defaults;
    int m_counterColumn = -1;

    QString m_indexName;
    QStringList m_indexFields;

    bool m_hasRow = false;
    bool m_eof = true;
    bool m_bof = true;
    bool m_noMatch = false;
    qint64 m_rowid = 0;
    QVariantList m_values;
    std::optional<QVariantList> m_lastKey; // key of the row we stood on, kept after a delete
    bool m_deleted = false;

    EditMode m_mode = EditMode::None;
    QVariantList m_buffer;
    QList<bool> m_dirty;
    qint64 m_lastModified = 0;
};

} // namespace tarvex
