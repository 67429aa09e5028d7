#include "BirthDateReport.h"

#include "SearchResultsSheet.h"
#include "SheetPrint.h"

#include "pedigree/PedigreeSheet.h"
#include "pedigree/PedigreeStyles.h"
#include "store/DaySerial.h"
#include "store/StudDatabase.h"

using namespace Qt::StringLiterals;

namespace tarvex {

std::optional<BirthDateRange> birthDateRange(const QString &fromText, const QString &toText,
                                             const DateSettings &dates, Prompts &prompts, QString *focus)
{
    BirthDateRange range;
    for (const auto &[text, field, date] :
         {std::tuple{fromText, u"SDOB"_s, &range.from}, std::tuple{toText, u"SToDOB"_s, &range.to}}) {
        // A field with no figure in it (its mask's separators at most) is empty.
        if (!std::any_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); })) {
            prompts.show(u"Date must be entered"_s, u"Date Error"_s, Prompts::Icon::Exclamation);
            if (focus)
                *focus = field;
            return std::nullopt;
        }
        if (!Is_Valid_Date(text, dates, prompts)) {
            if (focus)
                *focus = field;
            return std::nullopt;
        }
        *date = *dates.parse(text);
    }
    return range;
}

namespace {

void Print_Matings_Heading(PrintSurface &page, const Session &s)
{
    page.setFontSize(12);
    page.setItalic(true);
    page.setBold(false);
    const double y = page.CurrentY;
    for (const auto &[x, text] : {std::pair{2.0, u"Birth Date"_s}, std::pair{25.0, s.MotherWord},
                                  std::pair{102.0, s.FatherWord}, std::pair{176.0, u"Mated Date"_s}}) {
        page.CurrentX = x;
        page.CurrentY = y;
        page.printInline(text);
    }
    page.setItalic(false);
    page.CurrentX = 0;
    page.CurrentY = y + page.textHeight(u"X"_s);
}

} // namespace

bool anyBirthsBetween(Session &session, const BirthDateRange &range)
{
    bool any = false;
    session.Stud->handle().eachRow(u"SELECT 1 FROM Matings WHERE Birthdate >= ? AND Birthdate <= ? LIMIT 1"_s,
                                   {DaySerial::fromDate(range.from), DaySerial::fromDate(range.to)},
                                   [&](const Row &) { any = true; });
    return any;
}

bool printBirthDateReport(PrintSurface &page, Session &session, const BirthDateRange &range, Progress &progress)
{
    Database &db = session.Stud->handle();
    const ReportHeading heading{session.StudName, u"Birth Date Report"_s, session.Dates.format(range.from),
                                session.Dates.format(range.to)};
    const auto date = [&](const Row &row, const QString &field) {
        return row.isNull(field) ? QString() : session.Dates.format(DaySerial::toDate(row.value(field)));
    };
    // A parent that is recorded but gone reads "Not Found", as everywhere else.
    const auto parent = [](const Row &row, const QString &field) {
        if (row.isNull(field))
            return QString();
        return row.isNull(field + u"Number"_s) ? u"Not Found"_s : row.text(field + u"Name"_s);
    };
    const double from = DaySerial::fromDate(range.from);
    const double to = DaySerial::fromDate(range.to);

    SetPrinterDefaults(page);
    SetSheetScale(page);
    progress.start(0, u"Printing"_s);
    page.CurrentY = 300; // the first row begins the first page
    bool printed = false;
    bool stopped = false;
    std::optional<double> previous;
    qint64 done = 0;
    db.eachRow(u"SELECT m.Birthdate, m.MatingDate, m.Dam, m.Sire, d.Number AS DamNumber, d.Name AS DamName, "
               "s.Number AS SireNumber, s.Name AS SireName FROM Matings m "
               "LEFT JOIN Stock d ON d.Number = m.Dam LEFT JOIN Stock s ON s.Number = m.Sire "
               "WHERE m.Birthdate >= ? AND m.Birthdate <= ? ORDER BY m.Birthdate, m.rowid"_s,
               {from, to}, [&](const Row &row) {
                   if (stopped)
                       return;
                   if (page.CurrentY >= 272) {
                       PrintReportHeading(page, heading, printed);
                       Print_Matings_Heading(page, session);
                       printed = true;
                   }
                   page.setBold(true);
                   page.setItalic(false);
                   page.setFontSize(10);
                   const double born = row.value(u"Birthdate"_s).toDouble();
                   if (previous && *previous != born)
                       page.CurrentY += 1;
                   previous = born;
                   const double y = page.CurrentY;
                   PrintDateCell(page, 2, y, date(row, u"Birthdate"_s), 20);
                   PrintCell(page, 25, y, parent(row, u"Dam"_s), 75);
                   PrintCell(page, 102, y, parent(row, u"Sire"_s), 73);
                   PrintDateCell(page, 176, y, date(row, u"MatingDate"_s), 20);
                   page.CurrentX = 0;
                   page.CurrentY = y + page.textHeight(u"X"_s);
                   progress.step(++done);
                   stopped = progress.cancelled();
               });
    if (!printed || stopped) {
        page.killDoc();
        return false;
    }
    page.endDoc();
    return true;
}

void printBlankPedigreeForm(PrintSurface &page, Session &session, Prompts &prompts, int generations)
{
    PedigreeTable table;
    PedigreeSheetJob job;
    job.table = &table;
    job.style = defaultPedigreeStyle(session);
    job.generations = generations;
    job.captions = {session.FatherWord + u": "_s, session.MotherWord + u": "_s};
    job.certifyLine = Set_Report_Titles(session.PrintType, session.PedigreeWord, QString(), false).certify;
    job.blank = true;
    SetPrinterDefaults(page);
    printPedigreeSheet(page, session, prompts, job);
}

} // namespace tarvex
