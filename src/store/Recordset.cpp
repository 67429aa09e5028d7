#include "Recordset.h"

using namespace Qt::StringLiterals;

namespace tarvex {

Recordset::Recordset(Database &db, const QString &query, const QVariantList &params)
{
    try {
        SQLite::Statement st(db.sql(), query.toStdString());
        Database::bindAll(st, params);
        const int columns = st.getColumnCount();
        for (int c = 0; c < columns; ++c) {
            const QString name = QString::fromUtf8(st.getColumnName(c));
            m_columnIndex.insert(name.toLower(), c);
            m_columns << name;
        }
        while (st.executeStep()) {
            QVariantList row;
            row.reserve(columns);
            for (int c = 0; c < columns; ++c)
                row << Database::columnValue(st, c);
            m_rows << row;
        }
    } catch (const SQLite::Exception &e) {
        Database::fail(e);
    }
}

void Recordset::moveNext()
{
    if (eof())
        throw StoreError(StoreError::NoCurrentRecord, u"No current record."_s);
    ++m_position;
}

void Recordset::movePrevious()
{
    if (m_position < 0)
        throw StoreError(StoreError::NoCurrentRecord, u"No current record."_s);
    --m_position;
}

QVariant Recordset::field(int column) const
{
    if (eof() || m_position < 0)
        throw StoreError(StoreError::NoCurrentRecord, u"No current record."_s);
    return m_rows.at(m_position).at(column);
}

QVariant Recordset::field(const QString &name) const
{
    const auto it = m_columnIndex.constFind(name.toLower());
    if (it == m_columnIndex.cend())
        throw StoreError(StoreError::ItemNotFound, u"Item not found in this collection: %1."_s.arg(name));
    return field(it.value());
}

} // namespace tarvex
