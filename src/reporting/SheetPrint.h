#pragma once

#include "core/PrintSurface.h"

#include <QString>

#include <functional>

namespace tarvex {

/// The printed sheets of the program (the animal sheet, the reports, the pictures) are laid
/// out in a page scale of 200 wide by 280 high, portrait, so their numbers hold on any paper.
inline constexpr double kSheetWidth = 200;
inline constexpr double kSheetHeight = 280;

/// The width of the lines drawn from now on, given as a printer's pixels (taken at 300 to
/// the inch), as the printouts were drawn for one.
void setLineWidth(PrintSurface &page, double pixels);

/// Font "Arial", not bold, italic, struck or underlined, black: every print job starts so.
void SetPrinterDefaults(PrintSurface &page);
/// The page scale 0,0 to 200,280.
void SetSheetScale(PrintSurface &page);

/// The page heading of a database-wide report: the stud's title, the frame of the page, the
/// report's name with its range of dates when it has one, "(Continued)" on a later page, and
/// a rule under the row. A continuation begins a new page first.
struct ReportHeading
{
    QString studTitle;
    QString reportName;
    QString from, to; // both empty for a report without a range
};
void PrintReportHeading(PrintSurface &page, const ReportHeading &heading, bool continued);

/// The page heading of the animal sheet (and of a printed picture): the stud's title, the
/// frame, "Name" and the animal's name, "Continued" on a later page, and a rule. A
/// continuation begins a new page first.
void PrintSheetHeader(PrintSurface &page, const QString &studTitle, const QString &name, bool continued);

/// One sheet in the making: the page, and the heading a continuation page begins with.
/// Every operation works at the page's present position and moves it on.
class SheetPrinter
{
public:
    using Heading = std::function<void(bool continued)>;

    SheetPrinter(PrintSurface &page, Heading heading) : m_page(page), m_heading(std::move(heading)) {}

    PrintSurface &page() { return m_page; }
    /// A new page with the heading marked as continued.
    void continuation();
    /// A continuation when the position has reached limit (the section and row tests).
    void breakAt(double limit);

    /// A row of two label and value pairs; skipped when both values are empty. A value too
    /// wide for its place is printed in a smaller font, never cut.
    void PrintDetailRow(const QString &leftLabel, const QString &leftValue, const QString &rightLabel,
                        const QString &rightValue);
    /// A label and its text, word-wrapped over the width, over as many pages as it takes. A
    /// section begins a new page when less than a seventh of this one is left; a text that
    /// is part of a row (a diary note, a critique) follows its row instead.
    void PrintWrappedSection(const QString &label, const QString &text, bool sectionStart = true);
    /// A text on at most two lines at x: the first line of width first, the rest cut to
    /// second; the position returns to the first line.
    void Print2LineWrap(const QString &text, double x, double first, double second);
    /// A text ending at the right edge, on the present line.
    void PrintRightJustify(const QString &text, double right);
    /// The picture, in proportion, centred within the width (the page width less 25 when 0)
    /// and no taller than what is left of the page, at the present position, followed by a
    /// rule. A picture that cannot be read leaves the page as it was (no gap, no rule):
    /// false.
    bool PrintDefaultImage(const QString &path, double maxWidth = 0);
    /// A line across the page, width 199, at the present position.
    void rule();

private:
    PrintSurface &m_page;
    Heading m_heading;
};

/// A date in a column of its own: printed whole at the present position, in a smaller font
/// when the date format's four-figure year is wider than the column at this size; the font
/// size is then put back.
void PrintDate(PrintSurface &page, const QString &date, double width);

/// A text in a column of a row at (x, y), cut to the column's width; a date in a column,
/// whole. The position stays on the row.
void PrintCell(PrintSurface &page, double x, double y, const QString &text, double width);
void PrintDateCell(PrintSurface &page, double x, double y, const QString &date, double width);

/// The smallest font size a shrinking value goes down to.
inline constexpr double kSmallestFontSize = 4;

} // namespace tarvex
