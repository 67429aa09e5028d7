#pragma once

#include "Table.h"

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

/// The sire or dam list for a sex word: a blank entry carrying -1, then the animals of
/// that sex in name order; unarchived ones only unless includeArchived, in which case
/// rows without a name are left out.
QList<ParentEntry> parentList(Database &db, const QString &sexWord, bool includeArchived = false);

} // namespace tarvex
