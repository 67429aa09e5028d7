// The full search of a large stud, from the press of Search to the first screen of results:
// the conditions composed, the stud read, each row checked for what a condition cannot say,
// the animals found put in name order and the first 40 rows read for the list.
//
// - BM_NameSearchFirstScreen: a name typed with a wildcard in it ("1?3 "), matched anywhere
//   in the name (about one animal in ten).
// - BM_GenotypeSearch: a genotype pattern that the condition matches without case on three
//   animals in four and the search then keeps with case (one in four).
// - BM_PedigreeOnlySearch: only "Only Animals in the Pedigree of:" in both directions, for
//   a buck of the third generation of a family of five (126 animals, 18 of them in his
//   pedigree) that lives in the stud beside all the others.
//
// Each runs on generated studs of 100,000 and 1,000,000 animals (copies of studs kept
// between runs) to which every animal's genotype, a diary note on one animal in ten and a
// show award on one in fifty are added once, before the first measurement.
#include "BenchSupport.h"
#include "StudGenerator.h"

#include "core/Session.h"
#include "core/StudLoader.h"
#include "reporting/StockSearch.h"
#include "store/Database.h"
#include "store/StudDatabase.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

constexpr int kScreenRows = 40;

struct SearchStud
{
    explicit SearchStud(int animals)
    {
        qputenv("XDG_CONFIG_HOME", dir.filePath(u"config"_s).toUtf8());
        const QString file = dir.filePath(u"Search.mdb"_s);
        bench::copyOfStud(file, {animals, 40, 60});
        session.Dates = *Detect_Date_Format([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
        bench::catalogueStud(session, file);
        Load_Stud_Details(session, prompts);
        if (session.Stud)
            addRecords();
    }

    void addRecords()
    {
        Database &d = db();
        Transaction tx(d);
        d.execute(u"UPDATE Stock SET Genotype = CASE Number % 4 WHEN 0 THEN 'Aa Bb' WHEN 1 THEN 'aA Bb' "
                  u"WHEN 2 THEN 'AA bb' ELSE 'aa BB' END"_s);
        d.execute(u"INSERT INTO BreedNote (Number, Date, Notes) SELECT Number, DOB + 30, 'Wormed and weighed' "
                  u"FROM Stock WHERE Number % 10 = 0"_s);
        d.execute(u"INSERT INTO Awards (Number, Date, Judge, Award) SELECT Number, DOB + 200, "
                  u"'Judge ' || (Number % 50), 'Best of Breed' FROM Stock WHERE Number % 50 = 0"_s);
        // A family of its own: a founding pair, then five generations in which each pair has
        // four young, half bucks and half does.
        QList<qint64> bucks{addAnimal(u"Founder buck"_s, true, 0, 0)};
        QList<qint64> does{addAnimal(u"Founder doe"_s, false, 0, 0)};
        for (int generation = 1; generation <= 5; ++generation) {
            QList<qint64> nextBucks, nextDoes;
            for (qsizetype pair = 0; pair < std::min(bucks.size(), does.size()); ++pair) {
                for (int young = 0; young < 4; ++young) {
                    const bool male = young % 2 == 0;
                    const qint64 n = addAnimal(u"Family %1 %2 %3"_s.arg(generation).arg(pair).arg(young), male,
                                               bucks.at(pair), does.at(pair));
                    (male ? nextBucks : nextDoes).append(n);
                }
            }
            if (generation == 3)
                middle = nextBucks.value(0);
            bucks = nextBucks;
            does = nextDoes;
        }
        tx.commit();
    }

    qint64 addAnimal(const QString &name, bool male, qint64 sire, qint64 dam)
    {
        db().execute(u"INSERT INTO Stock (Name, Sex, Sire, Dam, Archive) VALUES (?1, ?2, ?3, ?4, 'No')"_s,
                     {name, male ? u"Buck"_s : u"Doe"_s, sire > 0 ? QVariant(sire) : QVariant(),
                      dam > 0 ? QVariant(dam) : QVariant()});
        return db().scalar(u"SELECT last_insert_rowid()"_s).toLongLong();
    }

    Database &db() { return session.Stud->handle(); }

    QTemporaryDir dir;
    Session session;
    bench::QuietPrompts prompts;
    qint64 middle = 0;
};

SearchStud &stud(int animals)
{
    static std::map<int, std::unique_ptr<SearchStud>> studs;
    auto &s = studs[animals];
    if (!s)
        s = std::make_unique<SearchStud>(animals);
    return *s;
}

// The search as the panel runs it, to the first screen of the list; the number found.
qint64 searchToFirstScreen(SearchStud &s, const SearchCriteria &c)
{
    Database &db = s.db();
    const std::optional<StockSearch::SearchPlan> plan = StockSearch::planSearch(db, c, s.session.Dates);
    const StockSearch::SearchFound found = StockSearch::RunStockSearch(db, *plan);
    SearchResults results(db, s.session.Dates, found.numbers);
    for (qsizetype i = 0; i < std::min<qsizetype>(kScreenRows, results.size()); ++i)
        benchmark::DoNotOptimize(results.row(i).cells[0].size());
    return found.count;
}

void runSearch(benchmark::State &state, const SearchCriteria &c)
{
    SearchStud &s = stud(int(state.range(0)));
    if (!s.session.Stud) {
        state.SkipWithError("the stud could not be made");
        return;
    }
    qint64 found = 0;
    for (auto _ : state)
        found = searchToFirstScreen(s, c);
    state.counters["found"] = double(found);
}

void BM_NameSearchFirstScreen(benchmark::State &state)
{
    SearchCriteria c;
    c.name = u"1?3 "_s;
    runSearch(state, c);
}
BENCHMARK(BM_NameSearchFirstScreen)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_GenotypeSearch(benchmark::State &state)
{
    SearchCriteria c;
    c.genotype = u"Aa*"_s;
    runSearch(state, c);
}
BENCHMARK(BM_GenotypeSearch)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_PedigreeOnlySearch(benchmark::State &state)
{
    SearchCriteria c;
    c.pedigreeRoot = stud(int(state.range(0))).middle;
    c.pedigreeDirection = PedigreeDirection::Both;
    runSearch(state, c);
}
BENCHMARK(BM_PedigreeOnlySearch)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

} // namespace
