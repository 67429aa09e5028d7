#include "Genotypes.h"

#include "GeneticsFiles.h"
#include "GenotypeInference.h"

#include "core/Options.h"

#include "store/StudDatabase.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvex {

void Order_Alleles(quint8 &first, quint8 &second)
{
    if (second != 0 && (first == 0 || second < first))
        std::swap(first, second);
}

bool Ensure_Genetics_Loaded(Session &s, Prompts &prompts)
{
    if (!s.GeneticsOn || s.GeneticsLoaded)
        return s.GeneticsLoaded;
    auto data = std::make_shared<GeneticsData>();
    GeneticsFiles files(s.DataFolder, prompts);
    switch (files.Load_Colours(s.GeneticsFile, *data)) {
    case GeneticsFiles::Result::Loaded:
        s.Genetics = data;
        s.GeneticsLoaded = true;
        s.CurrentAlleles = {};
        break;
    case GeneticsFiles::Result::Fatal:
        s.shell().endProgram();
        break;
    case GeneticsFiles::Result::NotLoaded:
        break;
    }
    return s.GeneticsLoaded;
}

bool Read_Genes(Session &s, Prompts &prompts, qint64 stockNo)
{
    const GeneticsData &g = *s.Genetics;
    for (int i = 0; i <= g.LastGene; ++i)
        s.CurrentAlleles[i] = {};
    if (stockNo < 1)
        return false;
    if (s.GenesCache) {
        const auto known = s.GenesCache->animals.constFind(stockNo);
        if (known != s.GenesCache->animals.cend()) {
            for (int i = 0; i <= g.LastGene; ++i) {
                if (known->read & (1u << i)) {
                    s.CurrentAlleles[i] = known->alleles[i];
                    s.DisplayAlleles[i] = known->alleles[i];
                }
            }
            return known->read != 0;
        }
    }
    // The animal's rows in the order of the Genes key, read with one prepared query: this
    // runs for every relative of every animal in the whole-stud check.
    GenesReadCache::Entry entry;
    bool read = false;
    bool unknown = false;
    s.Stud->handle().eachRow(
        u"SELECT Id, allele1, allele2 FROM Genes WHERE StockNo = ? ORDER BY Id"_s, {stockNo},
        [&](const Row &row) {
            if (unknown)
                return;
            const int id = int(row.number(u"Id"_s));
            int index = -1;
            for (int i = 0; i <= g.LastGene; ++i) {
                if (g.GeneTable.at(i).Id == id) {
                    index = i;
                    break;
                }
            }
            if (index < 0) {
                unknown = true;
                return;
            }
            const AllelePair pair{quint8(row.number(u"allele1"_s)), quint8(row.number(u"allele2"_s))};
            s.CurrentAlleles[index] = pair;
            s.DisplayAlleles[index] = pair;
            entry.alleles[index] = pair;
            entry.read |= quint16(1u << index);
            read = true;
        });
    if (unknown)
        prompts.show(u"Unknown Gene Number"_s); // not kept: the box shows at each reading
    else if (s.GenesCache)
        s.GenesCache->animals.insert(stockNo, entry);
    return read;
}

QString Genotype_Text(const GeneticsData &g, const Genotype &alleles)
{
    QString text;
    text.reserve(64);
    for (int i = 0; i <= g.LastGene && i < 10; ++i) {
        const AllelePair p = alleles[i];
        const GeneDef &gene = g.GeneTable.at(i);
        text += u' ';
        if (p.allele1 != 0)
            text += gene.Code[p.allele1];
        else
            text += u'_';
        if (p.allele2 != 0)
            text += gene.Code[p.allele2];
        else
            text += u" _";
    }
    return text.trimmed();
}

QString Genotype_Html(const GeneticsData &g, const Genotype &alleles)
{
    const auto drawn = [](const QString &symbol) {
        const QString rest = symbol.mid(1).toHtmlEscaped();
        return symbol.left(1).toHtmlEscaped() +
               (rest.isEmpty() ? QString() : u"<sup>"_s + rest + u"</sup>"_s);
    };
    QStringList entries;
    for (int i = 0; i <= g.LastGene && i < 10; ++i) {
        const AllelePair p = alleles[i];
        const GeneDef &gene = g.GeneTable.at(i);
        const QString first = p.allele1 != 0 ? drawn(gene.Code[p.allele1]) : u"_"_s;
        if (p.allele2 != 0)
            entries << first + drawn(gene.Code[p.allele2]);
        else
            entries << first << u"_"_s;
    }
    return u"<span style=\"white-space:pre\">"_s + entries.join(u' ') + u"</span>"_s;
}

void Write_Genes(Session &s, Prompts &prompts)
{
    const GeneticsData &g = *s.Genetics;
    Database &db = s.Stud->handle();
    Transaction tx(db);
    // Rows that already hold their pair are left as they are. During a walk over the stud
    // the animal's rows are usually in memory already.
    QHash<int, AllelePair> stored;
    bool onlyKnownGenes = true;
    const auto cached = s.GenesCache ? s.GenesCache->animals.constFind(s.CurrentStockNo)
                                     : QHash<qint64, GenesReadCache::Entry>::const_iterator();
    if (s.GenesCache && cached != s.GenesCache->animals.cend()) {
        for (int i = 0; i <= g.LastGene; ++i) {
            if (cached->read & (1u << i))
                stored.insert(g.GeneTable.at(i).Id, cached->alleles[i]);
        }
    } else {
        db.eachRow(u"SELECT Id, allele1, allele2 FROM Genes WHERE StockNo = ?"_s, {s.CurrentStockNo},
                   [&](const Row &row) {
                       const int id = int(row.number(u"Id"_s));
                       stored.insert(id, {quint8(row.number(u"allele1"_s)), quint8(row.number(u"allele2"_s))});
                       onlyKnownGenes = onlyKnownGenes && std::any_of(g.GeneTable.cbegin(), g.GeneTable.cend(),
                                                                      [id](const GeneDef &d) { return d.Id == id; });
                   });
    }
    for (int i = 0; i <= g.LastGene; ++i) {
        AllelePair p = s.CurrentAlleles[i];
        Order_Alleles(p.allele1, p.allele2);
        const int id = g.GeneTable.at(i).Id;
        s.DisplayAlleles[i] = p;
        const auto row = stored.constFind(id);
        if (row != stored.cend() && *row == p)
            continue;
        if (p.allele1 != 0 || p.allele2 != 0) {
            db.executeRepeated(u"INSERT INTO Genes (StockNo, Id, allele1, allele2) VALUES (?, ?, ?, ?) "
                               u"ON CONFLICT (StockNo, Id) DO UPDATE SET allele1 = excluded.allele1, "
                               u"allele2 = excluded.allele2"_s,
                               {s.CurrentStockNo, id, p.allele1, p.allele2});
        } else if (row != stored.cend()) {
            db.executeRepeated(u"DELETE FROM Genes WHERE StockNo = ? AND Id = ?"_s, {s.CurrentStockNo, id});
        }
    }
    db.executeRepeated(u"UPDATE Stock SET GenoType = ? WHERE Number = ?"_s,
                       {Genotype_Text(g, s.DisplayAlleles), s.CurrentStockNo});
    tx.commit();
    if (s.GenesCache) {
        // What was written is what a reading would give, unless rows of genes the file
        // does not know are left, whose box a reading shows each time.
        if (onlyKnownGenes) {
            GenesReadCache::Entry entry;
            for (int i = 0; i <= g.LastGene; ++i) {
                entry.alleles[i] = s.DisplayAlleles[i];
                if (s.DisplayAlleles[i].allele1 != 0 || s.DisplayAlleles[i].allele2 != 0)
                    entry.read |= quint16(1u << i);
            }
            s.GenesCache->animals.insert(s.CurrentStockNo, entry);
        } else {
            s.GenesCache->animals.remove(s.CurrentStockNo);
        }
    }
    Read_Genes(s, prompts, s.CurrentStockNo);
}

void Update_Genes(Session &s, Prompts &prompts, const QString &colour, const QString &type, qint64 stockNo,
                  const QString &sex)
{
    if (!Ensure_Genetics_Loaded(s, prompts))
        return;
    s.CurrentStockNo = stockNo;
    const auto examine = [&] {
        Examine_Parents(s, prompts, true);
        Examine_Offspring(s, prompts, sex, true);
    };
    // An animal with a genotype keeps it: its colour is no longer looked at.
    if (Read_Genes(s, prompts, stockNo)) {
        examine();
        return;
    }
    if (colour.isEmpty()) {
        examine();
        return;
    }
    Options options(s);
    const bool withBreed = options.flag(Opt::MatchColour);
    QString sought = withBreed ? colour + u' ' + type : colour;
    while (sought.endsWith(u' '))
        sought.chop(1);
    QString name = options.entry(OptionSection::GeneticsMap, sought, sought);
    bool saveMatch = false;
    const GeneticsData &g = *s.Genetics;
    for (;;) {
        const QString upper = name.toUpper();
        const ColourDef *row = nullptr;
        for (const ColourDef &c : g.ColourTable) {
            if (c.Name.toUpper() == upper) {
                row = &c;
                break;
            }
        }
        if (row) {
            for (int i = 0; i <= g.LastGene; ++i)
                s.CurrentAlleles[i] = row->Alleles[i];
            break;
        }
        name = s.shell().chooseColourMatch(sought, &saveMatch);
        if (name.isEmpty())
            return;
    }
    Write_Genes(s, prompts);
    if (saveMatch && sought.toUpper() != name.toUpper())
        options.setEntry(OptionSection::GeneticsMap, sought, name);
    examine();
}

} // namespace tarvex
