#pragma once

#include "Inbreeding.h"

#include "store/StudDatabase.h"

#include <QList>
#include <QSet>
#include <QString>

#include <map>
#include <memory>
#include <optional>

namespace tarvex {

class Database;
class Options;
struct Session;

/// The generations the breeder has the coefficients look back over: all known ones
/// (kAllGenerations) unless the options say 1 to 30.
int inbreedingGenerations(const Options &options);

/// One animal's coefficient (or a mating's, for the offspring it would have) with its
/// evidence: how far back it looked, how full the pedigree is, and the ancestors on both
/// sides with their shares.
struct AnimalInbreeding
{
    qint64 number = 0; // 0 for a mating not yet made
    qint64 sire = 0, dam = 0;
    double coi = 0;
    Inbreeding::Completeness completeness;
    /// Wright's relationship of the sire and dam, 0 to 1 (0 with a parent unknown).
    double relationship = 0;
    struct Ancestor
    {
        qint64 number = 0;
        double timesSire = 0, timesDam = 0;
        double contribution = 0;
    };
    QList<Ancestor> common; // the largest share first
    bool withCommon = false; // whether the common ancestors were looked for
};

/// The most ancestors one animal's or one mating's coefficient is worked out from, and those
/// of all the pairs of a colour search together: beyond them the farthest generations are
/// left out (and the evidence says so), so that no pedigree, however deep and intricate,
/// keeps the breeder waiting.
constexpr std::size_t kAnimalAncestors = 4000;
constexpr std::size_t kPairsAncestors = 20000;

/// The coefficient of an animal of the stud, from its ancestors within that many
/// generations read one by one (at most kAnimalAncestors of them), with its common
/// ancestors when asked. An animal not in the stud gives nothing. Throws PedigreeLoop for an
/// animal that is its own ancestor, StoreError when the stud cannot be read.
std::optional<AnimalInbreeding> Animal_Inbreeding(Database &stud, qint64 number, int generations,
                                                  bool common = true);
/// The same for the offspring a sire and dam would have.
AnimalInbreeding Mating_Inbreeding(Database &stud, qint64 sire, qint64 dam, int generations);
/// The coefficients the offspring of many pairs (sire, dam) would have, in the pairs' order:
/// the pedigree of all the parents read once, and each sire weighed against all his dams in
/// one pass. A parent not in the stud gives 0. Throws PedigreeLoop and StoreError.
std::vector<double> Pairs_Inbreeding(Database &stud, const std::vector<std::pair<qint64, qint64>> &pairs,
                                     int generations);

/// How many common ancestors can be told apart by the colour of their frames.
constexpr int kMarkColours = 10;
/// The frame colour of the n-th marked common ancestor, n from 0, as 0xRRGGBB: strong
/// colours far apart.
quint32 commonAncestorColour(int mark);

/// One line of the list of common ancestors beside a pedigree.
struct CommonAncestorLine
{
    qint64 number = 0;
    QString name;
    QString timesSire, timesDam; // places held on each side
    QString share;               // "6.25%"
    int mark = -1;               // its frame colour, -1 for none
};
/// The list beside a pedigree: every common ancestor, the largest share first, with its
/// name from the stud. Those among shown (the animals in the pedigree's boxes) are given a
/// colour each, in the list's order, while colours last.
QList<CommonAncestorLine> commonAncestorLines(Database &stud, const AnimalInbreeding &inbreeding,
                                              const QSet<qint64> &shown);
/// "Relationship of Sire and Dam 50.00%", in the stud's words for father and mother.
QString relationshipText(double relationship, const QString &fatherWord, const QString &motherWord);

/// "<name> is its own ancestor: ..." for a loop found at that animal.
QString pedigreeLoopText(Database &stud, qint64 number);

/// One line of the whole stud's table.
struct StudInbreedingRow
{
    qint64 number = 0;
    QString name;
    double coi = 0;
    Inbreeding::Completeness completeness;
};

/// Every animal of the stud with its coefficient, in order of number. Telling progress by
/// animals (twice over when some pedigrees go back further than the breeder looks: those
/// are worked out again each from its own); cancelled, it gives nothing. Throws
/// PedigreeLoop and StoreError as above.
std::vector<StudInbreedingRow> Stud_Inbreeding(Database &stud, int generations, Progress &progress);
/// The table as comma-separated text with a heading line: number, name, COI (per cent, two
/// decimals), generations, completeness (per cent).
QString inbreedingCsv(const std::vector<StudInbreedingRow> &rows);

/// What has been worked out for the open stud, kept while its pedigrees stay as they are
/// (see StudDatabase::pedigreeStamp) and worked out again after any change to them.
class PedigreeCache
{
public:
    std::optional<AnimalInbreeding> animal(StudDatabase &stud, qint64 number, int generations, bool common = true);
    AnimalInbreeding mating(StudDatabase &stud, qint64 sire, qint64 dam, int generations);
    /// The whole stud's table, when worked out already for the stud as it stands.
    std::shared_ptr<const std::vector<StudInbreedingRow>> studTable(StudDatabase &stud, int generations);
    /// Keeps a table just worked out for the stud as it stands, and gives it back as kept.
    std::shared_ptr<const std::vector<StudInbreedingRow>> keepStudTable(StudDatabase &stud, int generations,
                                                                        std::vector<StudInbreedingRow> rows);

private:
    void check(StudDatabase &stud, int generations);

    StudDatabase::PedigreeStamp m_stamp;
    int m_generations = 0;
    std::map<std::pair<qint64, qint64>, AnimalInbreeding> m_matings;
    std::map<qint64, std::optional<AnimalInbreeding>> m_animals;
    std::shared_ptr<const std::vector<StudInbreedingRow>> m_stud;
};

/// The open stud's cache, made on first use.
PedigreeCache &pedigreeCache(Session &session);

/// The line the record screen shows for an animal of the open stud: its coefficient with
/// its evidence in the breeder's generations, what is wrong when its pedigree loops, or
/// nothing for an animal not (or no longer) in the stud.
QString animalCoiLine(Session &session, qint64 number);

} // namespace tarvex
