#pragma once

class QTreeWidget;

namespace tarvex {

/// Lists sort by a click on a column head: ascending first, a second click on the same
/// column reverses. The head shows " v" for ascending and " ^" for descending. A percent
/// column ("12.50%") sorts by its number, equal shares by the first column.
void enableColumnSort(QTreeWidget *list, int percentColumn = -1);

} // namespace tarvex
