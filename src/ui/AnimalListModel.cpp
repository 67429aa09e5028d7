#include "AnimalListModel.h"

#include "store/StockRow.h"
#include "store/StoreError.h"

namespace tarvex {

AnimalListModel::AnimalListModel(Database &db, QList<qint64> numbers, QObject *parent)
    : QAbstractListModel(parent), m_db(db), m_numbers(std::move(numbers))
{
}

int AnimalListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_numbers.size());
}

QVariant AnimalListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_numbers.size())
        return {};
    if (role == Qt::DisplayRole) {
        const auto known = m_names.constFind(index.row());
        if (known != m_names.cend())
            return *known;
        QString name;
        try {
            name = Get_Stock_Name(m_db, m_numbers.at(index.row()));
        } catch (const StoreError &) {
            // Painting goes on; the row shows its name once it can be read again.
            return QString();
        }
        m_names.insert(index.row(), name);
        return name;
    }
    if (role == Qt::UserRole)
        return m_numbers.at(index.row());
    return {};
}

} // namespace tarvex
