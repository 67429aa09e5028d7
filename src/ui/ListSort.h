#pragma once

class QTreeWidget;

namespace tarvex {

/// Lists sort by a click on a column head: ascending first, a second click on the same
/// column reverses. The head shows " ^" for ascending and " v" for descending.
void enableColumnSort(QTreeWidget *list);

} // namespace tarvex
