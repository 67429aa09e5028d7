#include "ExternalBackup.h"

#include "care/StudCopy.h"
#include "core/ActionFailure.h"
#include "core/Options.h"
#include "store/Database.h"
#include "store/StoreError.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

const QString kLoadAnother = u"\n\nLoad another and click 'OK' or 'Cancel'"_s;

/// A floppy drive by its old name: the breeder is asked to put a disk in.
bool isFloppy(const QString &drive)
{
    const QString upper = drive.toUpper();
    return upper == u"A:" || upper == u"B:";
}

} // namespace

QString backupDrive(const Session &session)
{
    QString drive = Options(session).text(Opt::BackupDrive);
    if (drive.size() > 1 && (drive.endsWith(u'\\') || drive.endsWith(u'/')))
        drive.chop(1);
    return drive;
}

QString onDevice(const QString &drive, const QString &fileName)
{
    return drive.endsWith(u'/') ? drive + fileName : drive + u'/' + fileName;
}

QString compactCopyPath(const Session &session)
{
    return session.DataFolder + QFileInfo(session.DatabaseFile).completeBaseName() + u"_Compact.Mdb"_s;
}

ExternalBackup::ExternalBackup(Session &session, Prompts &prompts, Devices &devices, Progress &progress)
    : m_session(session), m_prompts(prompts), m_devices(devices), m_progress(progress)
{
}

bool ExternalBackup::RunExternalBackup()
{
    const QString drive = backupDrive(m_session);
    m_progress.start(0, u"Compacting Database"_s);
    const QString compacted = compactCopyPath(m_session);
    // The compacted copy is written whole under a temporary name and replaces the one an
    // earlier backup left only once it is complete.
    {
        auto stud = Database::open(m_session.databasePath());
        StudCopy::compact(*stud, compacted);
    }
    return CopyToDevice(compacted, onDevice(drive, m_session.DatabaseFile));
}

bool ExternalBackup::CopyToDevice(const QString &source, const QString &destination)
{
    const QFileInfo target(destination);
    const QString drive = target.path();
    const auto again = [this](const QString &text) {
        return m_prompts.message(text + kLoadAnother, u"Backup"_s, Prompts::Icon::Information,
                                 Prompts::Buttons::OkCancel) == Prompts::Answer::Ok;
    };
    while (true) {
        bool fits = false;
        try {
            const QFileInfo copy(source);
            if (!copy.exists())
                throw StoreError(StoreError::FileNotFound, u"The file '%1' does not exist."_s.arg(source));
            const qint64 length = copy.size();
            Space space = m_devices.space(drive);
            if (space.total == 0) {
                if (again(u"No Backup Device Detected"_s))
                    continue;
                return false;
            }
            if (space.total < length) {
                m_prompts.show(QFileInfo(m_session.DatabaseFile).completeBaseName() +
                                   u" is To Large to Backup on Backup Device\n\n"
                                   u"Sorry - You will have to backup database another way"_s,
                               u"Backup Not Completed"_s, Prompts::Icon::Stop);
                return false;
            }
            if (isFloppy(drive) &&
                m_prompts.message(u"Backing up "_s + target.fileName() + u" to "_s + drive +
                                      u"\n\nLoad Floppy Disk or 'Cancel'"_s,
                                  u"Automatic Backup"_s, Prompts::Icon::None,
                                  Prompts::Buttons::OkCancel) != Prompts::Answer::Ok)
                return false;
            // An older backup of the same name is replaced, so its room counts as free.
            const QFileInfo older(destination);
            if (older.exists() && older.isFile())
                space.free += older.size();
            fits = length <= space.free;
        } catch (const StoreError &) {
            if (again(u"No Backup Device Detected or Invalid Path Given"_s))
                continue;
            return false;
        }
        try {
            if (fits)
                return CopyFile(source, destination);
            if (again(u"Not Enough Free Space on Backup Device Disk"_s))
                continue;
            return false;
        } catch (const std::exception &fault) {
            if (again(u"Error Copying to Backup Media "_s + ActionFailure::reason(fault)))
                continue;
            return false;
        }
    }
}

bool ExternalBackup::CopyFile(const QString &source, const QString &destination)
{
    while (true) {
        m_progress.start(0, u"Copying to "_s + QFileInfo(destination).path());
        try {
            return m_devices.copyFile(source, destination, m_progress) == StudCopy::Outcome::Done;
        } catch (const StoreError &) {
            // The box has OK alone, so its question never leads to another try; the older
            // copy on the device, if any, is still there.
            if (m_prompts.message(u"Error Accessing Backup Media - Retry?"_s, u"Backup"_s,
                                  Prompts::Icon::Exclamation, Prompts::Buttons::Ok) != Prompts::Answer::Yes)
                return false;
        }
    }
}

} // namespace tarvex
