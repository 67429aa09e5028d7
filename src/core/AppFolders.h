#pragma once

#include <QString>
#include <QStringList>

namespace tarvex {

/// Where the program's files live on this machine.
namespace AppFolders {

/// The breeder's data folder: the stud databases, stocktypes.txt, genetics files and
/// backups. $XDG_DATA_HOME/Tarvex/ (by default ~/.local/share/Tarvex/), with a trailing "/".
QString dataFolder();

/// The delivered files (EmptyStock.mdb, stocktypes.txt, genetics files): share/tarvex
/// beside the program's bin folder, in a build tree and when installed alike.
QString programFolder(const QString &applicationDir);

/// Creates the data folder and copies in each delivered data file it does not hold yet
/// (stocktypes.txt, genetics files). The template database stays where it was delivered.
void prepareDataFolder(const QString &dataFolder, const QString &programFolder);

/// Brings the files of an older installation into an empty data folder: when the data
/// folder holds no .mdb, every file of the given folder that does not end in "_OLD" is
/// copied in and the original renamed with "_OLD" added. Returns the files copied.
QStringList importOldFiles(const QString &fromFolder, const QString &dataFolder);

} // namespace AppFolders
} // namespace tarvex
