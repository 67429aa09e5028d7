#include "StockSummary.h"

#include "store/DaySerial.h"
#include "store/Recordset.h"
#include "store/StockLookup.h"
#include "store/StudDatabase.h"

using namespace Qt::StringLiterals;

namespace tarvex {

std::optional<StockSummary> summaryOf(Session &s, qint64 number)
{
    Recordset rs(s.Stud->handle(), u"SELECT * FROM Stock WHERE Number = ?"_s, {number});
    if (rs.eof())
        return std::nullopt;
    const auto text = [&](const QString &f) { return rs.field(f).toString(); };
    const auto date = [&](const QString &f) {
        const QDate d = DaySerial::toDate(rs.field(f));
        return d.isValid() ? s.Dates.format(d) : QString();
    };
    StockSummary m;
    m.name = text(u"Name"_s);
    m.sex = text(u"Sex"_s);
    m.type = text(u"Type"_s);
    m.colour = text(u"Colour"_s);
    m.dob = date(u"DOB"_s);
    m.dod = date(u"DOD"_s);
    m.breeder = text(u"Breeder"_s);
    m.status = text(u"Status"_s);
    m.archive = text(u"Archive"_s);
    m.genotype = text(u"Genotype"_s);
    m.health = text(u"Health"_s);
    m.notes = text(u"Notes"_s);
    m.ringNo = text(u"RingNo"_s);
    m.id2 = text(u"Id2"_s);
    m.id3 = text(u"Id3"_s);
    const auto parent = [&](const QString &f) {
        const QVariant v = rs.field(f);
        return (v.isNull() || v.toLongLong() < 1) ? QString() : Get_Stock_Name(*s.Stud->StockUtil, v.toLongLong());
    };
    m.sireName = parent(u"Sire"_s);
    m.damName = parent(u"Dam"_s);
    return m;
}

} // namespace tarvex
