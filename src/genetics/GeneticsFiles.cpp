#include "GeneticsFiles.h"

#include "core/TextFile.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

constexpr int kInvalidCall = 5;
constexpr int kOverflow = 6;
constexpr int kOutOfMemory = 7;
constexpr int kSubscript = 9;
constexpr int kTypeMismatch = 13;
constexpr int kDeviceIO = 57;

// The delivered files are a few kilobytes with lines of a hundred characters; anything far
// beyond these is no genetics file and is refused before it is decoded.
constexpr qsizetype kMostBytes = 4 * 1024 * 1024;
constexpr qsizetype kLongestLine = 4096;

struct KeyLine
{
    QString key;   // in capitals
    QString value; // as it stands
};

// A line is trimmed; empty lines and lines opening with ' are comments.
bool isComment(const QString &line)
{
    return line.isEmpty() || line.startsWith(u'\'');
}

// The numeric value of the leading part of a text, as the old number reader took it.
double leadingValue(const QString &text)
{
    static const QRegularExpression number(u"^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)"_s);
    const auto match = number.match(text);
    return match.hasMatch() ? match.captured(0).trimmed().toDouble() : 0.0;
}

QString openFailure(const QFile &f)
{
    return f.exists() ? u"75 Path/File access error"_s : u"53 File not found"_s;
}

} // namespace

GeneticsFiles::GeneticsFiles(const QString &folder, Prompts &prompts) : m_folder(folder), m_prompts(prompts)
{
}

void GeneticsFiles::fail(int number, const QString &description)
{
    throw ReadFault{number, description};
}

QStringList GeneticsFiles::readLines(QFile &file)
{
    TextFile::Fault fault;
    const auto lines = TextFile::readLines(file, kMostBytes, kLongestLine, &fault);
    file.close();
    if (lines)
        return *lines;
    switch (fault.kind) {
    case TextFile::Fault::Kind::LineTooLong:
        fail(kOutOfMemory,
             u"Out of memory (line %1 is longer than %2 characters)"_s.arg(fault.line).arg(kLongestLine));
    case TextFile::Fault::Kind::TooLarge:
        fail(kOutOfMemory,
             u"Out of memory (the file is larger than %1 MB)"_s.arg(kMostBytes / (1024 * 1024)));
    case TextFile::Fault::Kind::ReadError:
        break;
    }
    fail(kDeviceIO, u"Device I/O error"_s);
}

quint8 GeneticsFiles::byteValue(const QString &text)
{
    const double value = std::nearbyint(leadingValue(text));
    if (value < 0 || value > 255)
        fail(kOverflow, u"Overflow"_s);
    return quint8(value);
}

GeneticsFiles::Result GeneticsFiles::Load_Genetics(GeneticsData &data)
{
    QFile file(QDir(m_folder).filePath(GeneticsDatabaseName + u" Genetics.Gen"_s));
    if (!file.open(QIODevice::ReadOnly)) {
        m_prompts.show(u"Genetics.Gen\nError: "_s + openFailure(file), u"Genetics Database Error"_s,
                       Prompts::Icon::Exclamation);
        return Result::NotLoaded;
    }
    try {
        const QStringList lines = readLines(file);
        data.GeneTable.clear();
        int alleles = 0;
        for (const QString &raw : lines) {
            const QString line = raw.trimmed();
            if (isComment(line))
                continue;
            if (line.startsWith(u'[')) {
                data.GeneTable.append(GeneDef{});
                data.GeneTable.last().Name = line.mid(1, line.size() - 2);
                alleles = 0;
                continue;
            }
            const qsizetype eq = line.indexOf(u'=');
            if (eq < 0)
                fail(kInvalidCall, u"Invalid procedure call or argument"_s);
            const QString key = line.left(eq).toUpper();
            const QString value = line.mid(eq + 1);
            if (data.GeneTable.isEmpty()) {
                if (key.startsWith(u"GENE"_s) || key.startsWith(u"TYPE"_s) || key.startsWith(u"ID"_s))
                    fail(kSubscript, u"Subscript out of range"_s);
                continue;
            }
            GeneDef &gene = data.GeneTable.last();
            if (key.startsWith(u"GENE"_s)) {
                const qsizetype comma = value.indexOf(u',');
                if (comma < 0)
                    fail(kInvalidCall, u"Invalid procedure call or argument"_s);
                if (++alleles > 9)
                    fail(kSubscript, u"Subscript out of range"_s);
                gene.Code[alleles] = value.left(comma);
                const QString description = value.mid(comma + 1).trimmed();
                gene.Description[alleles] = description == gene.Code[alleles] ? QString() : description;
            } else if (key.startsWith(u"TYPE"_s)) {
                bool ok = false;
                const double type = value.trimmed().toDouble(&ok);
                if (!ok)
                    fail(kTypeMismatch, u"Type mismatch"_s);
                if (std::nearbyint(type) < 0 || std::nearbyint(type) > 255)
                    fail(kOverflow, u"Overflow"_s);
                gene.Type = quint8(std::nearbyint(type));
            } else if (key.startsWith(u"ID"_s)) {
                gene.Id = byteValue(value);
            }
        }
        // A file without a single gene has nothing to take the highest index of.
        if (data.GeneTable.isEmpty())
            fail(kSubscript, u"Subscript out of range"_s);
    } catch (const ReadFault &f) {
        m_prompts.show(u"Genetics Database Error : "_s + QString::number(f.number) + u' ' + f.description,
                       u"Error Reading "_s + GeneticsDatabaseName + u" Genetics.Gen"_s, Prompts::Icon::Stop);
        return Result::Fatal;
    }
    data.LastGene = int(data.GeneTable.size()) - 1;
    // The system wants at least two genes: one alone is no genetics, and says nothing.
    return data.LastGene != 0 ? Result::Loaded : Result::NotLoaded;
}

GeneticsFiles::Result GeneticsFiles::Load_Colours(const QString &prefix, GeneticsData &data)
{
    GeneticsDatabaseName = prefix;
    data.LastGene = 0;
    QFile file(QDir(m_folder).filePath(prefix + u" Colours.Gen"_s));
    if (!file.open(QIODevice::ReadOnly)) {
        m_prompts.show(u"Colours.Gen\nError: "_s + openFailure(file), u"Genetics Database Error"_s,
                       Prompts::Icon::Exclamation);
        return Result::NotLoaded;
    }
    QList<ColourDef> colours, patterns, coats;
    QList<ColourDef> *open = nullptr;
    bool genesRead = false;
    try {
        const QStringList lines = readLines(file);
        for (const QString &raw : lines) {
            const QString line = raw.trimmed();
            if (isComment(line))
                continue;
            if (line.startsWith(u'[')) {
                const QString inner = line.mid(1, line.size() - 2);
                const qsizetype eq = inner.indexOf(u'=');
                const QString key = (eq < 0 ? inner : inner.left(eq)).toUpper();
                const QString value = eq < 0 ? QString() : inner.mid(eq + 1);
                open = nullptr;
                if (key == u"GENETICS") {
                    if (!genesRead)
                        GeneticsDatabaseName = value;
                } else if (key == u"COLOUR") {
                    open = &colours;
                } else if (key == u"PATTERN") {
                    open = &patterns;
                } else if (key == u"COATTYPE") {
                    open = &coats;
                }
                if (open) {
                    open->append(ColourDef{});
                    open->last().Name = value;
                }
                continue;
            }
            const qsizetype eq = line.indexOf(u'=');
            if (eq < 0)
                fail(kInvalidCall, u"Invalid procedure call or argument"_s);
            // The genes are read at the first gene line.
            if (data.LastGene == 0) {
                genesRead = true;
                const Result genes = Load_Genetics(data);
                if (genes != Result::Loaded)
                    return genes;
            }
            const quint8 id = byteValue(line.left(eq));
            int index = -1;
            for (int g = 0; g < data.GeneTable.size(); ++g) {
                if (data.GeneTable.at(g).Id == id) {
                    index = g;
                    break;
                }
            }
            if (index < 0)
                continue;
            if (index > 9)
                fail(kSubscript, u"Subscript out of range"_s);
            const QString value = line.mid(eq + 1);
            const auto allele = [&](int at) -> quint8 {
                return (at < value.size() && value.at(at).isDigit()) ? quint8(value.at(at).digitValue()) : 0;
            };
            if (open)
                open->last().Alleles[index] = {allele(0), allele(2)};
        }
        if (colours.isEmpty())
            fail(kSubscript, u"Subscript out of range"_s);
    } catch (const ReadFault &f) {
        m_prompts.show(u"Genetics Colour Error : "_s + QString::number(f.number) + u' ' + f.description,
                       u"Error Reading Colours.Txt"_s, Prompts::Icon::Stop);
        return Result::Fatal;
    }

    data.ColourList = {QString()};
    data.PatternList = {QString()};
    data.CoatTypeList = {QString()};
    for (const ColourDef &c : colours)
        data.ColourList << c.Name;
    for (const ColourDef &p : patterns)
        data.PatternList << p.Name;
    for (const ColourDef &c : coats)
        data.CoatTypeList << c.Name;
    if (patterns.isEmpty())
        patterns.append(ColourDef{});
    if (coats.isEmpty())
        coats.append(ColourDef{});

    // Pattern outermost, colour next, coat type fastest: the order of every later search.
    data.ColourTable.clear();
    data.ColourTable.reserve(patterns.size() * colours.size() * coats.size());
    for (const ColourDef &pattern : patterns) {
        for (const ColourDef &colour : colours) {
            for (const ColourDef &coat : coats) {
                ColourDef row;
                row.Name = colourRowName(colour.Name, pattern.Name, coat.Name);
                for (int g = 0; g <= data.LastGene && g < 10; ++g) {
                    // The colour wins over the pattern, the pattern over the coat type.
                    for (const ColourDef *source : {&colour, &pattern, &coat}) {
                        const AllelePair pair = source->Alleles[g];
                        if (pair.allele1 != 0 || pair.allele2 != 0) {
                            row.Alleles[g] = pair;
                            break;
                        }
                    }
                }
                data.ColourTable << row;
            }
        }
    }
    return data.ColourTable.size() - 1 != 0 ? Result::Loaded : Result::NotLoaded;
}

} // namespace tarvex
