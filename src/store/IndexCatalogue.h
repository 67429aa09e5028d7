#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace tarvex {

/// The named indexes of the stud database as the program knows them (PrimaryKey,
/// NumberKey, ParentKey, ...), with the fields each covers in order. An index on a table's
/// counter alone is the table's own row order and has no separate SQLite index.
struct IndexDefinition
{
    QString table;
    QString name;
    QStringList fields;
};

/// The index of that name on that table, looked up without regard to case.
std::optional<IndexDefinition> findIndex(const QString &table, const QString &name);
const QList<IndexDefinition> &indexCatalogue();

} // namespace tarvex
