#pragma once

#include "CRegSettings.h"

#include <QString>

namespace tarvex {

struct Session;

/// The sections of the settings store. The stud's sections are named after its stock type.
enum class OptionSection {
    General,       // "General"
    Catalogue,     // "Databases": one key per registered stud, its value always empty
    Program,       // "Options": shared by every stud
    Stud,          // "<StockType>": the stud's details, words and backup counters
    StudOptions,   // "<StockType>\Options": the stud's options
    GeneticsMap,   // "<StockType>\Genetics Map": a colour of the stud -> a colour of the files
    ReportOptions, // "<StockType>\Report Options": the sections last ticked for a sheet
    LabelOptions,  // "<StockType>\Label Options": the choices of the hutch labels
};

enum class OptionType { Text, Flag, Number };

/// One settings key: its section, its name, its type and what a read gives when it is
/// absent. A name holding "%1" is a family of keys told apart by a number or a breed
/// ("Header_%1", "%1 Gestation"). A flag or a number is read and written as one.
struct OptionKey
{
    OptionSection section;
    const char16_t *name;
    OptionType type;
    const char16_t *fallback;
};

/// Every key of the settings store. Nothing outside this table spells a key.
namespace Opt {

// General
inline constexpr OptionKey LastDatabase{OptionSection::General, u"LastDatabase", OptionType::Text, u""};

// Options: the whole program. The window's keys have no fixed default: the window gives
// its present state, its design size and the centred place.
inline constexpr OptionKey WordDetected{OptionSection::Program, u"WordDetected", OptionType::Text, u""};
inline constexpr OptionKey FormState{OptionSection::Program, u"FormState", OptionType::Number, u"0"};
inline constexpr OptionKey FormWidth{OptionSection::Program, u"FormWidth", OptionType::Number, u""};
inline constexpr OptionKey FormHeight{OptionSection::Program, u"FormHeight", OptionType::Number, u""};
inline constexpr OptionKey FormLeft{OptionSection::Program, u"FormLeft", OptionType::Number, u""};
inline constexpr OptionKey RemindBackup{OptionSection::Program, u"RemindBackup", OptionType::Flag, u"0"};
inline constexpr OptionKey RemindEvery{OptionSection::Program, u"RemindEvery", OptionType::Number, u"1"};
inline constexpr OptionKey AutoFloppyBackup{OptionSection::Program, u"AutoFloppyBackup", OptionType::Flag, u"1"};
inline constexpr OptionKey AutoBackup{OptionSection::Program, u"AutoBackup", OptionType::Flag, u"0"};
inline constexpr OptionKey BackUpEvery{OptionSection::Program, u"BackUpEvery", OptionType::Number, u"1"};
inline constexpr OptionKey KeepBackUps{OptionSection::Program, u"KeepBackUps", OptionType::Number, u"5"};
inline constexpr OptionKey PromptBackup{OptionSection::Program, u"PromptBackup", OptionType::Flag, u"0"};
inline constexpr OptionKey BackupDrive{OptionSection::Program, u"BackupDrive", OptionType::Text, u"A:"};

// <StockType>: the stud's details and words.
inline constexpr OptionKey StudName{OptionSection::Stud, u"StudName", OptionType::Text, u""};
inline constexpr OptionKey Telephone{OptionSection::Stud, u"Telephone", OptionType::Text, u""};
inline constexpr OptionKey Male{OptionSection::Stud, u"Male", OptionType::Text, u""};
inline constexpr OptionKey Female{OptionSection::Stud, u"Female", OptionType::Text, u""};
inline constexpr OptionKey Father{OptionSection::Stud, u"Father", OptionType::Text, u""};
inline constexpr OptionKey Mother{OptionSection::Stud, u"Mother", OptionType::Text, u""};
inline constexpr OptionKey Id{OptionSection::Stud, u"Id", OptionType::Text, u""};
inline constexpr OptionKey Id2{OptionSection::Stud, u"Id2", OptionType::Text, u""};
inline constexpr OptionKey Id3{OptionSection::Stud, u"Id3", OptionType::Text, u""};
// The counters of openings; the first is written "BackupCount", the store ignoring case.
inline constexpr OptionKey BackUpCount{OptionSection::Stud, u"BackupCount", OptionType::Number, u"1"};
inline constexpr OptionKey FloppyBackupCount{OptionSection::Stud, u"FloppyBackupCount", OptionType::Number, u"1"};
inline constexpr OptionKey BackUpCycle{OptionSection::Stud, u"BackUpCycle", OptionType::Number, u"1"};
inline constexpr OptionKey Backup{OptionSection::Stud, u"Backup %1", OptionType::Text, u""};
// Per breed, the breed's name in front.
inline constexpr OptionKey BreedGestation{OptionSection::Stud, u"%1 Gestation", OptionType::Number, u"0"};
inline constexpr OptionKey BreedWatermark{OptionSection::Stud, u"%1 Watermark", OptionType::Text, u""};
inline constexpr OptionKey BreedStretch{OptionSection::Stud, u"%1 Stretch", OptionType::Flag, u"0"};

// <StockType>\Options: the stud's options.
inline constexpr OptionKey PedigreeTerminology{OptionSection::StudOptions, u"Pedigree Terminology", OptionType::Flag,
                                               u"0"};
inline constexpr OptionKey ColourSpelling{OptionSection::StudOptions, u"Colour Spelling", OptionType::Flag, u"0"};
inline constexpr OptionKey Prefix{OptionSection::StudOptions, u"Prefix", OptionType::Text, u""};
inline constexpr OptionKey Suffix{OptionSection::StudOptions, u"Suffix", OptionType::Text, u""};
inline constexpr OptionKey WeightUnit{OptionSection::StudOptions, u"Weight Unit", OptionType::Text, u"lbs"};
inline constexpr OptionKey AutoPrefix{OptionSection::StudOptions, u"AutoPrefix", OptionType::Text, u"A"};
inline constexpr OptionKey DefaultPedigreeType{OptionSection::StudOptions, u"Default Pedigree Type",
                                               OptionType::Number, u"1"};
inline constexpr OptionKey DefaultGenerations{OptionSection::StudOptions, u"Default Generations", OptionType::Number,
                                              u"5"};
inline constexpr OptionKey PedigreeFont{OptionSection::StudOptions, u"Pedigree Font", OptionType::Text, u"Arial"};
inline constexpr OptionKey Header{OptionSection::StudOptions, u"Header_%1", OptionType::Text, u""};
inline constexpr OptionKey Footer{OptionSection::StudOptions, u"Footer", OptionType::Text, u""};
inline constexpr OptionKey Logo{OptionSection::StudOptions, u"Logo", OptionType::Text, u""};
inline constexpr OptionKey Watermark{OptionSection::StudOptions, u"Watermark", OptionType::Text, u""};
inline constexpr OptionKey WatermarkStretch{OptionSection::StudOptions, u"Watermark Stretch", OptionType::Flag, u"1"};
inline constexpr OptionKey GestationInDays{OptionSection::StudOptions, u"Gestation In Days", OptionType::Number,
                                           u"-1"};
inline constexpr OptionKey PointsSystem{OptionSection::StudOptions, u"PointsSystem", OptionType::Number, u"99"};
inline constexpr OptionKey PointsName{OptionSection::StudOptions, u"PointsName", OptionType::Text, u""};
inline constexpr OptionKey MaxPoints{OptionSection::StudOptions, u"MaxPoints", OptionType::Number, u""};
inline constexpr OptionKey Genetics{OptionSection::StudOptions, u"Genetics", OptionType::Number, u"9"};
inline constexpr OptionKey GeneticsFile{OptionSection::StudOptions, u"GeneticsFile", OptionType::Text, u""};
inline constexpr OptionKey GeneticsAdv{OptionSection::StudOptions, u"GeneticsAdv", OptionType::Flag, u""};
inline constexpr OptionKey MatchColour{OptionSection::StudOptions, u"MatchColour", OptionType::Flag, u"0"};
// Empty means the data folder's "<StockType> Images".
inline constexpr OptionKey DefaultImageFolder{OptionSection::StudOptions, u"Default Image Folder", OptionType::Text,
                                              u""};
// How many generations the coefficients of inbreeding look back over (1 to 30); 0 for all
// that are known.
inline constexpr OptionKey InbreedingGenerations{OptionSection::StudOptions, u"Inbreeding Generations",
                                                OptionType::Number, u"0"};
inline constexpr OptionKey DedupeOption{OptionSection::StudOptions, u"DedupeOption%1", OptionType::Flag, u""};
// Where older versions kept the identification captions; moved to the stud's section.
inline constexpr OptionKey OldId{OptionSection::StudOptions, u"Id", OptionType::Text, u""};
inline constexpr OptionKey OldId2{OptionSection::StudOptions, u"Id2", OptionType::Text, u""};
inline constexpr OptionKey OldId3{OptionSection::StudOptions, u"Id3", OptionType::Text, u""};

// <StockType>\Report Options: the sections of the animal sheet, by their tick.
inline constexpr OptionKey PrintGeneral{OptionSection::ReportOptions, u"Print General", OptionType::Flag, u"0"};
inline constexpr OptionKey PrintHealth{OptionSection::ReportOptions, u"Print Health", OptionType::Flag, u"0"};
inline constexpr OptionKey PrintNotes{OptionSection::ReportOptions, u"Print Notes", OptionType::Flag, u"0"};
inline constexpr OptionKey PrintAwards{OptionSection::ReportOptions, u"Print Awards", OptionType::Flag, u"0"};
inline constexpr OptionKey PrintDiary{OptionSection::ReportOptions, u"Print Diary", OptionType::Flag, u"0"};
inline constexpr OptionKey PrintAwardComments{OptionSection::ReportOptions, u"Print Award Comments",
                                              OptionType::Flag, u"0"};
inline constexpr OptionKey PrintMatings{OptionSection::ReportOptions, u"Print Matings", OptionType::Flag, u"0"};
inline constexpr OptionKey PrintImage{OptionSection::ReportOptions, u"Print Image", OptionType::Flag, u"0"};

// <StockType>\Label Options. Each detail of the label is a key of its own, named by the
// detail's text, holding "Include" when ticked.
inline constexpr OptionKey LabelInclude{OptionSection::LabelOptions, u"%1", OptionType::Text, u""};
inline constexpr OptionKey LabelSize{OptionSection::LabelOptions, u"Label Size", OptionType::Number, u"0"};
inline constexpr OptionKey LabelColour{OptionSection::LabelOptions, u"LabelColour_%1", OptionType::Number, u"0"};

} // namespace Opt

/// The settings of the program and of one stud, read and written by their keys. Reads of
/// an absent key give the key's fallback; failures of the store are silent (a write gives
/// false), as the store's always are.
class Options
{
public:
    explicit Options(const Session &session);
    Options(const QString &application, const QString &stockType);

    /// The value of a key; arg fills the "%1" of a key family.
    QString text(const OptionKey &key, const QString &arg = {}) const;
    /// The value read as a flag: see isOn.
    bool flag(const OptionKey &key, const QString &arg = {}) const;
    /// The value read as a whole number; 0 when it is not one.
    int number(const OptionKey &key, const QString &arg = {}) const;
    /// The value, or ifAbsent when the key is not stored (for defaults only known at run time).
    QString textOr(const OptionKey &key, const QString &ifAbsent, const QString &arg = {}) const;
    bool has(const OptionKey &key, const QString &arg = {}) const;

    bool set(const OptionKey &key, const QString &value, const QString &arg = {});
    bool setFlag(const OptionKey &key, bool on, const QString &arg = {});
    bool setNumber(const OptionKey &key, qint64 value, const QString &arg = {});
    bool remove(const OptionKey &key, const QString &arg = {});

    /// Sections whose keys are the breeder's data: the catalogue's studs, the colour
    /// matches, the statuses that show no age among the stud's options.
    CRegSettings::Values all(OptionSection section) const;
    QString entry(OptionSection section, const QString &key, const QString &ifAbsent = {}) const;
    bool setEntry(OptionSection section, const QString &key, const QString &value);
    bool removeEntry(OptionSection section, const QString &key);
    /// Removes a section with everything under it (a stud's whole section).
    bool removeSection(OptionSection section);

    /// The section's path in the store for this stud.
    QString sectionName(OptionSection section) const;
    static QString keyName(const OptionKey &key, const QString &arg = {});

    /// The one reading of a flag: a whole number other than 0 ("1", "-1"), or "True" or
    /// "Yes" in any case.
    static bool isOn(const QString &value);

private:
    CRegSettings m_settings;
    QString m_stockType;
};

} // namespace tarvex
