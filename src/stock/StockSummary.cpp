#include "StockSummary.h"

#include "store/StockRow.h"
#include "store/StudDatabase.h"

using namespace Qt::StringLiterals;

namespace tarvex {

std::optional<StockSummary> summaryOf(Session &s, qint64 number)
{
    Database &db = s.Stud->handle();
    const std::optional<StockRow> animal = readAnimal(db, number);
    if (!animal)
        return std::nullopt;
    const auto date = [&](const std::optional<QDate> &d) { return d ? s.Dates.format(*d) : QString(); };
    StockSummary m;
    m.name = animal->name;
    m.sex = animal->sex;
    m.type = animal->type;
    m.colour = animal->colour;
    m.dob = date(animal->dob);
    m.dod = date(animal->dod);
    m.breeder = animal->breeder;
    m.status = animal->status;
    m.archive = animal->archive;
    m.genotype = animal->genotype;
    m.health = animal->health;
    m.notes = animal->notes;
    m.ringNo = animal->ringNo;
    m.id2 = animal->id2;
    m.id3 = animal->id3;
    const auto parent = [&](const std::optional<qint64> &known) {
        return known ? Get_Stock_Name(db, *known) : QString();
    };
    m.sireName = parent(animal->knownSire());
    m.damName = parent(animal->knownDam());
    return m;
}

} // namespace tarvex
