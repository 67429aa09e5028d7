#include "IndexCatalogue.h"

using namespace Qt::StringLiterals;

namespace tarvex {

const QList<IndexDefinition> &indexCatalogue()
{
    static const QList<IndexDefinition> catalogue = {
        {u"Stock"_s, u"PrimaryKey"_s, {u"Name"_s}},
        {u"Stock"_s, u"NumberKey"_s, {u"Number"_s}},
        {u"Stock"_s, u"ParentKey"_s, {u"Sex"_s, u"Archive"_s, u"Name"_s}},
        {u"Stock"_s, u"SireKey"_s, {u"Sire"_s}},
        {u"Stock"_s, u"DamKey"_s, {u"Dam"_s}},
        {u"Stock"_s, u"TypeKey"_s, {u"Type"_s}},
        {u"Stock"_s, u"ColourKey"_s, {u"Colour"_s}},
        {u"Stock"_s, u"BreederKey"_s, {u"Breeder"_s}},
        {u"Stock"_s, u"StatusKey"_s, {u"status"_s}},
        {u"Awards"_s, u"PrimaryKey"_s, {u"Number"_s, u"Date"_s, u"Unique"_s}},
        {u"Awards"_s, u"Awards"_s, {u"Award"_s}},
        {u"Awards"_s, u"Judges"_s, {u"Judge"_s}},
        {u"Awards"_s, u"Venues"_s, {u"Venue"_s}},
        {u"BreedNote"_s, u"PrimaryKey"_s, {u"Number"_s, u"Date"_s, u"Unique"_s}},
        {u"Matings"_s, u"PrimaryKey"_s, {u"Unique"_s}},
        {u"Matings"_s, u"SireKey"_s, {u"Sire"_s}},
        {u"Matings"_s, u"DamKey"_s, {u"Dam"_s}},
        {u"Matings"_s, u"BirthKey"_s, {u"Birthdate"_s}},
        {u"Genes"_s, u"PrimaryKey"_s, {u"StockNo"_s, u"Id"_s}},
        {u"Images"_s, u"PrimaryKey"_s, {u"Number"_s, u"imageno"_s}},
        {u"Images"_s, u"DefaultKey"_s, {u"Number"_s, u"Default"_s}},
    };
    return catalogue;
}

std::optional<IndexDefinition> findIndex(const QString &table, const QString &name)
{
    for (const IndexDefinition &d : indexCatalogue()) {
        if (d.table.compare(table, Qt::CaseInsensitive) == 0 && d.name.compare(name, Qt::CaseInsensitive) == 0)
            return d;
    }
    return std::nullopt;
}

} // namespace tarvex
