#pragma once

#include "core/Session.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <set>

namespace tarvex {

/// Everything the options screen shows, read from the settings when it opens, and written
/// back group by group: only a group the breeder changed is written, so a setting nobody
/// touched keeps its stored value (or stays absent, with its default). The backup settings
/// are the whole program's; the rest belong to the open stud's stock type.
struct OptionsForm
{
    /// The groups, each written as a whole when it changed.
    enum class Group {
        Backup,
        Points,
        PedigreeSheet,
        HeaderFooter,
        Terminology,
        General,
        Genetics,
        Affix,
        Identification,
        Dedupe,
        ImageFolder,
        Word,
        Breeds,
        Ages,
        Inbreeding,
    };

    // Backup Details (the whole program's).
    bool autoBackup = true;
    int backupEvery = 0; // list position: "Time", "2nd Time", ...
    int keepBackups = 5;
    bool promptBackup = false;
    bool remindBackup = true;
    int remindEvery = 10; // openings between reminders
    bool autoFloppyBackup = true;
    QString backupDrive;

    // Word Merge.
    bool wordDetected = false;
    bool searchWordAgain = false;

    // Awards System.
    bool points = false;
    QString pointsName;
    QString maxPoints;

    // Pedigree Sheet.
    QString logo, watermark;
    bool watermarkStretch = true;
    int pedigreeStyle = 1;
    int generations = 5; // 3 to 5
    QString pedigreeFont;

    // Pedigree Header/Footer.
    std::array<QString, 4> header;
    QString footer;

    // General.
    int pedigreeTerminology = 0; // "Pedigree", "Family Tree"
    int colourSpelling = 0;      // "Colour", "Color"
    QString gestation;           // days, or empty
    QString weightUnit;

    // Genetics Database.
    bool genetics = false;
    QString geneticsFile;
    QStringList geneticsFiles; // the prefixes of the "<prefix> Colours.Gen" files found
    bool geneticsAdvanced = true;
    int matchColour = 0; // "Colour Only", "Colour and Breed "
    QList<QPair<QString, bool>> colourMatches; // the stud's colour matches, ticked to keep

    // Affix and Identification Methods.
    QString prefix, suffix;
    std::array<QString, 3> ids;
    QString autoPrefix;

    // Deduplification Method and Image Information.
    std::array<bool, 3> dedupe{};
    QString imageFolder;
    QString storedImageFolder;

    // Breed Specifics: for each breed of the stud, kept in memory until OK.
    struct Breed
    {
        QString name;
        QString gestation = QStringLiteral("0");
        QString watermark;
        bool stretch = false;
    };
    QList<Breed> breeds;

    // Inbreeding: the generations the coefficients look back over; 0 for all known.
    int inbreedingGenerations = 0;
    // The statuses whose animals show no age.
    QList<QPair<QString, bool>> ages;

    std::set<Group> changed;
    void change(Group g) { changed.insert(g); }
};

/// Where OK stopped: the words, the tab to bring forward (by its place in the tab order) and
/// the control to take the focus.
struct OptionsFault
{
    QString text;
    int tab = 0;
    QString control;
};

/// The tabs, in the order the screen shows them.
QStringList optionsTabs();

/// Reads every setting into the form, for the stud's breeds and statuses. A points system
/// never set (99) is offered as "Stars" for rabbits and off for others, and marked changed
/// so that OK stores it.
OptionsForm readOptionsForm(const Session &session, const QStringList &breeds, const QStringList &statuses);

/// The checks of OK, in order: the points' name and most points (when points changed and are
/// on), the identification terms put in order (the first empty takes the next one's; none
/// at all is "Identification"), then a changed image folder that must be a folder.
std::optional<OptionsFault> validateOptionsForm(OptionsForm &form);

/// Writes each changed group, the breeds and the ages; a search for the word processor is
/// asked for by emptying WordDetected.
void writeOptionsForm(Session &session, const OptionsForm &form);

} // namespace tarvex
