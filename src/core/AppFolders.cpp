#include "AppFolders.h"

#include "StockTypes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tarvex::AppFolders {

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Tarvex/"_s;
}

QString programFolder(const QString &applicationDir)
{
    return QDir::cleanPath(applicationDir + u"/../share/tarvex"_s) + u'/';
}

void prepareDataFolder(const QString &dataFolder, const QString &programFolder)
{
    QDir().mkpath(dataFolder);
    const QString stockTypes = StockTypes::locate(dataFolder);
    if (!QFileInfo::exists(stockTypes))
        QFile::copy(programFolder + u"stocktypes.txt"_s, stockTypes);
    const QDir delivered(programFolder);
    for (const QString &name : delivered.entryList({u"*.Gen"_s}, QDir::Files)) {
        if (!QFileInfo::exists(dataFolder + name))
            QFile::copy(delivered.filePath(name), dataFolder + name);
    }
}

QStringList importOldFiles(const QString &fromFolder, const QString &dataFolder)
{
    QStringList copied;
    QDir().mkpath(dataFolder);
    if (!QDir(dataFolder).entryList({u"*.mdb"_s}, QDir::Files).isEmpty())
        return copied;
    const QDir from(fromFolder);
    if (!from.exists())
        return copied;
    for (const QString &name : from.entryList(QDir::Files | QDir::Hidden)) {
        if (name.endsWith(u"_OLD"_s, Qt::CaseInsensitive))
            continue;
        const QString target = dataFolder + name;
        QFile::remove(target);
        if (QFile::copy(from.filePath(name), target)) {
            QFile::rename(from.filePath(name), from.filePath(name + u"_OLD"_s));
            copied << name;
        }
    }
    return copied;
}

} // namespace tarvex::AppFolders
