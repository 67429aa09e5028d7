#include "ReferencePrediction.h"

#include "genetics/Genotypes.h"

using namespace Qt::StringLiterals;

namespace tarvex {

ReferencePrediction::ReferencePrediction(const GeneticsData &genetics, Prompts &prompts)
    : m_genetics(genetics), m_prompts(prompts)
{
}

void ReferencePrediction::Add_Outcome(std::array<MateOutcome, 4> &outcomes, quint8 first, quint8 second)
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

void ReferencePrediction::Prepare_Mating(const Genotype &sire, const Genotype &dam)
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

bool ReferencePrediction::Compare_Alleles(quint8 a, quint8 b, quint8 c, quint8 d, quint8 p)
{
    if (c == 0 && d == 0)
        return true;
    if (a == 0 && b == 0)
        return c >= p;
    if (a != 0 && b != 0) {
        if (c != 0 && d != 0)
            return a == c && b == d;
        if (c != 0 && d == 0)
            return a == c;
    } else if (a != 0 && b == 0) {
        if (c != 0 && d != 0)
            return a == c || (c >= p && a == d);
        if (c != 0 && d == 0) {
            if (a == c)
                return true;
            if (a < c)
                return false;
            // The hidden allele may be c, unless the parents' best allele shows c is out of reach.
            return !(p != 0 && p >= c);
        }
    }
    m_prompts.message(u"Tell Ruben - Unexpected Comparison : %1, %2, %3, %4"_s.arg(a).arg(b).arg(c).arg(d),
                      u"Compare"_s, Prompts::Icon::Information, Prompts::Buttons::Ok);
    return true;
}

void ReferencePrediction::Classify_Genotype(const Genotype &offspring, qint32 weight)
{
    const int lastGene = std::min(m_genetics.LastGene, 9);
    QList<qint16> matches;
    for (qsizetype row = 0; row < m_genetics.ColourTable.size(); ++row) {
        const Genotype &colour = m_genetics.ColourTable.at(row).Alleles;
        bool fits = true;
        for (int g = 0; g <= lastGene && fits; ++g)
            fits = Compare_Alleles(offspring[g].allele1, offspring[g].allele2, colour[g].allele1,
                                   colour[g].allele2, Genes[g].BestParentAllele);
        if (fits)
            matches << qint16(row);
    }
    const QString text = Genotype_Text(m_genetics, offspring);
    if (matches.isEmpty()) {
        OffspringRows.append({-1, u"Unknown"_s, text, float(weight)});
        return;
    }
    const float share = float(double(weight) / matches.size());
    for (const qint16 row : matches)
        OffspringRows.append({row, m_genetics.ColourTable.at(row).Name, text, share});
}

void ReferencePrediction::Enumerate_Offspring(const std::function<void()> &progress)
{
    OffspringRows.clear();
    TotalWeight = 0;
    // A mixed-radix counter over the ten genes: gene 0 changes slowest, each gene's
    // outcomes run in slot order.
    std::array<int, 10> at{};
    Genotype offspring{};
    for (;;) {
        qint32 weight = 1;
        for (int g = 0; g < 10; ++g) {
            const MateOutcome &o = Genes[g].Outcome[at[g]];
            offspring[g] = {o.First, o.Second};
            if (o.Count != 0)
                weight *= o.Count;
        }
        if (progress)
            progress();
        TotalWeight += weight;
        Classify_Genotype(offspring, weight);
        int g = 9;
        while (g >= 0 && at[g] == Genes[g].LastOutcome) {
            at[g] = 0;
            --g;
        }
        if (g < 0)
            break;
        ++at[g];
    }

    ColourSummary.clear();
    for (const OffspringRow &r : std::as_const(OffspringRows)) {
        bool found = false;
        for (OffspringRow &s : ColourSummary) {
            if (s.Name == r.Name) {
                s.Weight += r.Weight;
                found = true;
            }
        }
        if (found)
            continue;
        OffspringRow s;
        s.Name = r.Name;
        s.Weight = r.Weight;
        if (r.ColourIndex != -1)
            s.GenoText = Genotype_Text(m_genetics, m_genetics.ColourTable.at(r.ColourIndex).Alleles);
        ColourSummary << s;
    }
}

} // namespace tarvex
