#include "ListSheet.h"

#include <QStringView>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// Characters of the East Asian scripts and pictographs take two places.
bool isWide(char32_t c)
{
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF && c != 0x303F) ||
           (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE4F) ||
           (c >= 0xFF00 && c <= 0xFF60) || (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F300 && c <= 0x1FAFF) ||
           (c >= 0x20000 && c <= 0x3FFFD);
}

// The places the longest line of a text takes; accents and joiners take none.
int places(QStringView text)
{
    int longest = 0, line = 0;
    for (const char32_t c : text.toUcs4()) {
        if (c == u'\n') {
            line = 0;
            continue;
        }
        switch (QChar::category(c)) {
        case QChar::Mark_NonSpacing:
        case QChar::Mark_Enclosing:
        case QChar::Other_Format:
            break;
        default:
            line += isWide(c) ? 2 : 1;
        }
        longest = std::max(longest, line);
    }
    return longest;
}

// Plain ASCII is by far the most common text in a stud's lists; it needs no decoding.
int placesQuick(const QString &text)
{
    for (const QChar c : text)
        if (c.unicode() >= 0x7F || c == u'\n')
            return places(text);
    return int(text.size());
}

// Near enough what a spreadsheet program's own fitting gives: a character is about the
// width of a digit of the standard font, bold takes a tenth more, the title's larger font
// proportionally more, and a little room is kept beside the text.
double fittedWidth(int chars, SheetWriter::Style style)
{
    double scale = 1.0;
    if (style == SheetWriter::Style::Heading)
        scale = 1.1;
    else if (style == SheetWriter::Style::Title)
        scale = 1.1 * kSheetTitlePoints / kSheetFontPoints;
    return std::min(kSheetMaxColumnWidth, chars * scale + 1.0);
}

QString tooLongText(qsizetype row, qsizetype column)
{
    return u"The text in row %1, column %2 of the list is longer than the %3 characters a spreadsheet "
           u"cell can hold."_s.arg(row + 1)
               .arg(column + 1)
               .arg(kSheetMaxCellText);
}

} // namespace

std::optional<QString> writeListSheet(const ListSheet &list, SheetWriter &writer, const QString &path)
{
    using Style = SheetWriter::Style;
    const int tableRow = list.title.isEmpty() ? 0 : 2;

    const qint64 room = kSheetMaxRows - tableRow - 1;
    if (list.rows.size() > room)
        return u"The list has %1 rows, more than the %2 a spreadsheet can hold."_s.arg(list.rows.size())
            .arg(room);
    qsizetype columns = list.headings.size();
    for (const QStringList &row : list.rows)
        columns = std::max(columns, row.size());
    if (columns > kSheetMaxColumns)
        return u"The list has %1 columns, more than the %2 a spreadsheet can hold."_s.arg(columns).arg(
            kSheetMaxColumns);
    if (list.title.size() > kSheetMaxCellText)
        return u"The title is longer than the %1 characters a spreadsheet cell can hold."_s.arg(
            kSheetMaxCellText);
    for (qsizetype c = 0; c < list.headings.size(); ++c)
        if (list.headings.at(c).size() > kSheetMaxCellText)
            return u"The heading of column %1 of the list is longer than the %2 characters a spreadsheet "
                   u"cell can hold."_s.arg(c + 1)
                       .arg(kSheetMaxCellText);

    // Each column of A to Z as wide as its widest cell; one with no text at all keeps the
    // standard width.
    std::array<double, kFittedColumns> widths{};
    const auto fit = [&](qsizetype column, const QString &text, Style style) {
        if (column < kFittedColumns && !text.isEmpty())
            widths[column] = std::max(widths[column], fittedWidth(placesQuick(text), style));
    };
    fit(0, list.title, Style::Title);
    for (qsizetype c = 0; c < list.headings.size(); ++c)
        fit(c, list.headings.at(c), Style::Heading);
    for (qsizetype r = 0; r < list.rows.size(); ++r) {
        const QStringList &row = list.rows.at(r);
        for (qsizetype c = 0; c < row.size(); ++c) {
            if (row.at(c).size() > kSheetMaxCellText)
                return tooLongText(r, c);
            fit(c, row.at(c), Style::Plain);
        }
    }

    if (auto failure = writer.open(path))
        return failure;
    if (!list.title.isEmpty())
        writer.write(0, 0, list.title, Style::Title);
    for (qsizetype c = 0; c < list.headings.size(); ++c)
        writer.write(tableRow, int(c), list.headings.at(c), Style::Heading);
    int sheetRow = tableRow + 1;
    for (const QStringList &row : list.rows) {
        for (qsizetype c = 0; c < row.size(); ++c)
            writer.write(sheetRow, int(c), row.at(c), Style::Plain);
        ++sheetRow;
    }
    for (int c = 0; c < kFittedColumns; ++c)
        if (widths[c] > 0)
            writer.setColumnWidth(c, widths[c]);
    return writer.close();
}

QString sheetFileName(const QString &title)
{
    QString name;
    name.reserve(title.size());
    for (const QChar c : title) {
        if (c == u':')
            name += u'-'; // "Testmate Results : Jet and Ivory" reads well as "... - ..."
        else if (c == u'/' || c == u'\\' || c == u'*' || c == u'?' || c == u'"' || c == u'<' || c == u'>' ||
                 c == u'|' || c.category() == QChar::Other_Control)
            name += u'_';
        else
            name += c;
    }
    name = name.simplified();
    // A leading dot would hide the file; trailing dots and spaces are dropped by some desktops.
    while (name.startsWith(u'.'))
        name.remove(0, 1);
    // File names are limited in bytes, and a shorter name is easier to read anyway.
    if (name.size() > 100)
        name.truncate(100);
    while (name.toUtf8().size() > 200)
        name.chop(1);
    if (!name.isEmpty() && name.back().isHighSurrogate())
        name.chop(1);
    while (name.endsWith(u'.') || name.endsWith(u' '))
        name.chop(1);
    if (name.isEmpty())
        name = u"List"_s;
    return name + u".xlsx"_s;
}

} // namespace tarvex
