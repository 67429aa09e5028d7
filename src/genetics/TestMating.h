#pragma once

#include "Prediction.h"

#include "core/Prompts.h"
#include "core/Session.h"

namespace tarvex {

/// The two parents of a mating, read from their stored genes.
struct MatingParents
{
    Genotype sire{}, dam{};
    bool hasSire = false, hasDam = false;
    QString sireText, damText; // their genotype texts
};

/// Reads the sire's and the dam's genes (Load_Parents). Genetics must be loaded.
MatingParents Load_Parents(Session &session, Prompts &prompts, qint64 sire, qint64 dam);

/// One line of the test-mate list: colour, genotype and share ("25.00%").
struct MatingLine
{
    QString colour, genotype, percent;
};

/// The lines of a calculated mating: every genotype and colour, or the colours only.
/// Empty (after "No Results Found for Mating") when there is nothing.
QList<MatingLine> Show_Mating_Results(const OffspringPrediction &prediction, bool coloursOnly,
                                      Prompts &prompts);

/// "Total Possible Colours : n" or "Total Possible Genotypes : n".
QString mateTotalText(qsizetype lines, bool coloursOnly);

} // namespace tarvex
