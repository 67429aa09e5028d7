#include "StudInbreeding.h"

#include "CommonAncestors.h"

#include "core/Options.h"
#include "core/Session.h"
#include "store/Database.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvex {

int inbreedingGenerations(const Options &options)
{
    const int g = options.number(Opt::InbreedingGenerations);
    return g >= 1 && g <= kMostGenerations ? g : kAllGenerations;
}

namespace {

/// Reads animals' parents from the stud by number, one prepared query for them all.
class ParentReader
{
public:
    explicit ParentReader(Database &stud) : m_stud(stud)
    {
        try {
            m_query.emplace(stud.sql(), "SELECT Sire, Dam FROM Stock WHERE Number = ?");
        } catch (const SQLite::Exception &e) {
            Database::fail(e, stud.path());
        }
    }
    /// The animal with its parents; nothing for one not in the stud (removed: unknown).
    std::optional<PedigreeRecord> read(qint64 number)
    {
        try {
            m_query->reset();
            m_query->bind(1, static_cast<int64_t>(number));
            if (!m_query->executeStep())
                return std::nullopt;
            return PedigreeRecord{number, m_query->getColumn(0).getInt64(), m_query->getColumn(1).getInt64()};
        } catch (const SQLite::Exception &e) {
            Database::fail(e, m_stud.path());
        }
        return std::nullopt;
    }

private:
    Database &m_stud;
    std::optional<SQLite::Statement> m_query;
};

/// An animal's pedigree as read for one coefficient: the graph, and the generations it
/// looks back over (fewer than asked when the ancestors were too many).
struct Ancestry
{
    PedigreeGraph graph;
    int generations = 0;
};

/// The pedigree of the animals given (at the generation given: 0 for the one whose pedigree
/// it is, 1 for its parents) and their ancestors within that many generations, read from
/// the stud one by one, so that a large stud costs no more than a small one. An ancestor
/// is taken at its nearest place; the parents of the farthest are left unknown. A
/// generation that would take the ancestors past the budget is left out, and the
/// generation before it is the farthest: the work stays within a breath however the
/// pedigree runs, and the evidence says how far it went.
Ancestry readAncestry(Database &stud, std::vector<PedigreeRecord> records, int firstLevel, int generations,
                      std::size_t budget)
{
    QHash<qint64, bool> seen;
    for (const PedigreeRecord &r : records)
        seen.insert(r.number, true);
    std::size_t levelStart = 0;
    int level = firstLevel;
    ParentReader parents(stud);
    while (levelStart < records.size() && level < generations) {
        const std::size_t levelEnd = records.size();
        for (std::size_t i = levelStart; i < levelEnd; ++i) {
            for (qint64 parent : {records[i].sire, records[i].dam}) {
                if (parent <= 0 || seen.contains(parent))
                    continue;
                seen.insert(parent, true);
                if (const auto found = parents.read(parent))
                    records.push_back(*found);
            }
        }
        if (records.size() > budget) {
            records.resize(levelEnd);
            generations = level;
            break;
        }
        levelStart = levelEnd;
        ++level;
    }
    // The farthest generation's parents are out of sight.
    for (std::size_t i = levelStart; i < records.size(); ++i)
        records[i].sire = records[i].dam = 0;
    return {orderPedigree(records), generations};
}

AnimalInbreeding inbreedingOf(Database &stud, const PedigreeRecord &offspring, int generations, bool common)
{
    Ancestry ancestry = readAncestry(stud, {offspring}, 0, generations, kAnimalAncestors);
    const Inbreeding f(std::move(ancestry.graph));
    const PedigreeGraph &g = f.graph();
    const int at = g.positionOf(offspring.number);
    AnimalInbreeding a;
    a.number = offspring.number;
    a.sire = offspring.sire;
    a.dam = offspring.dam;
    a.coi = f.coi(at);
    a.completeness = f.completeness(at, ancestry.generations);
    const int s = g.sire[std::size_t(at)], d = g.dam[std::size_t(at)];
    a.relationship = f.relationship(s, d);
    a.withCommon = common;
    if (common)
        for (const CommonAncestor &c : Common_Ancestors(f, s, d))
            a.common.append({g.numbers[std::size_t(c.position)], c.timesSire, c.timesDam, c.contribution});
    return a;
}

} // namespace

std::optional<AnimalInbreeding> Animal_Inbreeding(Database &stud, qint64 number, int generations, bool common)
{
    const auto animal = ParentReader(stud).read(number);
    if (!animal)
        return std::nullopt;
    return inbreedingOf(stud, *animal, generations, common);
}

AnimalInbreeding Mating_Inbreeding(Database &stud, qint64 sire, qint64 dam, int generations)
{
    return inbreedingOf(stud, {0, sire, dam}, generations, true);
}

namespace {

/// An animal's name as the lists show it; its number when it has none (or is gone).
QString nameOf(SQLite::Statement &names, qint64 number)
{
    QString name;
    try {
        names.reset();
        names.bind(1, static_cast<int64_t>(number));
        if (names.executeStep())
            name = QString::fromUtf8(names.getColumn(0).getText()).trimmed();
    } catch (const SQLite::Exception &) {
    }
    return name.isEmpty() ? u"Animal number %1"_s.arg(number) : name;
}

QString percent(double share)
{
    return QString::number(share * 100, 'f', 2) + u'%';
}

QString times(double places)
{
    return places < 1e9 ? QString::number(places, 'f', 0) : QString::number(places, 'g', 3);
}

} // namespace

quint32 commonAncestorColour(int mark)
{
    static constexpr quint32 colours[kMarkColours] = {0xe6194b, 0x3cb44b, 0x4363d8, 0xf58231, 0x911eb4,
                                                      0x42d4f4, 0xf032e6, 0x808000, 0x9a6324, 0x008080};
    return mark >= 0 && mark < kMarkColours ? colours[mark] : 0;
}

QList<CommonAncestorLine> commonAncestorLines(Database &stud, const AnimalInbreeding &inbreeding,
                                              const QSet<qint64> &shown)
{
    QList<CommonAncestorLine> lines;
    SQLite::Statement names(stud.sql(), "SELECT Name FROM Stock WHERE Number = ?");
    int marks = 0;
    for (const AnimalInbreeding::Ancestor &a : inbreeding.common) {
        CommonAncestorLine line{a.number, nameOf(names, a.number), times(a.timesSire), times(a.timesDam),
                                percent(a.contribution)};
        if (shown.contains(a.number) && marks < kMarkColours)
            line.mark = marks++;
        lines.append(line);
    }
    return lines;
}

QString relationshipText(double relationship, const QString &fatherWord, const QString &motherWord)
{
    return u"Relationship of %1 and %2 %3"_s.arg(fatherWord, motherWord, percent(relationship));
}

std::vector<double> Pairs_Inbreeding(Database &stud, const std::vector<std::pair<qint64, qint64>> &pairs,
                                     int generations)
{
    // One pedigree for all the parents together, as the offspring of one of the pairs.
    std::vector<PedigreeRecord> parents;
    QHash<qint64, bool> taken;
    ParentReader reader(stud);
    for (const auto &[sire, dam] : pairs) {
        for (qint64 parent : {sire, dam}) {
            if (parent <= 0 || taken.contains(parent))
                continue;
            taken.insert(parent, true);
            if (const auto found = reader.read(parent))
                parents.push_back(*found);
        }
    }
    const Inbreeding f(readAncestry(stud, std::move(parents), 1, generations, kPairsAncestors).graph);
    // A sire's kinship with every animal at once, for all his pairs.
    std::vector<double> coi(pairs.size(), 0.0);
    std::map<qint64, std::vector<std::size_t>> bySire;
    for (std::size_t i = 0; i < pairs.size(); ++i)
        bySire[pairs[i].first].push_back(i);
    for (const auto &[sire, at] : bySire) {
        const int s = f.graph().positionOf(sire);
        if (s < 0)
            continue;
        const std::vector<double> kinship = f.kinshipsOf(s);
        for (std::size_t i : at)
            if (const int d = f.graph().positionOf(pairs[i].second); d >= 0)
                coi[i] = kinship[std::size_t(d)];
    }
    return coi;
}

QString pedigreeLoopText(Database &stud, qint64 number)
{
    SQLite::Statement names(stud.sql(), "SELECT Name FROM Stock WHERE Number = ?");
    const QString name = nameOf(names, number);
    return u"%1 is its own ancestor: a Sire or Dam on its lines has been entered wrongly. "
           u"Correct it before the inbreeding can be worked out."_s.arg(name);
}

std::vector<StudInbreedingRow> Stud_Inbreeding(Database &stud, int generations, Progress &progress)
{
    // The table's rows in order of number, with their names; the parents beside them.
    std::vector<StudInbreedingRow> table;
    std::vector<PedigreeRecord> records;
    progress.start(0, u"Reading the animals"_s);
    try {
        SQLite::Statement rows(stud.sql(), "SELECT Number, Sire, Dam, Name FROM Stock ORDER BY Number");
        while (rows.executeStep()) {
            const qint64 number = rows.getColumn(0).getInt64();
            records.push_back({number, rows.getColumn(1).getInt64(), rows.getColumn(2).getInt64()});
            table.push_back({number, QString::fromUtf8(rows.getColumn(3).getText()), 0.0, {}});
        }
    } catch (const SQLite::Exception &e) {
        Database::fail(e, stud.path());
    }
    const Inbreeding f(orderPedigree(records), progress);
    if (progress.cancelled())
        return {};
    const PedigreeGraph &g = f.graph();
    bool deeper = false;
    for (StudInbreedingRow &row : table) {
        const int at = g.positionOf(row.number);
        row.coi = f.coi(at);
        row.completeness = f.completeness(at, generations);
        deeper = deeper || f.completeness(at).generations > generations;
    }
    if (!deeper)
        return table;
    // Pedigrees deeper than the breeder looks: each animal from its own generations alone.
    progress.start(qint64(table.size()), u"Looking back %1 generations"_s.arg(generations));
    for (std::size_t i = 0; i < table.size(); ++i) {
        const int at = g.positionOf(table[i].number);
        if (f.completeness(at).generations > generations) {
            const Inbreeding alone(ancestorsOf(g, at, generations));
            table[i].coi = alone.coi(alone.graph().size() - 1);
        }
        if (i % 1024 == 1023) {
            progress.step(qint64(i) + 1);
            if (progress.cancelled())
                return {};
        }
    }
    progress.step(qint64(table.size()));
    return table;
}

QString inbreedingCsv(const std::vector<StudInbreedingRow> &rows)
{
    const auto quoted = [](QString text) {
        if (text.contains(u',') || text.contains(u'"') || text.contains(u'\n'))
            return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
        return text;
    };
    QString csv = u"Number,Name,COI %,Generations,Ancestors known %\n"_s;
    for (const StudInbreedingRow &r : rows)
        csv += u"%1,%2,%3,%4,%5\n"_s.arg(r.number)
                   .arg(quoted(r.name), QString::number(r.coi * 100, 'f', 2))
                   .arg(r.completeness.generations)
                   .arg(qRound(r.completeness.known * 100));
    return csv;
}

void PedigreeCache::check(StudDatabase &stud, int generations)
{
    const StudDatabase::PedigreeStamp now = stud.pedigreeStamp();
    if (now == m_stamp && generations == m_generations)
        return;
    m_stamp = now;
    m_generations = generations;
    m_animals.clear();
    m_matings.clear();
    m_stud.reset();
}

std::optional<AnimalInbreeding> PedigreeCache::animal(StudDatabase &stud, qint64 number, int generations,
                                                      bool common)
{
    check(stud, generations);
    if (const auto it = m_animals.find(number); it != m_animals.end() && (!common || !it->second || it->second->withCommon))
        return it->second;
    return m_animals[number] = Animal_Inbreeding(stud.handle(), number, generations, common);
}

AnimalInbreeding PedigreeCache::mating(StudDatabase &stud, qint64 sire, qint64 dam, int generations)
{
    check(stud, generations);
    if (const auto it = m_matings.find({sire, dam}); it != m_matings.end())
        return it->second;
    return m_matings[{sire, dam}] = Mating_Inbreeding(stud.handle(), sire, dam, generations);
}

std::shared_ptr<const std::vector<StudInbreedingRow>> PedigreeCache::studTable(StudDatabase &stud, int generations)
{
    check(stud, generations);
    return m_stud;
}

std::shared_ptr<const std::vector<StudInbreedingRow>>
PedigreeCache::keepStudTable(StudDatabase &stud, int generations, std::vector<StudInbreedingRow> rows)
{
    check(stud, generations);
    m_stud = std::make_shared<const std::vector<StudInbreedingRow>>(std::move(rows));
    return m_stud;
}

PedigreeCache &pedigreeCache(Session &session)
{
    if (!session.Pedigrees)
        session.Pedigrees = std::make_shared<PedigreeCache>();
    return *session.Pedigrees;
}

QString animalCoiLine(Session &session, qint64 number)
{
    if (!session.Stud || number <= 0)
        return {};
    try {
        const auto a =
            pedigreeCache(session).animal(*session.Stud, number, inbreedingGenerations(Options(session)), false);
        return a ? coiText(a->coi, a->completeness) : QString();
    } catch (const PedigreeLoop &loop) {
        return pedigreeLoopText(session.Stud->handle(), loop.number());
    }
}

} // namespace tarvex
