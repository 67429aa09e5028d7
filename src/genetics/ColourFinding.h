#pragma once

#include "Prediction.h"

#include "core/Progress.h"
#include "core/Prompts.h"
#include "core/Session.h"
#include "store/StockLookup.h"

#include <QHash>
#include <QList>
#include <QPair>

#include <functional>
#include <memory>

namespace tarvex {

/// The offspring genotypes of the colour sought that one pair of genotypes can have, each
/// with its share of the pair's offspring (0 to 100).
using ColourShares = QList<QPair<QString, float>>;

/// One pair that can give the colour sought. Pairs of the same two genotypes share their rows.
struct MatingPair
{
    QString Sire, Dam;
    std::shared_ptr<const ColourShares> rows;
    qint64 sireNumber = 0, damNumber = 0;
    double coi = -1; // the offspring's coefficient of inbreeding; -1 until worked out
    /// The whole chance of the colour for this pair, the rows' shares added in order.
    float total() const
    {
        float sum = 0;
        for (const auto &row : *rows)
            sum += row.second;
        return sum;
    }
};

/// One line of the colour search's list.
struct FindLine
{
    QString sire, dam, genotype, percent;
    QString coi; // "6.25%", empty when not worked out
};

/// Works out the coefficient of inbreeding each pair's offspring would have, looking back
/// the breeder's generations. Gives the loop's text (the coefficients left unknown) when a
/// pedigree loops, else nothing.
QString Add_Offspring_Coi(Session &session, QList<MatingPair> &hits);

/// The lines of a colour search: a line for each offspring genotype of each pair, or, with
/// coloursOnly, one line per pair with the colour's own genotype and the pair's whole
/// chance of the colour.
QList<FindLine> Show_Find_Results(const QList<MatingPair> &hits, bool coloursOnly,
                                  const QString &colourGenotype);

/// What the colour search needs to know of an animal.
struct StockForSearch
{
    QString name, type, archive;
};

/// The name, breed and archive of an animal; "Not Found" and empty texts when it is gone.
StockForSearch Get_Stock_Details_For_Search(Session &session, qint64 number);

/// Which of the stud's sires and dams can produce a colour: every unarchived sire with
/// every unarchived dam (of one breed, when a breed is given), each pair through the
/// offspring prediction. Animals and pairs met again are not worked out again.
class ColourFinder
{
public:
    ColourFinder(Session &session, Prompts &prompts);

    using Entries = QList<ParentEntry>;
    /// The hits for a colour-table name; false when there are none (after "No Matings Found
    /// for Colour Selected") or when either list holds only its blank entry (silently).
    /// progress is told each sire done and the sire and dam in hand; stopped by the user,
    /// the search keeps the pairs found so far and says nothing when there are none.
    bool Find_Matings(const Entries &sires, const Entries &dams, const QString &colour, const QString &breed,
                      QList<MatingPair> *hits, Progress &progress = noProgress());

private:
    struct Animal
    {
        StockForSearch details;
        bool hasGenes = false;
        Genotype genes{};
    };
    const Animal &animal(qint64 number);
    std::shared_ptr<const ColourShares> offspringOfColour(const Animal &sire, const Animal &dam,
                                                          const QString &colour);

    Session &m_session;
    Prompts &m_prompts;
    OffspringPrediction m_prediction;
    QHash<qint64, Animal> m_animals;
    QHash<QByteArray, std::shared_ptr<const ColourShares>> m_pairs;
};

} // namespace tarvex
