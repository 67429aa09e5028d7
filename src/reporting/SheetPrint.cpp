#include "SheetPrint.h"

#include "SearchResultsSheet.h"

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

void frame(PrintSurface &page)
{
    setLineWidth(page, 3);
    page.line(0, 16, 199, 16);
    page.line(199, 16, 199, 279);
    page.line(199, 279, 0, 279);
    page.line(0, 279, 0, 16);
    setLineWidth(page, 2);
}

void printAt(PrintSurface &page, double x, double y, const QString &text)
{
    page.CurrentX = x;
    page.CurrentY = y;
    page.printInline(text);
}

// The longest start of a text, ending before a blank, that fits the width; without such a
// blank, the longest start that fits (at least one character, so a line always moves on).
// Returns the length taken and whether it ended at a blank.
std::pair<qsizetype, bool> fittingStart(const PrintSurface &page, const QString &text, double width)
{
    qsizetype best = -1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) != u' ')
            continue;
        if (page.textWidth(text.left(i)) > width)
            break;
        best = i;
    }
    if (best >= 0)
        return {best, true};
    qsizetype n = text.size();
    while (n > 1 && page.textWidth(text.left(n)) > width)
        --n;
    return {n, false};
}

} // namespace

void setLineWidth(PrintSurface &page, double pixels)
{
    page.setDrawWidth(pixels * 72.0 / 300.0);
}

void PrintDate(PrintSurface &page, const QString &date, double width)
{
    const double size = page.fontSize();
    while (page.textWidth(date) > width && page.fontSize() - 0.5 >= kSmallestFontSize)
        page.setFontSize(page.fontSize() - 0.5);
    page.printInline(date);
    page.setFontSize(size);
}

void PrintCell(PrintSurface &page, double x, double y, const QString &text, double width)
{
    page.CurrentX = x;
    page.CurrentY = y;
    PrintFitted(page, text, width);
}

void PrintDateCell(PrintSurface &page, double x, double y, const QString &date, double width)
{
    page.CurrentX = x;
    page.CurrentY = y;
    PrintDate(page, date, width);
}

void SetPrinterDefaults(PrintSurface &page)
{
    page.setFontName(u"Arial"_s);
    page.setBold(false);
    page.setItalic(false);
    page.setForeColor(0);
}

void SetSheetScale(PrintSurface &page)
{
    page.setScale(kSheetWidth, kSheetHeight);
}

void PrintReportHeading(PrintSurface &page, const ReportHeading &heading, bool continued)
{
    if (continued)
        page.newPage();
    page.setItalic(false);
    page.setFontSize(24);
    page.setBold(true);
    printAt(page, 0, 2, heading.studTitle);
    frame(page);
    page.setFontSize(16);
    printAt(page, 2, 18, heading.reportName);
    const double below = 18 + page.textHeight(heading.reportName);
    if (!heading.from.isEmpty() || !heading.to.isEmpty()) {
        page.setFontSize(12);
        for (const auto &[x, word, date] : {std::tuple{110.0, u"From "_s, heading.from}, {140.0, u"To "_s, heading.to}}) {
            page.setItalic(true);
            page.setBold(false);
            printAt(page, x, 18, word);
            page.setItalic(false);
            page.setBold(true);
            PrintDate(page, date, 20);
        }
    }
    if (continued) {
        page.setFontSize(10);
        page.setItalic(false);
        page.setBold(false);
        printAt(page, 180, 18, u"(Continued)"_s);
    }
    page.line(0, below, 199, below);
    page.setItalic(false);
    page.setBold(false);
    page.CurrentX = 0;
    page.CurrentY = below;
}

void PrintSheetHeader(PrintSurface &page, const QString &studTitle, const QString &name, bool continued)
{
    if (continued)
        page.newPage();
    page.setItalic(false);
    page.setFontSize(30);
    page.setBold(true);
    printAt(page, 0, 2, studTitle);
    frame(page);
    page.setFontSize(14);
    page.setBold(false);
    page.setItalic(true);
    printAt(page, 2, 18, u"Name"_s);
    page.setItalic(false);
    page.setBold(true);
    printAt(page, 21, 18, name);
    page.setBold(false);
    if (continued)
        printAt(page, 145, 18, u"Continued"_s);
    const double below = 18 + page.textHeight(u"Name"_s);
    page.line(0, below, 199, below);
    page.CurrentX = 0;
    page.CurrentY = below;
}

void SheetPrinter::continuation()
{
    // The heading sets its own fonts; the rows go on in the size they had.
    const double size = m_page.fontSize();
    m_heading(true);
    m_page.setFontSize(size);
    m_page.setBold(false);
    m_page.setItalic(false);
}

void SheetPrinter::breakAt(double limit)
{
    if (m_page.CurrentY >= limit)
        continuation();
}

void SheetPrinter::rule()
{
    m_page.line(0, m_page.CurrentY, 199, m_page.CurrentY);
}

void SheetPrinter::PrintDetailRow(const QString &leftLabel, const QString &leftValue, const QString &rightLabel,
                                  const QString &rightValue)
{
    if (leftValue.isEmpty() && rightValue.isEmpty())
        return;
    PrintSurface &page = m_page;
    const double y = page.CurrentY;
    // A value is printed whole: its font shrinks a point at a time until it fits.
    const auto value = [&](double x, const QString &text, double width) {
        page.setItalic(false);
        page.setBold(true);
        page.setFontSize(12);
        while (page.textWidth(text) >= width && page.fontSize() - 1 >= kSmallestFontSize)
            page.setFontSize(page.fontSize() - 1);
        printAt(page, x, y, text);
    };
    const auto label = [&](double x, const QString &text) {
        page.setFontSize(12);
        page.setBold(false);
        page.setItalic(true);
        printAt(page, x, y, text);
    };
    label(2, leftLabel);
    value(21, leftValue, 99);
    label(120, rightLabel);
    value(145, rightValue, page.scaleWidth() - 145);
    page.setFontSize(12);
    page.setBold(false);
    page.setItalic(false);
    page.CurrentX = 0;
    page.CurrentY = y + page.textHeight(u"X"_s);
}

void SheetPrinter::PrintWrappedSection(const QString &label, const QString &text, bool sectionStart)
{
    PrintSurface &page = m_page;
    const double size = page.fontSize();
    const double width = page.scaleWidth() - 21 - 3;
    if (sectionStart)
        breakAt(240);
    QString rest = text;
    rest.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    bool first = true;
    while (!rest.isEmpty() || first) {
        // A line ends at a line break at once, otherwise at the last blank that fits.
        QString line;
        const qsizetype breakAtNewline = rest.indexOf(u'\n');
        const QString upToBreak = breakAtNewline < 0 ? rest : rest.left(breakAtNewline);
        page.setFontSize(size);
        page.setBold(true);
        page.setItalic(false);
        if (page.textWidth(upToBreak) <= width) {
            line = upToBreak;
            rest = breakAtNewline < 0 ? QString() : rest.mid(breakAtNewline + 1);
        } else {
            const auto [length, atBlank] = fittingStart(page, upToBreak, width);
            line = rest.left(length);
            rest = rest.mid(length + (atBlank ? 1 : 0));
        }
        if (page.CurrentY + page.textHeight(u"X"_s) >= 278)
            continuation();
        const double y = page.CurrentY;
        if (first) {
            page.setBold(false);
            page.setItalic(true);
            printAt(page, 2, y, label);
            page.setItalic(false);
            page.setBold(true);
        }
        printAt(page, 21, y, line);
        page.CurrentX = 0;
        page.CurrentY = y + page.textHeight(u"X"_s);
        first = false;
    }
    page.setBold(false);
}

void SheetPrinter::Print2LineWrap(const QString &text, double x, double first, double second)
{
    PrintSurface &page = m_page;
    const QString trimmed = text.trimmed();
    const double y = page.CurrentY;
    page.CurrentX = x;
    if (page.textWidth(trimmed) <= first) {
        page.printInline(trimmed);
    } else {
        const auto [length, atBlank] = fittingStart(page, trimmed, first);
        page.printInline(trimmed.left(length));
        page.CurrentX = x;
        page.CurrentY = y + page.textHeight(u"X"_s);
        PrintFitted(page, trimmed.mid(length + (atBlank ? 1 : 0)), second);
    }
    page.CurrentY = y;
}

void SheetPrinter::PrintRightJustify(const QString &text, double right)
{
    m_page.CurrentX = right - m_page.textWidth(text);
    m_page.printInline(text);
}

bool SheetPrinter::PrintDefaultImage(const QString &path, double maxWidth)
{
    PrintSurface &page = m_page;
    const QSizeF natural = page.pictureSize(path);
    if (natural.isEmpty())
        return false;
    double width = maxWidth > 0 ? maxWidth : page.scaleWidth() - 25;
    // The page's units are not square: keep the picture's own proportions on paper.
    const double twipsPerX = page.pageSize().width() / page.scaleWidth();
    const double twipsPerY = page.pageSize().height() / page.scaleHeight();
    const double unitsHighPerWide = (natural.height() / natural.width()) * (twipsPerX / twipsPerY);
    double height = width * unitsHighPerWide;
    const double room = 278 - page.CurrentY;
    if (room <= 0)
        return false;
    if (height > room) {
        height = room;
        width = height / unitsHighPerWide;
    }
    const double left = (page.scaleWidth() - width) / 2;
    page.drawPicture(path, left, page.CurrentY, width, height);
    page.CurrentX = 0;
    page.CurrentY += height;
    rule();
    return true;
}

} // namespace tarvex
