#include "Backups.h"

#include "StudCopy.h"

#include "core/Options.h"
#include "store/StoreError.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tarvex {

QString ringFile(const Session &session, int cycle)
{
    return session.DataFolder + QFileInfo(session.DatabaseFile).completeBaseName() + u"_%1.mdb"_s.arg(cycle);
}

int nextCycle(int lastCycle, int keep)
{
    const int cycle = lastCycle + 1;
    return cycle > keep ? 1 : cycle;
}

bool RemindExternalBackup(Session &s, Prompts &prompts)
{
    Options options(s);
    if (!options.flag(Opt::RemindBackup))
        return false;
    const int count = options.number(Opt::FloppyBackupCount) + 1;
    if (count <= options.number(Opt::RemindEvery)) {
        options.setNumber(Opt::FloppyBackupCount, count);
        return false;
    }
    const QString name = QFileInfo(s.DatabaseFile).completeBaseName();
    const bool agreed =
        prompts.message(u"It is time to Backup your database : "_s + name +
                            u".mdb \n\n(Note: This option can be disabled from the Options Menu)"_s,
                        u"Automatic Backup Reminder"_s, Prompts::Icon::Information,
                        Prompts::Buttons::OkCancel) == Prompts::Answer::Ok;
    // Whatever the answer, the next reminder is as many openings away again.
    options.setNumber(Opt::FloppyBackupCount, 1);
    return agreed && options.flag(Opt::AutoFloppyBackup);
}

void CheckBackups(Session &s, Prompts &prompts, const std::function<void()> &externalBackup)
{
    // A stud whose file is gone has nothing to back up; the opening that follows says so.
    if (!QFileInfo(s.databasePath()).isFile())
        return;
    if (RemindExternalBackup(s, prompts))
        externalBackup();
    RotatingBackup(s, prompts);
}

void RotatingBackup(Session &s, Prompts &prompts)
{
    Options options(s);
    if (!options.flag(Opt::AutoBackup))
        return;
    const int count = options.number(Opt::BackUpCount) + 1;
    if (count < options.number(Opt::BackUpEvery)) {
        options.setNumber(Opt::BackUpCount, count);
        return;
    }
    options.setNumber(Opt::BackUpCount, 0);
    const int cycle = nextCycle(options.number(Opt::BackUpCycle), options.number(Opt::KeepBackUps));
    const QString name = QFileInfo(s.DatabaseFile).completeBaseName();
    // Declined, the count is already cleared and the cycle kept: the next turn comes after
    // as many openings again, and writes the same ring file.
    if (options.flag(Opt::PromptBackup) &&
        !prompts.askYesNo(u"Backup "_s + name + u" Database Now?"_s, u"Automatic Database Backup"_s,
                          Prompts::Icon::Question))
        return;
    const QString ring = ringFile(s, cycle);
    try {
        // The stud is copied by the database engine, whole, into a new file that replaces
        // the ring file of this number only once it is complete.
        auto stud = Database::open(s.databasePath());
        StudCopy::copy(*stud, ring);
    } catch (const StoreError &) {
        prompts.show(u"Backup failed copying "_s + s.databasePath() + u" to "_s + ring, u"Backup Failed"_s,
                     Prompts::Icon::Stop);
        return;
    }
    options.setNumber(Opt::BackUpCycle, cycle);
    options.set(Opt::Backup, ring + u" - "_s + s.Dates.format(s.clock->today()), QString::number(cycle));
}

} // namespace tarvex
