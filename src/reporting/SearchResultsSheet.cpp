#include "SearchResultsSheet.h"

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// Where each column starts and how wide its text may be, in the page's 400 by 500 scale.
struct SheetColumn
{
    double left, width;
};
constexpr SheetColumn kCells[] = {{4, 150}, {158, 52}, {212, 25}, {240, 31}, {273, 58}, {334, 62}};

void heading(PrintSurface &page, const QString &idWord)
{
    page.setDrawWidth(4);
    page.line(2, 2, 398, 2);
    page.line(398, 2, 398, 498);
    page.line(398, 498, 2, 498);
    page.line(2, 498, 2, 2);
    page.setDrawWidth(3);
    page.line(1, 24, 399, 24);
    page.line(1, 38, 399, 38);
    page.setFontSize(20);
    page.setBold(true);
    page.CurrentX = 4;
    page.CurrentY = 3;
    page.printInline(u"Search Results List"_s);
    page.setFontSize(11);
    const std::pair<double, QString> heads[] = {{140, u"Name"_s}, {50, idWord}, {25, u"Sex"_s},
                                                {23, u"DOB"_s},   {62, u"Breed"_s}, {62, u"Colour"_s}};
    for (size_t c = 0; c < std::size(heads); ++c) {
        page.CurrentX = kCells[c].left;
        page.CurrentY = 25;
        PrintFitted(page, heads[c].second, heads[c].first);
    }
    page.setBold(false);
    page.CurrentX = 0;
    page.CurrentY = 40;
}

} // namespace

void PrintFitted(PrintSurface &page, const QString &text, double maxWidth)
{
    QString fitted = text.trimmed();
    while (!fitted.isEmpty() && page.textWidth(fitted) > maxWidth)
        fitted.chop(1);
    page.printInline(fitted);
}

bool printSearchResults(PrintSurface &page, SearchResults &results, const QString &idWord, Progress &progress)
{
    page.setScale(400, 500);
    page.setFontName(u"Arial"_s);
    page.setFontSize(11);
    page.setBold(false);
    progress.start(results.size(), u"Printing"_s);
    // The position starts past the page's end, so the first row brings the first heading.
    page.CurrentY = 500;
    bool first = true;
    for (qsizetype i = 0; i < results.size(); ++i) {
        if (page.CurrentY >= 490) {
            if (!first)
                page.newPage();
            first = false;
            heading(page, idWord);
        }
        const SearchResultRow &row = results.row(i);
        const double y = page.CurrentY;
        for (size_t c = 0; c < std::size(kCells); ++c) {
            page.CurrentX = kCells[c].left;
            page.CurrentY = y;
            PrintFitted(page, row.cells[c], kCells[c].width);
        }
        page.CurrentX = 0;
        page.CurrentY = y + page.textHeight(u"X"_s);
        if ((i & 255) == 0) {
            progress.step(i);
            if (progress.cancelled()) {
                page.killDoc();
                return false;
            }
        }
    }
    page.endDoc();
    return true;
}

} // namespace tarvex
