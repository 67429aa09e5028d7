// Pedigrees of a large stud: reading the five generations of an animal, and printing the
// sheet to a PDF file.
#include "BenchSupport.h"
#include "StudGenerator.h"

#include "core/StudLoader.h"
#include "pedigree/PedigreeSheet.h"
#include "pedigree/PedigreeTable.h"
#include "platform/QPainterSurface.h"
#include "store/StudDatabase.h"

#include <QPdfWriter>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

// The generated stud, with the subject of the pedigrees late in it: a full five
// generations behind it.
struct OpenStud : bench::LargeStud
{
    OpenStud()
    {
        session.StudName = u"Bench Stud"_s;
        session.CurrentStockNo = 99999;
    }
};

OpenStud &stud()
{
    static OpenStud s;
    return s;
}

void BM_LoadPedigreeTable(benchmark::State &state)
{
    OpenStud &s = stud();
    PedigreeTable table;
    QString type;
    int filled = 0;
    for (auto _ : state) {
        Load_Pedigree_Table(s.session, table, s.session.CurrentStockNo, -1, -1, &type);
        filled = 0;
        for (int g = 1; g <= 5; ++g)
            for (int p = 1; p <= (1 << g); ++p)
                filled += table.cell(g, p).Number > 0;
    }
    state.counters["ancestors"] = filled;
}
BENCHMARK(BM_LoadPedigreeTable)->Unit(benchmark::kMillisecond);

void BM_PrintPedigreeToPdf(benchmark::State &state)
{
    OpenStud &s = stud();
    PedigreeTable table;
    QString type;
    Load_Pedigree_Table(s.session, table, s.session.CurrentStockNo, -1, -1, &type);
    PedigreeSheetJob job;
    job.table = &table;
    job.captions = {u"Sire: "_s, u"Dam: "_s};
    job.certifyLine = u"I certify this Pedigree to be correct to the best of my knowledge"_s;
    const QString file = s.dir.filePath(u"sheet.pdf"_s);
    for (auto _ : state) {
        QPdfWriter pdf(file);
        pdf.setPageSize(QPageSize(QPageSize::A4));
        QPainterSurface page(&pdf);
        printPedigreeSheet(page, s.session, s.prompts, job);
    }
}
BENCHMARK(BM_PrintPedigreeToPdf)->Unit(benchmark::kMillisecond);

} // namespace
