#pragma once

#include "Prompts.h"

#include <QDate>
#include <QString>

#include <functional>
#include <optional>

namespace tarvex {

/// The machine's short date format taken apart once at start: the format (always written
/// with "/" between its parts), the entry mask ("#" per digit, the machine's separators)
/// and what an empty date field shows ("_" per digit). A machine whose short date has only
/// blanks or nothing between its parts (the C locale's "25 Dec 1999") gets "/".
struct DateSettings
{
    QString DateFormat;
    QString DateMask;
    QString BlankDate;
    QString separator; // the machine's separator (or "/"), put in place of "/" when formatting

    /// A date written in the machine's order with its separators, e.g. "25/12/1999".
    QString format(const QDate &date) const;
    /// The date a field's text stands for, in the machine's order; nothing when the text
    /// is blank or is no date.
    std::optional<QDate> parse(const QString &text) const;
    /// Whether a text fits the entry mask, place by place.
    bool fitsMask(const QString &text) const;
};

/// Formats a date by the machine's short date setting (a locale's function in the program,
/// any function in tests).
using ShortDateFunction = std::function<QString(const QDate &)>;

/// Takes the short date format apart. Nothing when it cannot be taken apart or used; the
/// caller then shows dateFormattingErrorText() under "Date Formatting Error" and ends.
std::optional<DateSettings> Detect_Date_Format(const ShortDateFunction &shortDate);
QString dateFormattingErrorText();
QString dateFormattingErrorTitle();

/// True for a blank date field and for any text that is a date. Otherwise shows
/// "Date: <text> is not valid" and gives false.
bool Is_Valid_Date(const QString &text, const DateSettings &dates, Prompts &prompts);

/// The date of a field that must hold one: a blank field gives "A valid date must be
/// entered", a text that is no date gives the box of Is_Valid_Date and then that one.
std::optional<QDate> requiredDate(const QString &text, const DateSettings &dates, Prompts &prompts);

/// What a date field holds once the user leaves it where a blank one means today: today's
/// date in the machine's format, or the text as typed.
QString todayIfBlank(const DateSettings &dates, const QString &text, const QDate &today);

/// A date as text that sorts in date order ("yyyy/MM/dd"), for lists that sort their texts;
/// empty for no date.
QString sortableDate(const QDate &date);

} // namespace tarvex
