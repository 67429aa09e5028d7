#pragma once

#include "Prompts.h"
#include "Session.h"

namespace tarvex {

/// What opening a stud needs from the main window. The window implements it; tests
/// script it.
class StudShell
{
public:
    virtual ~StudShell() = default;
    virtual void setHourglass(bool on) = 0;
    virtual void returnToMainPanel() = 0;
    /// Shows "Select Type of Livestock" modally; it sets StockType.
    virtual void selectDatabase() = 0;
    /// Shows the registration in first-run mode; false when the user ended the program there.
    virtual bool registerFirstRun() = 0;
    /// After a failed opening: the database utilities, where the file can be repaired.
    virtual void openDatabaseUtilities() = 0;
    /// Offers or makes the backups due at this opening.
    virtual void checkBackups() = 0;
    virtual void setCaption(const QString &caption) = 0;
    /// The stud is open: words on the labels, lists filled, browse panel closed.
    virtual void studOpened() = 0;
    virtual void unloadSplash() = 0;
};

/// Opening a stud with no window to show it: tools, benchmarks and tests.
class NullStudShell : public StudShell
{
public:
    void setHourglass(bool) override {}
    void returnToMainPanel() override {}
    void selectDatabase() override {}
    bool registerFirstRun() override { return false; }
    void openDatabaseUtilities() override {}
    void checkBackups() override {}
    void setCaption(const QString &) override {}
    void studOpened() override {}
    void unloadSplash() override {}
};

enum class LoadResult { Opened, NoStudOpen, EndProgram };

/// Chooses and opens a stud, asking as needed, until one is open, the user ends the
/// program, or the file cannot be opened (then no stud is open).
LoadResult Load_Stud_Details(Session &session, Prompts &prompts, StudShell &shell);

/// Closes the open stud's cursors and connection. Safe to call with none open.
void Close_Databases(Session &session);

/// Refills every list the screens offer from the open stud: colours, breeders,
/// statuses, breeds, sexes, sires, dams, archive.
void Refill_All_Lists(Session &session);
void refillSires(Session &session);
void refillDams(Session &session);

/// Reads the stud's terms from its options: pedigree word, colour spelling, weight
/// unit, affixes and the prefix of automatic names.
void readTerms(Session &session);

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
