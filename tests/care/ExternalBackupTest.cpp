#include "support/FakeDevices.h"
#include "support/RecordingProgress.h"
#include "support/StudFixture.h"

#include "care/Backups.h"
#include "care/ExternalBackup.h"
#include "core/CRegSettings.h"
#include "store/Database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

const QString kLoadAnother = u"\n\nLoad another and click 'OK' or 'Cancel'"_s;

// A registered Rabbits stud with a few animals, not open, and a folder standing in for the
// breeder's USB stick as the backup device.
class ExternalBackupTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
        fx.session.StockType = u"Rabbits"_s;
        fx.session.DatabaseFile = u"Rabbits.mdb"_s;
        {
            auto db = Database::open(fx.session.databasePath());
            for (int i = 0; i < 40; ++i)
                addAnimal(*db, {{u"Name"_s, u"Doe %1"_s.arg(i)}, {u"Sex"_s, u"Doe"_s}});
        }
        device = stick.path();
        option(u"BackupDrive"_s, device);
    }

    void option(const QString &key, const QString &value) { store.SaveSetting(u"Options"_s, key, value); }
    QString stud(const QString &key) { return store.GetSetting(u"Rabbits"_s, key); }
    qint64 animals(const QString &path) { return Database::open(path)->scalar(u"SELECT count(*) FROM Stock"_s).toLongLong(); }
    void expectBox(int i, const QString &text, const QString &title, Prompts::Icon icon, Prompts::Buttons buttons)
    {
        ASSERT_LT(i, fx.prompts.messages.size());
        const auto &m = fx.prompts.messages.at(i);
        EXPECT_EQ(m.text, text);
        EXPECT_EQ(m.title, title);
        EXPECT_EQ(m.icon, icon);
        EXPECT_EQ(m.buttons, buttons);
    }
    bool run()
    {
        ExternalBackup backup(fx.session, fx.prompts, devices, progress);
        return backup.RunExternalBackup();
    }
    QString onStick() const { return device + u"/Rabbits.mdb"_s; }

    StudFixture fx;
    CRegSettings store{fx.session.AppName};
    QTemporaryDir stick;
    QString device;
    FakeDevices devices;
    RecordingProgress progress;
};

TEST_F(ExternalBackupTest, TheReminderComesEverySoManyOpeningsAndCallsTheBackupWhenAgreed)
{
    int backups = 0;
    const auto open = [&] { CheckBackups(fx.session, fx.prompts, [&] { ++backups; }); };
    const QString reminder = u"It is time to Backup your database : Rabbits.mdb \n\n"
                             u"(Note: This option can be disabled from the Options Menu)"_s;

    open();
    EXPECT_TRUE(fx.prompts.messages.isEmpty()) << "off by default";

    // Every opening with RemindEvery 1: the stored count goes back to 1 each time.
    option(u"RemindBackup"_s, u"1"_s);
    fx.prompts.answer(Prompts::Answer::Cancel);
    open();
    expectBox(0, reminder, u"Automatic Backup Reminder"_s, Prompts::Icon::Information, Prompts::Buttons::OkCancel);
    EXPECT_EQ(stud(u"FloppyBackupCount"_s), u"1");
    EXPECT_EQ(backups, 0) << "Cancel carries nothing out";
    fx.prompts.answer(Prompts::Answer::Ok);
    open();
    EXPECT_EQ(backups, 1);

    // Every third opening; agreeing does nothing at once when AutoFloppyBackup is off.
    option(u"RemindEvery"_s, u"3"_s);
    option(u"AutoFloppyBackup"_s, u"0"_s);
    open();
    open();
    EXPECT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(stud(u"FloppyBackupCount"_s), u"3");
    fx.prompts.answer(Prompts::Answer::Ok);
    open();
    EXPECT_EQ(fx.prompts.messages.size(), 3);
    EXPECT_EQ(backups, 1);
    EXPECT_EQ(stud(u"FloppyBackupCount"_s), u"1");

    // The rotating backup follows the reminder at the same opening.
    option(u"AutoBackup"_s, u"1"_s);
    open();
    EXPECT_TRUE(QFileInfo::exists(fx.session.DataFolder + u"Rabbits_2.mdb"_s));
    EXPECT_TRUE(fx.prompts.allAnswered());
}

TEST_F(ExternalBackupTest, AStudWhoseFileIsGoneIsNeitherRemindedOfNorCopied)
{
    option(u"RemindBackup"_s, u"1"_s);
    option(u"AutoBackup"_s, u"1"_s);
    ASSERT_TRUE(QFile::remove(fx.session.databasePath()));
    CheckBackups(fx.session, fx.prompts, [] { ADD_FAILURE() << "no backup of a stud that is not there"; });
    EXPECT_TRUE(fx.prompts.messages.isEmpty()) << fx.prompts.texts().join(u'|').toStdString();
    EXPECT_EQ(stud(u"BackUpCycle"_s), QString());
}

TEST_F(ExternalBackupTest, TheStudIsCompactedAndCopiedToTheDeviceUnderItsOwnName)
{
    // A folder with the old separator at its end works as well, with no floppy prompt.
    option(u"BackupDrive"_s, device + u"\\"_s);
    EXPECT_EQ(backupDrive(fx.session), device);
    ASSERT_TRUE(run()) << fx.prompts.texts().join(u'|').toStdString();
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
    EXPECT_EQ(animals(onStick()), 40);
    EXPECT_EQ(Database::open(onStick())->scalar(u"PRAGMA integrity_check"_s).toString(), u"ok");
    EXPECT_TRUE(QFileInfo::exists(fx.session.DataFolder + u"Rabbits_Compact.Mdb"_s)) << "the compacted copy stays";
    EXPECT_FALSE(QFileInfo::exists(StudCopy::partialName(onStick())));
}

TEST_F(ExternalBackupTest, AMissingOrUnreadableDeviceOffersAnotherTryUntilCancelled)
{
    // No medium, then one: OK tries again and the copy is made.
    devices.reported = {Space{0, 0}, Space{1 << 30, 1 << 30}};
    fx.prompts.answer(Prompts::Answer::Ok);
    EXPECT_TRUE(run());
    expectBox(0, u"No Backup Device Detected"_s + kLoadAnother, u"Backup"_s, Prompts::Icon::Information,
              Prompts::Buttons::OkCancel);
    EXPECT_TRUE(QFileInfo::exists(onStick()));

    // A folder that has gone (a stick pulled out) cannot be read.
    option(u"BackupDrive"_s, device + u"/gone"_s);
    devices.reported.clear();
    fx.prompts.answer(Prompts::Answer::Cancel);
    EXPECT_FALSE(run());
    expectBox(1, u"No Backup Device Detected or Invalid Path Given"_s + kLoadAnother, u"Backup"_s,
              Prompts::Icon::Information, Prompts::Buttons::OkCancel);

    // The old floppy drive's name: nothing is there on this machine.
    option(u"BackupDrive"_s, u"A:"_s);
    fx.prompts.answer(Prompts::Answer::Cancel);
    EXPECT_FALSE(run());
    EXPECT_EQ(fx.prompts.messages.at(2).text, u"No Backup Device Detected"_s + kLoadAnother);
    EXPECT_TRUE(fx.prompts.allAnswered());
}

TEST_F(ExternalBackupTest, RoomOnTheDeviceIsCheckedWithAnOlderCopyCountedAsFree)
{
    ExternalBackup backup(fx.session, fx.prompts, devices, progress);
    const QString source = fx.session.databasePath();
    const qint64 length = QFileInfo(source).size();

    // Smaller than the stud altogether: the end.
    devices.reported = {Space{100, length - 1}};
    EXPECT_FALSE(backup.CopyToDevice(source, onStick()));
    expectBox(0,
              u"Rabbits is To Large to Backup on Backup Device\n\nSorry - You will have to backup database another way"_s,
              u"Backup Not Completed"_s, Prompts::Icon::Stop, Prompts::Buttons::Ok);

    // Full, with nothing of ours on it: another medium is asked for.
    devices.reported = {Space{length - 1, 1 << 30}};
    fx.prompts.answer(Prompts::Answer::Cancel);
    EXPECT_FALSE(backup.CopyToDevice(source, onStick()));
    expectBox(1, u"Not Enough Free Space on Backup Device Disk"_s + kLoadAnother, u"Backup"_s,
              Prompts::Icon::Information, Prompts::Buttons::OkCancel);

    // The same room, but an older backup of the stud is there and will be replaced.
    QFile older(onStick());
    ASSERT_TRUE(older.open(QIODevice::WriteOnly));
    older.write(QByteArray(4096, 'x'));
    older.close();
    EXPECT_TRUE(backup.CopyToDevice(source, onStick()));
    EXPECT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(animals(onStick()), 40);
}

TEST_F(ExternalBackupTest, AFloppyDriveNameAsksForADisk)
{
    ExternalBackup backup(fx.session, fx.prompts, devices, progress);
    devices.reported = {Space{1 << 30, 1 << 30}};
    fx.prompts.answer(Prompts::Answer::Cancel);
    EXPECT_FALSE(backup.CopyToDevice(fx.session.databasePath(), u"a:/Rabbits.mdb"_s));
    expectBox(0, u"Backing up Rabbits.mdb to a:\n\nLoad Floppy Disk or 'Cancel'"_s, u"Automatic Backup"_s,
              Prompts::Icon::None, Prompts::Buttons::OkCancel);
    EXPECT_EQ(devices.copies, 0);
}

TEST_F(ExternalBackupTest, ACopyThatFailsIsToldOnceAndLeavesTheOlderBackupWhole)
{
    ASSERT_TRUE(run());
    const QByteArray before = [&] {
        QFile f(onStick());
        f.open(QIODevice::ReadOnly);
        return f.readAll();
    }();
    const QString retry = u"Error Accessing Backup Media - Retry?"_s;

    // A device that cannot be written: one box with OK alone, and no second try.
    devices.readOnly = true;
    fx.prompts.answer(Prompts::Answer::Ok);
    EXPECT_FALSE(run());
    expectBox(0, retry, u"Backup"_s, Prompts::Icon::Exclamation, Prompts::Buttons::Ok);
    EXPECT_EQ(devices.copies, 2);

    // The stick pulled out part way through: the copy cannot take its name.
    devices.readOnly = false;
    devices.midCopy = [&] { QDir(device).removeRecursively(); };
    fx.prompts.answer(Prompts::Answer::Ok);
    EXPECT_FALSE(run());
    EXPECT_EQ(fx.prompts.messages.at(1).text, retry);
    EXPECT_FALSE(QFileInfo::exists(StudCopy::partialName(onStick())));

    // Any other fault of the copying step is told with its reason and offers another try.
    ASSERT_TRUE(QDir().mkpath(device));
    QFile again(onStick());
    ASSERT_TRUE(again.open(QIODevice::WriteOnly));
    again.write(before);
    again.close();
    devices.midCopy = {};
    devices.oddFault = true;
    fx.prompts.answer(Prompts::Answer::Cancel);
    EXPECT_FALSE(run());
    expectBox(2, u"Error Copying to Backup Media The device stopped answering."_s + kLoadAnother, u"Backup"_s,
              Prompts::Icon::Information, Prompts::Buttons::OkCancel);
    QFile kept(onStick());
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), before) << "the older backup is as it was";
}

} // namespace
