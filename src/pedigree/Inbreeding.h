#pragma once

#include "core/Progress.h"

#include <QHash>
#include <QString>

#include <limits>
#include <stdexcept>
#include <vector>

namespace tarvex {

/// An animal that is its own ancestor: a number typed wrongly somewhere up its lines.
class PedigreeLoop : public std::runtime_error
{
public:
    explicit PedigreeLoop(qint64 number)
        : std::runtime_error("pedigree loop"), m_number(number)
    {
    }
    /// One animal on the loop.
    qint64 number() const { return m_number; }

private:
    qint64 m_number;
};

/// One animal and its parents as the stud records them; a parent of 0 or less, or one that
/// is not in the stud (removed, "Not Found"), is unknown.
struct PedigreeRecord
{
    qint64 number = 0;
    qint64 sire = 0;
    qint64 dam = 0;
};

/// The stud's pedigree as positions: every animal after both its parents, so that a walk in
/// order meets parents first. Unknown parents are -1.
struct PedigreeGraph
{
    std::vector<qint64> numbers;
    std::vector<int> sire, dam;
    QHash<qint64, int> position;

    int size() const { return int(numbers.size()); }
    int positionOf(qint64 number) const { return position.value(number, -1); }
};

/// Orders the records parents first. Throws PedigreeLoop when an animal is its own
/// ancestor.
PedigreeGraph orderPedigree(const std::vector<PedigreeRecord> &records);
/// The most generations a breeder can choose to look back over; fewer leave out the
/// farther ancestors.
constexpr int kMostGenerations = 30;
/// Every known generation, however many.
constexpr int kAllGenerations = std::numeric_limits<int>::max();

/// The pedigree of one animal alone: it and its known ancestors within that many
/// generations (by their nearest place), parents first, the animal last; the parents of the
/// farthest are left unknown. Enough to give its coefficient without the rest of the stud.
PedigreeGraph ancestorsOf(const PedigreeGraph &stud, int position, int generations = kAllGenerations);

/// Wright's coefficients of inbreeding of every animal of a stud, and the kinship of any two,
/// by Meuwissen and Luo's method: each animal's coefficient from its ancestors' contributions,
/// walked from the youngest back, so that a stud of a million animals takes seconds. Unknown
/// parents are founders, neither inbred nor related.
class Inbreeding
{
public:
    /// Computes every animal's coefficient, telling progress by animals; stops (the rest
    /// left at 0) when asked.
    explicit Inbreeding(PedigreeGraph graph, Progress &progress = noProgress());

    const PedigreeGraph &graph() const { return m_graph; }
    /// The coefficient of inbreeding of the animal at a position, 0 to 1.
    double coi(int position) const { return m_f[std::size_t(position)]; }
    /// The coefficient the offspring of two animals would have: their kinship. Either may be
    /// -1 (unknown).
    double offspringCoi(int sire, int dam) const;
    /// Wright's relationship of two animals: twice their kinship over the square root of
    /// (1 + F) of each.
    double relationship(int a, int b) const;
    /// The kinship of one animal with every animal of the stud, in one pass down and one up:
    /// the coefficient its offspring by each would have. Far quicker than one walk per
    /// mate when one sire is weighed against many dams.
    std::vector<double> kinshipsOf(int position) const;

    /// How much of an animal's pedigree is known: the generations of its longest known line,
    /// and the share of the places in those generations that hold a known animal.
    struct Completeness
    {
        int generations = 0;
        double known = 0; // 0 to 1; 1 for an animal with no generations
    };
    Completeness completeness(int position) const;
    /// The same, looking back no more than that many generations: the places in them, and
    /// each ancestor counted once for every place it holds.
    Completeness completeness(int position, int generations) const;

private:
    PedigreeGraph m_graph;
    std::vector<double> m_f;
    std::vector<double> m_d;         // within-family variance of each animal's Mendelian sampling
    std::vector<int> m_generations;  // longest known line
    std::vector<double> m_knownSlots; // known places in all its generations
    mutable std::vector<double> m_l; // work space of one animal's walk
    mutable std::vector<int> m_ahead;
};

/// "COI 6.25% (10 gen, 87% of ancestors known)".
QString coiText(double coi, const Inbreeding::Completeness &completeness);

} // namespace tarvex
