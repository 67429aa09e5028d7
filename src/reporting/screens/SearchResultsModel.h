#pragma once

#include "reporting/StockSearch.h"

#include <QAbstractTableModel>

#include <memory>

namespace tarvex {

/// The list of search results on screen: six columns read from the results a page at a
/// time, so that a search finding most of a large stud shows at once. The head of the
/// sorted column ends with " v" (ascending) or " ^" (descending).
class SearchResultsModel : public QAbstractTableModel
{
public:
    /// The role under which a row gives its key ("X" and the animal's number).
    static constexpr int KeyRole = Qt::UserRole;

    explicit SearchResultsModel(QObject *parent = nullptr);
    /// The animal of a row, read back from its key.
    qint64 numberAt(int row) const;

    /// Shows new results (or none) under the given heads.
    void setResults(std::unique_ptr<SearchResults> results, const QStringList &heads);
    SearchResults *results() const { return m_results.get(); }
    /// Sorts by a column as a click on its head does.
    void sortByColumn(int column);
    /// Sorts by a column in a given direction (to restore a sort).
    void restoreSort(int column, Qt::SortOrder order);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::unique_ptr<SearchResults> m_results;
    QStringList m_heads;
};

} // namespace tarvex
