#include "SearchResultsModel.h"


using namespace Qt::StringLiterals;

namespace tarvex {

SearchResultsModel::SearchResultsModel(QObject *parent) : QAbstractTableModel(parent) {}

void SearchResultsModel::setResults(std::unique_ptr<SearchResults> results, const QStringList &heads)
{
    beginResetModel();
    m_results = std::move(results);
    m_heads = heads;
    endResetModel();
}

void SearchResultsModel::sortByColumn(int column)
{
    if (!m_results)
        return;
    const Qt::SortOrder order =
        column == m_results->sortColumn() && m_results->sortOrder() == Qt::AscendingOrder ? Qt::DescendingOrder
                                                                                           : Qt::AscendingOrder;
    restoreSort(column, order);
}

void SearchResultsModel::restoreSort(int column, Qt::SortOrder order)
{
    if (!m_results)
        return;
    beginResetModel();
    m_results->sortBy(column, order);
    endResetModel();
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

int SearchResultsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_results ? 0 : int(m_results->size());
}

int SearchResultsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : SearchResults::ColumnCount;
}

QVariant SearchResultsModel::data(const QModelIndex &index, int role) const
{
    if (!m_results || !index.isValid())
        return {};
    if (role == KeyRole)
        return m_results->row(index.row()).key();
    if (role != Qt::DisplayRole)
        return {};
    return m_results->row(index.row()).cells.at(size_t(index.column()));
}

qint64 SearchResultsModel::numberAt(int row) const
{
    return SearchResultRow::numberOfKey(index(row, 0).data(KeyRole).toString());
}

QVariant SearchResultsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section >= m_heads.size())
        return {};
    QString head = m_heads.at(section);
    if (m_results && section == m_results->sortColumn())
        head += m_results->sortOrder() == Qt::AscendingOrder ? u" v"_s : u" ^"_s;
    return head;
}

} // namespace tarvex
