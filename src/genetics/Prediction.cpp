#include "Prediction.h"

#include "Genotypes.h"

#include <QHash>

#include <algorithm>
#include <bit>

using namespace Qt::StringLiterals;

namespace tarvex {

OffspringPrediction::OffspringPrediction(const GeneticsData &genetics, Prompts &prompts)
    : m_genetics(genetics), m_prompts(prompts)
{
}

void OffspringPrediction::Add_Outcome(std::array<MateOutcome, 4> &outcomes, quint8 first, quint8 second)
{
    Order_Alleles(first, second);
    for (MateOutcome &o : outcomes) {
        if (o.Count != 0 && o.First == first && o.Second == second) {
            ++o.Count;
            return;
        }
        if (o.Count == 0) {
            o = {first, second, 1};
            return;
        }
    }
}

void OffspringPrediction::Prepare_Mating(const Genotype &sire, const Genotype &dam)
{
    IterationCount = 1;
    Genes = {};
    for (int g = 0; g <= m_genetics.LastGene && g < 10; ++g) {
        const AllelePair s = sire[g];
        const AllelePair d = dam[g];
        std::array<MateOutcome, 4> outcomes{};
        // Sire 1 with dam 1, sire 1 with dam 2, sire 2 with dam 1, sire 2 with dam 2.
        for (const quint8 sa : {s.allele1, s.allele2})
            for (const quint8 da : {d.allele1, d.allele2})
                Add_Outcome(outcomes, sa, da);
        GeneResult &r = Genes[g];
        for (int i = 0; i < 4; ++i) {
            if (outcomes[i].Count != 0) {
                r.Outcome[i] = outcomes[i];
                r.LastOutcome = quint8(i);
            }
        }
        IterationCount *= r.LastOutcome + 1;
        const bool unknownParent = (s.allele1 == 0 && s.allele2 == 0) || (d.allele1 == 0 && d.allele2 == 0);
        r.BestParentAllele = unknownParent ? 0 : std::min(s.allele1, d.allele1);
    }
}

OffspringPrediction::Comparison OffspringPrediction::compareQuietly(quint8 a, quint8 b, quint8 c, quint8 d,
                                                                    quint8 p)
{
    if (c == 0 && d == 0)
        return {true, false};
    if (a == 0 && b == 0)
        return {c >= p, false};
    if (a != 0 && b != 0) {
        if (c != 0 && d != 0)
            return {a == c && b == d, false};
        if (c != 0 && d == 0)
            return {a == c, false};
    } else if (a != 0 && b == 0) {
        if (c != 0 && d != 0)
            return {a == c || (c >= p && a == d), false};
        if (c != 0 && d == 0) {
            if (a == c)
                return {true, false};
            if (a < c)
                return {false, false};
            // The hidden allele may be c, unless the parents' best allele shows c is out of reach.
            return {!(p != 0 && p >= c), false};
        }
    }
    return {true, true};
}

bool OffspringPrediction::Compare_Alleles(quint8 a, quint8 b, quint8 c, quint8 d, quint8 p)
{
    const Comparison answer = compareQuietly(a, b, c, d, p);
    if (answer.unexpected)
        showUnexpected(a, b, c, d);
    return answer.fits;
}

void OffspringPrediction::showUnexpected(quint8 a, quint8 b, quint8 c, quint8 d)
{
    m_prompts.message(u"Tell Ruben - Unexpected Comparison : %1, %2, %3, %4"_s.arg(a).arg(b).arg(c).arg(d),
                      u"Compare"_s, Prompts::Icon::Information, Prompts::Buttons::Ok);
}

Genotype OffspringPrediction::decode(quint32 code) const
{
    Genotype offspring{};
    for (int g = 9; g >= 0; --g) {
        const MateOutcome &o = Genes[g].Outcome[code & 3];
        offspring[g] = {o.First, o.Second};
        code >>= 2;
    }
    return offspring;
}

float OffspringPrediction::rowWeight(qsizetype index) const
{
    const auto after = std::upper_bound(m_genotypes.begin(), m_genotypes.end(), quint32(index),
                                        [](quint32 i, const GenotypeRows &g) { return i < g.firstRow; });
    return (after - 1)->share;
}

OffspringRow OffspringPrediction::row(qsizetype index) const
{
    const auto after = std::upper_bound(m_genotypes.begin(), m_genotypes.end(), quint32(index),
                                        [](quint32 i, const GenotypeRows &g) { return i < g.firstRow; });
    const GenotypeRows &g = *(after - 1);
    const qint16 colour = m_colours[size_t(index)];
    const QString name = colour < 0 ? u"Unknown"_s : m_genetics.ColourTable.at(colour).Name;
    return {colour, name, Genotype_Text(m_genetics, decode(g.code)), g.share};
}

inline void OffspringPrediction::summarise(qint16 colour, float weight)
{
    // By name in order of first appearance; rows of the same name add up, in row order.
    int &at = m_summaryOfColour[size_t(colour + 1)];
    if (at < 0)
        at = summaryRow(colour, weight);
    else
        m_summaryWeight[size_t(at)] += weight;
}

// The summary row of a colour row seen for the first time: that of its name, or a new
// one starting at weight when the name is new too.
int OffspringPrediction::summaryRow(qint16 colour, float weight)
{
    const int name = colour < 0 ? m_unknownName : m_nameOf[size_t(colour)];
    int &at = m_summaryOf[size_t(name)];
    if (at >= 0) {
        m_summaryWeight[size_t(at)] += weight;
        return at;
    }
    at = int(m_summaryWeight.size());
    m_summaryWeight.push_back(weight);
    m_summaryColour.push_back(colour);
    return at;
}

// As many result rows as a mating can give, found before the walk so that the rows are
// never moved while it runs. Every genotype is a choice of one outcome per gene, so the
// genotypes a colour row fits number the product, over the genes, of the outcomes whose
// bits hold that row; a genotype fitting no row takes one row of its own.
qint64 OffspringPrediction::rowBound(qsizetype colourRows) const
{
    qint64 fitting = 0;
    for (qsizetype row = 0; row < colourRows; ++row) {
        const size_t word = size_t(row / 64);
        const quint64 bit = quint64(1) << (row % 64);
        qint64 genotypes = 1;
        for (int g = 0; g < 10 && genotypes != 0; ++g) {
            int outcomes = 0;
            for (int k = 0; k <= Genes[g].LastOutcome; ++k)
                outcomes += (m_fits[size_t((g * 4 + k) * m_words) + word] & bit) != 0 ? 1 : 0;
            genotypes *= outcomes;
        }
        fitting += genotypes;
    }
    return fitting + IterationCount;
}

// Says what the plain classification of the current genotype would say: row by row, gene
// by gene, each impossible pair that a row meets before one of its genes fails.
void OffspringPrediction::reportUnexpected(const quint64 *carried, const std::array<int, 10> &slot,
                                           int lastGene)
{
    for (int w = 0; w < m_words; ++w) {
        // A row reaches gene g when it fits every gene before it: the bits carried into g.
        std::array<quint64, 10> reached{};
        quint64 any = 0;
        for (int g = 0; g <= lastGene; ++g) {
            reached[g] = m_unexpected[size_t((g * 4 + slot[g]) * m_words + w)] & carried[g * m_words + w];
            any |= reached[g];
        }
        for (; any != 0; any &= any - 1) {
            const int bit = std::countr_zero(any);
            const Genotype &colour = m_genetics.ColourTable.at(w * 64 + bit).Alleles;
            for (int g = 0; g <= lastGene; ++g) {
                if ((reached[g] >> bit & 1) != 0) {
                    const MateOutcome &o = Genes[g].Outcome[slot[g]];
                    showUnexpected(o.First, o.Second, colour[g].allele1, colour[g].allele2);
                }
            }
        }
    }
}

// The colour rows a genotype shows are those still carried after its last gene; it has a
// row for each, sharing its weight, or one "Unknown" row with the whole weight.
inline void OffspringPrediction::Classify_Genotype(const quint64 *carried, const std::array<int, 10> &slot,
                                                   quint32 code, qint32 weight, int lastGene, bool anyUnexpected)
{
    if (anyUnexpected)
        reportUnexpected(carried, slot, lastGene);
    const quint64 *matches = carried + size_t(10 * m_words);
    const size_t firstRow = m_colours.size();
    for (int i = 0; i < m_words; ++i)
        for (quint64 bits = matches[i]; bits != 0; bits &= bits - 1)
            m_colours.push_back(qint16(i * 64 + std::countr_zero(bits)));
    const size_t count = m_colours.size() - firstRow;
    if (count == 0) {
        m_genotypes.push_back({quint32(firstRow), code, float(weight)});
        m_colours.push_back(-1);
        summarise(-1, float(weight));
    } else {
        const float share = float(double(weight) / double(count));
        m_genotypes.push_back({quint32(firstRow), code, share});
        for (size_t i = firstRow; i < firstRow + count; ++i)
            summarise(m_colours[i], share);
    }
}

void OffspringPrediction::Enumerate_Offspring(Progress &progress)
{
    m_genotypes.clear();
    m_colours.clear();
    ColourSummary.clear();
    m_summaryWeight.clear();
    m_summaryColour.clear();
    TotalWeight = 0;
    const int lastGene = std::min(m_genetics.LastGene, 9);
    const qsizetype colourRows = m_genetics.ColourTable.size();
    m_words = int((colourRows + 63) / 64);

    // Which colour rows each outcome of each gene can show, answered once for all genotypes,
    // and which rows it cannot compare. Nothing is said here: a genotype says it when its
    // classification reaches such a row, as the walk goes.
    m_fits.assign(size_t(10 * 4 * m_words), 0);
    m_unexpected.assign(size_t(10 * 4 * m_words), 0);
    bool anyUnexpected = false;
    for (int g = 0; g < 10; ++g) {
        for (int k = 0; k <= Genes[g].LastOutcome; ++k) {
            const size_t at = size_t((g * 4 + k) * m_words);
            const MateOutcome &o = Genes[g].Outcome[k];
            const quint8 p = Genes[g].BestParentAllele;
            const quint32 key = quint32(g) << 24 | quint32(o.First) << 16 | quint32(o.Second) << 8 | p;
            auto known = m_fitsByPair.constFind(key);
            if (known == m_fitsByPair.cend()) {
                PairRows rows{std::vector<quint64>(size_t(m_words), 0),
                              std::vector<quint64>(size_t(m_words), 0)};
                for (qsizetype row = 0; row < colourRows; ++row) {
                    const quint64 bit = quint64(1) << (row % 64);
                    // Genes beyond the last one are not compared: every row fits there.
                    if (g > lastGene) {
                        rows.fits[size_t(row / 64)] |= bit;
                        continue;
                    }
                    const AllelePair c = m_genetics.ColourTable.at(row).Alleles[g];
                    const Comparison answer = compareQuietly(o.First, o.Second, c.allele1, c.allele2, p);
                    if (answer.fits)
                        rows.fits[size_t(row / 64)] |= bit;
                    if (answer.unexpected)
                        rows.unexpected[size_t(row / 64)] |= bit;
                }
                known = m_fitsByPair.insert(key, std::move(rows));
            }
            std::copy(known->fits.begin(), known->fits.end(), m_fits.data() + at);
            std::copy(known->unexpected.begin(), known->unexpected.end(), m_unexpected.data() + at);
            for (const quint64 w : known->unexpected)
                anyUnexpected = anyUnexpected || w != 0;
        }
    }
    QHash<QString, int> names;
    m_nameOf.assign(size_t(colourRows), 0);
    for (qsizetype row = 0; row < colourRows; ++row) {
        const QString &name = m_genetics.ColourTable.at(row).Name;
        auto it = names.constFind(name);
        if (it == names.cend())
            it = names.insert(name, int(names.size()));
        m_nameOf[size_t(row)] = it.value();
    }
    m_unknownName = names.contains(u"Unknown"_s) ? names.value(u"Unknown"_s) : int(names.size());
    m_summaryOf.assign(size_t(names.size() + 1), -1);
    m_summaryOfColour.assign(size_t(colourRows + 1), -1);
    m_genotypes.reserve(size_t(IterationCount));
    m_colours.reserve(size_t(rowBound(colourRows)));

    // The walk: gene 0 changes slowest, each gene's outcomes in slot order; the rows a
    // genotype can show are carried down and narrowed gene by gene.
    const int words = m_words;
    std::vector<quint64> carried(size_t(11 * words));
    std::fill(carried.begin(), carried.begin() + words, ~quint64(0));
    if (colourRows % 64 != 0 && words > 0)
        carried[size_t(words - 1)] = (quint64(1) << (colourRows % 64)) - 1;
    std::array<int, 10> slot{};
    std::array<qint32, 11> weight{};
    std::array<quint32, 11> code{};
    weight[0] = 1;
    qint64 passes = 0;
    progress.start(IterationCount);
    int g = 0;
    for (;;) {
        // Go down from gene g with the current slots.
        for (; g < 10; ++g) {
            const MateOutcome &o = Genes[g].Outcome[slot[g]];
            const quint64 *fits = &m_fits[size_t((g * 4 + slot[g]) * words)];
            const quint64 *in = &carried[size_t(g * words)];
            quint64 *out = &carried[size_t((g + 1) * words)];
            for (int w = 0; w < words; ++w)
                out[w] = in[w] & fits[w];
            weight[g + 1] = o.Count != 0 ? weight[g] * o.Count : weight[g];
            code[g + 1] = (code[g] << 2) | quint32(slot[g]);
        }
        // A pass takes a fraction of a microsecond: the bar hears of them in thousands.
        if ((++passes & 0xFFF) == 0)
            progress.step(passes);
        TotalWeight += weight[10];
        Classify_Genotype(carried.data(), slot, code[10], weight[10], lastGene, anyUnexpected);
        // Next genotype: the deepest gene with another slot moves on.
        g = 9;
        while (g >= 0 && slot[g] == Genes[g].LastOutcome) {
            slot[g] = 0;
            --g;
        }
        if (g < 0)
            break;
        ++slot[g];
    }

    for (size_t i = 0; i < m_summaryWeight.size(); ++i) {
        const qint16 colour = m_summaryColour[i];
        OffspringRow s;
        s.Name = colour < 0 ? u"Unknown"_s : m_genetics.ColourTable.at(colour).Name;
        s.Weight = m_summaryWeight[i];
        if (colour >= 0)
            s.GenoText = Genotype_Text(m_genetics, m_genetics.ColourTable.at(colour).Alleles);
        ColourSummary << s;
    }
}

QString percentText(double share)
{
    return QString::number(share * 100.0, 'f', 2) + u'%';
}

} // namespace tarvex
