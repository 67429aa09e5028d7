#pragma once

#include "reporting/QuickSearch.h"

#include <QAbstractTableModel>

#include <memory>

namespace tarvex {

/// The quick search's results on screen: rows come from the stud as the list scrolls, and a
/// click on a column head orders them again in the stud itself.
class QuickSearchModel : public QAbstractTableModel
{
public:
    QuickSearchModel(const QStringList &heads, QObject *parent = nullptr);

    /// Shows the results of a search (its first rows read at once).
    void show(std::unique_ptr<QuickSearch::Results> results);
    const QuickSearchRow *rowAt(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;
    void sort(int column, Qt::SortOrder order) override;

private:
    QStringList m_heads;
    std::unique_ptr<QuickSearch::Results> m_results;
    int m_shown = 0;
};

} // namespace tarvex
