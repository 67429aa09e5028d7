// Coefficients of inbreeding of a generated registry of a million animals in 30 generations:
// the whole stud at once, and one animal from its own ancestors, with the memory the whole
// stud takes.
#include "BenchSupport.h"
#include "RegistryPedigree.h"

#include "StudGenerator.h"

#include "pedigree/CommonAncestors.h"
#include "pedigree/Inbreeding.h"
#include "pedigree/StudInbreeding.h"
#include "store/StudDatabase.h"


#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

/// The registry's animals and parents, made once for every benchmark of that size.
const std::vector<PedigreeRecord> &records(int animals)
{
    static std::map<int, std::vector<PedigreeRecord>> made;
    auto &r = made[animals];
    if (r.empty())
        r = bench::registryPedigree(animals, 30);
    return r;
}

double peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024.0;
}

void BM_WholeStudCoi(benchmark::State &state)
{
    const auto &r = records(int(state.range(0)));
    if (r.empty()) {
        state.SkipWithError("no stud");
        return;
    }
    double highest = 0, sum = 0;
    for (auto _ : state) {
        const Inbreeding f(orderPedigree(r));
        sum = 0;
        for (int i = 0; i < f.graph().size(); ++i) {
            highest = std::max(highest, f.coi(i));
            sum += f.coi(i);
        }
    }
    state.counters["highest_coi"] = highest;
    state.counters["mean_coi"] = sum / double(r.size());
    state.counters["peak_MB"] = peakMegabytes();
}
BENCHMARK(BM_WholeStudCoi)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_AnimalCoi(benchmark::State &state)
{
    const auto &r = records(int(state.range(0)));
    if (r.empty()) {
        state.SkipWithError("no stud");
        return;
    }
    const PedigreeGraph stud = orderPedigree(r);
    // The youngest animals: the deepest pedigrees.
    int at = stud.size() - 1;
    int generations = 0;
    double ancestors = 0, common = 0;
    for (auto _ : state) {
        const Inbreeding alone(ancestorsOf(stud, at));
        const PedigreeGraph &g = alone.graph();
        ancestors = g.size() - 1;
        generations = alone.completeness(g.size() - 1).generations;
        benchmark::DoNotOptimize(alone.coi(g.size() - 1));
        common = double(Common_Ancestors(alone, g.sire.back(), g.dam.back()).size());
        at = at > stud.size() - 1000 ? at - 1 : stud.size() - 1;
    }
    state.counters["generations"] = generations;
    state.counters["ancestors"] = ancestors;
    state.counters["common_ancestors"] = common;
}
BENCHMARK(BM_AnimalCoi)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

// The whole-stud table as the program makes it: read from a stud file of the registry's
// shape, names and all.
void BM_StudTable(benchmark::State &state)
{
    const QString path = bench::cachedStud({int(state.range(0)), 40, 60, true});
    if (path.isEmpty()) {
        state.SkipWithError("no stud");
        return;
    }
    // Only read: opened as the command line opens it, on a copy.
    QTemporaryDir dir;
    const QString copy = dir.filePath(u"Stud.mdb"_s);
    QFile::copy(path, copy);
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
    StudDatabase stud(copy);
    std::size_t rows = 0;
    for (auto _ : state)
        rows = Stud_Inbreeding(stud.handle(), kAllGenerations, noProgress()).size();
    state.counters["animals"] = double(rows);
    state.counters["peak_MB"] = peakMegabytes();
}
BENCHMARK(BM_StudTable)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
