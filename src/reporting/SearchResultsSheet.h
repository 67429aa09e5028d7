#pragma once

#include "core/PrintSurface.h"
#include "core/Progress.h"
#include "reporting/StockSearch.h"

namespace tarvex {

/// The printed list of search results: landscape, "Search Results List" at the head of each
/// page with the column heads, then one line per animal in the list's present order, each
/// text cut to its column's width. Returns false when the user stopped it (the document is
/// then abandoned).
bool printSearchResults(PrintSurface &page, SearchResults &results, const QString &idWord,
                        Progress &progress = noProgress());

/// Prints a text without moving to a new line, cut short, a character at a time, until it
/// fits the width.
void PrintFitted(PrintSurface &page, const QString &text, double maxWidth);

} // namespace tarvex
