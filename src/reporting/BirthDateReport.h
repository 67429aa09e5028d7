#pragma once

#include "core/PrintSurface.h"
#include "core/Progress.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QDate>
#include <QString>

#include <optional>

namespace tarvex {

/// The dates a birth date report runs between, as the two fields hold them. Nothing, after
/// its message, when one is empty ("Date must be entered") or no date; focus then names
/// the field to go back to ("SDOB" or "SToDOB").
struct BirthDateRange
{
    QDate from, to;
};
std::optional<BirthDateRange> birthDateRange(const QString &fromText, const QString &toText,
                                             const DateSettings &dates, Prompts &prompts, QString *focus);

/// Whether any litter was born between the two days (both included).
bool anyBirthsBetween(Session &session, const BirthDateRange &range);

/// The litters born between two days (both included), in order of birth, with dam, sire and
/// the day of mating, each day's litters standing together, over as many pages as they
/// take. False when none was born then: the document is abandoned and the caller tells the
/// user ("No Details To Print"). Stopping through progress abandons it too.
bool printBirthDateReport(PrintSurface &page, Session &session, const BirthDateRange &range,
                          Progress &progress = noProgress());

/// The blank pedigree form: the pedigree sheet of generations generations with every place
/// empty, to be filled in by hand.
void printBlankPedigreeForm(PrintSurface &page, Session &session, Prompts &prompts, int generations);

} // namespace tarvex
