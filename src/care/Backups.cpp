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
