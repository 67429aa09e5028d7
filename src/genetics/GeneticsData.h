#pragma once

#include "core/Session.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>

namespace tarvex {

/// One gene of the genetics file.
struct GeneDef
{
    quint8 Id = 0;
    QString Name;
    std::array<QString, 10> Code;        // slot 1 upward; slot 0 stays empty
    std::array<QString, 10> Description; // empty when it equals the code
    quint8 Type = 0;
};

/// One colour of the colours file: the pair each gene must show (0,0 for "any").
struct ColourDef
{
    QString Name;
    std::array<AllelePair, 10> Alleles{};
};

/// The genetics of one kind of livestock, read from its two files. LastGene is the
/// highest gene index, not a count.
struct GeneticsData
{
    QList<GeneDef> GeneTable;
    int LastGene = 0;
    QList<ColourDef> ColourTable;
    QStringList ColourList{QString()};
    QStringList PatternList{QString()};
    QStringList CoatTypeList{QString()};
};

/// The name of a colour-table row: colour, pattern and coat type joined by one blank each,
/// trimmed at both ends (a blank pattern with a coat type leaves two blanks inside).
inline QString colourRowName(const QString &colour, const QString &pattern, const QString &coat)
{
    return (colour + QLatin1Char(' ') + pattern + QLatin1Char(' ') + coat).trimmed();
}

} // namespace tarvex
