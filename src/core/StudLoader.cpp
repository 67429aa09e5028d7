#include "StudLoader.h"

#include "Options.h"

#include "store/StockLookup.h"
#include "store/StudDatabase.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

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
    Options options(s);
    if (!options.has(Opt::OldId))
        return;
    const std::pair<const OptionKey &, const OptionKey &> moves[] = {
        {Opt::OldId, Opt::Id}, {Opt::OldId2, Opt::Id2}, {Opt::OldId3, Opt::Id3}};
    for (const auto &[from, to] : moves) {
        options.set(to, options.text(from));
        options.remove(from);
    }
}

void readStudDetails(Session &s)
{
    const Options options(s);
    s.StudName = options.text(Opt::StudName);
    s.StudTelephone = options.text(Opt::Telephone);
    s.FemaleWord = options.text(Opt::Female);
    s.MaleWord = options.text(Opt::Male);
    s.MotherWord = options.text(Opt::Mother);
    s.FatherWord = options.text(Opt::Father);
    s.IdWord = options.text(Opt::Id);
    s.Id2Word = options.text(Opt::Id2);
    s.Id3Word = options.text(Opt::Id3);
}

void setUpPoints(Session &s)
{
    const Options options(s);
    const QString system = options.text(Opt::PointsSystem);
    if (system == u"99" && s.StockType == u"Rabbits") {
        s.PointsOn = true;
        s.PointsName = u"Stars"_s;
        s.MaxPoints = 5;
    } else if (system == u"1") {
        s.PointsOn = true;
        s.PointsName = options.text(Opt::PointsName);
        s.MaxPoints = options.number(Opt::MaxPoints);
    } else {
        s.PointsOn = false;
        s.PointsName.clear();
        s.MaxPoints = 0;
    }
}

void setUpGenetics(Session &s)
{
    Options options(s);
    if (options.text(Opt::Genetics) == u"9" && QFile::exists(s.DataFolder + s.StockType + u" Genetics.Gen"_s)) {
        options.set(Opt::Genetics, u"1"_s);
        options.set(Opt::GeneticsFile, s.StockType);
    }
    s.GeneticsFile = options.text(Opt::GeneticsFile);
    s.GeneticsOn = options.text(Opt::Genetics) == u"1" && !s.GeneticsFile.isEmpty();
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

// A file that cannot be opened as a stud (a wrong or newer layout, a damaged page) is often
// recoverable: it is moved aside under a name of its own, never deleted.
void keepUnreadableFile(Session &s, Prompts &prompts)
{
    const QString file = s.databasePath();
    if (!QFile::exists(file))
        return;
    const QString kept = file + u".unreadable-"_s + s.clock->now().toString(u"yyyyMMdd-HHmmss"_s);
    if (!QFile::rename(file, kept)) {
        prompts.show(u"The file that could not be read could not be moved aside; it stays as\n"_s + file,
                     u"Database Kept"_s, Prompts::Icon::Exclamation);
        return;
    }
    // The journal or log of an unfinished save belongs to the file and goes with it.
    for (const QString &beside : {u"-journal"_s, u"-wal"_s, u"-shm"_s})
        if (QFile::exists(file + beside))
            QFile::rename(file + beside, kept + beside);
    prompts.show(u"The file that could not be read has been kept as\n"_s + kept +
                     u"\n\nNothing in it has been deleted."_s,
                 u"Database Kept"_s, Prompts::Icon::Information);
}

void forgetStud(Session &s, Prompts &prompts)
{
    keepUnreadableFile(s, prompts);
    Options options(s);
    options.removeEntry(OptionSection::Catalogue, s.StockType);
    options.removeSection(OptionSection::Stud);
    options.remove(Opt::LastDatabase);
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
    const Options options(s);
    const bool familyTree = options.flag(Opt::PedigreeTerminology);
    s.PedigreeWord = familyTree ? u"Family Tree"_s : u"Pedigree"_s;
    s.PedigreeWordShort = familyTree ? u"Family Tr'"_s : u"Pedigree"_s;
    s.ColourWord = options.flag(Opt::ColourSpelling) ? u"Color"_s : u"Colour"_s;
    s.WeightUnit = options.text(Opt::WeightUnit);
    s.NamePrefix = options.text(Opt::Prefix);
    s.NameSuffix = options.text(Opt::Suffix);
    s.AutoPrefix = options.text(Opt::AutoPrefix);
}

void refillSires(Session &s)
{
    s.Lists.sires.reset();
}

void refillDams(Session &s)
{
    s.Lists.dams.reset();
}

namespace {
// A parent list is read at its first use after a change to it.
std::shared_ptr<const ParentList> readOnce(Session &s, std::shared_ptr<const ParentList> &list, const QString &sex)
{
    if (!list)
        list = std::make_shared<const ParentList>(s.Stud ? parentList(s.Stud->handle(), sex) : ParentList());
    return list;
}
} // namespace

std::shared_ptr<const ParentList> sireList(Session &s)
{
    return readOnce(s, s.Lists.sires, s.MaleWord);
}

std::shared_ptr<const ParentList> damList(Session &s)
{
    return readOnce(s, s.Lists.dams, s.FemaleWord);
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
    refillSires(s);
    refillDams(s);
}

LoadResult Load_Stud_Details(Session &s, Prompts &prompts)
{
    Shell &shell = s.shell();
    for (;;) {
        shell.setHourglass(true);
        s.StockType.clear();
        s.StudName.clear();
        s.StudTelephone.clear();

        s.Catalogue = Options(s).all(OptionSection::Catalogue);
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
                forgetStud(s, prompts);
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
            s.OptionsCache = Options(s).all(OptionSection::StudOptions);
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

void applyOptions(Session &s)
{
    readStudDetails(s);
    setUpPoints(s);
    setUpGenetics(s);
    readTerms(s);
    s.OptionsCache = Options(s).all(OptionSection::StudOptions);
}

StudChoice studChoice(const Session &s)
{
    StudChoice choice;
    const QString last = Options(s).text(Opt::LastDatabase);
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
    Options(s).set(Opt::LastDatabase, stud);
    prompts.status(u"Opening Database"_s);
}

} // namespace tarvex
