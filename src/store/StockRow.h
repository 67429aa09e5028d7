#pragma once

#include "Database.h"

#include <QDate>
#include <QString>

#include <optional>

namespace tarvex {

class Recordset;
class Table;

/// One animal as the Stock table holds it. Texts are empty for null fields; dates, weight
/// and parents are absent when null. A parent is kept as stored: values below 1 (left by
/// older versions, or -1 for an ancestor whose own parents are not known) mean unknown, and
/// knownSire()/knownDam() say so.
struct StockRow
{
    qint64 number = 0;
    QString name, ringNo, id2, id3, type, sex, colour, breeder, status, archive, genotype, health, notes,
        bestAward;
    bool sexRecorded = false; // Sex is not null
    std::optional<QDate> dob, dod;
    std::optional<double> weight;
    std::optional<qint64> sire, dam;

    std::optional<qint64> knownSire() const { return sire && *sire >= 1 ? sire : std::nullopt; }
    std::optional<qint64> knownDam() const { return dam && *dam >= 1 ? dam : std::nullopt; }
};

/// The animal with that number, or nothing when no row has it.
std::optional<StockRow> readAnimal(Database &db, qint64 number);

/// The animal a query row or a cursor stands on (all fields of Stock).
StockRow stockRowOf(const Row &row);
StockRow stockRowOf(const Table &cursor);
StockRow stockRowOf(const Recordset &rows);

/// The name of the animal with that number, or "Not Found" when no row has it: the text
/// the screens and printouts show for a reference to an animal that is gone.
QString Get_Stock_Name(Database &db, qint64 number);

} // namespace tarvex
