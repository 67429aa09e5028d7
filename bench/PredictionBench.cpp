// The hot path: every offspring genotype of a mating against the colour table of the
// shipped rabbit files.
#include "BenchSupport.h"

#include "ReferencePrediction.h"
#include "RegistryPedigree.h"
#include "core/StudLoader.h"
#include "genetics/ColourFinding.h"
#include "genetics/GeneticsFiles.h"
#include "genetics/Genotypes.h"
#include "genetics/Prediction.h"
#include "genetics/TestMating.h"
#include "store/Database.h"
#include "store/StudDatabase.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cmath>
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

qsizetype resultRows(const OffspringPrediction &p)
{
    return p.rowCount();
}

qsizetype resultRows(const ReferencePrediction &p)
{
    return p.OffspringRows.size();
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
        state.counters["result rows"] = double(resultRows(p));
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

// A stud of 300 bucks and 500 does whose genotypes their colours give them: known in the
// genes a colour shows, unknown in the rest. Their parents come from a registry of 20,000
// ancestors in 30 generations, so that every pair has a pedigree to weigh.
struct FindingStud
{
    QTemporaryDir dir;
    Session session;
    bench::QuietPrompts prompts;

    FindingStud()
    {
        qputenv("XDG_CONFIG_HOME", dir.filePath(QStringLiteral("config")).toUtf8());
        const QString file = dir.filePath(QStringLiteral("Finding.mdb"));
        QFile::copy(QStringLiteral(TARVEX_PROGRAM_FOLDER "EmptyStock.mdb"), file);
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
        bench::openGeneticsStud(session, prompts, file);
        // Colours as breeders keep them: a dozen common ones.
        const QStringList colours{QStringLiteral("Black"),
                                  QStringLiteral("Blue"),
                                  QStringLiteral("Chocolate"),
                                  QStringLiteral("Chestnut Agouti"),
                                  QStringLiteral("Opal"),
                                  QStringLiteral("Black Otter"),
                                  QStringLiteral("Chinchilla"),
                                  QStringLiteral("Orange"),
                                  QStringLiteral("Harlequin"),
                                  QStringLiteral("Himalayan"),
                                  QStringLiteral("Ruby-Eyed White"),
                                  QStringLiteral("Lilac")};
        std::mt19937 random(5);
        Database &db = session.Stud->handle();
        constexpr int kAncestors = 20000;
        {
            Transaction tx(db);
            for (const PedigreeRecord &r : bench::registryPedigree(kAncestors, 30))
                db.execute(QStringLiteral("INSERT INTO Stock (Number, Name, Archive, Sire, Dam) VALUES (?, ?, 'Yes', ?, ?)"),
                           {r.number, QStringLiteral("Ancestor %1").arg(r.number), r.sire > 0 ? QVariant(r.sire) : QVariant(),
                            r.dam > 0 ? QVariant(r.dam) : QVariant()});
            tx.commit();
        }
        // Parents from the registry's last generations.
        const auto parent = [&] { return kAncestors - qint64(random() % 4000); };
        for (int i = 0; i < 800; ++i) {
            const bool buck = i < 300;
            db.execute(
                QStringLiteral("INSERT INTO Stock (Name, Sex, Archive, Type, Sire, Dam) VALUES (?, ?, 'No', 'Rex', ?, ?)"),
                {QStringLiteral("Animal %1").arg(i), buck ? QStringLiteral("Buck") : QStringLiteral("Doe"), parent(),
                 parent()});
            const qint64 n = db.sql().getLastInsertRowid();
            Update_Genes(session, prompts, colours[int(random() % colours.size())], QStringLiteral("Rex"), n,
                         buck ? QStringLiteral("Buck") : QStringLiteral("Doe"));
        }
        Refill_All_Lists(session);
    }
};

FindingStud &findingStud()
{
    static FindingStud stud;
    return stud;
}

// Which of 300 sires and 500 dams can give a colour; with the COI column, each pair found
// weighed by the coefficient its offspring would have, from the pedigrees of all 800 parents
// at once.
void findColour(benchmark::State &state, bool withCoi)
{
    FindingStud &stud = findingStud();
    qint64 found = 0;
    double least = 1;
    for (auto _ : state) {
        ColourFinder finder(stud.session, stud.prompts);
        QList<MatingPair> hits;
        finder.Find_Matings(sireList(stud.session)->entries(), damList(stud.session)->entries(), QStringLiteral("Black"),
                            QString(), &hits);
        if (withCoi)
            Add_Offspring_Coi(stud.session, hits);
        found = hits.size();
        for (const MatingPair &p : hits)
            least = std::min(least, p.coi);
    }
    state.counters["pairs"] = double(300 * 500);
    state.counters["pairs found"] = double(found);
    if (withCoi)
        state.counters["least_coi"] = least;
}

void BM_FindColour(benchmark::State &state)
{
    findColour(state, false);
}
BENCHMARK(BM_FindColour)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_FindColourWithCoi(benchmark::State &state)
{
    findColour(state, true);
}
BENCHMARK(BM_FindColourWithCoi)->Unit(benchmark::kMillisecond)->Iterations(1);

// The same search done the plain way, every pair through the plain transcription of the
// prediction. The whole run would take many minutes, so the first sires are searched and
// the time for all 300 is estimated from them (the pairs cost alike on average).
void BM_FindColourReference(benchmark::State &state)
{
    FindingStud &stud = findingStud();
    Session &session = stud.session;
    const QList<ParentEntry> sires = sireList(session)->entries();
    const QList<ParentEntry> dams = damList(session)->entries();
    const int sampled = int(state.range(0));
    qint64 hits = 0;
    for (auto _ : state) {
        for (int s = 1; s <= sampled; ++s) {
            const StockForSearch sire = Get_Stock_Details_For_Search(session, sires.at(s).number);
            if (sire.archive != QStringLiteral("No"))
                continue;
            for (qsizetype d = 1; d < dams.size(); ++d) {
                const StockForSearch dam = Get_Stock_Details_For_Search(session, dams.at(d).number);
                if (dam.archive != QStringLiteral("No"))
                    continue;
                const MatingParents parents =
                    Load_Parents(session, stud.prompts, sires.at(s).number, dams.at(d).number);
                if (!parents.hasSire || !parents.hasDam)
                    continue;
                ReferencePrediction p(*session.Genetics, stud.prompts);
                p.Prepare_Mating(parents.sire, parents.dam);
                p.Enumerate_Offspring();
                double sum = 0;
                for (const OffspringRow &r : p.OffspringRows)
                    sum = std::nearbyint(sum + r.Weight);
                for (const OffspringRow &r : p.OffspringRows) {
                    if (r.Name == QStringLiteral("Black")) {
                        ++hits;
                        benchmark::DoNotOptimize(float(r.Weight / sum * 100));
                    }
                }
            }
        }
    }
    state.counters["sires searched"] = double(sampled);
    state.counters["rows found"] = double(hits);
    state.counters["scale to 300 sires"] = 299.0 / sampled;
}
BENCHMARK(BM_FindColourReference)->Arg(3)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
