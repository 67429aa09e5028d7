#pragma once

#include <Qt>
#include <QList>
#include <QString>

class QTreeWidget;

namespace tarvex {

/// The data role under which a row keeps the sortable text of a column whose shown text
/// does not sort (a date is kept as "yyyy/mm/dd").
inline constexpr int kSortKeyRole = Qt::UserRole + 1;

struct ColumnSortOptions
{
    /// Percent columns ("12.50%") sort by their number, equal shares by the first column.
    QList<int> percentColumns;
    /// Columns sorted by the text under kSortKeyRole instead of the text shown.
    QList<int> keyColumns;
    /// The mark an ascending column's head gains; a descending one gains the other.
    QString ascendingMark = QStringLiteral(" v");
};

/// Lists sort by a click on a column head: ascending first, a second click on the same
/// column reverses. The head shows " v" for ascending and " ^" for descending unless the
/// options say otherwise. After a sort the first row is selected and brought into view.
void enableColumnSort(QTreeWidget *list, int percentColumn = -1);
void enableColumnSort(QTreeWidget *list, const ColumnSortOptions &options);
/// Makes a column the current sort column in an order without sorting (the order the list
/// was filled in), so that the next click on its head reverses it.
void setSortColumn(QTreeWidget *list, int column, Qt::SortOrder order);

} // namespace tarvex
