#include "Genotypes.h"

#include "GeneticsFiles.h"

#include "store/StudDatabase.h"

#include <QCoreApplication>

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
        if (s.endProgram)
            s.endProgram();
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
    Table &genes = *s.Stud->DbGene;
    genes.setIndex(u"PrimaryKey"_s);
    genes.seek(u">="_s, {stockNo});
    bool read = false;
    while (!genes.noMatch() && genes.hasCurrent()) {
        if (genes.field(u"StockNo"_s).toLongLong() != stockNo)
            break;
        const int id = genes.field(u"Id"_s).toInt();
        int index = -1;
        for (int i = 0; i <= g.LastGene; ++i) {
            if (g.GeneTable.at(i).Id == id) {
                index = i;
                break;
            }
        }
        if (index < 0) {
            prompts.show(u"Unknown Gene Number"_s);
            return read;
        }
        const AllelePair pair{quint8(genes.field(u"allele1"_s).toInt()), quint8(genes.field(u"allele2"_s).toInt())};
        s.CurrentAlleles[index] = pair;
        s.DisplayAlleles[index] = pair;
        read = true;
        genes.moveNext();
    }
    return read;
}

QString Genotype_Text(const GeneticsData &g, const Genotype &alleles)
{
    QString text;
    for (int i = 0; i <= g.LastGene && i < 10; ++i) {
        const AllelePair p = alleles[i];
        const GeneDef &gene = g.GeneTable.at(i);
        text += u' ' + (p.allele1 != 0 ? gene.Code[p.allele1] : u"_"_s);
        text += p.allele2 != 0 ? gene.Code[p.allele2] : u" _"_s;
    }
    return text.trimmed();
}

void Write_Genes(Session &s, Prompts &prompts)
{
    const GeneticsData &g = *s.Genetics;
    Table &genes = *s.Stud->DbGene;
    Transaction tx(genes.database());
    genes.setIndex(u"PrimaryKey"_s);
    for (int i = 0; i <= g.LastGene; ++i) {
        AllelePair p = s.CurrentAlleles[i];
        Order_Alleles(p.allele1, p.allele2);
        const int id = g.GeneTable.at(i).Id;
        genes.seek(u"="_s, {s.CurrentStockNo, id});
        const bool known = p.allele1 != 0 || p.allele2 != 0;
        if (genes.noMatch()) {
            if (known) {
                genes.addNew();
                genes.setField(u"StockNo"_s, s.CurrentStockNo);
                genes.setField(u"Id"_s, id);
                genes.setField(u"allele1"_s, p.allele1);
                genes.setField(u"allele2"_s, p.allele2);
                genes.update();
            }
        } else if (!known) {
            genes.deleteCurrent();
        } else {
            genes.edit();
            genes.setField(u"allele1"_s, p.allele1);
            genes.setField(u"allele2"_s, p.allele2);
            genes.update();
        }
        s.DisplayAlleles[i] = p;
    }
    Table &stock = *s.Stud->StockUtil;
    stock.setIndex(u"NumberKey"_s);
    stock.seek(u"="_s, {s.CurrentStockNo});
    if (!stock.noMatch()) {
        stock.edit();
        stock.setField(u"GenoType"_s, Genotype_Text(g, s.DisplayAlleles));
        stock.update();
    }
    tx.commit();
    Read_Genes(s, prompts, s.CurrentStockNo);
}

void Update_Genes(Session &s, Prompts &prompts, const QString &colour, const QString &type, qint64 stockNo,
                  const QString &sex)
{
    if (!Ensure_Genetics_Loaded(s, prompts))
        return;
    CRegSettings settings = s.settings();
    const bool withBreed = settings.GetSetting(s.OptionsSection, u"MatchColour"_s, u"0"_s).toInt() != 0;
    QString sought = withBreed ? colour + u' ' + type : colour;
    while (sought.endsWith(u' '))
        sought.chop(1);
    s.CurrentStockNo = stockNo;
    // An animal with a genotype keeps it: its colour is no longer looked at. The
    // examinations of its parents and offspring join here once they are there.
    if (Read_Genes(s, prompts, stockNo))
        return;
    QCoreApplication::processEvents();
    if (colour.isEmpty())
        return;
    const QString mapSection = s.StockType + u"\\Genetics Map"_s;
    QString name = settings.GetSetting(mapSection, sought, sought);
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
        name = s.chooseColourMatch ? s.chooseColourMatch(sought, &saveMatch) : QString();
        if (name.isEmpty())
            return;
    }
    Write_Genes(s, prompts);
    if (saveMatch && sought.toUpper() != name.toUpper())
        settings.SaveSetting(mapSection, sought, name);
    (void)sex;
}

} // namespace tarvex
