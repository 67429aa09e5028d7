#pragma once

#include <QString>

#include <optional>

namespace tarvex {

/// The most a sheet holds: rows, columns, and characters in one cell.
inline constexpr int kSheetMaxRows = 1048576;
inline constexpr int kSheetMaxColumns = 16384;
inline constexpr int kSheetMaxCellText = 32767;
/// The widest a column can be set.
inline constexpr double kSheetMaxColumnWidth = 255;
/// The sheet's standard font size and the title's, in points.
inline constexpr double kSheetFontPoints = 11;
inline constexpr double kSheetTitlePoints = 14;

/// A spreadsheet file of one sheet, written cell by cell. Rows and columns count from 0
/// (row 0, column 0 is the sheet's "A1").
class SheetWriter
{
public:
    enum class Style
    {
        Plain,
        Title,   ///< larger and bold
        Heading, ///< bold, on a solid fill
    };

    virtual ~SheetWriter() = default;

    /// Starts a workbook to be saved as path. Returns why not when the file cannot be
    /// made there; nothing is left behind then.
    virtual std::optional<QString> open(const QString &path) = 0;
    /// Puts a text in a cell. An empty text leaves a plain cell empty.
    virtual void write(int row, int column, const QString &text, Style style) = 0;
    /// Sets a column's width, in widths of the digit "0" of the sheet's standard font.
    virtual void setColumnWidth(int column, double width) = 0;
    /// Saves the workbook. Returns why not when it failed (any fault of the writes
    /// included); the file at path is then as it was before open(), and no part-written
    /// file is left.
    virtual std::optional<QString> close() = 0;
};

} // namespace tarvex
