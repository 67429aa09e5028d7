#pragma once

#include "GeneticsData.h"

#include "core/Progress.h"
#include "core/Prompts.h"

#include <QHash>
#include <QList>
#include <QString>

#include <array>
#include <functional>
#include <vector>

namespace tarvex {

/// One offspring pair of a gene and how many of the four parent combinations give it.
struct MateOutcome
{
    quint8 First = 0;
    quint8 Second = 0;
    quint8 Count = 0;
};

/// The offspring of one gene: its distinct pairs, and the parents' most dominant shown
/// allele (0 when a parent is wholly unknown at this gene).
struct GeneResult
{
    std::array<MateOutcome, 4> Outcome{};
    quint8 LastOutcome = 0;
    quint8 BestParentAllele = 0;
};

/// One row of the results: a colour (or "Unknown", index -1), a genotype text and a weight.
struct OffspringRow
{
    qint16 ColourIndex = -1;
    QString Name;
    QString GenoText;
    float Weight = 0;
};

/// Every genotype the offspring of a sire and a dam can have, with its share, and the
/// named colours those genotypes show. Exhaustive: all combinations of the parents' alleles
/// at all genes, each compared with every row of the colour table.
///
/// The comparison of a gene depends only on that gene's offspring pair, so it is made once
/// per gene and outcome for all colour rows at once (a bit per row); a genotype's colours
/// are the rows left after joining its genes' bits, gene by gene as the walk goes down.
/// Rows are kept small and their texts are made when a row is read.
class OffspringPrediction
{
public:
    OffspringPrediction(const GeneticsData &genetics, Prompts &prompts);

    /// The distinct offspring pairs of each gene, and the number of passes.
    void Prepare_Mating(const Genotype &sire, const Genotype &dam);
    /// Walks every combination, gene 0 changing slowest; classifies each genotype and sums
    /// the colours in order of first appearance. progress is told the passes done, a few
    /// thousand at a time; the walk is not stopped part way.
    void Enumerate_Offspring(Progress &progress = noProgress());

    /// Whether an offspring pair (a, b) can show a colour's pair (c, d), given the parents'
    /// most dominant allele p. An impossible pair says so and counts as yes.
    bool Compare_Alleles(quint8 a, quint8 b, quint8 c, quint8 d, quint8 p);

    /// The answer of Compare_Alleles without a word to the user, and whether the pairs
    /// were impossible (the answer is then yes).
    struct Comparison
    {
        bool fits = false;
        bool unexpected = false;
    };
    static Comparison compareQuietly(quint8 a, quint8 b, quint8 c, quint8 d, quint8 p);

    std::array<GeneResult, 10> Genes{};
    qint64 IterationCount = 1;
    QList<OffspringRow> ColourSummary;
    qint32 TotalWeight = 0;

    /// The rows of every genotype and colour, in the order of the walk.
    qsizetype rowCount() const { return qsizetype(m_colours.size()); }
    OffspringRow row(qsizetype index) const;
    /// A row's colour row (-1 for "Unknown") and weight, without making its texts.
    qint16 rowColour(qsizetype index) const { return m_colours[size_t(index)]; }
    float rowWeight(qsizetype index) const;

private:
    // One genotype of the walk: its rows are m_colours[firstRow] up to the next one's.
    struct GenotypeRows
    {
        quint32 firstRow;
        quint32 code; // the outcome slot of each gene, two bits a gene, gene 0 highest
        float share;  // the weight of each of its rows
    };
    // The colour rows one offspring pair of a gene can show, and those among them whose
    // pair at that gene is impossible (shown to the user when a genotype reaches them).
    struct PairRows
    {
        std::vector<quint64> fits;
        std::vector<quint64> unexpected;
    };
    static void Add_Outcome(std::array<MateOutcome, 4> &outcomes, quint8 first, quint8 second);
    Genotype decode(quint32 code) const;
    void summarise(qint16 colour, float weight);
    int summaryRow(qint16 colour, float weight);
    qint64 rowBound(qsizetype colourRows) const;
    void reportUnexpected(const quint64 *carried, const std::array<int, 10> &slot, int lastGene);
    /// Adds the rows of one genotype of the walk: the colour rows it fits, each with its share
    /// of the weight, or "Unknown"; carried holds the rows still fitting before each gene.
    void Classify_Genotype(const quint64 *carried, const std::array<int, 10> &slot, quint32 code, qint32 weight,
                           int lastGene, bool anyUnexpected);
    void showUnexpected(quint8 a, quint8 b, quint8 c, quint8 d);

    const GeneticsData &m_genetics;
    Prompts &m_prompts;
    std::vector<GenotypeRows> m_genotypes;
    std::vector<qint16> m_colours; // the colour row of every result row, -1 for "Unknown"
    int m_words = 0;
    std::vector<quint64> m_fits;       // [gene][slot][word]: the colour rows an outcome can show
    std::vector<quint64> m_unexpected; // [gene][slot][word]: the rows whose pair it cannot compare
    // The rows a gene's offspring pair can show, by gene, pair and the parents' best allele;
    // kept across matings, since a stud's matings meet the same few pairs again and again.
    QHash<quint32, PairRows> m_fitsByPair;
    std::vector<int> m_nameOf;    // colour row -> name number
    std::vector<int> m_summaryOf; // name number -> summary row, -1 before the name appears
    std::vector<int> m_summaryOfColour; // 1 + colour row -> summary row, -1 before the row appears
    std::vector<float> m_summaryWeight;
    std::vector<qint16> m_summaryColour; // the first colour row of each summary row, -1 unknown
    int m_unknownName = 0;
};

/// A share of the total as the results show it: "12.50%".
QString percentText(double share);

} // namespace tarvex
