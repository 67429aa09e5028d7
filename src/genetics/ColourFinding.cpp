#include "ColourFinding.h"

#include "Genotypes.h"

#include "core/Options.h"
#include "pedigree/StudInbreeding.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvex {

StockForSearch Get_Stock_Details_For_Search(Session &s, qint64 number)
{
    const std::optional<StockRow> animal = readAnimal(s.Stud->handle(), number);
    if (!animal)
        return {u"Not Found"_s, QString(), QString()};
    return {animal->name, animal->type, animal->archive};
}

ColourFinder::ColourFinder(Session &session, Prompts &prompts)
    : m_session(session), m_prompts(prompts), m_prediction(*session.Genetics, prompts)
{
}

const ColourFinder::Animal &ColourFinder::animal(qint64 number)
{
    auto it = m_animals.find(number);
    if (it == m_animals.end()) {
        Animal a;
        a.details = Get_Stock_Details_For_Search(m_session, number);
        a.hasGenes = Read_Genes(m_session, m_prompts, number);
        a.genes = m_session.CurrentAlleles;
        it = m_animals.insert(number, a);
    }
    return it.value();
}

std::shared_ptr<const ColourShares> ColourFinder::offspringOfColour(const Animal &sire, const Animal &dam,
                                                                    const QString &colour)
{
    // Pairs of the same two genotypes have the same offspring of a colour.
    QByteArray key(reinterpret_cast<const char *>(sire.genes.data()), int(sizeof(Genotype)));
    key.append(reinterpret_cast<const char *>(dam.genes.data()), int(sizeof(Genotype)));
    key.append(colour.toUtf8());
    auto it = m_pairs.find(key);
    if (it != m_pairs.end())
        return it.value();
    m_prediction.Prepare_Mating(sire.genes, dam.genes);
    m_prediction.Enumerate_Offspring();
    // The whole of the pair's weights, taken to a whole number after each row.
    double sum = 0;
    for (qsizetype i = 0; i < m_prediction.rowCount(); ++i)
        sum = std::nearbyint(sum + m_prediction.rowWeight(i));
    auto rows = std::make_shared<ColourShares>();
    const GeneticsData &g = *m_session.Genetics;
    for (qsizetype i = 0; i < m_prediction.rowCount(); ++i) {
        const qint16 c = m_prediction.rowColour(i);
        const QString &name = c < 0 ? u"Unknown"_s : g.ColourTable.at(c).Name;
        if (name == colour) {
            const OffspringRow r = m_prediction.row(i);
            rows->append({r.GenoText, float(r.Weight / sum * 100)});
        }
    }
    return m_pairs.insert(key, rows).value();
}

bool ColourFinder::Find_Matings(const Entries &sires, const Entries &dams, const QString &colour,
                                const QString &breed, QList<MatingPair> *hits, Progress &progress)
{
    hits->clear();
    if (sires.size() == 1 || dams.size() == 1)
        return false;
    const auto qualifies = [&](const Animal &a) {
        return a.details.archive == u"No" && (breed.isEmpty() || a.details.type == breed);
    };
    progress.start(sires.size() - 1);
    bool stopped = false;
    for (qsizetype s = 1; s < sires.size() && !stopped; ++s) {
        const Animal sire = animal(sires.at(s).number);
        if (qualifies(sire)) {
            for (qsizetype d = 1; d < dams.size(); ++d) {
                const Animal dam = animal(dams.at(d).number);
                if (progress.due()) {
                    progress.step(s - 1, {sire.details.name, dam.details.name});
                    if (progress.cancelled()) {
                        stopped = true;
                        break;
                    }
                }
                if (!qualifies(dam) || !sire.hasGenes || !dam.hasGenes)
                    continue;
                auto rows = offspringOfColour(sire, dam, colour);
                if (!rows->isEmpty())
                    hits->append({sire.details.name, dam.details.name, rows, sires.at(s).number, dams.at(d).number});
            }
        }
        progress.step(s);
    }
    if (stopped)
        return !hits->isEmpty();
    if (hits->isEmpty()) {
        m_prompts.show(u"No Matings Found for Colour Selected"_s, u"No Match"_s, Prompts::Icon::Information);
        return false;
    }
    return true;
}

QString Add_Offspring_Coi(Session &session, QList<MatingPair> &hits)
{
    std::vector<std::pair<qint64, qint64>> pairs;
    pairs.reserve(std::size_t(hits.size()));
    for (const MatingPair &p : hits)
        pairs.emplace_back(p.sireNumber, p.damNumber);
    try {
        const std::vector<double> coi =
            Pairs_Inbreeding(session.Stud->handle(), pairs, inbreedingGenerations(Options(session)));
        for (qsizetype i = 0; i < hits.size(); ++i)
            hits[i].coi = coi[std::size_t(i)];
    } catch (const PedigreeLoop &loop) {
        return pedigreeLoopText(session.Stud->handle(), loop.number());
    }
    return {};
}

QList<FindLine> Show_Find_Results(const QList<MatingPair> &hits, bool coloursOnly,
                                  const QString &colourGenotype)
{
    QList<FindLine> lines;
    float kept = 0;
    for (const MatingPair &pair : hits) {
        const QString coi = pair.coi < 0 ? QString() : QString::number(pair.coi * 100, 'f', 2) + u'%';
        if (coloursOnly) {
            // Neighbouring rows of the same names are one line: two animals of one name
            // count as one pair here.
            for (const auto &row : *pair.rows) {
                if (!lines.isEmpty() && lines.last().sire == pair.Sire && lines.last().dam == pair.Dam) {
                    kept += row.second;
                    lines.last().percent = percentText(kept / 100);
                } else {
                    kept = row.second;
                    lines.append({pair.Sire, pair.Dam, colourGenotype, percentText(kept / 100), coi});
                }
            }
            continue;
        }
        for (const auto &[genotype, percent] : *pair.rows)
            lines.append({pair.Sire, pair.Dam, genotype, percentText(percent / 100), coi});
    }
    return lines;
}

} // namespace tarvex
