#pragma once

#include "core/CRegSettings.h"

#include <QDate>
#include <QString>

namespace tarvex {

/// The age shown for an animal: "2 Yrs 5 Wks", "1 Yr 0 Wks", "5 Wks", or for part weeks
/// the weeks and the odd days after a point ("1.3 Wks" is one week and three days).
/// Years are 365 days. Living animals of a status marked "Don't Show Age" in the stud's
/// options show no age; a null death date means the animal is alive.
QString AgeText(const QDate &birth, const QString &status, const QDate &death, const QDate &today,
                const CRegSettings::Values &studOptions);

} // namespace tarvex
