#pragma once

#include "genetics/GeneticsData.h"
#include "genetics/Prediction.h"

#include "core/Prompts.h"

#include <QList>
#include <QString>

#include <array>
#include <functional>

namespace tarvex {

/// The offspring prediction written as plainly as it is described, step by step: the
/// reference that the program's own engine is measured and checked against.
/// Every genotype the offspring of a sire and a dam can have, with its share, and the
/// named colours those genotypes show. Exhaustive: all combinations of the parents' alleles
/// at all genes, each compared with every row of the colour table.
class ReferencePrediction
{
public:
    ReferencePrediction(const GeneticsData &genetics, Prompts &prompts);

    /// The distinct offspring pairs of each gene, and the number of passes.
    void Prepare_Mating(const Genotype &sire, const Genotype &dam);
    /// Walks every combination, gene 0 changing slowest; classifies each genotype and sums
    /// the colours in order of first appearance. progress is told once per pass.
    void Enumerate_Offspring(const std::function<void()> &progress = {});

    /// Whether an offspring pair (a, b) can show a colour's pair (c, d), given the parents'
    /// most dominant allele p. An impossible pair says so and counts as yes.
    bool Compare_Alleles(quint8 a, quint8 b, quint8 c, quint8 d, quint8 p);

    std::array<GeneResult, 10> Genes{};
    qint64 IterationCount = 1;
    QList<OffspringRow> OffspringRows;
    QList<OffspringRow> ColourSummary;
    qint32 TotalWeight = 0;

private:
    static void Add_Outcome(std::array<MateOutcome, 4> &outcomes, quint8 first, quint8 second);
    void Classify_Genotype(const Genotype &offspring, qint32 weight);

    const GeneticsData &m_genetics;
    Prompts &m_prompts;
};

} // namespace tarvex
