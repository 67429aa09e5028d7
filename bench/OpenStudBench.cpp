// Opening a stud: the whole opening as the program does it at start, with every list
// refilled, and the vocabulary walk on its own.
#include "BenchSupport.h"
#include "StudGenerator.h"

#include "core/CRegSettings.h"
#include "core/Session.h"
#include "core/StudLoader.h"
#include "store/StockLookup.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

using bench::QuietPrompts;

QTemporaryDir &workFolder()
{
    static QTemporaryDir dir;
    return dir;
}

/// One generated stud per shape, made once for all runs.
QString stud(int animals, int distinct)
{
    static std::map<std::pair<int, int>, QString> made;
    auto &path = made[{animals, distinct}];
    if (path.isEmpty()) {
        path = workFolder().filePath(u"Stud_%1_%2.mdb"_s.arg(animals).arg(distinct));
        bench::generateStud(path, {animals, distinct, 60});
    }
    return path;
}

void BM_OpenStudWithAllLists(benchmark::State &state)
{
    const int animals = int(state.range(0));
    const QString file = stud(animals, 40);
    const QString home = workFolder().filePath(u"home%1"_s.arg(animals));
    qputenv("XDG_CONFIG_HOME", home.toUtf8());
    Session session;
    bench::catalogueStud(session, file);
    QuietPrompts prompts;
    for (auto _ : state) {
        const LoadResult result = Load_Stud_Details(session, prompts);
        if (result != LoadResult::Opened)
            state.SkipWithError("the stud did not open");
        benchmark::DoNotOptimize(sireList(session)->size());
        benchmark::DoNotOptimize(damList(session)->size());
        state.PauseTiming();
        Close_Databases(session);
        state.ResumeTiming();
    }
    state.counters["sires"] = double(sireList(session)->size());
    state.counters["dams"] = double(damList(session)->size());
}
BENCHMARK(BM_OpenStudWithAllLists)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The cost follows the number of distinct values, not the number of animals:
// compare rows with the same second argument across animals, and the same first across values.
void BM_VocabularyWalk(benchmark::State &state)
{
    const int animals = int(state.range(0));
    const int distinct = int(state.range(1));
    StudDatabase db(stud(animals, distinct));
    db.openImages();
    db.openRest();
    Table util(db.handle(), u"Stock"_s);
    for (auto _ : state) {
        const QStringList colours = walkVocabulary(util, u"ColourKey"_s, u"Colour"_s);
        benchmark::DoNotOptimize(colours.size());
    }
    state.counters["values"] = double(distinct);
}
BENCHMARK(BM_VocabularyWalk)
    ->Args({10000, 40})
    ->Args({100000, 40})
    ->Args({100000, 400})
    ->Args({100000, 4000})
    ->Unit(benchmark::kMicrosecond);

void BM_FindAnimalByNumber(benchmark::State &state)
{
    StudDatabase db(stud(100000, 40));
    db.openImages();
    db.openRest();
    qint64 n = 1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Get_Stock_Name(db.handle(), n));
        n = n % 100000 + 7919;
    }
}
BENCHMARK(BM_FindAnimalByNumber)->Unit(benchmark::kMicrosecond);

} // namespace
