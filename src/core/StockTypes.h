#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace tarvex {

/// One kind of livestock that can be registered, with its words.
struct StockTypeEntry
{
    QString stockType, femaleWord, maleWord, motherWord, fatherWord, id1, id2, id3;
    bool operator==(const StockTypeEntry &) const = default;
};

/// A failure to read or write the list of stock types, numbered as the program reports it.
struct FileError
{
    int number = 0;
    QString description;
};

/// The list of stock types in stocktypes.txt: one line per type, eight comma-separated
/// fields, usually in double quotes: stock type, female, male, mother, father and the
/// three identifications. There is no escaping: writing drops any double quote from a
/// field, and reading takes every line apart the same way, however it was edited.
namespace StockTypes {

/// The file in the folder whose name is "stocktypes.txt" in any case; the lower-case
/// path when there is none yet.
QString locate(const QString &folder);

std::optional<QList<StockTypeEntry>> read(const QString &path, FileError *error);
StockTypeEntry parseLine(const QString &line);
QString formatLine(const StockTypeEntry &entry);
/// Adds one line at the end, in the file's own encoding and line ends.
bool append(const QString &path, const StockTypeEntry &entry, FileError *error);

} // namespace StockTypes
} // namespace tarvex
