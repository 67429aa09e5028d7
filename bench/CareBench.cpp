// Keeping a stud of 100,000 animals safe: the rotating backup taken at opening while another
// connection holds the stud, the compaction of the utilities, and the whole-file check that
// a repair starts with.
#include "BenchSupport.h"
#include "StudGenerator.h"

#include "care/Backups.h"
#include "care/StudRepair.h"
#include "core/CRegSettings.h"
#include "core/Options.h"
#include "core/Session.h"
#include "store/Database.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

const bench::StudShape kShape{100000, 40, 60};

QTemporaryDir &workFolder()
{
    static QTemporaryDir dir;
    return dir;
}

/// A fresh copy of the stud to work on, made outside the timing.
QString freshStud(benchmark::State &state, const QString &name)
{
    const QString path = workFolder().filePath(name);
    QFile::remove(path);
    if (!bench::copyOfStud(path, kShape))
        state.SkipWithError("no stud could be made");
    return path;
}

void BM_RotatingBackup(benchmark::State &state)
{
    const QString path = freshStud(state, u"Rabbits.mdb"_s);
    qputenv("XDG_CONFIG_HOME", workFolder().filePath(u"config"_s).toUtf8());
    Session session;
    bench::catalogueStud(session, path);
    session.StockType = u"Rabbits"_s;
    session.DatabaseFile = u"Rabbits.mdb"_s;
    session.Dates = *Detect_Date_Format([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
    Options options(session);
    options.setFlag(Opt::AutoBackup, true);
    options.setNumber(Opt::BackUpEvery, 1);
    bench::QuietPrompts prompts;
    // The stud is held open, as when another program has it.
    auto held = Database::open(path);
    for (auto _ : state)
        RotatingBackup(session, prompts);
    state.counters["MB"] = double(QFileInfo(path).size()) / 1e6;
    if (!QFileInfo::exists(ringFile(session, options.number(Opt::BackUpCycle))))
        state.SkipWithError("no ring file was written");
}
BENCHMARK(BM_RotatingBackup)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_Compact(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        const QString path = freshStud(state, u"Compact.mdb"_s);
        state.ResumeTiming();
        CompactStud(path);
    }
    state.counters["MB"] = double(QFileInfo(workFolder().filePath(u"Compact.mdb"_s)).size()) / 1e6;
}
BENCHMARK(BM_Compact)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_RepairCheck(benchmark::State &state)
{
    const QString path = freshStud(state, u"Check.mdb"_s);
    const QString blank = QStringLiteral(TARVEX_PROGRAM_FOLDER) + u"EmptyStock.mdb"_s;
    for (auto _ : state) {
        if (RepairDatabase(path, blank) != RepairOutcome::Sound)
            state.SkipWithError("the sound stud did not check out");
    }
}
BENCHMARK(BM_RepairCheck)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);

// A page of animals in the middle of the file overwritten, as a failing disk leaves it: the
// stud rebuilt from everything else.
void BM_RepairRebuild(benchmark::State &state)
{
    const QString blank = QStringLiteral(TARVEX_PROGRAM_FOLDER) + u"EmptyStock.mdb"_s;
    for (auto _ : state) {
        state.PauseTiming();
        const QString path = freshStud(state, u"Damaged.mdb"_s);
        QFile::remove(uncompactedPath(path));
        {
            QFile file(path);
            file.open(QIODevice::ReadWrite);
            file.seek(file.size() / 2 / 4096 * 4096 + 64);
            file.write(QByteArray(4000, '\x5a'));
        }
        state.ResumeTiming();
        if (RepairDatabase(path, blank) != RepairOutcome::Rebuilt)
            state.SkipWithError("the damaged stud was not rebuilt");
    }
}
BENCHMARK(BM_RepairRebuild)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
