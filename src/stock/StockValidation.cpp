#include "StockValidation.h"

#include "FieldLimits.h"

#include "store/DaySerial.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

bool refuse(Prompts &prompts, QString *focus, const QString &control, const QString &text, const QString &title)
{
    prompts.show(text, title, Prompts::Icon::Exclamation);
    *focus = control;
    return false;
}

// Asks before a value enters a vocabulary for the first time; the list gains it on Yes.
bool knownOrCreated(Prompts &prompts, QStringList &list, const QString &value, const QString &what)
{
    if (value.isEmpty() || list.contains(value))
        return true;
    if (!prompts.askYesNo(u"This is the first time this "_s + what + u" has been entered\n\nCreate it?"_s, value,
                          Prompts::Icon::Question))
        return false;
    list.append(value);
    return true;
}

std::optional<double> weightValue(const QString &text)
{
    bool ok = false;
    double value = QLocale::c().toDouble(text, &ok);
    if (!ok)
        value = QLocale::system().toDouble(text, &ok);
    return ok ? std::optional<double>(value) : std::nullopt;
}

} // namespace

namespace {

// The steps of validation; with no row the form is only checked and normalised.
bool validate(Session &s, Prompts &prompts, Table *row, StockForm &f, bool autoNameAllowed, qint64 currentNumber,
              QString *focus, QString *assignedName)
{
    const auto write = [row](const QString &field, const QVariant &value) {
        if (row)
            row->setField(field, value);
    };
    QString assigned;
    if (f.name) {
        *f.name = f.name->trimmed();
        if (f.name->isEmpty()) {
            if (!autoNameAllowed)
                return refuse(prompts, focus, u"TxtName"_s, u"A Name must be entered"_s, u"Invalid Name"_s);
            *f.name = s.AutoPrefix + QString::number(currentNumber);
            assigned = *f.name;
        }
    }
    if (assignedName)
        *assignedName = assigned;

    const auto normalise = [](std::optional<QString> &v, int length) {
        if (v)
            *v = v->trimmed().left(length);
    };
    normalise(f.breed, FieldLimits::Breed);
    normalise(f.colour, FieldLimits::Colour);
    normalise(f.status, FieldLimits::Status);
    normalise(f.breeder, FieldLimits::Breeder);

    if (f.breed && !knownOrCreated(prompts, s.Lists.breeds, *f.breed, u"Breed"_s))
        return (*focus = u"Rtype"_s, false);
    if (f.colour && !knownOrCreated(prompts, s.Lists.colours, *f.colour, u"Colour"_s))
        return (*focus = u"RColour"_s, false);
    if (f.breeder && !knownOrCreated(prompts, s.Lists.breeders, *f.breeder, u"Breeder"_s))
        return (*focus = u"RBreeder"_s, false);
    if (f.status && !knownOrCreated(prompts, s.Lists.statuses, *f.status, u"Status"_s))
        return (*focus = u"RStatus"_s, false);

    if (f.archive) {
        *f.archive = f.archive->trimmed();
        if (*f.archive != u"Yes" && *f.archive != u"No")
            return refuse(prompts, focus, u"RArchive"_s, u"Must be Yes or No"_s, u"Invalid Archive"_s);
    }
    if (f.sex) {
        *f.sex = f.sex->trimmed();
        if (!f.sex->isEmpty() && *f.sex != s.FemaleWord && *f.sex != s.MaleWord)
            return refuse(prompts, focus, u"RSex"_s, u"Must be "_s + s.MaleWord + u", "_s + s.FemaleWord + u" or Nothing"_s,
                          u"Invalid Sex"_s);
    }

    const auto date = [&](std::optional<QString> &text, const QString &field, const QString &control) {
        if (!text)
            return true;
        *text = text->trimmed();
        if (!Is_Valid_Date(*text, s.Dates, prompts)) {
            *focus = control;
            return false;
        }
        write(field, *text == s.Dates.BlankDate ? QVariant() : QVariant(DaySerial::fromDate(*s.Dates.parse(*text))));
        return true;
    };
    if (!date(f.dob, u"DOB"_s, u"RDOB"_s) || !date(f.dod, u"DOD"_s, u"RDOD"_s))
        return false;

    const auto parent = [&](const std::optional<ParentPick> &pick, const QString &field, const QString &control,
                            const QString &word) {
        if (!pick)
            return true;
        if (pick->position < 1) {
            write(field, QVariant());
            return true;
        }
        if (pick->number == currentNumber)
            return refuse(prompts, focus, control, u"Animal cannot be its own "_s + word, u"Invalid "_s + word);
        write(field, pick->number);
        return true;
    };
    if (!parent(f.sire, u"Sire"_s, u"RSire"_s, u"Sire"_s) || !parent(f.dam, u"Dam"_s, u"RDam"_s, u"Dam"_s))
        return false;

    if (f.weight) {
        *f.weight = f.weight->trimmed();
        if (f.weight->isEmpty()) {
            write(u"Weight"_s, QVariant());
        } else {
            const auto value = weightValue(*f.weight);
            // The title speaks of another field; it has always read so.
            if (f.weight->contains(u'-') || !value)
                return refuse(prompts, focus, u"RWeight"_s, u"Must be a valid weight"_s, u"Invalid Archive"_s);
            *f.weight = QString::number(*value);
            write(u"Weight"_s, *value);
        }
    }

    const std::pair<const std::optional<QString> *, QString> bound[] = {
        {&f.name, u"Name"_s},     {&f.id1, u"RingNo"_s},     {&f.id2, u"id2"_s},
        {&f.id3, u"id3"_s},       {&f.breed, u"Type"_s},     {&f.colour, u"Colour"_s},
        {&f.breeder, u"Breeder"_s}, {&f.status, u"status"_s}, {&f.archive, u"Archive"_s},
        {&f.sex, u"Sex"_s},       {&f.health, u"Health"_s},  {&f.notes, u"Notes"_s}};
    for (const auto &[value, field] : bound)
        if (*value)
            write(field, textOrNull(**value));

    if (!assigned.isEmpty())
        prompts.show(u"Automatic Name Assigned : "_s + assigned);
    return true;
}

} // namespace

bool Validate_Stock(Session &s, Prompts &prompts, Table &row, StockForm &f, bool autoNameAllowed,
                    qint64 currentNumber, QString *focus, QString *assignedName)
{
    return validate(s, prompts, &row, f, autoNameAllowed, currentNumber, focus, assignedName);
}

bool Validate_Stock(Session &s, Prompts &prompts, StockForm &f, QString *focus)
{
    return validate(s, prompts, nullptr, f, false, 0, focus, nullptr);
}

} // namespace tarvex
