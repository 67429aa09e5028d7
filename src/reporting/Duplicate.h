#pragma once

#include "core/Session.h"
#include "core/Shell.h"
#include "store/Database.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>
#include <span>

namespace tarvex {

class Options;

/// The box of a new animal's details that was left.
enum class DuplicateField { Name, Identifier };

/// What the duplicate check of a new animal is given, the other text left empty.
struct DuplicateTexts
{
    QString name, id;
    bool operator==(const DuplicateTexts &) const = default;
};

/// What the check is given when a box of a new animal is left, by the stud's three
/// "DedupeOption" ticks: the name alone on leaving the name (tick 0); on leaving the
/// identification, the identification alone (tick 1) or else name and identification
/// together (tick 2). Nothing when no tick asks for a check there, an absent tick
/// counting as off.
std::optional<DuplicateTexts> duplicateCheckTexts(const Options &options, DuplicateField left, const QString &name,
                                                  const QString &id);

/// The condition of the stud's animals that the check looks for, and the words that
/// describe it on the warning ("Name", the identification term, or both).
struct DuplicateCondition
{
    QString condition, description;
};

/// The condition for the texts as typed: both are trimmed and quoted; a name compares
/// upper-cased, an identification as a pattern (wildcards allowed). An empty condition when
/// both texts are empty.
DuplicateCondition duplicateCondition(const QString &name, const QString &id, const QString &idWord);

/// The query of the animals that meet a condition, as it reads in full.
QString duplicateQuery(const QString &condition);

/// The animals a check found, by number, and what they have in common with the new one.
struct DuplicateMatches
{
    QString description;
    QList<qint64> numbers; // ascending
};

/// The animals that meet the condition of the texts (see duplicateCondition), by number;
/// none when both texts are empty. Throws StoreError when the stud cannot be read.
DuplicateMatches findDuplicates(Database &db, const QString &name, const QString &id, const QString &idWord);

/// The first line of the warning: the wording for one animal, or the count of them.
QString duplicateText(qsizetype count, const QString &description);

/// One animal of the warning as it is shown; the parents' names are empty where unknown.
struct DuplicateRow
{
    qint64 number = 0;
    QString name, sex, id, sire, dam;
};

/// The animals of a warning, shown one at a time, with the moves between them.
class DuplicateWarning
{
public:
    /// matches holds at least one animal. Throws StoreError when it cannot be read.
    DuplicateWarning(Database &db, DuplicateMatches matches);

    QString text() const { return duplicateText(m_matches.numbers.size(), m_matches.description); }
    qsizetype count() const { return m_matches.numbers.size(); }
    const DuplicateRow &current() const { return m_row; }
    bool hasPrevious() const { return m_at > 0; }
    bool hasNext() const { return m_at + 1 < m_matches.numbers.size(); }
    /// Moves to the neighbour; nothing happens where there is none.
    void previous();
    void next();

private:
    void read();

    Database &m_db;
    DuplicateMatches m_matches;
    qsizetype m_at = 0;
    DuplicateRow m_row;
};

/// Shows the warning and gives the user's answer: Kept or GivenUp.
using InformDuplicate = std::function<DuplicateAnswer(DuplicateWarning &warning)>;

/// Looks for animals of the open stud like the new one (see findDuplicates) and, when there
/// are some, hands them to inform. NoneFound when nothing was shown, both texts being empty
/// or no animal matching. Throws StoreError when the stud cannot be read.
DuplicateAnswer CheckDuplicate(Session &session, const QString &name, const QString &id,
                               const InformDuplicate &inform);

namespace DuplicateDetail {
/// The characters beyond ASCII that upper-case to ASCII letters alone ("ß" to "SS"): the
/// only way a name holding other than ASCII can equal an ASCII name upper-cased.
std::span<const char32_t> upperToAscii();
} // namespace DuplicateDetail

} // namespace tarvex
