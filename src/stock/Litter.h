#pragma once

#include "StockValidation.h"

#include "core/Prompts.h"
#include "core/Session.h"

#include <QString>

#include <optional>

namespace tarvex {

/// What the litter panel holds: the number of young and their day of birth as typed, and
/// the parents and defaults every young of the litter shares.
struct LitterForm
{
    QString young; // the two-place mask's text ("__" when blank)
    QString dob;   // as typed; the blank mask for an unknown day
    ParentPick sire, dam;
    QString breed, colour, breeder, status, archive;
    bool automatic = false;
};

/// The numbers of the first and the last young created.
struct LitterCreated
{
    qint64 first = 0;
    qint64 last = 0;
};

/// The checks of Ok on the litter panel: "Number in Litter Must be Entered" for no young,
/// the date check's box for a day that is not a date. The number of young, or 0 when
/// refused (focus then names the control).
int checkLitter(Session &session, Prompts &prompts, const LitterForm &form, QString *focus);

/// Creates the whole litter at once as one change: each young named by the stud's
/// automatic prefix and its number, with the litter's parents, day of birth and defaults
/// and no sex, and its genes worked out from the colour. The breed, colour, breeder, status
/// and archive are checked first, asking before a value is used for the first time; a No
/// creates nothing. Tells "Names A<first> To A<last> Automatically Created" under "New
/// Litter". When the stud refuses a young, no young of the litter stays and the user is
/// told. Nothing when nothing was created.
std::optional<LitterCreated> Create_Litter_Automatically(Session &session, Prompts &prompts, LitterForm &form,
                                                         int young, QString *focus);

/// The form of one young entered by hand: the litter's day of birth, parents and defaults.
StockForm litterOffspringForm(const Session &session, const LitterForm &litter);

} // namespace tarvex
