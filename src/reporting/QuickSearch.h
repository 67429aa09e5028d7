#pragma once

#include "store/Database.h"

#include <QList>
#include <QString>

namespace tarvex {

/// The few fields of the quick search for one animal.
struct QuickSearchFields
{
    QString name, archive, ringNo, sex, type, colour, status, notes;
};

/// One animal found.
struct QuickSearchRow
{
    qint64 number = 0;
    QString name, ringNo, type, colour;
};

namespace QuickSearch {

/// The condition for the fields, empty when no field is filled.
QString compose(const QuickSearchFields &fields);
/// The animals matching a condition, by name.
QList<QuickSearchRow> run(Database &db, const QString &where);

} // namespace QuickSearch
} // namespace tarvex
