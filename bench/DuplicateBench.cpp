// The duplicate check of a new animal, as the record screen runs it when a box is left: the
// stud's option read, the animals like the new one looked up, and the warning made ready with
// the first of them read (and answered at once, the user keeping the new animal).
//
// - BM_DuplicateCheck: leaving the name box with a name that two animals have, typed in
//   another case. The look-up goes through the name index.
// - BM_DuplicateCheckNoMatch: the same with a name no animal has, the usual case.
// - BM_DuplicateCheckAccented: a name with a letter beyond ASCII ("Zoë"), which the index's
//   case folding does not know: the index is searched once for each letter that upper-cases
//   to what was typed there. The table of those letters is made by the first such check of a
//   run (some tens of milliseconds), before the measurement.
// - BM_DuplicateCheckIdentifier: leaving the identification box, the identification alone
//   ticked. The stud has no index on it: every identification is matched as a pattern.
//
// Each runs on generated studs of 100,000 and 1,000,000 animals (copies of studs kept between
// runs), to which the second animal of the name and the accented animal are added once.
#include "BenchSupport.h"
#include "StudGenerator.h"

#include "core/Options.h"
#include "core/Session.h"
#include "core/StudLoader.h"
#include "reporting/Duplicate.h"
#include "stock/StockRecords.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

/// The main window as far as the check needs it: the warning is made ready and answered at
/// once, the user keeping the new animal.
class KeepingShell : public NullShell
{
public:
    explicit KeepingShell(Session &session) : m_session(session) {}
    DuplicateAnswer checkDuplicate(const QString &name, const QString &id) override
    {
        return CheckDuplicate(m_session, name, id, [this](DuplicateWarning &warning) {
            shown = warning.count();
            benchmark::DoNotOptimize(warning.current().dam);
            return DuplicateAnswer::Kept;
        });
    }
    qsizetype shown = 0;

private:
    Session &m_session;
};

/// The settings of every stud of the run, in one place.
QTemporaryDir &configFolder()
{
    static QTemporaryDir dir;
    return dir;
}

struct DuplicateStud
{
    explicit DuplicateStud(int animals) : shell(session), records(session, prompts)
    {
        qputenv("XDG_CONFIG_HOME", configFolder().filePath(u"config"_s).toUtf8());
        const QString file = dir.filePath(u"Duplicates%1.mdb"_s.arg(animals));
        bench::copyOfStud(file, {animals, 40, 60});
        session.Dates = *Detect_Date_Format([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
        bench::catalogueStud(session, file);
        // Both studs of the run are in the one catalogue: no choice is asked for.
        session.PreselectedStud = u"Duplicates%1"_s.arg(animals);
        Load_Stud_Details(session, prompts);
        if (!session.Stud)
            return;
        session.setShell(&shell);
        Database &db = session.Stud->handle();
        // A second animal of the name of one in the middle of the stud, written otherwise.
        const qint64 middle = animals / 2;
        name = Get_Stock_Name(db, middle).toLower();
        ringNo = readAnimal(db, middle)->ringNo;
        db.execute(u"INSERT INTO Stock (Name, RingNo, Sex, Sire, Dam) VALUES (?, ?, 'Doe', ?, ?)"_s,
                   {name.toUpper(), ringNo + u"B"_s, middle - 3, middle - 2});
        db.execute(u"INSERT INTO Stock (Name, Sex) VALUES ('Zoë of the Warren', 'Doe')"_s);
        records.CmdNew();
    }

    bool ready() const { return session.studOpen() && !name.isEmpty(); }
    void tick(int option)
    {
        Options options(session);
        for (int i = 0; i < 3; ++i)
            options.setFlag(Opt::DedupeOption, i == option, QString::number(i));
    }

    QTemporaryDir dir;
    Session session;
    bench::QuietPrompts prompts;
    KeepingShell shell;
    StockRecords records;
    QString name, ringNo;
};

DuplicateStud &stud(int animals)
{
    static std::map<int, std::unique_ptr<DuplicateStud>> studs;
    auto &s = studs[animals];
    if (!s)
        s = std::make_unique<DuplicateStud>(animals);
    return *s;
}

void leaveBox(benchmark::State &state, bool nameBox, const std::function<QString(DuplicateStud &)> &typed,
              qsizetype expected)
{
    DuplicateStud &s = stud(int(state.range(0)));
    if (!s.ready()) {
        state.SkipWithError("no stud of that size could be had");
        return;
    }
    s.tick(nameBox ? 0 : 1);
    const QString text = typed(s);
    const auto leave = [&] {
        s.shell.shown = 0;
        return nameBox ? s.records.nameLeft(text, QString(), u"TxtId1"_s)
                       : s.records.idLeft(QString(), text, u"TxtId2"_s);
    };
    // The first check of a run prepares its queries (and for a name beyond ASCII its table).
    leave();
    for (auto _ : state)
        benchmark::DoNotOptimize(leave());
    if (s.shell.shown != expected)
        state.SkipWithError("the check did not find the animals it should");
    state.counters["found"] = double(s.shell.shown);
}

void BM_DuplicateCheck(benchmark::State &state)
{
    leaveBox(state, true, [](DuplicateStud &s) { return s.name; }, 2);
}
BENCHMARK(BM_DuplicateCheck)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_DuplicateCheckNoMatch(benchmark::State &state)
{
    leaveBox(state, true, [](DuplicateStud &) { return u"Animal nobody has"_s; }, 0);
}
BENCHMARK(BM_DuplicateCheckNoMatch)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_DuplicateCheckAccented(benchmark::State &state)
{
    leaveBox(state, true, [](DuplicateStud &) { return u"ZOË OF THE WARREN"_s; }, 1);
}
BENCHMARK(BM_DuplicateCheckAccented)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_DuplicateCheckIdentifier(benchmark::State &state)
{
    leaveBox(state, false, [](DuplicateStud &s) { return s.ringNo.toLower(); }, 1);
}
BENCHMARK(BM_DuplicateCheckIdentifier)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
