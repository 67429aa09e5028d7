#include "Duplicate.h"

#include "SearchComposer.h"

#include "core/Options.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"

#include <QMultiHash>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

constexpr std::array<char32_t, 10> kUpperToAscii = {0x00DF, 0x0131, 0x017F, 0xFB00, 0xFB01,
                                                    0xFB02, 0xFB03, 0xFB04, 0xFB05, 0xFB06};

QString character(char32_t c)
{
    return QStringView(QChar::fromUcs4(c)).toString();
}

/// The value a quoted text of the condition stands for: the quoting doubles every quote.
QString literalValue(const QString &typed)
{
    return SearchComposer::EscapeCriterionValue(typed).replace(u"''"_s, u"'"_s);
}

void sortNumbers(QList<qint64> &numbers)
{
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

/// The animals meeting the condition as it is written: every animal of the stud is read.
QList<qint64> scan(Database &db, const QString &condition)
{
    QList<qint64> numbers;
    try {
        // The stud's own order is by number.
        SQLite::Statement query(db.sql(), duplicateQuery(condition).toStdString());
        while (query.executeStep())
            numbers.append(query.getColumn(0).getInt64());
    } catch (const SQLite::Exception &e) {
        Database::fail(e);
    }
    return numbers;
}

/// A character beyond ASCII and what it upper-cases to.
struct UpperCase
{
    char32_t character;
    QString upper;
};

/// The characters beyond ASCII that upper-case to ASCII alone, with their upper case.
const std::array<UpperCase, kUpperToAscii.size()> &asciiUpperCases()
{
    static const std::array<UpperCase, kUpperToAscii.size()> table = [] {
        std::array<UpperCase, kUpperToAscii.size()> t;
        for (size_t i = 0; i < kUpperToAscii.size(); ++i)
            t[i] = {kUpperToAscii[i], character(kUpperToAscii[i]).toUpper()};
        return t;
    }();
    return table;
}

/// Every character beyond ASCII that upper-cases to something other than itself, by the
/// first unit of its upper case. Made the first time a name with such letters is typed: it
/// takes the whole of Unicode through the upper-casing, some tens of milliseconds.
const QMultiHash<char16_t, UpperCase> &changedByUpperCase()
{
    static const QMultiHash<char16_t, UpperCase> table = [] {
        QMultiHash<char16_t, UpperCase> t;
        for (char32_t c = 0x80; c <= 0x10FFFF; ++c) {
            if (QChar::isSurrogate(c))
                continue;
            const QString text = character(c);
            const QString upper = text.toUpper();
            if (upper != text)
                t.insert(upper.at(0).unicode(), {c, upper});
        }
        return t;
    }();
    return table;
}

char32_t codePointAt(const QString &text, qsizetype at)
{
    const QChar c = text.at(at);
    if (c.isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate())
        return QChar::surrogateToUcs4(c, text.at(at + 1));
    return c.unicode();
}

// The typed name is looked up through the stud's name index instead of upper-casing every
// name of the stud, which takes most of a second on a large one. The index ignores the case
// of ASCII letters only. A name that upper-cases to the typed one either is all ASCII, and
// then equal to it in the index, or has a first letter beyond ASCII; the ASCII letters before
// that one upper-case to the start of the typed name, and the letter itself upper-cases to
// what follows there ("Strauß" is "STRAUSS": "Strau" and then "ß" for "SS"). So for each
// place of the typed name up to its own first letter beyond ASCII, and each letter that
// upper-cases to what stands there, the names that begin that way are one range of the
// index. Every name found is then compared upper-cased, exactly as the condition does.
QList<qint64> seekByName(Database &db, const QString &upper, const std::optional<QString> &idPattern)
{
    const QString idFilter = idPattern ? u" AND RingNo LIKE ?"_s : QString();
    const auto withId = [&](QVariantList params) {
        if (idPattern)
            params << *idPattern;
        return params;
    };
    QList<qint64> numbers;
    const auto collect = [&](const Row &row) { numbers.append(row.number(u"Number"_s)); };
    const auto beginningWith = [&](qsizetype at, char32_t letter) {
        const QString start = upper.left(at);
        char32_t next = letter + 1;
        if (QChar::isSurrogate(next))
            next = 0xE000;
        // The last character of Unicode has no next one: its range runs to the end.
        if (next > 0x10FFFF)
            db.eachRow(u"SELECT Number FROM Stock WHERE Name >= ? AND ucase(Name) = ?"_s + idFilter,
                       withId({start + character(letter), upper}), collect);
        else
            db.eachRow(u"SELECT Number FROM Stock WHERE Name >= ? AND Name < ? AND ucase(Name) = ?"_s + idFilter,
                       withId({start + character(letter), start + character(next), upper}), collect);
    };

    const qsizetype firstBeyondAscii =
        std::find_if(upper.cbegin(), upper.cend(), [](QChar c) { return c.unicode() >= 0x80; }) - upper.cbegin();
    if (firstBeyondAscii == upper.size()) {
        db.eachRow(u"SELECT Number FROM Stock WHERE Name = ? AND ucase(Name) = ?"_s + idFilter,
                   withId({upper, upper}), collect);
        // Only the letters that upper-case to ASCII alone can stand in such a name.
        for (qsizetype at = 0; at < upper.size(); ++at)
            for (const UpperCase &u : asciiUpperCases())
                if (QStringView(upper).mid(at).startsWith(u.upper))
                    beginningWith(at, u.character);
    } else {
        const QMultiHash<char16_t, UpperCase> &changed = changedByUpperCase();
        for (qsizetype at = 0; at <= firstBeyondAscii; ++at) {
            const QStringView rest = QStringView(upper).mid(at);
            const auto [first, last] = changed.equal_range(rest.at(0).unicode());
            for (auto it = first; it != last; ++it)
                if (rest.startsWith(it->upper))
                    beginningWith(at, it->character);
        }
        // A letter that is its own upper case stands for itself.
        const char32_t own = codePointAt(upper, firstBeyondAscii);
        if (character(own).toUpper() == character(own))
            beginningWith(firstBeyondAscii, own);
    }
    sortNumbers(numbers);
    return numbers;
}

} // namespace

std::span<const char32_t> DuplicateDetail::upperToAscii()
{
    return kUpperToAscii;
}

std::optional<DuplicateTexts> duplicateCheckTexts(const Options &options, DuplicateField left, const QString &name,
                                                  const QString &id)
{
    const auto ticked = [&](int index) { return options.flag(Opt::DedupeOption, QString::number(index)); };
    switch (left) {
    case DuplicateField::Name:
        if (ticked(0))
            return DuplicateTexts{name, QString()};
        break;
    case DuplicateField::Identifier:
        // With both ticks, the identification alone: every animal the pair would find has
        // that identification, so the warning would only be given twice.
        if (ticked(1))
            return DuplicateTexts{QString(), id};
        if (ticked(2))
            return DuplicateTexts{name, id};
        break;
    }
    return std::nullopt;
}

DuplicateCondition duplicateCondition(const QString &name, const QString &id, const QString &idWord)
{
    using SearchComposer::EscapeCriterionValue;
    const QString n = name.trimmed();
    const QString i = id.trimmed();
    if (n.isEmpty() && i.isEmpty())
        return {};
    const QString nameClause = u" ucase(NAME) = '"_s + EscapeCriterionValue(n) + u'\'';
    const QString idClause = u" RingNo LIKE '"_s + EscapeCriterionValue(i) + u'\'';
    if (n.isEmpty())
        return {idClause, idWord};
    if (i.isEmpty())
        return {nameClause, u"Name"_s};
    return {nameClause + u" AND "_s + idClause, u"Name & "_s + idWord};
}

QString duplicateQuery(const QString &condition)
{
    return u"Select * From Stock Where "_s + condition + u';';
}

DuplicateMatches findDuplicates(Database &db, const QString &name, const QString &id, const QString &idWord)
{
    const DuplicateCondition c = duplicateCondition(name, id, idWord);
    DuplicateMatches found{c.description, {}};
    if (c.condition.isEmpty())
        return found;
    const QString n = name.trimmed();
    const QString i = id.trimmed();
    if (!n.isEmpty())
        found.numbers =
            seekByName(db, literalValue(n), i.isEmpty() ? std::nullopt : std::optional<QString>(literalValue(i)));
    else
        found.numbers = scan(db, c.condition);
    return found;
}

QString duplicateText(qsizetype count, const QString &description)
{
    if (count == 1)
        return u"Another animal already exists with the same "_s + description;
    return QString::number(count) + u" other animals already exist with the same "_s + description;
}

DuplicateWarning::DuplicateWarning(Database &db, DuplicateMatches matches) : m_db(db), m_matches(std::move(matches))
{
    read();
}

void DuplicateWarning::previous()
{
    if (!hasPrevious())
        return;
    --m_at;
    read();
}

void DuplicateWarning::next()
{
    if (!hasNext())
        return;
    ++m_at;
    read();
}

void DuplicateWarning::read()
{
    m_row = DuplicateRow{};
    if (m_matches.numbers.isEmpty())
        return;
    m_row.number = m_matches.numbers.at(m_at);
    const std::optional<StockRow> animal = readAnimal(m_db, m_row.number);
    if (!animal)
        return;
    m_row.name = animal->name;
    m_row.sex = animal->sex;
    m_row.id = animal->ringNo;
    // An unknown parent (none, or -1 for an ancestor entered from a pedigree) shows nothing;
    // a parent that has gone from the stud shows "Not Found".
    if (const auto sire = animal->knownSire())
        m_row.sire = Get_Stock_Name(m_db, *sire);
    if (const auto dam = animal->knownDam())
        m_row.dam = Get_Stock_Name(m_db, *dam);
}

DuplicateAnswer CheckDuplicate(Session &s, const QString &name, const QString &id, const InformDuplicate &inform)
{
    if (!s.studOpen() || (name.trimmed().isEmpty() && id.trimmed().isEmpty()))
        return DuplicateAnswer::NoneFound;
    Database &db = s.Stud->handle();
    DuplicateMatches found = findDuplicates(db, name, id, s.IdWord);
    if (found.numbers.isEmpty())
        return DuplicateAnswer::NoneFound;
    DuplicateWarning warning(db, std::move(found));
    return inform(warning) == DuplicateAnswer::GivenUp ? DuplicateAnswer::GivenUp : DuplicateAnswer::Kept;
}

} // namespace tarvex
