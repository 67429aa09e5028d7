#pragma once

#include "CRegSettings.h"
#include "Clock.h"
#include "DateFormat.h"
#include "Shell.h"

#include "store/StockLookup.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>
#include <memory>

namespace tarvex {

class StudDatabase;
struct GeneticsData;
class PedigreeCache;
struct GenesReadCache;

/// Two alleles of one gene: 0 unknown, n the allele's place (1 to 9) in its gene's list.
struct AllelePair
{
    quint8 allele1 = 0;
    quint8 allele2 = 0;
    bool operator==(const AllelePair &) const = default;
};
using Genotype = std::array<AllelePair, 10>;

/// The lists the screens offer, refilled from the open stud after every change that can
/// alter them.
struct StudLists
{
    QStringList colours, breeders, statuses, breeds;
    QStringList sexes;   // blank, male word, female word
    QStringList archive; // "Yes", "No"
    /// The sire and dam lists, read from the stud when first wanted after a change (see
    /// sireList and damList): a large stud holds hundreds of thousands of each. A list is
    /// never changed once read, so a screen tells a new list from the one it shows by its
    /// address alone.
    std::shared_ptr<const ParentList> sires, dams;
};

/// The program-wide values of one run: where the files are, which stud is open, the
/// stud's words and terms, the date format. One Session is built at start and handed by
/// reference to everything that needs it.
struct Session
{
    Session();
    ~Session();

    // Where things are.
    QString AppName = QStringLiteral("Tarvex");
    QString DataFolder;      // with a trailing "/"
    QString ProgramFolder;   // the delivered files: EmptyStock.mdb, stocktypes.txt
    QString StockType;
    QString DatabaseFile;
    QString PreselectedStud;
    CRegSettings::Values Catalogue;

    // The stud's details and words.
    QString StudName, StudTelephone;
    QString MaleWord, FemaleWord, FatherWord, MotherWord, IdWord, Id2Word, Id3Word;

    // Terms set by the options.
    QString PedigreeWord = QStringLiteral("Pedigree");
    QString PedigreeWordShort = QStringLiteral("Pedigree");
    QString ColourWord = QStringLiteral("Colour");
    QString WeightUnit = QStringLiteral("lbs");
    QString NamePrefix, NameSuffix;
    QString AutoPrefix = QStringLiteral("A");

    // Awards points.
    bool PointsOn = false;
    QString PointsName;
    int MaxPoints = 0;

    // Genetics: the files are read at their first use after a stud is opened.
    bool GeneticsOn = false;
    QString GeneticsFile;
    bool GeneticsLoaded = false;
    std::shared_ptr<GeneticsData> Genetics;
    Genotype CurrentAlleles{};
    Genotype DisplayAlleles{};
    /// While a walk over the whole stud runs: the genes already read, so that each
    /// animal's rows are read from the file once however many relatives ask for them.
    GenesReadCache *GenesCache = nullptr;

    // The animal in hand, shared by the screens opened from the main window; 0 is a test
    // mating, whose parents are TestMatingSire and TestMatingDam.
    qint64 CurrentStockNo = 0;
    QString CurrentStockName;
    qint64 TestMatingSire = -1;
    qint64 TestMatingDam = -1;
    bool TestMatingFromGenetics = false; // the genetics screen's pair: name-based pedigree
    int Generations = 5;
    // The sex the quick search is held to; set by the sire and dam buttons and kept.
    QString QuickSearchSex;
    // Pedigree print options for the run: 1 prints a stud certificate; the name line on or off.
    int PrintType = 0;
    bool PrintName = true;
    bool PrintInbreeding = false; // the COI line and the common ancestors' frames

    DateSettings Dates;
    CRegSettings::Values OptionsCache; // the stud's options, read at opening ("Don't Show Age")

    bool WordAvailable = false;
    QString MergeTemplate;   // the template last merged into, kept for the run
    bool SpreadsheetAvailable = true;
    bool RepositionEnabled = false;

    std::unique_ptr<StudDatabase> Stud; // the open stud database and its cursors
    /// Coefficients of inbreeding worked out for the open stud (pedigree/StudInbreeding.h).
    std::shared_ptr<PedigreeCache> Pedigrees;
    StudLists Lists;

    const Clock *clock = &systemClock;

    /// The screens, as far as the logic needs them: the main window once it is there.
    Shell &shell() const { return m_shell ? *m_shell : nullShell(); }
    void setShell(Shell *shell) { m_shell = shell; }
    bool studOpen() const { return Stud != nullptr; }
    QString databasePath() const { return DataFolder + DatabaseFile; }

private:
    static const Clock systemClock;
    static Shell &nullShell();
    Shell *m_shell = nullptr;
};

} // namespace tarvex
