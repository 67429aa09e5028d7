// Printouts to PDF files, as the print preview's "Save as PDF" writes them:
//
// - BM_AnimalSheetPdf: the sheet of one animal of a stud of 100,000 with every section
//   ticked, its 200 diary notes and 100 show awards (each with a judge's critique) running
//   over several pages.
// - BM_BirthDateReportPdf: the birth date report over every litter of a stud of 100,000
//   animals, a litter recorded for every six animals (16,667 rows, some 280 pages), each
//   with its dam's and sire's names.
//
// Both write an A4 PDF into a temporary folder; the file's size is shown beside the time.
#include "BenchSupport.h"

#include "platform/QPainterSurface.h"
#include "reporting/AnimalSheet.h"
#include "reporting/BirthDateReport.h"
#include "store/Database.h"
#include "store/DaySerial.h"
#include "store/StudDatabase.h"

#include <QFileInfo>
#include <QPdfWriter>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

void toPdf(benchmark::State &state, const QString &path, const std::function<bool(PrintSurface &)> &draw)
{
    for (auto _ : state) {
        QPdfWriter pdf(path);
        pdf.setPageSize(QPageSize(QPageSize::A4));
        QPainterSurface page(&pdf);
        if (!draw(page)) {
            state.SkipWithError("nothing was printed");
            return;
        }
    }
    state.counters["file_bytes"] = double(QFileInfo(path).size());
}

void BM_AnimalSheetPdf(benchmark::State &state)
{
    bench::LargeStud stud;
    Database &db = stud.session.Stud->handle();
    const qint64 number = 1000;
    {
        Transaction tx(db);
        for (int i = 0; i < 200; ++i)
            db.execute(u"INSERT INTO BreedNote (Number, Date, Notes) VALUES (?, ?, ?)"_s,
                       {number, DaySerial::fromDate(QDate(2020, 1, 1).addDays(i * 3)),
                        u"Weighed %1 g; wormed and checked teeth. Hutch cleaned and fresh hay given."_s.arg(
                            1500 + i)});
        for (int i = 0; i < 100; ++i)
            db.execute(u"INSERT INTO Awards (Number, Date, Venue, Judge, Secretary, Award, NoEntered, NoShown, "
                       "Stars, CCStars, Comments) VALUES (?, ?, ?, 'A. Judge', 'B. Secretary', 'Best of Breed', "
                       "24, 20, '3', '1', 'Good coat and condition; a little long in the body.')"_s,
                       {number, DaySerial::fromDate(QDate(2020, 2, 1).addDays(i * 7)),
                        u"Northern Counties Fur and Feather Society %1"_s.arg(i)});
        tx.commit();
    }
    SheetSections all{};
    all.fill(true);
    toPdf(state, stud.dir.filePath(u"sheet.pdf"_s),
          [&](PrintSurface &page) { return printAnimalSheet(page, stud.session, number, all); });
}

void BM_BirthDateReportPdf(benchmark::State &state)
{
    bench::LargeStud stud;
    Database &db = stud.session.Stud->handle();
    {
        Transaction tx(db);
        // A litter for every six animals of the stud (of the argument's 100,000 animals).
        db.execute(u"INSERT INTO Matings (Sire, Dam, MatingDate, Birthdate) SELECT Number + 1, Number, "
                   "36526 + Number % 9000, 36557 + Number % 9000 FROM Stock WHERE Number % 6 = 0"_s);
        tx.commit();
    }
    const BirthDateRange range{QDate(1990, 1, 1), QDate(2040, 1, 1)};
    toPdf(state, stud.dir.filePath(u"births.pdf"_s),
          [&](PrintSurface &page) { return printBirthDateReport(page, stud.session, range); });
    state.counters["litters"] = double(db.scalar(u"SELECT count(*) FROM Matings"_s).toLongLong());
}

} // namespace

BENCHMARK(BM_AnimalSheetPdf)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BirthDateReportPdf)->Arg(100000)->Unit(benchmark::kMillisecond);
