// The hot path: every offspring genotype of a mating against the colour table of the
// shipped rabbit files.
#include "BenchSupport.h"

#include "genetics/GeneticsFiles.h"
#include "genetics/Prediction.h"
#include "ReferencePrediction.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

using namespace tarvex;

namespace {

const GeneticsData &rabbits()
{
    static GeneticsData data = [] {
        GeneticsData d;
        bench::QuietPrompts prompts;
        GeneticsFiles files(QStringLiteral(TARVEX_PROGRAM_FOLDER), prompts);
        files.Load_Colours(QStringLiteral("Rabbits"), d);
        return d;
    }();
    return data;
}

// Both parents known in one allele at the first n genes: four outcomes per gene, 4^n passes.
std::pair<Genotype, Genotype> openParents(const GeneticsData &g, int open)
{
    Genotype sire{}, dam{};
    for (int i = 0; i <= g.LastGene; ++i) {
        sire[i] = i < open ? AllelePair{1, 0} : AllelePair{1, 1};
        dam[i] = i < open ? AllelePair{2, 0} : AllelePair{1, 1};
    }
    return {sire, dam};
}

template <typename Engine> void testMating(benchmark::State &state)
{
    const GeneticsData &g = rabbits();
    bench::QuietPrompts prompts;
    const auto [sire, dam] = openParents(g, int(state.range(0)));
    for (auto _ : state) {
        Engine p(g, prompts);
        p.Prepare_Mating(sire, dam);
        p.Enumerate_Offspring();
        benchmark::DoNotOptimize(p.ColourSummary.size());
        state.counters["passes"] = double(p.IterationCount);
    }
    state.counters["colour rows"] = double(g.ColourTable.size());
}

void BM_TestMating(benchmark::State &state)
{
    testMating<OffspringPrediction>(state);
}
BENCHMARK(BM_TestMating)->Arg(6)->Arg(8)->Arg(10)->Unit(benchmark::kMillisecond);

// The plain transcription, for the ratio: the same matings, measured in the same run.
void BM_TestMatingReference(benchmark::State &state)
{
    testMating<ReferencePrediction>(state);
}
BENCHMARK(BM_TestMatingReference)->Arg(6)->Arg(8)->Arg(10)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
