// Coefficients of inbreeding of a generated stud of a million animals: the whole stud at
// once, and one animal from its own ancestors, with the memory the whole stud takes.
#include "BenchSupport.h"
#include "StudGenerator.h"

#include "pedigree/Inbreeding.h"
#include "store/Database.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

/// The stud's animals and parents, read once for every benchmark of that size.
const std::vector<PedigreeRecord> &records(int animals)
{
    static std::map<int, std::vector<PedigreeRecord>> read;
    auto &r = read[animals];
    if (r.empty()) {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"Stud.mdb"_s);
        if (bench::copyOfStud(path, {animals, 40, 60}))
            r = readPedigreeRecords(*Database::open(path));
    }
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
    double highest = 0;
    for (auto _ : state) {
        const Inbreeding f(orderPedigree(r));
        for (int i = 0; i < f.graph().size(); ++i)
            highest = std::max(highest, f.coi(i));
    }
    state.counters["highest_coi"] = highest;
    state.counters["peak_MB"] = peakMegabytes();
}
BENCHMARK(BM_WholeStudCoi)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1);

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
    for (auto _ : state) {
        const Inbreeding alone(ancestorsOf(stud, at));
        generations = alone.completeness(alone.graph().size() - 1).generations;
        benchmark::DoNotOptimize(alone.coi(alone.graph().size() - 1));
        at = at > stud.size() - 1000 ? at - 1 : stud.size() - 1;
    }
    state.counters["generations"] = generations;
}
BENCHMARK(BM_AnimalCoi)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace
