#pragma once

#include "Database.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <QVariant>

namespace tarvex {

/// The rows of one SQL query in the program's dialect, read at once and walked with the
/// usual moves. Fields are looked up without regard to case. Throws StoreError when the
/// query fails.
class Recordset
{
public:
    Recordset(Database &db, const QString &query, const QVariantList &params = {});

    int recordCount() const { return int(m_rows.size()); }
    bool eof() const { return m_position >= m_rows.size(); }
    bool bof() const { return m_position < 0 || m_rows.isEmpty(); }
    void moveFirst() { m_position = 0; }
    void moveLast() { m_position = m_rows.size() - 1; }
    void moveNext();
    void movePrevious();

    QVariant field(const QString &name) const;
    QVariant field(int column) const;
    QStringList fieldNames() const { return m_columns; }

private:
    QStringList m_columns;
    QHash<QString, int> m_columnIndex;
    QList<QVariantList> m_rows;
    qsizetype m_position = 0;
};

} // namespace tarvex
