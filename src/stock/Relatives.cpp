#include "Relatives.h"

#include "store/Recordset.h"
#include "store/StockRow.h"

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

qint64 parentOrUnknown(const QVariant &v)
{
    return (v.isNull() || v.toLongLong() < 1) ? -999 : v.toLongLong();
}

RelativeRow rowOf(const StockRow &a, const std::function<QString(const QDate &)> &formatDate, const QString &unit)
{
    RelativeRow r;
    r.name = a.name;
    r.number = a.number;
    r.sex = a.sex;
    r.dob = a.dob ? formatDate(*a.dob) : QString();
    r.archive = a.archive;
    r.ringNo = a.ringNo;
    r.type = a.type;
    r.colour = a.colour;
    r.breeder = a.breeder;
    r.genotype = a.genotype;
    r.id2 = a.id2;
    r.id3 = a.id3;
    r.bestAward = a.bestAward;
    // Here a weight shows only when there is one; the pedigree shows 0.00 for none.
    if (a.weight.value_or(0) > 0)
        r.weight = QString::number(*a.weight, 'f', 2) + u' ' + unit;
    return r;
}

QList<RelativeRow> fill(Database &db, const QString &query, const std::function<QString(const QDate &)> &formatDate,
                        const QString &unit)
{
    QList<RelativeRow> list;
    Recordset rs(db, query);
    for (; !rs.eof() && list.size() < RelativesCache::kLimit; rs.moveNext()) {
        RelativeRow r = rowOf(stockRowOf(rs), formatDate, unit);
        if (r.name.isEmpty())
            break;
        list << r;
    }
    return list;
}

} // namespace

QString fullSiblingsQuery(const RelativesSubject &a)
{
    return u"SELECT * FROM stock WHERE sire = %1 AND dam = %2 AND number <> %3 ORDER BY name ASC;"_s.arg(
        parentOrUnknown(a.sire)).arg(parentOrUnknown(a.dam)).arg(a.number);
}

QString halfSiblingsQuery(const RelativesSubject &a)
{
    const qint64 sire = parentOrUnknown(a.sire);
    const qint64 dam = parentOrUnknown(a.dam);
    // The last condition binds to the second alternative only; it has always read so.
    return u"SELECT * FROM stock WHERE (sire = %1 AND dam <> %2) OR (sire <> %1 AND dam = %2)  AND number <> %3 "
           u"ORDER BY name ASC;"_s.arg(sire).arg(dam).arg(a.number);
}

QString offspringQuery(const RelativesSubject &a, const QString &maleWord)
{
    return u"SELECT * FROM stock "_s + (a.sex == maleWord ? u"WHERE sire = "_s : u"WHERE dam = "_s) +
           QString::number(a.number) + u" ORDER BY name ASC;"_s;
}

RelativesCache RefreshRelatives(Database &db, const RelativesSubject &subject, const QString &maleWord,
                                const std::function<QString(const QDate &)> &formatDate, const QString &unit)
{
    RelativesCache cache;
    cache.lists[RelativesCache::FullSiblings] = fill(db, fullSiblingsQuery(subject), formatDate, unit);
    cache.lists[RelativesCache::HalfSiblings] = fill(db, halfSiblingsQuery(subject), formatDate, unit);
    cache.lists[RelativesCache::Offspring] = fill(db, offspringQuery(subject, maleWord), formatDate, unit);
    return cache;
}

QStringList detailChoices(const QString &idWord, const QString &id2Word, const QString &id3Word)
{
    QStringList choices{u"Best Award"_s, u"Breed"_s, u"Breeder"_s, u"Colour"_s,
                        u"Date of Birth"_s, u"Genotype"_s, u"Sex"_s, u"Weight"_s};
    for (const QString &w : {idWord, id2Word, id3Word})
        if (!w.isEmpty())
            choices << w;
    return choices;
}

QString relativeDetail(const RelativeRow &r, const QString &choice, const QString &idWord, const QString &id2Word,
                       const QString &id3Word)
{
    const QString c = choice.toUpper();
    QString d;
    if (c == u"SEX")
        d = r.sex;
    else if (c == u"DATE OF BIRTH")
        d = r.dob;
    else if (c == u"BREED")
        d = r.type;
    else if (c == u"COLOUR")
        d = r.colour;
    else if (c == u"BREEDER")
        d = r.breeder;
    else if (c == u"GENOTYPE")
        d = r.genotype;
    else if (c == u"WEIGHT")
        d = r.weight;
    else if (c == u"BEST AWARD")
        d = r.bestAward;
    else if (!idWord.isEmpty() && c == idWord.toUpper())
        d = r.ringNo;
    else if (!id2Word.isEmpty() && c == id2Word.toUpper())
        d = r.id2;
    else if (!id3Word.isEmpty() && c == id3Word.toUpper())
        d = r.id3;
    return d.trimmed();
}

bool relativeShown(const RelativeRow &r, bool showArchived, int sexOption, const QString &maleWord,
                   const QString &femaleWord)
{
    if (!showArchived && r.archive == u"Yes")
        return false;
    if (sexOption == 0 && r.sex != maleWord)
        return false;
    if (sexOption == 1 && r.sex != femaleWord)
        return false;
    return true;
}

std::array<RelativeRow, 6> shortPedigree(Database &db, const QVariant &sire, const QVariant &dam,
                                         const std::function<QString(const QDate &)> &formatDate,
                                         const QString &unit)
{
    std::array<RelativeRow, 6> cells;
    std::array<std::optional<qint64>, 6> sires, dams;
    const auto lookup = [&](int cell, const std::optional<qint64> &number) {
        RelativeRow &r = cells[cell];
        if (!number || *number < 1) {
            r.number = -9999;
            return;
        }
        const std::optional<StockRow> animal = readAnimal(db, *number);
        if (!animal) {
            r.number = *number;
            r.name = u"Not Found"_s;
            return;
        }
        r = rowOf(*animal, formatDate, unit);
        sires[cell] = animal->sire;
        dams[cell] = animal->dam;
    };
    const auto given = [](const QVariant &v) {
        return v.isNull() ? std::nullopt : std::optional<qint64>(v.toLongLong());
    };
    lookup(0, given(sire));
    lookup(1, given(dam));
    lookup(2, sires[0]);
    lookup(3, dams[0]);
    lookup(4, sires[1]);
    lookup(5, dams[1]);
    return cells;
}

} // namespace tarvex
