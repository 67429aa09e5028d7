#include "Matings.h"

#include "Diary.h"

#include "core/NumericValue.h"
#include "core/Options.h"
#include "core/StudLoader.h"
#include "store/DaySerial.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"

#include <climits>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvex {

QDate dueDate(const QDate &matingDate, int gestationDays)
{
    return matingDate.addDays(gestationDays);
}

Matings::Matings(Session &session, Prompts &prompts, qint64 number)
    : m_session(session), m_prompts(prompts), m_number(number)
{
}

bool Matings::open()
{
    const std::optional<StockRow> animal = readAnimal(m_session.Stud->handle(), m_number);
    if (!animal || !animal->sexRecorded) {
        m_prompts.show(u"Matings Cannot be Recorded"_s, u"Unknown Sex"_s, Prompts::Icon::Exclamation);
        return false;
    }
    m_name = animal->name;
    m_male = animal->sex == m_session.MaleWord;
    return true;
}

QString Matings::partnerWord() const
{
    return m_male ? m_session.MotherWord : m_session.FatherWord;
}

std::shared_ptr<const ParentList> Matings::partners()
{
    if (m_partners)
        return m_partners;
    const std::shared_ptr<const ParentList> list = m_male ? damList(m_session) : sireList(m_session);
    QList<ParentEntry> entries = list->entries();
    if (!entries.isEmpty() && entries.first().number == -1 && entries.first().name.isEmpty())
        entries.removeFirst();
    m_partners = std::make_shared<const ParentList>(std::move(entries));
    return m_partners;
}

std::optional<qsizetype> Matings::partnerPlace(const MatingRow &row)
{
    if (!row.partner)
        return std::nullopt;
    const qsizetype place = partners()->indexOf(*row.partner);
    return place < 0 ? std::nullopt : std::optional<qsizetype>(place);
}

ParentEntry Matings::notFoundPartner()
{
    return {u"<Not Found>"_s, -1};
}

QList<MatingRow> Matings::rows() const
{
    // The order of the side's index: its key, then the order the matings were entered.
    return read(u"%1 = ? ORDER BY %1, \"Unique\""_s.arg(sideField()), {m_number});
}

QList<MatingRow> Matings::read(const QString &condition, const QVariantList &params) const
{
    Database &db = m_session.Stud->handle();
    QList<MatingRow> out;
    db.eachRow(u"SELECT \"Unique\", MatingDate, Birthdate, %1 AS Partner FROM Matings WHERE "_s.arg(otherField()) +
                   condition,
               params, [&](const Row &row) {
                   MatingRow r;
                   r.unique = row.number(u"Unique"_s);
                   r.matingDate = DaySerial::toDate(row.value(u"MatingDate"_s));
                   r.birthDate = DaySerial::toDate(row.value(u"Birthdate"_s));
                   if (!row.isNull(u"Partner"_s))
                       r.partner = row.number(u"Partner"_s);
                   out << r;
               });
    for (MatingRow &r : out)
        if (r.partner)
            r.partnerName = Get_Stock_Name(db, *r.partner);
    return out;
}

std::optional<MatingRow> Matings::find(qint64 unique) const
{
    const QList<MatingRow> found =
        read(u"\"Unique\" = ? AND %1 = ?"_s.arg(sideField()), {unique, m_number});
    return found.isEmpty() ? std::nullopt : std::optional<MatingRow>(found.first());
}

namespace {
// A number of days as typed: its numeric value to the nearest whole day, kept within the
// range of a whole number.
int wholeDays(const QString &text)
{
    const double days = std::nearbyint(numericValue(text.trimmed()));
    if (!(days >= 0))
        return 0;
    return days >= double(INT_MAX) ? INT_MAX : int(days);
}
} // namespace

int Matings::gestation()
{
    if (m_gestation >= 1)
        return m_gestation;
    Options options(m_session);
    m_gestation = wholeDays(options.text(Opt::GestationInDays));
    while (m_gestation < 1) {
        // Cancelling gives 0, so the question comes again: a mating's birth day needs it.
        const std::optional<QString> answer = m_prompts.input(
            u"Enter Gestation Period in Days\n\n(This can be amended on the Options Screen)"_s, u"Gestation"_s,
            QString());
        m_gestation = wholeDays(answer.value_or(QString()));
        options.setNumber(Opt::GestationInDays, m_gestation);
    }
    return m_gestation;
}

void Matings::matingDateLeft(QString &matingDate, QString &birthDate)
{
    const DateSettings &dates = m_session.Dates;
    matingDate = todayIfBlank(dates, matingDate, m_session.clock->today());
    const std::optional<QDate> mated = dates.parse(matingDate);
    if ((birthDate.trimmed().isEmpty() || birthDate == dates.BlankDate) && mated) {
        // A gestation of thousands of years gives no date: the field stays for the user.
        const QDate due = dueDate(*mated, gestation());
        if (due.isValid() && due.year() <= 9999)
            birthDate = dates.format(due);
    }
}

bool Matings::save(const MatingForm &form, QString *focus)
{
    if (!form.partner) {
        m_prompts.show(u"A partner must be selected"_s, QString(), Prompts::Icon::Exclamation);
        *focus = u"MSireDam"_s;
        return false;
    }
    const DateSettings &dates = m_session.Dates;
    const auto day = [&](const QString &text, const QString &control) {
        const std::optional<QDate> date = requiredDate(text, dates, m_prompts);
        if (!date)
            *focus = control;
        return date;
    };
    const std::optional<QDate> mated = day(form.matingDate, u"MMatingDate"_s);
    if (!mated)
        return false;
    const std::optional<QDate> due = day(form.birthDate, u"MBirthDate"_s);
    if (!due)
        return false;

    Database &db = m_session.Stud->handle();
    const qint64 sire = m_male ? m_number : *form.partner;
    const qint64 dam = m_male ? *form.partner : m_number;
    Transaction tx(db);
    if (form.unique) {
        db.execute(u"UPDATE Matings SET Sire = ?, Dam = ?, MatingDate = ?, Birthdate = ? WHERE \"Unique\" = ?"_s,
                   {sire, dam, DaySerial::fromDate(*mated), DaySerial::fromDate(*due), *form.unique});
    } else {
        db.execute(u"INSERT INTO Matings (Sire, Dam, MatingDate, Birthdate) VALUES (?, ?, ?, ?)"_s,
                   {sire, dam, DaySerial::fromDate(*mated), DaySerial::fromDate(*due)});
        if (form.updateDiary) {
            const QString dueText = form.birthDate.trimmed();
            addNote(db, m_number, *mated, u"Mated to "_s + form.partnerText + u"  - Due "_s + dueText);
            addNote(db, *form.partner, *mated, u"Mated to "_s + m_name + u"  - Due "_s + dueText);
        }
    }
    tx.commit();
    return true;
}

std::optional<MatingRow> Matings::amend(std::optional<qint64> selected)
{
    if (!selected) {
        m_prompts.show(u"Nothing Selected"_s, QString(), Prompts::Icon::Information);
        return std::nullopt;
    }
    std::optional<MatingRow> row = find(*selected);
    if (!row)
        m_prompts.show(u"System Error - Could not find Mating"_s);
    return row;
}

bool Matings::remove(std::optional<qint64> selected)
{
    if (!selected) {
        m_prompts.show(u"Nothing Selected"_s, QString(), Prompts::Icon::Information);
        return false;
    }
    const qint64 unique = *selected;
    Database &db = m_session.Stud->handle();
    if (!db.scalar(u"SELECT 1 FROM Matings WHERE \"Unique\" = ?"_s, {unique}).isValid()) {
        m_prompts.show(u"Woops - could not find it!"_s);
        return false;
    }
    if (m_prompts.message(u"Remove This Mating"_s, QString(), Prompts::Icon::Question, Prompts::Buttons::YesNoCancel) !=
        Prompts::Answer::Yes)
        return false;
    Transaction tx(db);
    db.execute(u"DELETE FROM Matings WHERE \"Unique\" = ?"_s, {unique});
    tx.commit();
    return true;
}

} // namespace tarvex
