#pragma once

#include "Prompts.h"
#include "Session.h"

namespace tarvex {

enum class LoadResult { Opened, NoStudOpen, EndProgram };

/// Chooses and opens a stud, asking as needed, until one is open, the user ends the
/// program, or the file cannot be opened (then no stud is open). The session's shell shows
/// the screens the opening needs.
LoadResult Load_Stud_Details(Session &session, Prompts &prompts);

/// Closes the open stud's cursors and connection. Safe to call with none open.
void Close_Databases(Session &session);

/// Refills every list the screens offer from the open stud: colours, breeders,
/// statuses, breeds, sexes, sires, dams, archive.
void Refill_All_Lists(Session &session);
/// The sire or dam list changed: it is read again when next wanted.
void refillSires(Session &session);
void refillDams(Session &session);
/// The open stud's sire and dam lists, read now if they are not yet.
std::shared_ptr<const ParentList> sireList(Session &session);
std::shared_ptr<const ParentList> damList(Session &session);

/// Reads the stud's terms from its options: pedigree word, colour spelling, weight
/// unit, affixes and the prefix of automatic names.
void readTerms(Session &session);

/// Reads again what the options of the open stud set: its words, the points, genetics and
/// terms, and the options kept for the run.
void applyOptions(Session &session);

/// The text of the main window's caption for the open stud.
QString mainCaption(const Session &session);

/// "Select Type of Livestock": the studs in catalogue order and which one to preselect.
struct StudChoice
{
    QStringList studs;
    int selected = -1;
};
StudChoice studChoice(const Session &session);
/// Takes the chosen stud: remembered as the last one, announced as being opened.
void chooseStud(Session &session, Prompts &prompts, const QString &stud);

} // namespace tarvex
