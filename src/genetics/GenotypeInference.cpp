#include "GenotypeInference.h"

#include "Genotypes.h"

#include "store/StockRow.h"
#include "store/StudDatabase.h"

#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

/// What a relative's homozygous allele tells about the animal's pair: the animal must carry
/// it. An unknown place takes it; a pair with both places known and neither equal to it is
/// a conflict and stays as it is.
void mustCarry(AllelePair &pair, quint8 allele, bool &conflict)
{
    if (pair.allele1 == allele || pair.allele2 == allele)
        return;
    if (pair.allele1 == 0)
        pair.allele1 = allele;
    else if (pair.allele2 == 0)
        pair.allele2 = allele;
    else
        conflict = true;
}

bool homozygousKnown(AllelePair p)
{
    return p.allele1 == p.allele2 && p.allele1 != 0;
}

struct Conflicts
{
    std::array<bool, 10> gene{};

    QString text(const GeneticsData &g) const
    {
        QString text;
        for (int i = 0; i <= g.LastGene; ++i) {
            if (!gene[i])
                continue;
            if (text.isEmpty())
                text = u"\nIgnored Conflicts Found on "_s + g.GeneTable.at(i).Name;
            else
                text += u" and "_s + g.GeneTable.at(i).Name;
        }
        if (!text.isEmpty())
            text += u'\n';
        return text;
    }
};

struct StockLinks
{
    qint64 sire = 0, dam = 0;
    QString sex;
};

StockLinks linksOf(Session &s, qint64 number)
{
    StockLinks links;
    if (const std::optional<StockRow> animal = readAnimal(s.Stud->handle(), number))
        links = {animal->sire.value_or(0), animal->dam.value_or(0), animal->sex};
    return links;
}

Genotype readPairs(Session &s, Prompts &prompts, qint64 number)
{
    Read_Genes(s, prompts, number);
    return s.CurrentAlleles;
}

/// Stores the examined genotype, or puts it to the user first; leaves CurrentAlleles as
/// stored afterwards.
void finish(Session &s, Prompts &prompts, const Genotype &stored, const Genotype &examined,
            const QString &oldText, const QString &newText, const QString &conflictText,
            const QString &questionTitle, const QString &reportTitle, bool silent)
{
    if (oldText != newText) {
        bool store = silent && conflictText.isEmpty();
        if (!store) {
            store =
                prompts.askYesNo(u"Old Genotype   : "_s + oldText + u"\nNew Genotype : "_s + newText + u'\n' +
                                     conflictText + u"\nDo you want to update to this Genotype?"_s,
                                 questionTitle, Prompts::Icon::Question);
        }
        if (store) {
            s.CurrentAlleles = examined;
            Write_Genes(s, prompts);
            return;
        }
    } else if (!silent) {
        prompts.show(u"No Changes Detected\n"_s + conflictText, reportTitle, Prompts::Icon::Information);
    }
    s.CurrentAlleles = stored;
}

} // namespace

void Examine_Parents(Session &s, Prompts &prompts, bool silent)
{
    const GeneticsData &g = *s.Genetics;
    const StockLinks links = linksOf(s, s.CurrentStockNo);
    const Genotype sire = readPairs(s, prompts, links.sire);
    const Genotype dam = readPairs(s, prompts, links.dam);
    Read_Genes(s, prompts, s.CurrentStockNo);
    s.DisplayAlleles = s.CurrentAlleles;
    const QString oldText = Genotype_Text(g, s.DisplayAlleles);

    Conflicts conflicts;
    const Genotype stored = s.CurrentAlleles;
    Genotype animal = stored;
    for (int i = 0; i <= g.LastGene; ++i) {
        AllelePair &p = animal[i];
        const AllelePair sp = sire[i], dp = dam[i];
        if (homozygousKnown(sp)) {
            const quint8 a = sp.allele1;
            if (dp.allele1 == a && dp.allele2 == a) {
                // Both parents can only give this allele. Only the first place is looked
                // at, so a pair carrying it second becomes homozygous too.
                if (p.allele1 == a || p.allele1 == 0)
                    p = {a, a};
                else
                    conflicts.gene[i] = true;
            } else {
                mustCarry(p, a, conflicts.gene[i]);
            }
        }
        if (homozygousKnown(dp))
            mustCarry(p, dp.allele1, conflicts.gene[i]);
        Order_Alleles(p.allele1, p.allele2);
        s.DisplayAlleles[i] = p;
    }
    const QString newText = Genotype_Text(g, s.DisplayAlleles);
    finish(s, prompts, stored, animal, oldText, newText, conflicts.text(g), u"Parents Examined"_s,
           u"Parents Genetics Examined"_s, silent);
}

void Examine_Offspring(Session &s, Prompts &prompts, const QString &sex, bool silent)
{
    QString parentField;
    if (sex == s.MaleWord)
        parentField = u"Sire"_s;
    else if (sex == s.FemaleWord)
        parentField = u"Dam"_s;
    else
        return;
    const GeneticsData &g = *s.Genetics;
    Read_Genes(s, prompts, s.CurrentStockNo);
    const Genotype stored = s.CurrentAlleles;
    Genotype animal = stored;
    s.DisplayAlleles = animal;
    const QString oldText = Genotype_Text(g, s.DisplayAlleles);

    // The animal's own sex as recorded decides which parent of each child is the other one.
    const bool recordedMale = linksOf(s, s.CurrentStockNo).sex == s.MaleWord;
    struct Child
    {
        qint64 number, otherParent;
    };
    std::vector<Child> children;
    s.Stud->handle().eachRow(
        u"SELECT Number, Sire, Dam FROM Stock WHERE %1 = ? ORDER BY Number"_s.arg(parentField),
        {s.CurrentStockNo}, [&](const Row &row) {
            children.push_back({row.number(u"Number"_s), row.number(recordedMale ? u"Dam"_s : u"Sire"_s)});
        });

    Conflicts conflicts;
    // A child without genes is judged on the pairs of the child before it.
    Genotype child{};
    for (const Child &c : children) {
        if (Read_Genes(s, prompts, c.number)) {
            child = s.CurrentAlleles;
            for (int i = 0; i <= g.LastGene; ++i) {
                if (homozygousKnown(child[i]))
                    mustCarry(animal[i], child[i].allele1, conflicts.gene[i]);
                Order_Alleles(animal[i].allele1, animal[i].allele2);
            }
        }
        if (Read_Genes(s, prompts, c.otherParent)) {
            const Genotype other = s.CurrentAlleles;
            for (int i = 0; i <= g.LastGene; ++i) {
                if (!homozygousKnown(other[i]))
                    continue;
                // A child's allele the other parent cannot have given came from this animal.
                for (const quint8 allele : {child[i].allele1, child[i].allele2}) {
                    if (allele != 0 && allele != other[i].allele1)
                        mustCarry(animal[i], allele, conflicts.gene[i]);
                }
                Order_Alleles(animal[i].allele1, animal[i].allele2);
            }
        }
    }
    s.DisplayAlleles = animal;
    const QString newText = Genotype_Text(g, s.DisplayAlleles);
    finish(s, prompts, stored, animal, oldText, newText, conflicts.text(g), u"Offspring Genetics Examined"_s,
           u"Offspring Genetics Examined"_s, silent);
}

bool Check_All_Genotypes(Session &s, Prompts &prompts, Progress &progress)
{
    if (!Ensure_Genetics_Loaded(s, prompts))
        return true;
    // The animals in name order, as the stud's name index has them; the check adds and
    // removes none, so the order is taken once.
    Database &db = s.Stud->handle();
    std::vector<qint64> numbers;
    db.eachRow(u"SELECT Number FROM Stock ORDER BY Name, Number"_s, {},
               [&](const Row &row) { numbers.push_back(row.number(u"Number"_s)); });
    progress.start(qint64(numbers.size()));
    // The work is saved a few thousand animals at a time: reads inside one transaction keep
    // the file's pages at hand, and the disk is synced once per batch, not once per
    // animal. A check that stops part way keeps the batches done and is simply run again.
    std::optional<Transaction> batch;
    int inBatch = 0;
    qint64 done = 0;
    // The parents on show: an animal with a parent not recorded leaves the one shown before.
    std::optional<qint64> shownSire, shownDam;
    CachedGeneReads cache(s);
    for (const qint64 number : numbers) {
        if (progress.cancelled())
            break;
        if (!batch)
            batch.emplace(db);
        const std::optional<StockRow> animal = readAnimal(db, number);
        ++done;
        if (!animal)
            continue;
        if (animal->sire)
            shownSire = animal->sire;
        if (animal->dam)
            shownDam = animal->dam;
        // The names are looked up only when the screen will show them.
        if (progress.due() || done == qint64(numbers.size())) {
            progress.step(done, {animal->name, shownSire ? Get_Stock_Name(db, *shownSire) : QString(),
                                 shownDam ? Get_Stock_Name(db, *shownDam) : QString()});
        } else {
            progress.step(done);
        }
        Update_Genes(s, prompts, animal->colour, animal->type, number, animal->sex);
        if (++inBatch == 5000) {
            batch->commit();
            batch.reset();
            inBatch = 0;
        }
    }
    if (batch)
        batch->commit();
    return done == qint64(numbers.size());
}

} // namespace tarvex
