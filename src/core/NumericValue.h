#pragma once

#include <QString>

namespace tarvex {

/// The numeric value of a typed text as the program has always read it: the number it
/// begins with (blanks before it allowed), 0 when it begins with none. "3 stars" is 3,
/// "__" is 0, " 31 " is 31.
double numericValue(const QString &text);

} // namespace tarvex
