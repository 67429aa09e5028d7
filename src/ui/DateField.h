#pragma once

#include "core/DateFormat.h"

#include <QLineEdit>

namespace tarvex {

/// The entry mask of a date field as the line edit understands it: one required digit
/// per "#", every other character literal, "_" shown for the empty places.
QString qtInputMask(const QString &dateMask);

/// Makes a line edit a date field of the machine's format: its width (the blank date in
/// the field's font plus 105 twips), mask and length. An empty field then shows the blank
/// date, which the program reads as "no date".
void Apply_Date_Mask(QLineEdit *field, const DateSettings &dates);

} // namespace tarvex
