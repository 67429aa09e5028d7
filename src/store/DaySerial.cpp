#include "DaySerial.h"

#include <cmath>

namespace tarvex::DaySerial {

QDate epoch()
{
    return QDate(1899, 12, 30);
}

double fromDate(const QDate &date)
{
    return static_cast<double>(epoch().daysTo(date));
}

double fromDateTime(const QDateTime &dateTime)
{
    const QTime t = dateTime.time();
    return fromDate(dateTime.date()) + t.msecsSinceStartOfDay() / 86400000.0;
}

QDate toDate(double serial)
{
    return epoch().addDays(static_cast<qint64>(std::floor(serial)));
}

QDate toDate(const QVariant &serial)
{
    if (serial.isNull())
        return {};
    bool ok = false;
    const double value = serial.toDouble(&ok);
    return ok ? toDate(value) : QDate();
}

} // namespace tarvex::DaySerial
