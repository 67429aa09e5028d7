#pragma once

#include <QDate>
#include <QDateTime>
#include <QVariant>

namespace tarvex {

/// Dates in the stud database are day serials: whole days since 30 December 1899,
/// with the time of day as the fraction. Conditions such as "DOB >= 36526" compare them
/// as plain numbers.
namespace DaySerial {

QDate epoch();
double fromDate(const QDate &date);
double fromDateTime(const QDateTime &dateTime);
/// The date of a serial; an invalid QDate for a null or non-numeric value.
QDate toDate(const QVariant &serial);
QDate toDate(double serial);

} // namespace DaySerial
} // namespace tarvex
