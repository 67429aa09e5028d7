#pragma once

#include "core/Progress.h"
#include "core/Session.h"

#include <QString>

#include <array>
#include <functional>

namespace tarvex {

/// One ancestor in a pedigree. A Number of -1 is an empty place; the texts of an empty
/// place are left as they were, so readers test Number first.
struct PedigreeCell
{
    qint32 Number = -1;
    QString Name, Type, Sex, Colour, Points, BestAward, RingNo, DOB, DOD, Breeder, GenoType, Weight, Id2, Id3;
    qint32 Sire = -1;
    qint32 Dam = -1;
    QString Image;
};

/// The ancestors of one subject: generation 0 (the subject, at position 1) to 6, position
/// 1 to 2^generation. The sire of (g, p) is (g+1, 2p-1), the dam (g+1, 2p). Generations 1
/// to 5 are the pedigree; generation 6 only receives the numbers of the last parents.
class PedigreeTable
{
public:
    static constexpr int kGenerations = 7;
    static constexpr int kPositions = 65;

    PedigreeCell &cell(int generation, int position) { return m_cells[generation][position]; }
    const PedigreeCell &cell(int generation, int position) const { return m_cells[generation][position]; }

private:
    std::array<std::array<PedigreeCell, kPositions>, kGenerations> m_cells;
};

/// Where box i (1 to 62) stands: its generation, the number of cells in that generation
/// and the base that turns i into a position (p = i - base + 1).
struct CellLocation
{
    int generation = 0;
    int cells = 0;
    int base = 0;
    int position(int i) const { return i - base + 1; }
};
CellLocation Locate_Cell(int i);

/// The sum of an animal's CCStars (the leading number of each text), rounded at each
/// addition as a 16-bit whole number.
qint16 Total_Stars(Session &session, qint64 number);

/// Reads one animal into a cell; false (the cell's texts emptied, parents -1) when there is
/// no such animal. Dates in the machine's format, the weight as "###0.00" and the unit, the
/// award points as "12 Stars" when the points system is on and the total is not zero.
bool Get_Animal_Details(Session &session, qint64 number, PedigreeCell &cell);

/// Fills the table for the subject (currentStockNo), or for a test mating of two animals
/// when currentStockNo is 0. Every place of generations 1 to 5 is visited breadth first,
/// male line first; progress is told once per place (62 in all). False when the subject
/// cannot be found. subjectType receives the subject's breed.
bool Load_Pedigree_Table(Session &session, PedigreeTable &table, qint64 currentStockNo, qint64 testSire,
                         qint64 testDam, QString *subjectType, Progress &progress = noProgress());

/// Fills Image of every occupied place of generations 0 to 6 with the animal's default
/// picture, empty when it has none.
void LoadImages(Session &session, PedigreeTable &table);

} // namespace tarvex
