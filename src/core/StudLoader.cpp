#include "StudLoader.h"

#include "store/StockLookup.h"
#include "store/StudDatabase.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

const QString kAbsent = u"\x01"_s;

bool catalogueHas(const Session &s, const QString &stud)
{
    for (const auto &entry : s.Catalogue)
        if (entry.first.compare(stud, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

// Older versions kept the identification captions among the stud's options.
void moveOldIdentifications(Session &s)
{
    CRegSettings settings = s.settings();
    if (settings.GetSetting(s.OptionsSection, u"Id"_s, kAbsent) == kAbsent)
        return;
    for (const QString &key : {u"Id"_s, u"Id2"_s, u"Id3"_s}) {
        settings.SaveSetting(s.StockType, key, settings.GetSetting(s.OptionsSection, key));
        settings.DeleteSetting(s.OptionsSection, key);
    }
}

void readStudDetails(Session &s)
{
    const CRegSettings settings = s.settings();
    s.StudName = settings.GetSetting(s.StockType, u"StudName"_s);
    s.StudTelephone = settings.GetSetting(s.StockType, u"Telephone"_s);
    s.FemaleWord = settings.GetSetting(s.StockType, u"Female"_s);
    s.MaleWord = settings.GetSetting(s.StockType, u"Male"_s);
    s.MotherWord = settings.GetSetting(s.StockType, u"Mother"_s);
    s.FatherWord = settings.GetSetting(s.StockType, u"Father"_s);
    s.IdWord = settings.GetSetting(s.StockType, u"Id"_s);
    s.Id2Word = settings.GetSetting(s.StockType, u"Id2"_s);
    s.Id3Word = settings.GetSetting(s.StockType, u"Id3"_s);
}

void setUpPoints(Session &s)
{
    const CRegSettings settings = s.settings();
    const QString system = settings.GetSetting(s.OptionsSection, u"PointsSystem"_s, u"99"_s);
    if (system == u"99" && s.StockType == u"Rabbits") {
        s.PointsOn = true;
        s.PointsName = u"Stars"_s;
        s.MaxPoints = 5;
    } else if (system == u"1") {
        s.PointsOn = true;
        s.PointsName = settings.GetSetting(s.OptionsSection, u"PointsName"_s);
        s.MaxPoints = settings.GetSetting(s.OptionsSection, u"MaxPoints"_s).toInt();
    } else {
        s.PointsOn = false;
        s.PointsName.clear();
        s.MaxPoints = 0;
    }
}

void setUpGenetics(Session &s)
{
    CRegSettings settings = s.settings();
    if (settings.GetSetting(s.OptionsSection, u"Genetics"_s, u"9"_s) == u"9" &&
        QFile::exists(s.DataFolder + s.StockType + u" Genetics.Gen"_s)) {
        settings.SaveSetting(s.OptionsSection, u"Genetics"_s, u"1"_s);
        settings.SaveSetting(s.OptionsSection, u"GeneticsFile"_s, s.StockType);
    }
    s.GeneticsFile = settings.GetSetting(s.OptionsSection, u"GeneticsFile"_s);
    s.GeneticsOn = settings.GetSetting(s.OptionsSection, u"Genetics"_s, u"9"_s) == u"1" && !s.GeneticsFile.isEmpty();
    // The genetics files are read again at their first use for this stud.
    s.GeneticsLoaded = false;
    s.Genetics.reset();
}

QString notFoundText(const Session &s)
{
    return u"The database for "_s + s.StockType + u" has not been found\n\nDo you wish to Register the database again?"_s;
}

QString upgradeText()
{
    return u"You have installed the latest 1.6 Version without\nupgrading your database to the latest version.\n\n"
           u"You will need to download and install the free Upgrade\nfrom https://tarvex.example.org/upgrade before "
           u"continuing."_s;
}

QString openErrorText(const Session &s, const StoreError &e)
{
    return u"Cannot Open Database : "_s + s.DatabaseFile + u"\nError:"_s + QString::number(e.number()) + u"  "_s +
           e.description();
}

void forgetStud(Session &s)
{
    CRegSettings settings = s.settings();
    QFile::remove(s.databasePath());
    settings.DeleteSetting(u"Databases"_s, s.StockType);
    settings.DeleteSetting(s.StockType);
    settings.DeleteSetting(u"General"_s, u"Lastdatabase"_s);
    if (s.PreselectedStud.compare(s.StockType, Qt::CaseInsensitive) == 0)
        s.PreselectedStud.clear();
}

} // namespace

QString mainCaption(const Session &s)
{
    return u"Tarvex-"_s + s.StockType + u"   "_s + s.StudName;
}

void readTerms(Session &s)
{
    const CRegSettings settings = s.settings();
    const bool familyTree = settings.GetSetting(s.OptionsSection, u"Pedigree Terminology"_s, u"0"_s) == u"1";
    s.PedigreeWord = familyTree ? u"Family Tree"_s : u"Pedigree"_s;
    s.PedigreeWordShort = familyTree ? u"Family Tr'"_s : u"Pedigree"_s;
    s.ColourWord = settings.GetSetting(s.OptionsSection, u"Colour Spelling"_s, u"0"_s) == u"1" ? u"Color"_s : u"Colour"_s;
    s.WeightUnit = settings.GetSetting(s.OptionsSection, u"Weight Unit"_s, u"lbs"_s);
    s.NamePrefix = settings.GetSetting(s.OptionsSection, u"Prefix"_s);
    s.NameSuffix = settings.GetSetting(s.OptionsSection, u"Suffix"_s);
    s.AutoPrefix = settings.GetSetting(s.OptionsSection, u"AutoPrefix"_s, u"A"_s);
}

void refillSires(Session &s)
{
    s.Lists.sires.clear();
    for (const ParentEntry &e : parentList(s.Stud->handle(), s.MaleWord))
        s.Lists.sires.append({e.name, e.number});
}

void refillDams(Session &s)
{
    s.Lists.dams.clear();
    for (const ParentEntry &e : parentList(s.Stud->handle(), s.FemaleWord))
        s.Lists.dams.append({e.name, e.number});
}

void Refill_All_Lists(Session &s)
{
    if (!s.Stud)
        return;
    Table util(s.Stud->handle(), u"Stock"_s);
    s.Lists.colours = walkVocabulary(util, u"ColourKey"_s, u"Colour"_s);
    s.Lists.breeders = walkVocabulary(util, u"BreederKey"_s, u"Breeder"_s);
    s.Lists.statuses = walkVocabulary(util, u"StatusKey"_s, u"status"_s);
    s.Lists.breeds = walkVocabulary(util, u"TypeKey"_s, u"Type"_s);
    s.Lists.sexes = {QString(), s.MaleWord, s.FemaleWord};
    refillSires(s);
    refillDams(s);
    s.Lists.archive = {u"Yes"_s, u"No"_s};
}

void Close_Databases(Session &s)
{
    if (!s.Stud)
        return;
    s.RepositionEnabled = false;
    s.Stud.reset();
}

LoadResult Load_Stud_Details(Session &s, Prompts &prompts)
{
    Shell &shell = s.shell();
    for (;;) {
        shell.setHourglass(true);
        s.StockType.clear();
        s.StudName.clear();
        s.StudTelephone.clear();

        CRegSettings settings = s.settings();
        s.Catalogue = settings.GetAllSettings(u"Databases"_s);
        if (!s.Catalogue.isEmpty()) {
            shell.returnToMainPanel();
            if (!s.PreselectedStud.isEmpty() && !catalogueHas(s, s.PreselectedStud))
                s.PreselectedStud.clear();
            if (!s.PreselectedStud.isEmpty()) {
                s.StockType = s.PreselectedStud;
            } else if (s.Catalogue.size() > 1) {
                shell.setHourglass(false);
                shell.selectDatabase();
                shell.setHourglass(true);
                // Closing the choice without taking one opens the stud used last.
                if (s.StockType.isEmpty()) {
                    const StudChoice choice = studChoice(s);
                    s.StockType = choice.studs.value(std::max(choice.selected, 0));
                }
            } else {
                s.StockType = s.Catalogue.first().first;
            }
            s.OptionsSection = s.StockType + u"\\Options"_s;
            moveOldIdentifications(s);
            readStudDetails(s);
        }

        if (s.StudName.isEmpty() || s.StockType.isEmpty()) {
            shell.setHourglass(false);
            if (!shell.registerFirstRun())
                return LoadResult::EndProgram;
            continue;
        }

        s.DatabaseFile = s.StockType + u".mdb"_s;
        shell.setCaption(mainCaption(s));
        setUpPoints(s);
        shell.checkBackups();
        setUpGenetics(s);

        try {
            s.Stud = std::make_unique<StudDatabase>(s.databasePath());
        } catch (const StoreError &e) {
            if (e.number() == StoreError::FileNotFound || e.number() == StoreError::ObjectNotFound) {
                shell.setHourglass(false);
                if (!prompts.askYesNo(notFoundText(s), u"Database Not Found"_s))
                    return LoadResult::EndProgram;
                forgetStud(s);
                continue;
            }
            shell.setHourglass(false);
            prompts.show(openErrorText(s, e), u"Error Opening Database"_s);
            shell.openDatabaseUtilities();
            return LoadResult::NoStudOpen;
        }

        try {
            s.Stud->renameImageComments();
            try {
                s.Stud->openImages();
            } catch (const StoreError &e) {
                if (e.number() != StoreError::ObjectNotFound)
                    throw;
                shell.setHourglass(false);
                prompts.show(upgradeText(), u"Upgrade Required"_s, Prompts::Icon::Stop);
                Close_Databases(s);
                return LoadResult::EndProgram;
            }
            s.RepositionEnabled = false;
            s.Stud->openRest();
            s.OptionsCache = settings.GetAllSettings(s.OptionsSection);
            readTerms(s);
            Refill_All_Lists(s);
        } catch (const StoreError &e) {
            Close_Databases(s);
            shell.setHourglass(false);
            prompts.show(openErrorText(s, e), u"Error Opening Database"_s);
            shell.openDatabaseUtilities();
            return LoadResult::NoStudOpen;
        }
        shell.studOpened();
        shell.setHourglass(false);
        shell.unloadSplash();
        return LoadResult::Opened;
    }
}

StudChoice studChoice(const Session &s)
{
    StudChoice choice;
    const QString last = s.settings().GetSetting(u"General"_s, u"LastDatabase"_s);
    for (const auto &entry : s.Catalogue) {
        if (entry.first.compare(last, Qt::CaseInsensitive) == 0)
            choice.selected = int(choice.studs.size());
        choice.studs << entry.first;
    }
    return choice;
}

void chooseStud(Session &s, Prompts &prompts, const QString &stud)
{
    if (stud.isEmpty() || stud == s.StockType)
        return;
    s.StockType = stud;
    s.settings().SaveSetting(u"General"_s, u"LastDatabase"_s, stud);
    prompts.status(u"Opening Database"_s);
}

} // namespace tarvex
