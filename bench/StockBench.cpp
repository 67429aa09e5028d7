// Working with the animals of a large stud: moving to the next animal with everything the
// record screen shows, saving a new animal, and archiving by status.
#include "BenchSupport.h"
#include "StudGenerator.h"

#include "core/Session.h"
#include "core/StudLoader.h"
#include "stock/ArchiveByStatus.h"
#include "stock/StockRecords.h"
#include "store/StudDatabase.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

using OpenStud = bench::LargeStud;

OpenStud &stud()
{
    static OpenStud s;
    return s;
}

void BM_MoveToNextAnimalWithRelatives(benchmark::State &state)
{
    OpenStud &s = stud();
    StockRecords records(s.session, s.prompts);
    records.CmdBrowse();
    for (auto _ : state) {
        if (!records.moveNext())
            records.CmdBrowse();
        const RecordView v = records.Stock_Reposition();
        const RelativesCache c = records.relatives();
        const auto cells = shortPedigree(
            s.session.Stud->handle(), v.sire, v.dam,
            [&](const QDate &d) { return s.session.Dates.format(d); }, s.session.WeightUnit);
        benchmark::DoNotOptimize(c.lists[0].size() + cells.size());
    }
}
BENCHMARK(BM_MoveToNextAnimalWithRelatives)->Unit(benchmark::kMillisecond);

void BM_SaveNewAnimal(benchmark::State &state)
{
    OpenStud &s = stud();
    StockRecords records(s.session, s.prompts);
    int n = 0;
    for (auto _ : state) {
        StockForm f = records.CmdNew();
        f.name = u"Bench Kit %1"_s.arg(++n);
        f.sex = u"Doe"_s;
        f.archive = u"Yes"_s; // keeps the dam list as it is
        f.breed = s.session.Lists.breeds.value(0);
        f.colour = s.session.Lists.colours.value(0);
        QString focus;
        if (records.CmdNewUpdate(f, &focus) != StockRecords::Save::Saved)
            state.SkipWithError("the animal was not saved");
    }
}
BENCHMARK(BM_SaveNewAnimal)->Unit(benchmark::kMillisecond);

void BM_ArchiveByStatus(benchmark::State &state)
{
    OpenStud &s = stud();
    Database &db = s.session.Stud->handle();
    QList<StatusChoice> choices = Fill_Status_List(db);
    for (int i = 0; i < choices.size(); i += 3)
        choices[i].archive = !choices[i].archive;
    for (auto _ : state)
        Update_Archive_Status(db, choices);
}
BENCHMARK(BM_ArchiveByStatus)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
