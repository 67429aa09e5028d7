#pragma once

#include <QString>

namespace tarvex::bench {

/// What a generated stud looks like.
struct StudShape
{
    int animals = 100000;
    int colours = 40; // distinct colours, breeds, breeders and statuses each
    int archivedPercent = 60;
};

/// Writes a stud database of that shape at path, from the delivered template: animals
/// in generations, each with a sire and dam from the generations before it, so that
/// pedigrees run deep. Returns false when the file cannot be made.
bool generateStud(const QString &path, const StudShape &shape);

} // namespace tarvex::bench
