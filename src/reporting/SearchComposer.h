#pragma once

#include "core/DateFormat.h"

#include <QString>

namespace tarvex {

/// Condition texts for searching the stud, composed exactly as the search screens always
/// have: each criterion is appended to the condition with " And ".
namespace SearchComposer {

/// Replaces find by replacement in a rising scan from the 1-based place start, at most count
/// times (-1: every one), with or without regard to case; the text before start stays.
QString ReplaceText(const QString &text, const QString &find, const QString &replacement, qsizetype start = 1,
                    qsizetype count = -1, Qt::CaseSensitivity compare = Qt::CaseSensitive);

/// Quotes a value for a condition: "'" becomes "''" (by way of "||", so a typed "||"
/// also becomes "''"), and the whole text is upper-cased.
QString EscapeCriterionValue(const QString &value);

/// "*" + text + "*"; empty stays empty.
QString WrapWildcards(const QString &text);

/// Appends field, operator and the quoted value; a blank value adds nothing. A value of
/// exactly "*" becomes "**".
void AddLikeCriterion(QString &where, const QString &field, const QString &value, const QString &op);

/// Appends field, operator ("=" when empty) and the number in decimal.
void AddNumberCriterion(QString &where, const QString &field, qint64 number, const QString &op);

/// Appends field, operator ("=" when empty) and the date's whole day number (days since
/// 30 December 1899), never quoted. The date is taken apart as day, month and two-digit
/// year, so years 00 to 29 are 2000 to 2029 and 30 to 99 are 1930 to 1999, as the search
/// has always read them. A text that is no date adds nothing.
void AddDateCriterion(QString &where, const QString &field, const QString &dateText, const QString &op,
                      const DateSettings &dates);

} // namespace SearchComposer
} // namespace tarvex
