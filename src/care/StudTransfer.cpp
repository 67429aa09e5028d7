#include "StudTransfer.h"

#include "care/ExternalBackup.h"
#include "care/StudCopy.h"
#include "store/Database.h"
#include "store/StoreError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tarvex::StudTransfer {

namespace {

QString errorText(const StoreError &e)
{
    return u"Error : "_s + QString::number(e.number()) + u'(' + e.description() + u')';
}

} // namespace

QString findStudFile(const QString &folder, const QString &name)
{
    if (folder.isEmpty())
        return {};
    const QDir place(folder);
    const QStringList found = place.entryList({name + u".mdb"_s}, QDir::Files);
    return found.isEmpty() ? QString() : place.filePath(found.first());
}

bool exportStuds(Session &session, Prompts &prompts, const QStringList &names, const QString &device)
{
    if (device.isEmpty()) {
        prompts.show(u"A Drive Must Be Selected"_s, u"Tarvex Export"_s, Prompts::Icon::Information);
        return false;
    }
    QString report;
    for (const QString &name : names) {
        const QString file = findStudFile(session.DataFolder, name);
        if (file.isEmpty()) {
            prompts.show(u"Cannot Find Database : "_s + name, u"Database Not Exported"_s, Prompts::Icon::Information);
            continue;
        }
        const QString fileName = QFileInfo(file).fileName();
        try {
            // Through the database engine, so the copy is whole even should the stud be in use.
            auto stud = Database::open(file);
            StudCopy::copy(*stud, onDevice(device, fileName));
        } catch (const StoreError &e) {
            // The studs copied so far stay on the device.
            prompts.show(errorText(e), u"Error Exporting Database"_s, Prompts::Icon::Stop);
            return false;
        }
        report += u'\n' + fileName;
    }
    prompts.show(u"The following database(s) have been exported : \n"_s + report, u"Database(s) Exported"_s,
                 Prompts::Icon::Information);
    return true;
}

bool importStuds(Session &session, Prompts &prompts, Devices &devices, const QStringList &names,
                 const QString &device)
{
    if (device.isEmpty()) {
        prompts.show(u"A Drive Must Be Selected"_s, u"Tarvex Import"_s, Prompts::Icon::Information);
        return false;
    }
    QString list;
    for (const QString &name : names) {
        const QString file = findStudFile(device, name);
        if (!file.isEmpty())
            list += u'\n' + QFileInfo(file).fileName();
    }
    if (prompts.message(u"The following database(s) will be imported imported : "_s + list +
                            u"\n\nAny Data you have on this computer in these databases will be overwritten"
                            u"\n\nContinue ?"_s,
                        u"Database Import"_s, Prompts::Icon::Information,
                        Prompts::Buttons::YesNoDefaultNo) != Prompts::Answer::Yes)
        return false;
    QString report;
    for (const QString &name : names) {
        const QString file = findStudFile(device, name);
        if (file.isEmpty())
            continue;
        const QString here = findStudFile(session.DataFolder, name);
        const QString target = here.isEmpty() ? session.DataFolder + name + u".mdb"_s : here;
        try {
            devices.copyFile(file, target, noProgress());
        } catch (const StoreError &e) {
            // The studs brought in so far stay; this one is as it was.
            prompts.show(errorText(e), u"Error Importing Database"_s, Prompts::Icon::Stop);
            return false;
        }
        // A journal or log left beside the stud belonged to the file just replaced.
        for (const QString &suffix : StudCopy::companionSuffixes())
            QFile::remove(target + suffix);
        report += u'\n' + QFileInfo(file).fileName();
    }
    prompts.show(u"The following database(s) have been imported : \n"_s + report, u"Database(s) Imported"_s,
                 Prompts::Icon::Information);
    return true;
}

} // namespace tarvex::StudTransfer
