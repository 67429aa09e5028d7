#pragma once

#include <QString>

namespace tarvex {

/// The outcome of the duplicate check of a new animal: no likely duplicate (nothing was
/// shown), or the warning was shown and the user kept the new animal or gave it up.
enum class DuplicateAnswer { NoneFound, Kept, GivenUp };

/// What the program's logic asks of its screens beyond messages and questions (those go
/// through Prompts): another screen to open, the main window's state, the end of the run.
/// The main window implements it; tests use a recording one; tools and benchmarks run with
/// NullShell, which opens nothing.
class Shell
{
public:
    virtual ~Shell() = default;

    // The start of a run.
    /// Shows the splash screen, which stays until unloadSplash().
    virtual void showSplash() = 0;
    /// Lets the splash repaint between the long steps of the start.
    virtual void repaintSplash() = 0;

    // Opening a stud.
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

    // Animals.
    /// Opens the pedigree of a new animal to fill in its ancestors.
    virtual void createPedigree(qint64 number) = 0;
    /// Checks a new animal's name and identification for likely duplicates, warning the user
    /// when there are some.
    virtual DuplicateAnswer checkDuplicate(const QString &name, const QString &id) = 0;

    // Genetics.
    /// Asks which colour of the genetics files an unknown colour is (the colour match
    /// screen); an empty answer is a cancel. save is set when the match is to be kept.
    virtual QString chooseColourMatch(const QString &colour, bool *save) = 0;

    // Registration.
    /// Opens the options for the stud just registered.
    virtual void showOptions() = 0;

    // The run.
    /// Ends the program after a fatal fault (its box has been shown).
    virtual void endProgram() = 0;
    /// The settings file could not be written; told once per file and run.
    virtual void settingsNotSaved(const QString &file) = 0;
};

/// A shell with no screens: nothing opens, every question is declined.
class NullShell : public Shell
{
public:
    void showSplash() override {}
    void repaintSplash() override {}
    void setHourglass(bool) override {}
    void returnToMainPanel() override {}
    void selectDatabase() override {}
    bool registerFirstRun() override { return false; }
    void openDatabaseUtilities() override {}
    void checkBackups() override {}
    void setCaption(const QString &) override {}
    void studOpened() override {}
    void unloadSplash() override {}
    void createPedigree(qint64) override {}
    DuplicateAnswer checkDuplicate(const QString &, const QString &) override { return DuplicateAnswer::NoneFound; }
    QString chooseColourMatch(const QString &, bool *) override { return {}; }
    void showOptions() override {}
    void endProgram() override {}
    void settingsNotSaved(const QString &) override {}
};

} // namespace tarvex
