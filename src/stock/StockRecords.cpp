#include "StockRecords.h"

#include "AgeText.h"

#include "core/ActionFailure.h"
#include "core/Options.h"
#include "core/StudLoader.h"
#include "genetics/Genotypes.h"
#include "reporting/Duplicate.h"
#include "store/DaySerial.h"
#include "store/StockLookup.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"

using namespace Qt::StringLiterals;

namespace tarvex {

StockRecords::StockRecords(Session &session, Prompts &prompts) : m_session(session), m_prompts(prompts) {}

Table &StockRecords::stock()
{
    return *m_session.Stud->Stock;
}

bool StockRecords::filtered(bool forward, std::optional<qint64> bookmark)
{
    if (!m_filter.any())
        return stock().hasCurrent();
    return m_filter.skipToPassing(stock(), forward, bookmark, m_session.MaleWord, m_session.FemaleWord);
}

bool StockRecords::CmdBrowse()
{
    Table &t = stock();
    t.setIndex(u"PrimaryKey"_s);
    t.moveFirst();
    m_currentBookmark.reset();
    if (!t.hasCurrent() || !filtered(true, std::nullopt)) {
        m_prompts.show(u"No Records to Browse"_s, QString(), Prompts::Icon::Information);
        return false;
    }
    m_currentBookmark = t.bookmark();
    return true;
}

bool StockRecords::showAnimal(qint64 number)
{
    Table &t = stock();
    t.setIndex(u"PrimaryKey"_s);
    if (!readAnimal(m_session.Stud->handle(), number))
        return false;
    t.setBookmark(number);
    m_currentBookmark = t.bookmark();
    return true;
}

bool StockRecords::move(bool forward)
{
    Table &t = stock();
    if (forward)
        t.moveNext();
    else
        t.movePrevious();
    if (!filtered(forward, m_currentBookmark)) {
        if (!t.hasCurrent() && m_currentBookmark)
            t.setBookmark(*m_currentBookmark);
        return false;
    }
    m_currentBookmark = t.bookmark();
    return true;
}

void StockRecords::RestoreParentLists()
{
    m_sireAddition.reset();
    m_damAddition.reset();
}

std::shared_ptr<const ParentList> StockRecords::parentList(bool sire)
{
    return sire ? sireList(m_session) : damList(m_session);
}

int StockRecords::addParentChoice(bool sire, const QString &name, qint64 number)
{
    const std::shared_ptr<const ParentList> list = parentList(sire);
    const qsizetype listed = list->indexOf(number);
    if (listed >= 0)
        return int(listed);
    (sire ? m_sireAddition : m_damAddition) = ParentEntry{name, number};
    return int(list->size());
}

StockRecords::NameLeft StockRecords::nameLeft(const QString &name, const QString &id1, const QString &nextControl)
{
    return boxLeft(true, name, id1, nextControl);
}

StockRecords::NameLeft StockRecords::idLeft(const QString &name, const QString &id1, const QString &nextControl)
{
    return boxLeft(false, name, id1, nextControl);
}

StockRecords::NameLeft StockRecords::boxLeft(bool nameBox, const QString &name, const QString &id1,
                                             const QString &nextControl)
{
    if (!m_newInProgress || nextControl == u"CmdNewCancel")
        return NameLeft::Stay;
    const std::optional<DuplicateTexts> texts = duplicateCheckTexts(
        Options(m_session), nameBox ? DuplicateField::Name : DuplicateField::Identifier, name, id1);
    if (!texts)
        return NameLeft::Stay;
    switch (m_session.shell().checkDuplicate(texts->name, texts->id)) {
    case DuplicateAnswer::GivenUp:
        return NameLeft::CancelNew;
    case DuplicateAnswer::Kept:
        return nextControl == u"CmdNewUpdate" ? NameLeft::SaveNew : NameLeft::Stay;
    case DuplicateAnswer::NoneFound:
        break;
    }
    return NameLeft::Stay;
}

void StockRecords::refreshCurrent()
{
    stock().refresh();
}

RecordView StockRecords::Stock_Reposition()
{
    RestoreParentLists();
    Table &t = stock();
    RecordView v;
    const auto text = [&](const QString &f) { return t.field(f).toString(); };
    v.number = t.field(u"Number"_s).toLongLong();
    v.name = text(u"Name"_s);
    v.id1 = text(u"RingNo"_s);
    v.id2 = text(u"id2"_s);
    v.id3 = text(u"id3"_s);
    v.breed = text(u"Type"_s);
    v.colour = text(u"Colour"_s);
    v.breeder = text(u"Breeder"_s);
    v.status = text(u"status"_s);
    v.archive = text(u"Archive"_s);
    v.sex = text(u"Sex"_s);
    v.genotype = text(u"Genotype"_s);
    const DateSettings &dates = m_session.Dates;
    const QDate dob = DaySerial::toDate(t.field(u"DOB"_s));
    const QDate dod = DaySerial::toDate(t.field(u"DOD"_s));
    v.dob = dob.isValid() ? dates.format(dob) : dates.BlankDate;
    v.dod = dod.isValid() ? dates.format(dod) : dates.BlankDate;
    if (dob.isValid())
        v.age = AgeText(dob, v.status, dod, m_session.clock->today(), m_session.OptionsCache);
    const QVariant weight = t.field(u"Weight"_s);
    if (!weight.isNull())
        v.weight = QString::number(weight.toDouble(), 'f', 2);

    // A parent missing from its list (archived, or gone) is shown at the end of the list
    // while this animal is in hand.
    const auto parent = [&](bool sire, int &index, bool &button) {
        const QVariant value = t.field(sire ? u"Sire"_s : u"Dam"_s);
        if (value.isNull() || value.toLongLong() < 1)
            return;
        const qint64 number = value.toLongLong();
        const std::shared_ptr<const ParentList> list = parentList(sire);
        index = int(list->indexOf(number));
        QString name;
        if (index >= 0) {
            name = list->at(index).name;
        } else {
            name = Get_Stock_Name(m_session.Stud->handle(), number);
            (sire ? m_sireAddition : m_damAddition) = ParentEntry{name, number};
            index = int(list->size());
        }
        button = !name.isEmpty() && name != u"Not Found";
    };
    v.sire = t.field(u"Sire"_s);
    v.dam = t.field(u"Dam"_s);
    parent(true, v.sireIndex, v.sireButton);
    parent(false, v.damIndex, v.damButton);

    const auto leftTrimmed = [](QString s) {
        qsizetype i = 0;
        while (i < s.size() && s.at(i).isSpace())
            ++i;
        return s.mid(i);
    };
    v.health = leftTrimmed(text(u"Health"_s));
    v.notes = leftTrimmed(text(u"Notes"_s));
    v.litterEnabled = HasOffspring();
    v.matingsEnabled = v.sex == m_session.MaleWord || v.sex == m_session.FemaleWord;
    return v;
}

bool StockRecords::HasOffspring()
{
    Table &t = stock();
    const qint64 number = t.field(u"Number"_s).toLongLong();
    const bool male = t.field(u"Sex"_s).toString() == m_session.MaleWord;
    return m_session.Stud->handle()
               .scalar(male ? u"SELECT 1 FROM Stock WHERE Sire = ? LIMIT 1"_s : u"SELECT 1 FROM Stock WHERE Dam = ? LIMIT 1"_s,
                       {number})
               .isValid();
}

RelativesCache StockRecords::relatives()
{
    Table &t = stock();
    RelativesSubject subject{t.field(u"Number"_s).toLongLong(), t.field(u"Sire"_s), t.field(u"Dam"_s),
                             t.field(u"Sex"_s).toString()};
    return RefreshRelatives(
        m_session.Stud->handle(), subject, m_session.MaleWord,
        [this](const QDate &d) { return m_session.Dates.format(d); }, m_session.WeightUnit);
}

StockForm StockRecords::CmdNew()
{
    RestoreParentLists();
    Table &t = stock();
    t.addNew();
    m_currentNumber = t.field(u"Number"_s).toLongLong();
    m_newInProgress = true;
    StockForm f;
    f.archive = u"No"_s;
    f.dob = f.dod = m_session.Dates.BlankDate;
    f.weight = QString();
    f.breed = m_session.Lists.breeds.size() == 1 ? m_session.Lists.breeds.first() : QString();
    f.colour = m_session.Lists.colours.size() == 1 ? m_session.Lists.colours.first() : QString();
    f.sire = ParentPick{0, -1};
    f.dam = ParentPick{0, -1};
    return f;
}

bool StockRecords::save(const StockForm &form, bool withGenes, QString *focus)
{
    Table &t = stock();
    // Kept so that a save given up can be made again with the same press of Save.
    const Table::Pending row = t.pending();
    try {
        // The animal and the genes worked out for it are one change to the stud.
        Transaction tx(m_session.Stud->handle());
        t.update();
        if (withGenes)
            updateGenes(form);
        tx.commit();
        return true;
    } catch (const StoreError &e) {
        t.resume(row);
        m_prompts.show(e.number() == StoreError::Locked ? e.description()
                                                         : u"The record could not be saved.\n\n"_s + e.description(),
                       u"Error Saving Record"_s, Prompts::Icon::Stop);
        *focus = u"TxtName"_s;
        return false;
    }
}

void StockRecords::updateGenes(const StockForm &form)
{
    if (!m_session.GeneticsOn)
        return;
    // Also without a colour: the animal is still examined against its relatives.
    Update_Genes(m_session, m_prompts, form.colour.value_or(QString()), form.breed.value_or(QString()), m_currentNumber,
                 form.sex.value_or(QString()));
}

void StockRecords::refillParentList(const QString &sex)
{
    if (sex == m_session.MaleWord)
        refillSires(m_session);
    else
        refillDams(m_session);
}

StockRecords::Save StockRecords::CmdNewUpdate(StockForm &form, QString *focus)
{
    Table &t = stock();
    m_currentNumber = t.field(u"Number"_s).toLongLong();
    if (!Validate_Stock(m_session, m_prompts, t, form, true, m_currentNumber, focus))
        return Save::Refused;
    m_newInProgress = false;
    const bool missingParent = (form.sire && form.sire->position == 0) || (form.dam && form.dam->position == 0);
    const QString sex = form.sex.value_or(QString());
    const QString archive = form.archive.value_or(QString());
    if (!save(form, true, focus))
        return Save::Refused;
    // The cursor goes to the new animal; browsing goes on in name order from there.
    t.setIndex(u"NumberKey"_s);
    t.seek(u"="_s, {m_currentNumber});
    t.setIndex(u"PrimaryKey"_s);
    m_currentBookmark = t.bookmark();
    if (archive == u"No") {
        if (sex == m_session.MaleWord)
            refillSires(m_session);
        else if (sex == m_session.FemaleWord)
            refillDams(m_session);
    }
    // Within a litter the parents are known: no question, the next young follows.
    if (m_litterRemaining > 0) {
        if (--m_litterRemaining > 0)
            return Save::NextOffspring;
        End_Litter();
        return Save::LitterEnded;
    }
    if (missingParent &&
        m_prompts.askYesNo(u"If you know the details of the parents/ancestors of\n"
                           u"this animal you can create the pedigree information now.\n\nCreate Pedigree Now?"_s,
                           u"New Stock Entered"_s, Prompts::Icon::Question)) {
        m_session.shell().createPedigree(m_currentNumber);
        // The parents may be known now: the genes are worked out again, as a change of its own.
        try {
            Transaction tx(m_session.Stud->handle());
            updateGenes(form);
            tx.commit();
        } catch (const StoreError &e) {
            // The animal and its ancestors are saved; only the genotype lags behind them.
            m_prompts.show(u"The animal is saved, but its genotype could not be worked out again from its "
                           u"ancestors.\n\n"_s +
                               ActionFailure::reason(e) + u"\n\nAuto Check puts it right later."_s,
                           u"Error Saving Record"_s, Prompts::Icon::Exclamation);
        }
        t.setBookmark(*m_currentBookmark);
    }
    return Save::Saved;
}

void StockRecords::CmdNewCancel()
{
    stock().cancelUpdate();
    m_newInProgress = false;
    // The rest of a litter goes with the young given up; the young saved stay.
    End_Litter();
}

StockRecords::LitterStart StockRecords::CmdNLOK(LitterForm &form, QString *focus)
{
    const int young = checkLitter(m_session, m_prompts, form, focus);
    if (young == 0)
        return LitterStart::Refused;
    if (form.automatic) {
        if (!Create_Litter_Automatically(m_session, m_prompts, form, young, focus))
            return LitterStart::Refused;
        return LitterStart::Created;
    }
    m_litter = form;
    m_litterRemaining = young;
    return LitterStart::OneByOne;
}

StockForm StockRecords::Next_Litter_Offspring()
{
    const StockForm blank = CmdNew();
    StockForm f = litterOffspringForm(m_session, m_litter);
    f.dod = blank.dod;
    f.weight = blank.weight;
    // The parents are found again by number: the lists may have been read anew since.
    const auto pick = [this](bool sire, const ParentPick &chosen) {
        if (chosen.position < 1)
            return ParentPick{0, -1};
        const qsizetype at = parentList(sire)->indexOf(chosen.number);
        return at < 1 ? ParentPick{0, -1} : ParentPick{int(at), chosen.number};
    };
    f.sire = pick(true, m_litter.sire);
    f.dam = pick(false, m_litter.dam);
    return f;
}

void StockRecords::End_Litter()
{
    m_litterRemaining = 0;
    m_litter = {};
}

void StockRecords::CmdBrowseModify()
{
    Table &t = stock();
    const auto text = [&](const QString &f) { return t.field(f).toString(); };
    m_rememberedName = text(u"Name"_s);
    m_rememberedArchive = text(u"Archive"_s);
    m_rememberedSex = text(u"Sex"_s);
    m_rememberedColour = text(u"Colour"_s);
    m_rememberedBreeder = text(u"Breeder"_s);
    m_rememberedType = text(u"Type"_s);
    m_rememberedStatus = text(u"status"_s);
    t.edit();
    // Older versions left 0 for an unknown parent.
    for (const QString &parent : {u"Sire"_s, u"Dam"_s}) {
        const QVariant v = t.field(parent);
        if (!v.isNull() && v.toLongLong() < 1)
            t.setField(parent, QVariant());
    }
}

StockRecords::Save StockRecords::CmdModifyOK(StockForm &form, QString *focus)
{
    Table &t = stock();
    m_currentNumber = t.field(u"Number"_s).toLongLong();
    if (!Validate_Stock(m_session, m_prompts, t, form, false, m_currentNumber, focus))
        return Save::Refused;
    if (!save(form, form.colour.value_or(QString()) != m_rememberedColour, focus))
        return Save::Refused;
    const qint64 bookmark = t.bookmark();
    const auto now = [&](const QString &f) { return t.field(f).toString(); };
    // The sire and dam lists hold this animal under its name, archive and sex.
    RestoreParentLists();
    if (now(u"Name"_s) != m_rememberedName || now(u"Archive"_s) != m_rememberedArchive ||
        now(u"Sex"_s) != m_rememberedSex) {
        if (now(u"Sex"_s) == m_rememberedSex) {
            refillParentList(m_rememberedSex);
        } else {
            refillSires(m_session);
            refillDams(m_session);
        }
    }
    Table util(m_session.Stud->handle(), u"Stock"_s);
    if (now(u"Type"_s) != m_rememberedType)
        m_session.Lists.breeds = walkVocabulary(util, u"TypeKey"_s, u"Type"_s);
    if (now(u"Colour"_s) != m_rememberedColour)
        m_session.Lists.colours = walkVocabulary(util, u"ColourKey"_s, u"Colour"_s);
    if (now(u"Breeder"_s) != m_rememberedBreeder)
        m_session.Lists.breeders = walkVocabulary(util, u"BreederKey"_s, u"Breeder"_s);
    if (now(u"status"_s) != m_rememberedStatus)
        m_session.Lists.statuses = walkVocabulary(util, u"StatusKey"_s, u"status"_s);
    t.setBookmark(bookmark);
    m_currentBookmark = bookmark;
    return Save::Saved;
}

void StockRecords::cmdModifyCancel()
{
    stock().cancelUpdate();
    stock().refresh();
}

StockRecords::Removed StockRecords::CmdBrowseRemove()
{
    const auto ask = [&](const QString &text) {
        return m_prompts.message(text, u"Delete"_s, Prompts::Icon::Question, Prompts::Buttons::YesNoCancel) ==
               Prompts::Answer::Yes;
    };
    if (!ask(u"Remove this Stock Record?"_s))
        return Removed::Kept;
    if (HasOffspring() && !ask(u"This Stock Record forms part of a pedigree\nAre You Sure you want to Delete?"_s))
        return Removed::Kept;

    Table &t = stock();
    const qint64 number = t.field(u"Number"_s).toLongLong();
    const QString sex = t.field(u"Sex"_s).toString();
    const bool hasSex = !t.field(u"Sex"_s).isNull();
    Database &db = t.database();
    const qint64 removing = t.bookmark();
    try {
        // The animal and everything that hangs on it go together or not at all.
        Transaction tx(db);
        db.execute(u"DELETE FROM BreedNote WHERE Number = ?"_s, {number});
        db.execute(u"DELETE FROM Awards WHERE Number = ?"_s, {number});
        db.execute(u"DELETE FROM Genes WHERE StockNo = ?"_s, {number});
        db.execute(u"DELETE FROM Images WHERE Number = ?"_s, {number});
        if (hasSex) {
            if (sex == m_session.MaleWord)
                db.execute(u"DELETE FROM Matings WHERE Sire = ?"_s, {number});
            else if (sex == m_session.FemaleWord)
                db.execute(u"DELETE FROM Matings WHERE Dam = ?"_s, {number});
        }
        t.deleteCurrent();
        tx.commit();
    } catch (const StoreError &) {
        // Nothing was removed: the animal stays in hand.
        t.setBookmark(removing);
        throw;
    }
    RestoreParentLists();
    Refill_All_Lists(m_session);

    m_currentBookmark.reset();
    t.moveNext();
    if (!filtered(true, std::nullopt)) {
        t.moveLast();
        if (t.hasCurrent() && !filtered(false, std::nullopt))
            return Removed::StockEmpty;
    }
    if (!t.hasCurrent())
        return Removed::StockEmpty;
    m_currentBookmark = t.bookmark();
    return Removed::Removed;
}

} // namespace tarvex
