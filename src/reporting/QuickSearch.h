#pragma once

#include "store/Database.h"

#include <QList>
#include <QString>

#include <memory>

namespace tarvex {

/// The few fields of the quick search for one animal.
struct QuickSearchFields
{
    QString name, archive, ringNo, sex, type, colour, status, notes;
};

/// One animal found.
struct QuickSearchRow
{
    qint64 number = 0;
    QString name, ringNo, type, colour;
};

namespace QuickSearch {

/// The condition for the fields, empty when no field is filled.
QString compose(const QuickSearchFields &fields);

/// The animals matching a condition, read a page at a time as the list of results is
/// scrolled, so that a search every animal of a large stud matches shows its first rows at
/// once and holds only the rows seen. In name order unless a column is chosen, then by name.
class Results
{
public:
    enum Column { Name = 0, RingNo = 1, Type = 2, Colour = 3 };

    /// Throws StoreError when the condition cannot be run.
    Results(Database &db, const QString &where);
    ~Results();

    /// Orders by a column, then by name, and starts reading again from the first row.
    void sortBy(int column, bool descending);
    /// Reads up to count more rows; the number read (0 at the end).
    qsizetype fetch(qsizetype count);
    bool atEnd() const { return m_atEnd; }
    const QList<QuickSearchRow> &rows() const { return m_rows; }

private:
    Database &m_db;
    QString m_where;
    std::unique_ptr<SQLite::Statement> m_query;
    QHash<QString, int> m_columns;
    QList<QuickSearchRow> m_rows;
    bool m_atEnd = false;
};

} // namespace QuickSearch
} // namespace tarvex
