#pragma once

#include "GeneticsData.h"

#include "core/Prompts.h"

#include <QString>
#include <QStringList>

class QFile;

namespace tarvex {

/// Reading the two genetics files of a kind of livestock: "<name> Genetics.Gen" (the
/// genes and their alleles) and "<prefix> Colours.Gen" (every colour, pattern and coat
/// type with the alleles that make it). A file that cannot be opened is reported and
/// survived; any other fault in a file is fatal, and the program ends after its box.
class GeneticsFiles
{
public:
    enum class Result
    {
        Loaded,
        NotLoaded,
        Fatal
    };

    GeneticsFiles(const QString &folder, Prompts &prompts);

    /// Reads "<GeneticsDatabaseName> Genetics.Gen". Loaded needs at least two genes.
    Result Load_Genetics(GeneticsData &data);
    /// Reads "<prefix> Colours.Gen", reading the genes at its first gene line, and builds
    /// the colour table: every pattern, colour and coat type in that order of nesting.
    Result Load_Colours(const QString &prefix, GeneticsData &data);

    QString GeneticsDatabaseName;

private:
    struct ReadFault
    {
        int number;
        QString description;
    };
    [[noreturn]] static void fail(int number, const QString &description);
    /// The lines of an open genetics file, which it closes. A file or a line far longer than
    /// any genetics file has, and a failing disk, are faults.
    static QStringList readLines(QFile &file);
    static quint8 byteValue(const QString &text);

    QString m_folder;
    Prompts &m_prompts;
};

} // namespace tarvex
