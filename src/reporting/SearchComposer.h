#pragma once

#include <QString>

namespace tarvex {

/// Condition texts for searching the stud, composed exactly as the search screens always
/// have: each criterion is appended to the condition with " And ".
namespace SearchComposer {

/// Quotes a value for a condition: "'" becomes "''" (by way of "||", so a typed "||"
/// also becomes "''"), and the whole text is upper-cased.
QString EscapeCriterionValue(const QString &value);

/// "*" + text + "*"; empty stays empty.
QString WrapWildcards(const QString &text);

/// Appends field, operator and the quoted value; a blank value adds nothing. A value of
/// exactly "*" becomes "**".
void AddLikeCriterion(QString &where, const QString &field, const QString &value, const QString &op);

} // namespace SearchComposer
} // namespace tarvex
