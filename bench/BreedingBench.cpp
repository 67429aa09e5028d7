// The breeding records of a large stud: a whole litter created at once with its genes
// worked out from its colour, an animal's diary opened at its first page, one note written
// to many animals at once, and an animal's show results listed with their stars.
//
// All four work on one stud of 100,000 animals with the rabbit genetics files and genetics
// on, opened as the program opens it (a copy of the generated stud kept between runs). The
// notes and awards each benchmark reads are added once, before its first measurement; what
// an iteration adds is taken out again with the timing paused, so every iteration does the
// same work on the same stud.
#include "BenchSupport.h"
#include "StudGenerator.h"

#include "breeding/Awards.h"
#include "breeding/Diary.h"
#include "core/DateFormat.h"
#include "core/Session.h"
#include "genetics/GeneticsData.h"
#include "genetics/Genotypes.h"
#include "stock/Litter.h"
#include "store/Database.h"
#include "store/DaySerial.h"
#include "store/StockLookup.h"
#include "store/StudDatabase.h"

#include <QDate>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

constexpr int kAnimals = 100000;
// A buck and a doe of the generated stud (odd numbers are bucks), the parents of the litter.
constexpr qint64 kSire = kAnimals - 1;
constexpr qint64 kDam = kAnimals;
// The animal whose diary and awards are read: in the middle of the stud, so that other
// animals' notes and awards lie on both sides of its own in the index.
constexpr qint64 kSubject = kAnimals / 2;
// A colour the rabbit colours file knows, so that a young's genes are worked out from it.
const QString kKnownColour = u"Black"_s;

/// The stud every benchmark of this program works on.
struct BreedingStud
{
    BreedingStud()
    {
        qputenv("XDG_CONFIG_HOME", dir.filePath(u"config"_s).toUtf8());
        const QString file = dir.filePath(u"Breeding.mdb"_s);
        bench::copyOfStud(file, {kAnimals, 40, 60});
        session.Dates = *Detect_Date_Format([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
        bench::openGeneticsStud(session, prompts, file);
    }

    bool ready() const { return session.studOpen() && session.GeneticsLoaded && session.Genetics; }
    Database &db() { return session.Stud->handle(); }

    QTemporaryDir dir;
    Session session;
    bench::QuietPrompts prompts;
};

BreedingStud &stud()
{
    static BreedingStud s;
    return s;
}

/// The genotype the colours file gives a colour first, or nothing when it does not know it.
std::optional<Genotype> genotypeOf(const GeneticsData &g, const QString &colour)
{
    for (const ColourDef &c : g.ColourTable)
        if (c.Name.compare(colour, Qt::CaseInsensitive) == 0)
            return c.Alleles;
    return std::nullopt;
}

// ---------------------------------------------------------------------------------------
// A litter created automatically.

/// Both parents carry the colour's genotype, so that examining a young against its parents
/// has something to compare; the colour is in the stud's list, so no question is asked.
bool prepareLitter(BreedingStud &s)
{
    static const bool prepared = [&] {
        const auto black = genotypeOf(*s.session.Genetics, kKnownColour);
        if (!black)
            return false;
        for (const qint64 parent : {kSire, kDam}) {
            s.session.CurrentStockNo = parent;
            s.session.CurrentAlleles = *black;
            Write_Genes(s.session, s.prompts);
        }
        if (!s.session.Lists.colours.contains(kKnownColour))
            s.session.Lists.colours.append(kKnownColour);
        return s.db().scalar(u"SELECT Sex FROM Stock WHERE Number = ?"_s, {kSire}).toString() ==
                   s.session.MaleWord &&
               s.db().scalar(u"SELECT Sex FROM Stock WHERE Number = ?"_s, {kDam}).toString() ==
                   s.session.FemaleWord;
    }();
    return prepared;
}

void BM_AutomaticLitter(benchmark::State &state)
{
    BreedingStud &s = stud();
    if (!s.ready() || !prepareLitter(s)) {
        state.SkipWithError("the genetics stud could not be made ready");
        return;
    }
    const int young = int(state.range(0));
    LitterForm form;
    form.young = QString::number(young);
    form.dob = s.session.Dates.format(QDate(2025, 4, 1));
    form.sire = ParentPick{1, kSire};
    form.dam = ParentPick{1, kDam};
    form.breed = s.session.Lists.breeds.value(0);
    form.colour = kKnownColour;
    form.breeder = s.session.Lists.breeders.value(0);
    form.status = s.session.Lists.statuses.value(0);
    form.archive = u"No"_s;
    form.automatic = true;
    Database &db = s.db();
    qint64 genes = 0;
    for (auto _ : state) {
        QString focus;
        const std::optional<LitterCreated> made =
            Create_Litter_Automatically(s.session, s.prompts, form, young, &focus);
        state.PauseTiming();
        if (!made || made->last - made->first + 1 != young) {
            state.SkipWithError("the litter was not created");
            state.ResumeTiming();
            break;
        }
        // The young go again, with their genes, so the next litter meets the same stud.
        const QVariantList range{made->first, made->last};
        genes = db.scalar(u"SELECT count(*) FROM Genes WHERE StockNo BETWEEN ? AND ?"_s, range).toLongLong();
        {
            Transaction tx(db);
            db.execute(u"DELETE FROM Genes WHERE StockNo BETWEEN ? AND ?"_s, range);
            db.execute(u"DELETE FROM Stock WHERE Number BETWEEN ? AND ?"_s, range);
            tx.commit();
        }
        if (genes == 0)
            state.SkipWithError("no genes were worked out for the young");
        state.ResumeTiming();
    }
    state.counters["genes"] = double(genes);
}
BENCHMARK(BM_AutomaticLitter)->Arg(20)->Unit(benchmark::kMillisecond);

// ---------------------------------------------------------------------------------------
// The diary.

constexpr int kNotesOfOthers = 3; // every other animal's notes

/// Every animal has a few notes; the subject has count of them, on days of its own.
bool prepareDiary(BreedingStud &s, int count)
{
    static const bool prepared = [&] {
        Database &db = s.db();
        Transaction tx(db);
        SQLite::Statement insert(db.sql(), "INSERT INTO BreedNote (Number, Date, Notes) VALUES (?,?,?)");
        const double firstDay = DaySerial::fromDate(QDate(2015, 1, 1));
        const auto add = [&](qint64 number, double day, const QString &text) {
            insert.reset();
            insert.bind(1, static_cast<int64_t>(number));
            insert.bind(2, day);
            insert.bind(3, text.toStdString());
            insert.exec();
        };
        for (qint64 n = 1; n <= kAnimals; ++n) {
            if (n == kSubject) {
                for (int i = 0; i < count; ++i)
                    add(n, firstDay + i * 1.5,
                        u"Weighed and checked over; note %1 of the diary"_s.arg(i + 1));
            } else {
                for (int i = 0; i < kNotesOfOthers; ++i)
                    add(n, firstDay + (n + i * 97) % 3000, u"Routine check %1"_s.arg(i + 1));
            }
        }
        tx.commit();
        return db.scalar(u"SELECT count(*) FROM BreedNote WHERE Number = ?"_s, {kSubject}).toInt() == count;
    }();
    return prepared;
}

void BM_OpenDiary(benchmark::State &state)
{
    BreedingStud &s = stud();
    const int count = int(state.range(0));
    if (!s.ready() || !prepareDiary(s, count)) {
        state.SkipWithError("the diary could not be made ready");
        return;
    }
    // The diary screen's frame is fifteen lines high; each of these notes takes one line.
    const int lineHeight = 1;
    const int frameHeight = Diary::kRows * lineHeight;
    const auto heightOf = [&](const DiaryEntry &e) {
        return Diary::boxLines(int(e.notes.count(u'\n')) + 1) * lineHeight;
    };
    qsizetype shown = 0;
    int entries = 0;
    for (auto _ : state) {
        Diary diary(s.db(), kSubject);
        if (!diary.showDiary(false)) {
            state.SkipWithError("the diary showed no notes");
            break;
        }
        const QList<DiaryEntry> page = diary.page(heightOf, frameHeight);
        benchmark::DoNotOptimize(page.data());
        shown = page.size();
        entries = diary.entryCount();
    }
    if (shown != Diary::kRows || entries != count)
        state.SkipWithError("the first page was not a full page of the subject's notes");
    state.counters["notes"] = double(entries);
    state.counters["shown"] = double(shown);
}
BENCHMARK(BM_OpenDiary)->Arg(2000)->Unit(benchmark::kMillisecond);

void BM_BulkDiary(benchmark::State &state)
{
    BreedingStud &s = stud();
    if (!s.ready()) {
        state.SkipWithError("the stud could not be opened");
        return;
    }
    const int count = int(state.range(0));
    // Animals spread over the whole stud, as a search's results are.
    QList<qint64> numbers;
    numbers.reserve(count);
    const qint64 stride = std::max<qint64>(1, kAnimals / count);
    for (qint64 n = stride; numbers.size() < count && n <= kAnimals; n += stride)
        numbers << n;
    const QString day = s.session.Dates.format(QDate(2025, 3, 14));
    const QString text = u"Wormed and vaccinated"_s;
    Database &db = s.db();
    qint64 written = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const qint64 before = db.scalar(u"SELECT ifnull(max(\"Unique\"), 0) FROM BreedNote"_s).toLongLong();
        state.ResumeTiming();
        QString focus;
        const bool saved = Bulk_Diary_Entry(db, s.session.Dates, s.prompts, day, text, numbers, &focus);
        state.PauseTiming();
        written = db.scalar(u"SELECT count(*) FROM BreedNote WHERE \"Unique\" > ?"_s, {before}).toLongLong();
        {
            Transaction tx(db);
            db.execute(u"DELETE FROM BreedNote WHERE \"Unique\" > ?"_s, {before});
            tx.commit();
        }
        if (!saved || written != count)
            state.SkipWithError("the note was not written to every animal");
        state.ResumeTiming();
    }
    state.counters["animals"] = double(written);
}
BENCHMARK(BM_BulkDiary)->Arg(10000)->Unit(benchmark::kMillisecond);

// ---------------------------------------------------------------------------------------
// Show results.

constexpr int kAwardsOfOthers = 2; // every other animal's awards

/// Every animal has a couple of awards; the subject has count of them, one in four a
/// challenge certificate with championship stars.
bool prepareAwards(BreedingStud &s, int count)
{
    static const bool prepared = [&] {
        Database &db = s.db();
        Transaction tx(db);
        SQLite::Statement insert(
            db.sql(), "INSERT INTO Awards (Number, Date, Venue, Secretary, Judge, Award, NoEntered, "
                      "NoShown, Stars, CCStars, Comments) VALUES (?,?,?,?,?,?,?,?,?,?,?)");
        const double firstDay = DaySerial::fromDate(QDate(2010, 1, 1));
        const auto add = [&](qint64 number, double day, int i) {
            const bool certificate = i % 4 == 0;
            insert.reset();
            insert.bind(1, static_cast<int64_t>(number));
            insert.bind(2, day);
            insert.bind(3, u"Club %1"_s.arg(i % 60).toStdString());
            insert.bind(4, u"Secretary %1"_s.arg(i % 60).toStdString());
            insert.bind(5, u"Judge %1"_s.arg(i % 90).toStdString());
            insert.bind(6, certificate ? std::string("CC") : u"Class %1"_s.arg(1 + i % 6).toStdString());
            insert.bind(7, 10 + i % 40);
            insert.bind(8, 8 + i % 30);
            insert.bind(9, std::to_string(1 + i % 5));
            if (certificate)
                insert.bind(10, std::to_string(1 + i % 3));
            else
                insert.bind(10);
            insert.bind(11, "Good coat, well presented");
            insert.exec();
        };
        for (qint64 n = 1; n <= kAnimals; ++n) {
            if (n == kSubject) {
                for (int i = 0; i < count; ++i)
                    add(n, firstDay + i * 7, i);
            } else {
                for (int i = 0; i < kAwardsOfOthers; ++i)
                    add(n, firstDay + (n + i * 131) % 5000, int(n + i));
            }
        }
        tx.commit();
        s.session.PointsOn = true;
        s.session.PointsName = u"Stars"_s;
        s.session.MaxPoints = 5;
        return db.scalar(u"SELECT count(*) FROM Awards WHERE Number = ?"_s, {kSubject}).toInt() == count;
    }();
    return prepared;
}

void BM_OpenAwards(benchmark::State &state)
{
    BreedingStud &s = stud();
    const int count = int(state.range(0));
    if (!s.ready() || !prepareAwards(s, count)) {
        state.SkipWithError("the awards could not be made ready");
        return;
    }
    s.session.PointsOn = true;
    const QString name = s.db().scalar(u"SELECT Name FROM Stock WHERE Number = ?"_s, {kSubject}).toString();
    qsizetype listed = 0;
    QString caption;
    for (auto _ : state) {
        // What the awards screen shows on opening: the columns, every award's row texts and
        // the caption with the total of championship stars.
        Awards awards(s.session, s.prompts, kSubject, name);
        const QList<AwardColumn> heads = awards.Build_Award_Columns();
        const QList<AwardRow> rows = awards.Load_Award_List();
        qsizetype cells = heads.size();
        for (const AwardRow &row : rows)
            cells += awards.rowTexts(row).size();
        benchmark::DoNotOptimize(cells);
        listed = rows.size();
        caption = awards.caption();
    }
    if (listed != count || !caption.contains(u"Total CC Stars"_s))
        state.SkipWithError("the list or its caption's total was not as made");
    state.counters["awards"] = double(listed);
}
BENCHMARK(BM_OpenAwards)->Arg(500)->Unit(benchmark::kMillisecond);

// The animals the diary entry of many offers (every animal of the stud, in ParentKey
// order), read from a stud of a million animals as the screen opens.
void BM_EveryAnimal(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(u"Million.mdb"_s);
    if (!bench::copyOfStud(file, {int(state.range(0)), 40, 60})) {
        state.SkipWithError("no stud of that size could be had");
        return;
    }
    const std::unique_ptr<Database> db = Database::open(file);
    qsizetype listed = 0;
    for (auto _ : state) {
        const QList<qint64> animals = everyAnimal(*db);
        listed = animals.size();
        benchmark::DoNotOptimize(listed);
    }
    state.counters["animals"] = double(listed);
}
BENCHMARK(BM_EveryAnimal)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
