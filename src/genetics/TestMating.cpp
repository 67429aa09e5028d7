#include "TestMating.h"

#include "Genotypes.h"

using namespace Qt::StringLiterals;

namespace tarvex {

MatingParents Load_Parents(Session &s, Prompts &prompts, qint64 sire, qint64 dam)
{
    MatingParents m;
    const GeneticsData &g = *s.Genetics;
    m.hasSire = Read_Genes(s, prompts, sire);
    m.sire = s.CurrentAlleles;
    m.sireText = Genotype_Text(g, m.sire);
    m.hasDam = Read_Genes(s, prompts, dam);
    m.dam = s.CurrentAlleles;
    m.damText = Genotype_Text(g, m.dam);
    return m;
}

QList<MatingLine> Show_Mating_Results(const OffspringPrediction &p, bool coloursOnly, Prompts &prompts)
{
    QList<MatingLine> lines;
    if (p.rowCount() == 0) {
        prompts.show(u"No Results Found for Mating"_s, u"Test Mating"_s, Prompts::Icon::Information);
        return lines;
    }
    const double total = p.TotalWeight;
    if (coloursOnly) {
        for (const OffspringRow &r : p.ColourSummary)
            lines.append({r.Name, r.GenoText, percentText(r.Weight / total)});
    } else {
        lines.reserve(p.rowCount());
        for (qsizetype i = 0; i < p.rowCount(); ++i) {
            const OffspringRow r = p.row(i);
            lines.append({r.Name, r.GenoText, percentText(r.Weight / total)});
        }
    }
    return lines;
}

QString mateTotalText(qsizetype lines, bool coloursOnly)
{
    return (coloursOnly ? u"Total Possible Colours : "_s : u"Total Possible Genotypes : "_s) +
           QString::number(lines);
}

} // namespace tarvex
