// The whole-stud genotype check: every animal examined against its parents and offspring.
#include "BenchSupport.h"
#include "StudGenerator.h"

#include "core/StudLoader.h"
#include "genetics/GenotypeInference.h"
#include "genetics/Genotypes.h"
#include "store/StudDatabase.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <random>
#include <vector>

#include <benchmark/benchmark.h>

using namespace tarvex;

namespace {

/// Counts the questions put: a check of a settled stud has none.
class CountingPrompts : public bench::QuietPrompts
{
public:
    Answer message(const QString &t, const QString &ti, Icon i, Buttons b) override
    {
        ++asked;
        return QuietPrompts::message(t, ti, i, b);
    }
    int asked = 0;
};

// 100,000 animals in generations with genotypes at the ten rabbit genes, partly known.
void BM_CheckAllGenotypes(benchmark::State &state)
{
    QTemporaryDir dir;
    qputenv("XDG_CONFIG_HOME", dir.filePath(QStringLiteral("config")).toUtf8());
    const QString file = dir.filePath(QStringLiteral("Checking.mdb"));
    bench::StudShape shape;
    shape.animals = int(state.range(1));
    bench::generateStud(file, shape);
    Session session;
    CountingPrompts prompts;
    bench::openGeneticsStud(session, prompts, file);
    const GeneticsData &g = *session.Genetics;
    Database &db = session.Stud->handle();
    {
        // Each animal has a true genotype, one allele from each parent, and the stud knows
        // part of it: the dominant allele always, the second when it is the same or a coin
        // says so. What is known never contradicts a relative, as in a well-kept stud.
        std::mt19937 random(7);
        const qint64 animals = db.scalar(QStringLiteral("SELECT max(Number) FROM Stock")).toLongLong();
        std::vector<Genotype> truth(size_t(animals + 1));
        std::vector<std::pair<qint64, qint64>> parents(size_t(animals + 1));
        {
            SQLite::Statement read(db.sql(), "SELECT Number, ifnull(Sire, 0), ifnull(Dam, 0) FROM Stock");
            while (read.executeStep())
                parents[size_t(read.getColumn(0).getInt64())] = {read.getColumn(1).getInt64(),
                                                                 read.getColumn(2).getInt64()};
        }
        const auto alleleCount = [&](int gene) {
            int n = 1;
            while (n < 9 && !g.GeneTable.at(gene).Code[n + 1].isEmpty())
                ++n;
            return n;
        };
        Transaction tx(db);
        SQLite::Statement insert(db.sql(),
                                 "INSERT INTO Genes (StockNo, Id, allele1, allele2) VALUES (?,?,?,?)");
        for (qint64 n = 1; n <= animals; ++n) {
            const auto [sire, dam] = parents[size_t(n)];
            for (int i = 0; i <= g.LastGene; ++i) {
                const auto from = [&](qint64 parent) {
                    if (parent <= 0 || parent >= n)
                        return quint8(1 + random() % alleleCount(i));
                    const AllelePair p = truth[size_t(parent)][i];
                    return random() % 2 ? p.allele1 : p.allele2;
                };
                AllelePair p{from(sire), from(dam)};
                Order_Alleles(p.allele1, p.allele2);
                truth[size_t(n)][i] = p;
                const quint8 second = p.allele1 == p.allele2 || random() % 2 ? p.allele2 : quint8(0);
                insert.reset();
                insert.bind(1, static_cast<int64_t>(n));
                insert.bind(2, g.GeneTable.at(i).Id);
                insert.bind(3, p.allele1);
                insert.bind(4, second);
                insert.exec();
            }
        }
        tx.commit();
    }
    // First argument 1: a stud checked once before, where less is left to change.
    if (state.range(0) == 1)
        Check_All_Genotypes(session, prompts);
    prompts.asked = 0;
    // Progress as a screen takes it: every animal told, its texts made a few times a second.
    struct Counting : NoProgress
    {
        qint64 told = 0;
        void step(qint64, const QStringList &) override { ++told; }
    } progress;
    for (auto _ : state)
        Check_All_Genotypes(session, prompts, progress);
    state.counters["animals"] = double(progress.told);
    state.counters["questions"] = double(prompts.asked);
}
BENCHMARK(BM_CheckAllGenotypes)
    ->Args({0, 100000})
    ->Args({1, 100000})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

} // namespace
