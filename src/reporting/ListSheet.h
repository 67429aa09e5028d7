#pragma once

#include "reporting/SheetWriter.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarvex {

/// A list as it shows on screen, as texts only: what goes to a spreadsheet.
struct ListSheet
{
    /// Above the table; none when empty.
    QString title;
    /// The column heads as shown, the sorted one with its " v" or " ^".
    QStringList headings;
    /// In the list's present order: the row's own text first, then its other columns.
    QList<QStringList> rows;
};

/// Only columns A to Z are fitted to their texts; the rest keep the sheet's standard width.
inline constexpr int kFittedColumns = 26;

/// Writes the list as a sheet saved at path: the title in A1, larger and bold, and the
/// table from row 3; with no title the table starts in row 1. The headings are bold on a
/// solid fill, the rows follow in list order, every cell a text as shown, and columns A to
/// Z are as wide as their longest text. Returns why not when the list does not fit a
/// sheet (checked before anything is written) or the file could not be saved.
std::optional<QString> writeListSheet(const ListSheet &list, SheetWriter &writer, const QString &path);

/// The file name ("... .xlsx") for a sheet of this title: characters a desktop does not
/// take in a file name are replaced, "List" when nothing is left.
QString sheetFileName(const QString &title);

} // namespace tarvex
