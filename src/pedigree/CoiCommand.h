#pragma once

#include <QString>
#include <QTextStream>

namespace tarvex {

/// `tarvex --coi STUD.mdb`: every animal's number, name, coefficient of inbreeding,
/// generations used and completeness as CSV on out, without opening a window. A stud that
/// cannot be opened or read, or a pedigree loop, is told on err as the window tells it.
/// Returns the program's exit status: 0 done, 1 failed.
int Coi_Command(const QString &studFile, int generations, QTextStream &out, QTextStream &err);

} // namespace tarvex
