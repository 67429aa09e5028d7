#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "store/Table.h"

#include <QString>

#include <optional>

namespace tarvex {

/// A choice in a sire or dam list: its position (0 the blank entry, -1 nothing chosen)
/// and the animal's number behind it.
struct ParentPick
{
    int position = -1;
    qint64 number = -1;
};

/// What a screen hands to the validation of an animal: every field it has, as typed.
/// A field the screen does not have stays empty (std::nullopt) and its step is passed over.
/// Validation writes the normalised texts back here for the screen to show.
struct StockForm
{
    std::optional<QString> name, id1, id2, id3, breed, colour, breeder, status, archive, sex, dob, dod, weight, health,
        notes;
    std::optional<ParentPick> sire, dam;
};

/// The one gate for every animal that is added or changed. Normalises the form,
/// asks before a breed, colour, breeder or status is used for the first time (adding it to
/// the stud's lists on Yes), refuses what is not allowed with the program's messages, writes
/// the fields to the row in AddNew or Edit, and gives a nameless new animal its automatic
/// name (the stud's prefix and its number). On refusal focus names the control to return to
/// and nothing is saved.
bool Validate_Stock(Session &session, Prompts &prompts, Table &row, StockForm &form, bool autoNameAllowed,
                    qint64 currentNumber, QString *focus, QString *assignedName = nullptr);
/// The same checks and questions with no row to write to, for values that many animals
/// are about to share (a litter's breed, colour, breeder, status and archive).
bool Validate_Stock(Session &session, Prompts &prompts, StockForm &form, QString *focus);

} // namespace tarvex
