#include "Registration.h"

#include "Options.h"
#include "StudLoader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tarvex {

Registration::Registration(Session &session, Prompts &prompts, bool firstRun)
    : m_session(session), m_prompts(prompts), m_firstRun(firstRun)
{
}

bool Registration::load()
{
    FileError error;
    const auto types = StockTypes::read(StockTypes::locate(m_session.DataFolder), &error);
    if (!types) {
        m_prompts.show(u"Error : "_s + QString::number(error.number) + u' ' + error.description,
                       u"Error Reading StockTypes.Txt"_s, Prompts::Icon::Stop);
        return false;
    }
    m_types = *types;
    return true;
}

QStringList Registration::stockTypeNames() const
{
    QStringList names;
    for (const StockTypeEntry &e : m_types)
        names << e.stockType;
    return names;
}

const StockTypeEntry *Registration::entry(const QString &stockType) const
{
    for (const StockTypeEntry &e : m_types)
        if (e.stockType.compare(stockType, Qt::CaseInsensitive) == 0)
            return &e;
    return nullptr;
}

bool Registration::isRegistered(const QString &stockType) const
{
    return !stockType.isEmpty() &&
           Options(m_session).entry(OptionSection::Catalogue, stockType, u"N"_s) != u"N";
}

Registration::Choice Registration::chooseStockType(const QString &stockType)
{
    Choice choice;
    if (isRegistered(stockType)) {
        const Options stud(m_session.AppName, stockType);
        choice.fillDetails = true;
        choice.studName = stud.text(Opt::StudName);
        choice.telephone = stud.text(Opt::Telephone);
        m_oldStudName = choice.studName;
    } else if (!m_firstRun &&
               !m_prompts.askYesNo(u"Register New Database?"_s, u"New Database "_s + stockType)) {
        choice.accepted = false;
        return choice;
    }
    m_chosen = stockType;
    return choice;
}

bool Registration::Validate_Registration(const QString &studName, const QString &stockType, QString *focus)
{
    if (studName.trimmed().size() < 3) {
        m_prompts.show(u"At Least 3 character Breeder/Stud Name must be entered"_s, QString(),
                       Prompts::Icon::Exclamation);
        *focus = u"TStudName"_s;
        return false;
    }
    if (stockType.isEmpty()) {
        m_prompts.show(u"Type of Stock must be selected"_s, QString(), Prompts::Icon::Exclamation);
        *focus = u"TStockType"_s;
        return false;
    }
    return true;
}

Registration::Result Registration::CmdOkay(const QString &stockType, const QString &studName,
                                           const QString &telephone, QString *focus)
{
    if (!Validate_Registration(studName, stockType, focus))
        return Result::Stay;

    Session &s = m_session;
    Options options(s.AppName, stockType);
    const bool isNew = !isRegistered(stockType);
    s.StockType = stockType;
    if (const StockTypeEntry *e = entry(stockType)) {
        s.MotherWord = e->motherWord;
        s.FatherWord = e->fatherWord;
        // A registered stud keeps the sex words its animals were saved with.
        s.FemaleWord = isNew ? e->femaleWord : options.textOr(Opt::Female, e->femaleWord);
        s.MaleWord = isNew ? e->maleWord : options.textOr(Opt::Male, e->maleWord);
        s.IdWord = e->id1.isEmpty() ? u"Identification"_s : e->id1;
        s.Id2Word = e->id2;
        s.Id3Word = e->id3;
    } else if (!isNew) {
        // A registered stud whose kind is no longer in the list keeps its own words.
        s.MotherWord = options.text(Opt::Mother);
        s.FatherWord = options.text(Opt::Father);
        s.FemaleWord = options.text(Opt::Female);
        s.MaleWord = options.text(Opt::Male);
        s.IdWord = options.textOr(Opt::Id, u"Identification"_s);
        s.Id2Word = options.text(Opt::Id2);
        s.Id3Word = options.text(Opt::Id3);
    }
    if (s.StockType.isEmpty()) {
        m_prompts.show(u"No Stock Types Found - Program Aborted"_s);
        return Result::EndProgram;
    }

    if (isNew && !(s.MaleWord == u"Male" && s.FemaleWord == u"Female")) {
        const QString question = u"Tarvex automatically uses the terminology '"_s + s.MaleWord + u"' and '"_s +
                                 s.FemaleWord + u"'\n\nWould you prefer to use 'Male' and 'Female' ?"_s;
        if (m_prompts.askYesNo(question, u"Sex Terminology"_s, Prompts::Icon::Question)) {
            s.MaleWord = u"Male"_s;
            s.FemaleWord = u"Female"_s;
            options.set(Opt::Female, s.FemaleWord);
            options.set(Opt::Male, s.MaleWord);
        }
    }

    if (isNew && CreateStudDatabase(telephone) == Created::EndProgram)
        return Result::EndProgram;

    bool written = options.setEntry(OptionSection::Catalogue, s.StockType, QString());
    const std::pair<const OptionKey &, QString> values[] = {
        {Opt::StudName, studName.trimmed()}, {Opt::Telephone, telephone}, {Opt::Mother, s.MotherWord},
        {Opt::Father, s.FatherWord},         {Opt::Male, s.MaleWord},     {Opt::Female, s.FemaleWord},
        {Opt::Id, s.IdWord},                 {Opt::Id2, s.Id2Word},
        // The third caption starts as the second, as it always has for studs registered here.
        {Opt::Id3, s.Id2Word}};
    for (const auto &[key, value] : values)
        written = options.set(key, value) && written;
    if (!written) {
        m_prompts.show(u"The Registration Details could not be saved - the settings could not be updated"_s,
                       QString(), Prompts::Icon::Stop);
        return Result::Stay;
    }
    s.StudName = studName.trimmed();
    s.StudTelephone = telephone;

    if (QFile::exists(s.DataFolder + s.StockType + u" Genetics.Gen"_s)) {
        options.set(Opt::Genetics, u"1"_s);
        options.set(Opt::GeneticsFile, s.StockType);
    }

    if (isNew && m_prompts.askYesNo(u"Tarvex has a number of options that you can change\n"
                                    u"to make it work the way you want to work.\n\n"
                                    u"Do you want to view/set up the options now?"_s,
                                    u"Options"_s)) {
        s.shell().showOptions();
    }
    return Result::Done;
}

Registration::Created Registration::CreateStudDatabase(const QString &telephone)
{
    Session &s = m_session;
    const QString file = s.DataFolder + s.StockType + u".mdb"_s;
    if (QFile::exists(file)) {
        if (!m_prompts.askYesNo(u"A Database already exists for "_s + s.StockType +
                                    u"\nOverwrite the Existing Database?"_s,
                                u"Database Already Exists"_s))
            return Created::Kept;
        if (!m_prompts.askYesNo(u"This action will lose all data in the "_s + s.StockType +
                                    u" Database\nand all Registration Information will be removed\nContinue?"_s,
                                u"Overwrite Existing Database"_s))
            return Created::Kept;
    }
    const QString emptyStock = s.ProgramFolder + u"EmptyStock.mdb"_s;
    if (!QFile::exists(emptyStock)) {
        m_prompts.show(u"Empty Database Does not Exists - Reinstall Software"_s, QString(), Prompts::Icon::Stop);
        return Created::Kept;
    }
    // The open stud's file is closed before it is replaced.
    if (s.Stud && QDir::cleanPath(s.databasePath()) == QDir::cleanPath(file))
        Close_Databases(s);

    // Copy beside the target first, so that a failed copy leaves the old file whole.
    const QString partial = file + u".new"_s;
    QFile::remove(partial);
    int error = 0;
    if (!QFile::copy(emptyStock, partial))
        error = QDir(QFileInfo(file).absolutePath()).exists() ? 75 : 76;
    else if (!QFile::setPermissions(partial, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                                                 QFile::ReadOther) ||
             (QFile::exists(file) && !QFile::remove(file)) || !QFile::rename(partial, file))
        error = 75;
    if (error != 0) {
        QFile::remove(partial);
        m_prompts.show(u"Cannot Copy Empty Database - Reinstall Software\nError : "_s + QString::number(error),
                       QString(), Prompts::Icon::Stop);
        return Created::EndProgram;
    }
    Options(s).set(Opt::Header, u"Tel: "_s + telephone, u"0"_s);
    return Created::Created;
}

bool Registration::CmdAddOk(StockTypeEntry e, QString *focus)
{
    for (QString *field : {&e.stockType, &e.maleWord, &e.femaleWord, &e.fatherWord, &e.motherWord, &e.id1, &e.id2,
                           &e.id3})
        // The list cannot keep a double quote, so a word of nothing but quotes is no word.
        *field = field->remove(u'"').trimmed();
    if (e.stockType.isEmpty() || e.maleWord.isEmpty() || e.femaleWord.isEmpty() || e.fatherWord.isEmpty() ||
        e.motherWord.isEmpty()) {
        m_prompts.show(u"All Details Must Be Entered"_s, u"Validation Error"_s, Prompts::Icon::Exclamation);
        *focus = u"AStockType"_s;
        return false;
    }
    if (e.id1.isEmpty())
        e.id1 = u"Identification"_s;
    FileError error;
    if (!StockTypes::append(StockTypes::locate(m_session.DataFolder), e, &error)) {
        m_prompts.show(u"Error : "_s + QString::number(error.number) + u' ' + error.description,
                       u"Error Writing StockTypes.Txt"_s, Prompts::Icon::Stop);
        *focus = u"AStockType"_s;
        return false;
    }
    return load();
}

} // namespace tarvex
