// The hot path: every offspring genotype of a mating against the colour table of the
// shipped rabbit files.
#include "BenchSupport.h"

#include "core/StudLoader.h"
#include "genetics/ColourFinding.h"
#include "genetics/GeneticsFiles.h"
#include "genetics/Genotypes.h"
#include "store/StudDatabase.h"
#include "genetics/Prediction.h"
#include "ReferencePrediction.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <random>

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

// Which of 300 sires and 500 dams can give a colour, their genotypes as their colours give them.
void BM_FindColour(benchmark::State &state)
{
    QTemporaryDir dir;
    qputenv("XDG_CONFIG_HOME", dir.filePath(QStringLiteral("config")).toUtf8());
    const QString file = dir.filePath(QStringLiteral("Finding.mdb"));
    QFile::copy(QStringLiteral(TARVEX_PROGRAM_FOLDER "EmptyStock.mdb"), file);
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    for (const char *name : {"Rabbits Genetics.Gen", "Rabbits Colours.Gen"})
        QFile::copy(QStringLiteral(TARVEX_PROGRAM_FOLDER) + QLatin1String(name), dir.filePath(QLatin1String(name)));
    Session session;
    bench::catalogueStud(session, file);
    CRegSettings settings = session.settings();
    settings.SaveSetting(QStringLiteral("Finding\\Options"), QStringLiteral("Genetics"), QStringLiteral("1"));
    settings.SaveSetting(QStringLiteral("Finding\\Options"), QStringLiteral("GeneticsFile"), QStringLiteral("Rabbits"));
    bench::QuietPrompts prompts;
    NullStudShell shell;
    Load_Stud_Details(session, prompts, shell);
    Ensure_Genetics_Loaded(session, prompts);
    // Colours as breeders keep them: a few dozen common ones.
    const QStringList colours{QStringLiteral("Black"), QStringLiteral("Blue"), QStringLiteral("Chocolate"),
                              QStringLiteral("Chestnut Agouti"), QStringLiteral("Opal"), QStringLiteral("Black Otter"),
                              QStringLiteral("Chinchilla"), QStringLiteral("Orange"), QStringLiteral("Harlequin"),
                              QStringLiteral("Himalayan"), QStringLiteral("Ruby-Eyed White"), QStringLiteral("Lilac")};
    std::mt19937 random(5);
    Database &db = session.Stud->handle();
    for (int i = 0; i < 800; ++i) {
        const bool buck = i < 300;
        db.execute(QStringLiteral("INSERT INTO Stock (Name, Sex, Archive, Type) VALUES (?, ?, 'No', 'Rex')"),
                   {QStringLiteral("Animal %1").arg(i), buck ? QStringLiteral("Buck") : QStringLiteral("Doe")});
        const qint64 n = db.sql().getLastInsertRowid();
        Update_Genes(session, prompts, colours[int(random() % colours.size())], QStringLiteral("Rex"), n,
                     buck ? QStringLiteral("Buck") : QStringLiteral("Doe"));
    }
    Refill_All_Lists(session);
    qint64 found = 0;
    for (auto _ : state) {
        ColourFinder finder(session, prompts);
        QList<MatingPair> hits;
        finder.Find_Matings(session.Lists.sires, session.Lists.dams, QStringLiteral("Black"), QString(), &hits);
        found = hits.size();
    }
    state.counters["pairs"] = double(300 * 500);
    state.counters["pairs found"] = double(found);
}
BENCHMARK(BM_FindColour)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
