#include "StockRow.h"

#include "DaySerial.h"
#include "Recordset.h"
#include "Table.h"

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

template <typename Field> StockRow fill(const Field &field)
{
    const auto text = [&](const QString &name) {
        const QVariant v = field(name);
        return v.isNull() ? QString() : v.toString();
    };
    const auto date = [&](const QString &name) -> std::optional<QDate> {
        const QDate d = DaySerial::toDate(field(name));
        return d.isValid() ? std::optional<QDate>(d) : std::nullopt;
    };
    const auto whole = [&](const QString &name) -> std::optional<qint64> {
        const QVariant v = field(name);
        return v.isNull() ? std::nullopt : std::optional<qint64>(v.toLongLong());
    };
    StockRow r;
    r.number = field(u"Number"_s).toLongLong();
    r.name = text(u"Name"_s);
    r.ringNo = text(u"RingNo"_s);
    r.id2 = text(u"id2"_s);
    r.id3 = text(u"id3"_s);
    r.type = text(u"Type"_s);
    const QVariant sex = field(u"Sex"_s);
    r.sexRecorded = !sex.isNull();
    r.sex = text(u"Sex"_s);
    r.colour = text(u"Colour"_s);
    r.breeder = text(u"Breeder"_s);
    r.status = text(u"status"_s);
    r.archive = text(u"Archive"_s);
    r.genotype = text(u"Genotype"_s);
    r.health = text(u"Health"_s);
    r.notes = text(u"Notes"_s);
    r.bestAward = text(u"BestAward"_s);
    r.dob = date(u"DOB"_s);
    r.dod = date(u"DOD"_s);
    const QVariant weight = field(u"Weight"_s);
    if (!weight.isNull())
        r.weight = weight.toDouble();
    r.sire = whole(u"Sire"_s);
    r.dam = whole(u"Dam"_s);
    return r;
}

} // namespace

StockRow stockRowOf(const Row &row)
{
    return fill([&](const QString &name) { return row.value(name); });
}

StockRow stockRowOf(const Table &cursor)
{
    return fill([&](const QString &name) { return cursor.field(name); });
}

StockRow stockRowOf(const Recordset &rows)
{
    return fill([&](const QString &name) { return rows.field(name); });
}

std::optional<StockRow> readAnimal(Database &db, qint64 number)
{
    std::optional<StockRow> found;
    db.eachRow(u"SELECT * FROM Stock WHERE Number = ?"_s, {number},
               [&](const Row &row) { found = stockRowOf(row); });
    return found;
}

QString Get_Stock_Name(Database &db, qint64 number)
{
    const std::optional<StockRow> animal = readAnimal(db, number);
    return animal ? animal->name : u"Not Found"_s;
}

} // namespace tarvex
