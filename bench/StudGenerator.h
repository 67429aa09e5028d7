#pragma once

#include <QString>

namespace tarvex::bench {

/// Raised whenever generateStud writes different animals for the same shape, so that studs
/// kept between runs (cachedStud) are made again.
constexpr int kStudGeneratorVersion = 1;

/// What a generated stud looks like.
struct StudShape
{
    int animals = 100000;
    int colours = 40; // distinct colours, breeds, breeders and statuses each
    int archivedPercent = 60;
    /// Parents as in a breed club's registry of 30 generations (registryPedigree) rather than
    /// from the animals just before.
    bool registry = false;
};

/// Writes a stud database of that shape at path, from the delivered template: animals
/// in generations, each with a sire and dam from the generations before it, so that
/// pedigrees run deep. Returns false when the file cannot be made.
bool generateStud(const QString &path, const StudShape &shape);

/// A generated stud of that shape kept between runs in the cache folder ($TARVEX_BENCH_CACHE,
/// else $XDG_CACHE_HOME/tarvex-bench), named by its shape, the generator's version and the
/// delivered template it was made from; generated there on first use. Returns its path,
/// or an empty text when it cannot be made. The file is only read: copy it before opening
/// it in the program, which writes to the stud it opens.
QString cachedStud(const StudShape &shape);

/// A stud of that shape of the benchmark's own at path, to open and write to: a copy of the
/// one kept between runs (generated in place when none can be kept). False when no stud
/// could be had.
bool copyOfStud(const QString &path, const StudShape &shape);

} // namespace tarvex::bench
