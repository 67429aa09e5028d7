#include "DatabaseUtilities.h"

#include "care/ExternalBackup.h"
#include "care/StudCopy.h"
#include "care/StudRepair.h"
#include "core/Options.h"
#include "store/StoreError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <SQLiteCpp/SQLiteCpp.h>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// The ring files a restore can offer: "Backup 1" to "Backup 10".
constexpr int kMostBackups = 10;

/// The text of an entry up to the end of its file name, trimmed.
QString fileOfEntry(const QString &entry)
{
    const qsizetype end = entry.indexOf(u".mdb"_s, 0, Qt::CaseInsensitive);
    return (end < 0 ? entry : entry.left(end + 4)).trimmed();
}

/// Whether a file is a stud database: one the engine can read that has the animals' table.
bool isStudFile(const QString &path)
{
    try {
        SQLite::Database db(path.toStdString(), SQLite::OPEN_READONLY);
        return db.execAndGet("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = 'Stock'").getInt() ==
               1;
    } catch (const SQLite::Exception &) {
        return false;
    }
}

/// "Error <number>" and the reason of a failed operation, as the boxes give it.
QString errorText(const StoreError &e)
{
    return u"Error "_s + QString::number(e.number()) + u'\n' + e.description();
}

} // namespace

DatabaseUtilities::DatabaseUtilities(Session &session, Prompts &prompts, Devices &devices)
    : m_session(session), m_prompts(prompts), m_devices(devices)
{
}

QStringList DatabaseUtilities::studs() const
{
    QStringList names;
    for (const auto &entry : Options(m_session).all(OptionSection::Catalogue))
        names << entry.first;
    return names;
}

QString DatabaseUtilities::studPath(const QString &name) const
{
    return m_session.DataFolder + name + u".mdb"_s;
}

bool DatabaseUtilities::workOnStud(const QString &name, const QString &verb, const QString &status,
                                   const std::function<void()> &work)
{
    if (name.isEmpty())
        return false;
    // Compaction and repair share the title of their question.
    if (m_prompts.message(u"Are you sure you want to "_s + verb + u" the "_s + name + u" Database?"_s,
                          u"Repair Damaged Database"_s, Prompts::Icon::Question,
                          Prompts::Buttons::YesNoCancel) != Prompts::Answer::Yes)
        return false;
    m_prompts.status(status);
    bool done = true;
    try {
        work();
    } catch (const StoreError &e) {
        m_prompts.show(u"Could not "_s + verb + u" database - "_s + errorText(e), u"Database Error"_s,
                       Prompts::Icon::Stop);
        done = false;
    }
    m_prompts.status({});
    return done;
}

bool DatabaseUtilities::Compact(const QString &name)
{
    // A compaction that fails leaves the stud as it was: it works in place and gives up whole.
    return workOnStud(name, u"compact"_s, u"Please Wait - Compacting Database"_s,
                      [&] { CompactStud(studPath(name)); });
}

bool DatabaseUtilities::Repair(const QString &name)
{
    return workOnStud(name, u"repair"_s, u"Please Wait - Repairing Database"_s, [&] {
        const QString path = studPath(name);
        if (RepairDatabase(path, m_session.ProgramFolder + u"EmptyStock.mdb"_s) == RepairOutcome::Rebuilt)
            m_prompts.show(u"The "_s + name +
                               u" Database was damaged and has been rebuilt from everything that could be read."
                               u"\n\nThe damaged file is kept as "_s +
                               QFileInfo(uncompactedPath(path)).fileName(),
                           u"Repair Damaged Database"_s, Prompts::Icon::Information);
    });
}

QStringList DatabaseUtilities::restoreList(const QString &name)
{
    QStringList entries{onDevice(backupDrive(m_session), name + u".mdb"_s) + u' '};
    const Options stud(m_session.AppName, name);
    for (int n = 1; n <= kMostBackups; ++n) {
        const QString recorded = stud.text(Opt::Backup, QString::number(n));
        if (recorded.isEmpty())
            continue;
        // Ring files are looked for in the stud's folder, wherever they were written.
        if (QFileInfo::exists(m_session.DataFolder + QFileInfo(fileOfEntry(recorded)).fileName()))
            entries << recorded;
    }
    return entries;
}

bool DatabaseUtilities::Restore(const QString &name, int index, const QString &entry)
{
    if (name.isEmpty() || index < 0)
        return false;
    const QString source =
        index == 0 ? fileOfEntry(entry) : m_session.DataFolder + QFileInfo(fileOfEntry(entry)).fileName();
    if (!m_prompts.askYesNo(u"Restore Database "_s + source + u'?', u"Restore Database"_s, Prompts::Icon::Question))
        return false;
    if (!m_prompts.askYesNo(u"This Backup will overwrite your existing "_s + name +
                                u" Database\n\nAll changes made to this database since the Backup will be lost"
                                u"\n\nAre you sure you want to continue?"_s,
                            u"Overwrite Existing Database"_s, Prompts::Icon::Question))
        return false;
    if (index == 0) {
        try {
            m_devices.space(QFileInfo(source).path());
        } catch (const StoreError &) {
            m_prompts.show(u"Cannot access backup drive"_s, u"Restore Error"_s, Prompts::Icon::Stop);
            return false;
        }
        if (!QFileInfo(source).isFile()) {
            m_prompts.show(u"Cannot restore from backup drive - backup not found"_s, u"Restore Error"_s,
                           Prompts::Icon::Stop);
            return false;
        }
    }
    // The stud is deleted before the copy is made: nothing that is not a stud may cost it.
    if (!isStudFile(source)) {
        m_prompts.show(u"Cannot restore from "_s + source + u" - it is not a stud database."_s, u"Restore Error"_s,
                       Prompts::Icon::Stop);
        return false;
    }
    m_prompts.status(u"Please Wait - Restoring Database"_s);
    const QString target = studPath(name);
    StudCopy::removeStudFile(target);
    bool restored = true;
    try {
        m_devices.copyFile(source, target, noProgress());
    } catch (const StoreError &e) {
        m_prompts.show(u"Could not restore database - "_s + errorText(e) + u"\n\nThe backup is still in "_s + source +
                           u": restore from it again once the fault is put right."_s,
                       u"Restore Error"_s, Prompts::Icon::Stop);
        restored = false;
    }
    m_prompts.status({});
    return restored;
}

bool DatabaseUtilities::Remove(const QString &name)
{
    if (name.isEmpty())
        return false;
    if (m_prompts.message(u"Remove all information from the "_s + name + u" Database"_s, u"Are you sure"_s,
                          Prompts::Icon::Question, Prompts::Buttons::YesNoCancel) != Prompts::Answer::Yes)
        return false;
    if (m_prompts.message(u"All records will be lost? Are You Sure?"_s, u"Are you sure"_s, Prompts::Icon::Question,
                          Prompts::Buttons::YesNoCancel) != Prompts::Answer::Yes)
        return false;
    // Each step runs whether or not the one before it could do its part.
    m_prompts.status(u"Removing Database"_s);
    StudCopy::removeStudFile(studPath(name));
    m_prompts.status(u"Removing Backup Databases"_s);
    // "<name>_*.mdb" takes the ring files and the compacted copy, in any case of letters, and
    // the file of any stud whose name begins with this one's and an underscore.
    const QDir folder(m_session.DataFolder);
    for (const QString &file : folder.entryList({name + u"_*.mdb"_s}, QDir::Files | QDir::Hidden))
        StudCopy::removeStudFile(folder.filePath(file));
    m_prompts.status(u"Removing Compact Copy Databases"_s);
    StudCopy::removeStudFile(uncompactedPath(studPath(name)));
    m_prompts.status(u"Removing Registry For Database"_s);
    Options settings(m_session.AppName, name);
    settings.removeEntry(OptionSection::Catalogue, name);
    settings.removeSection(OptionSection::Stud);
    settings.remove(Opt::LastDatabase);
    m_session.Catalogue.removeIf(
        [&](const auto &entry) { return entry.first.compare(name, Qt::CaseInsensitive) == 0; });
    m_prompts.status({});
    return true;
}

} // namespace tarvex
