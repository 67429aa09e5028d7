#pragma once

#include "Table.h"

#include <QHash>
#include <QList>
#include <QStringList>

namespace tarvex {

/// The distinct values of a text field, walked along its index with one seek per value,
/// so the cost follows the size of the vocabulary and not the number of animals.
/// Empty and null values are never reached.
QStringList walkVocabulary(Table &cursor, const QString &indexName, const QString &field);

/// One entry of a sire or dam list: the name shown and the animal's number behind it.
struct ParentEntry
{
    QString name;
    qint64 number = -1;
    bool operator==(const ParentEntry &) const = default;
};

/// A sire or dam list: a blank entry carrying -1, then the animals of one sex in name
/// order. A large stud's list holds hundreds of thousands of names; an animal's place in it
/// is found without a walk.
class ParentList
{
public:
    ParentList() : m_entries{{QString(), -1}} {}
    explicit ParentList(QList<ParentEntry> entries) : m_entries(std::move(entries)) {}

    qsizetype size() const { return m_entries.size(); }
    const ParentEntry &at(qsizetype i) const { return m_entries.at(i); }
    const QList<ParentEntry> &entries() const { return m_entries; }
    /// The place of the first entry with that animal's number; -1 when it is not listed.
    qsizetype indexOf(qint64 number) const;

private:
    QList<ParentEntry> m_entries;
    mutable QHash<qint64, qsizetype> m_places; // made at the first look-up
};

/// The sire or dam list for a sex word; unarchived animals only unless includeArchived,
/// in which case rows without a name are left out.
ParentList parentList(Database &db, const QString &sexWord, bool includeArchived = false);

/// The number of every animal of the stud, in ParentKey order (sex, archive, name): the
/// list from which animals are picked for labels and for a diary entry of many. Only the
/// numbers are read (a stud may hold a million animals); a name is read when it is shown.
QList<qint64> everyAnimal(Database &db);

} // namespace tarvex
