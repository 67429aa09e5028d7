#pragma once

#include "core/Options.h"
#include "core/PrintSurface.h"
#include "core/Session.h"

#include <array>

namespace tarvex {

/// The sections of the animal sheet, in the order of their tick boxes.
enum class SheetSection { General, Health, Notes, Awards, Diary, AwardComments, Matings, Image };
inline constexpr int kSheetSections = 8;
using SheetSections = std::array<bool, kSheetSections>;

/// The sections last ticked for this stud's sheets (none when never saved), and saving them.
SheetSections readSheetSections(const Options &options);
void saveSheetSections(Options &options, const SheetSections &sections);

/// The sheet of one animal with the ticked sections: its default picture, its particulars,
/// health, notes, show awards (with the judges' critiques when ticked), diary and matings,
/// over as many pages as they take, each later page headed "Continued". False when the
/// animal has gone (the document is then abandoned).
bool printAnimalSheet(PrintSurface &page, Session &session, qint64 number, const SheetSections &sections);

} // namespace tarvex
