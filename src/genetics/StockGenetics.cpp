#include "StockGenetics.h"

#include "Genotypes.h"

#include "store/StockRow.h"
#include "store/StudDatabase.h"

using namespace Qt::StringLiterals;

namespace tarvex {

QStringList alleleItems(const GeneDef &gene)
{
    QStringList items{u"Unknown"_s};
    // Slot 9 can be stored but has no item: the lists stop at eight alleles.
    for (int a = 1; a <= 8; ++a) {
        if (gene.Code[a].isEmpty())
            continue;
        items << (gene.Description[a].isEmpty() ? gene.Code[a]
                                                : gene.Code[a] + u" - "_s + gene.Description[a]);
    }
    return items;
}

AnimalInHand animalInHand(Session &s, qint64 number)
{
    AnimalInHand animal;
    if (const std::optional<StockRow> row = readAnimal(s.Stud->handle(), number))
        animal = {row->number, row->name, row->colour, row->type, row->sex, row->archive, row->sexRecorded};
    return animal;
}

void Open_Stock_Genetics(Session &s, Prompts &prompts, const AnimalInHand &animal)
{
    s.CurrentStockNo = animal.number;
    s.CurrentStockName = animal.name;
    if (!Read_Genes(s, prompts, animal.number)) {
        Update_Genes(s, prompts, animal.colour, animal.type, animal.number, animal.sex);
        Read_Genes(s, prompts, animal.number);
    }
}

Genotype Show_Genotype(Session &s)
{
    for (int i = 0; i <= s.Genetics->LastGene; ++i) {
        AllelePair p = s.CurrentAlleles[i];
        Order_Alleles(p.allele1, p.allele2);
        s.DisplayAlleles[i] = p;
    }
    return s.DisplayAlleles;
}

void Store_Chosen_Alleles(Session &s, Prompts &prompts, const QList<AllelePair> &chosen)
{
    for (int i = 0; i <= s.Genetics->LastGene && i < chosen.size(); ++i)
        s.CurrentAlleles[i] = chosen.at(i);
    Write_Genes(s, prompts);
}

} // namespace tarvex
