#include "support/FakeDevices.h"
#include "support/StudFixture.h"

#include "care/DatabaseUtilities.h"
#include "care/StudRepair.h"
#include "core/CRegSettings.h"
#include "store/Database.h"
#include "store/StudDatabase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

using Answer = Prompts::Answer;

// A registered Rabbits stud of 3,000 animals with notes (a few hundred pages), not open, as
// the program has it while the utilities screen is up.
class DatabaseUtilitiesTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
        fx.session.StockType = u"Rabbits"_s;
        fx.session.DatabaseFile = u"Rabbits.mdb"_s;
        stud = fx.session.databasePath();
        auto db = Database::open(stud);
        Transaction tx(*db);
        db->execute(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
                    "INSERT INTO Stock (Name, Sex, Notes) SELECT 'Animal ' || i, 'Doe', printf('%.200c', 'x') "
                    "FROM n"_s);
        tx.commit();
    }

    qint64 animals(const QString &path) const
    {
        return Database::open(path)->scalar(u"SELECT count(*) FROM Stock"_s).toLongLong();
    }
    QString inData(const QString &file) const { return fx.session.DataFolder + file; }
    void writeFile(const QString &path, const QByteArray &bytes)
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    /// Random bytes over a page in the middle of the file, as a failing disk leaves it.
    void damagePage(qint64 page)
    {
        QFile f(stud);
        ASSERT_TRUE(f.open(QIODevice::ReadWrite));
        ASSERT_TRUE(f.seek(page * 4096 + 100));
        std::mt19937 random(7);
        QByteArray noise(3000, '\0');
        for (char &c : noise)
            c = char(random());
        f.write(noise);
    }

    StudFixture fx;
    FakeDevices devices;
    DatabaseUtilities utilities{fx.session, fx.prompts, devices};
    CRegSettings store{fx.session.AppName};
    QString stud;
};

TEST_F(DatabaseUtilitiesTest, CompactionKeepsTheFileAsItWasAndTheNextOneReplacesThatCopy)
{
    fx.prompts.answer(Answer::No);
    EXPECT_FALSE(utilities.Compact(u"Rabbits"_s));
    EXPECT_FALSE(QFileInfo::exists(inData(u"C_Rabbits.mdb"_s))) << "declined: nothing happens";
    EXPECT_EQ(fx.prompts.messages.at(0).text, u"Are you sure you want to compact the Rabbits Database?");
    EXPECT_EQ(fx.prompts.messages.at(0).title, u"Repair Damaged Database");
    EXPECT_EQ(fx.prompts.messages.at(0).buttons, Prompts::Buttons::YesNoCancel);

    {
        auto db = Database::open(stud);
        db->execute(u"DELETE FROM Stock WHERE Number > 1000"_s);
    }
    const qint64 before = QFileInfo(stud).size();
    fx.prompts.answerYes();
    EXPECT_TRUE(utilities.Compact(u"Rabbits"_s));
    EXPECT_EQ(fx.prompts.statuses, (QStringList{u"Please Wait - Compacting Database"_s, QString()}));
    EXPECT_LT(QFileInfo(stud).size(), before / 2);
    EXPECT_EQ(QFileInfo(inData(u"C_Rabbits.mdb"_s)).size(), before) << "the file as it was";
    EXPECT_EQ(animals(stud), 1000);
    EXPECT_EQ(animals(inData(u"C_Rabbits.mdb"_s)), 1000);

    // Only a second compaction replaces the copy.
    addAnimal(*Database::open(stud), {{u"Name"_s, u"Late Doe"_s}});
    EXPECT_EQ(animals(inData(u"C_Rabbits.mdb"_s)), 1000);
    fx.prompts.answerYes();
    EXPECT_TRUE(utilities.Compact(u"Rabbits"_s));
    EXPECT_EQ(animals(inData(u"C_Rabbits.mdb"_s)), 1001);
    EXPECT_EQ(fx.prompts.messages.size(), 3) << fx.prompts.texts().join(u'|').toStdString();
}

TEST_F(DatabaseUtilitiesTest, ACompactionThatFailsIsToldAndLeavesTheStudAsItWas)
{
    // The last-resort copy's name is taken by a folder.
    ASSERT_TRUE(QDir().mkpath(inData(u"C_Rabbits.mdb"_s)));
    const qint64 size = QFileInfo(stud).size();
    fx.prompts.answerYes();
    EXPECT_FALSE(utilities.Compact(u"Rabbits"_s));
    const auto &box = fx.prompts.messages.last();
    EXPECT_TRUE(box.text.startsWith(u"Could not compact database - Error 3051\nThe copy '"_s + inData(u"C_Rabbits.mdb"_s)))
        << box.text.toStdString();
    EXPECT_EQ(box.title, u"Database Error");
    EXPECT_EQ(box.icon, Prompts::Icon::Stop);
    EXPECT_EQ(QFileInfo(stud).size(), size);
    EXPECT_EQ(animals(stud), 3000);
    EXPECT_EQ(fx.prompts.statuses.last(), QString());
}

TEST_F(DatabaseUtilitiesTest, AnotherProgramHoldingTheStudLosesNoSaveToACompaction)
{
    auto other = Database::open(stud);
    addAnimal(*other, {{u"Name"_s, u"Before"_s}});
    fx.prompts.answerYes();
    ASSERT_TRUE(utilities.Compact(u"Rabbits"_s)) << fx.prompts.texts().join(u'|').toStdString();
    addAnimal(*other, {{u"Name"_s, u"After"_s}});
    other.reset();
    auto db = Database::open(stud);
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Stock WHERE Name IN ('Before', 'After')"_s).toInt(), 2);
    EXPECT_EQ(db->scalar(u"PRAGMA integrity_check"_s).toString(), u"ok");
}

TEST_F(DatabaseUtilitiesTest, RepairChecksASoundStudAndRebuildsADamagedOneFromWhatCanBeRead)
{
    fx.prompts.answerYes();
    EXPECT_TRUE(utilities.Repair(u"Rabbits"_s));
    EXPECT_EQ(fx.prompts.messages.at(0).text, u"Are you sure you want to repair the Rabbits Database?");
    EXPECT_EQ(fx.prompts.messages.size(), 1) << "a sound stud: nothing to tell";
    EXPECT_EQ(fx.prompts.statuses, (QStringList{u"Please Wait - Repairing Database"_s, QString()}));
    EXPECT_FALSE(QFileInfo::exists(inData(u"C_Rabbits.mdb"_s)));

    const QByteArray damaged = [&] {
        damagePage(QFileInfo(stud).size() / 4096 / 2);
        QFile f(stud);
        f.open(QIODevice::ReadOnly);
        return f.readAll();
    }();
    ASSERT_NE(checkStud(stud), u"ok");
    fx.prompts.answerYes();
    EXPECT_TRUE(utilities.Repair(u"Rabbits"_s));
    EXPECT_EQ(fx.prompts.messages.at(2).text,
              u"The Rabbits Database was damaged and has been rebuilt from everything that could be read.\n\n"
              u"The damaged file is kept as C_Rabbits.mdb"_s);
    EXPECT_EQ(checkStud(stud), u"ok");
    const qint64 saved = animals(stud);
    EXPECT_GT(saved, 2900) << "only the rows of the damaged page are gone";
    EXPECT_LT(saved, 3000);
    QFile kept(inData(u"C_Rabbits.mdb"_s));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll().mid(100), damaged.mid(100)) << "kept as it was, past the header's counters";
    // The rebuilt stud opens as the program opens one, and gives no number out twice.
    StudDatabase reopened(stud);
    EXPECT_EQ(addAnimal(reopened.handle(), {{u"Name"_s, u"New"_s}}), 3001);
}

TEST_F(DatabaseUtilitiesTest, ACutShortStudIsRebuiltAndAFileThatIsNoDatabaseIsBeyondRepair)
{
    QFile::resize(stud, QFileInfo(stud).size() * 2 / 3);
    fx.prompts.answerYes();
    ASSERT_TRUE(utilities.Repair(u"Rabbits"_s)) << fx.prompts.texts().join(u'|').toStdString();
    EXPECT_GT(animals(stud), 1000);
    EXPECT_EQ(checkStud(stud), u"ok");

    writeFile(stud, QByteArray(8192, 'z'));
    fx.prompts.answerYes();
    EXPECT_FALSE(utilities.Repair(u"Rabbits"_s));
    const auto &box = fx.prompts.messages.last();
    EXPECT_EQ(box.text, u"Could not repair database - Error 3343\nUnrecognized database format '"_s + stud + u"'."_s);
    EXPECT_EQ(box.title, u"Database Error");
    EXPECT_EQ(box.icon, Prompts::Icon::Stop);
    EXPECT_EQ(QFileInfo(stud).size(), 8192) << "left as it was";
}

TEST_F(DatabaseUtilitiesTest, TheRestoreListOffersTheDeviceAndEachRingFileStillOnDisk)
{
    store.SaveSetting(u"Options"_s, u"BackupDrive"_s, u"/media/stick/"_s);
    store.SaveSetting(u"Rabbits"_s, u"Backup 1"_s, inData(u"Rabbits_1.mdb - 01/03/2026"_s));
    store.SaveSetting(u"Rabbits"_s, u"Backup 2"_s, inData(u"Rabbits_2.mdb - 02/03/2026"_s));
    store.SaveSetting(u"Rabbits"_s, u"Backup 10"_s, inData(u"Rabbits_10.mdb - 10/03/2026"_s));
    QFile::copy(stud, inData(u"Rabbits_1.mdb"_s));
    QFile::copy(stud, inData(u"Rabbits_10.mdb"_s));
    EXPECT_EQ(utilities.restoreList(u"Rabbits"_s),
              (QStringList{u"/media/stick/Rabbits.mdb "_s, inData(u"Rabbits_1.mdb - 01/03/2026"_s),
                           inData(u"Rabbits_10.mdb - 10/03/2026"_s)}));
}

TEST_F(DatabaseUtilitiesTest, RestoreAsksTwiceThenReplacesTheStudFromTheBackupChosen)
{
    const QString ring = inData(u"Rabbits_2.mdb"_s);
    QFile::copy(stud, ring);
    addAnimal(*Database::open(stud), {{u"Name"_s, u"Since The Backup"_s}});
    const QString entry = ring + u" - 02/03/2026"_s;

    fx.prompts.answerYes();
    fx.prompts.answerNo();
    EXPECT_FALSE(utilities.Restore(u"Rabbits"_s, 1, entry));
    EXPECT_EQ(animals(stud), 3001);
    EXPECT_EQ(fx.prompts.messages.at(0).text, u"Restore Database "_s + ring + u'?');
    EXPECT_EQ(fx.prompts.messages.at(0).title, u"Restore Database");
    EXPECT_EQ(fx.prompts.messages.at(1).text,
              u"This Backup will overwrite your existing Rabbits Database\n\n"
              u"All changes made to this database since the Backup will be lost\n\n"
              u"Are you sure you want to continue?"_s);
    EXPECT_EQ(fx.prompts.messages.at(1).title, u"Overwrite Existing Database");

    fx.prompts.answerYes();
    fx.prompts.answerYes();
    EXPECT_TRUE(utilities.Restore(u"Rabbits"_s, 1, entry));
    EXPECT_EQ(animals(stud), 3000);
    EXPECT_EQ(fx.prompts.statuses, (QStringList{u"Please Wait - Restoring Database"_s, QString()}));
}

TEST_F(DatabaseUtilitiesTest, RestoreRefusesAMissingDeviceOrBackupAndAFileThatIsNoStudBeforeDeletingAnything)
{
    QTemporaryDir stick;
    const auto restore = [&](const QString &entry) {
        fx.prompts.answerYes();
        fx.prompts.answerYes();
        EXPECT_FALSE(utilities.Restore(u"Rabbits"_s, 0, entry));
        EXPECT_EQ(fx.prompts.messages.last().title, u"Restore Error");
        EXPECT_EQ(fx.prompts.messages.last().icon, Prompts::Icon::Stop);
        return fx.prompts.messages.last().text;
    };
    EXPECT_EQ(restore(stick.path() + u"/gone/Rabbits.mdb "_s), u"Cannot access backup drive");
    EXPECT_EQ(restore(stick.path() + u"/Rabbits.mdb "_s), u"Cannot restore from backup drive - backup not found");
    writeFile(stick.path() + u"/Rabbits.mdb"_s, "Warren End stud book\nBuck  Doe\n");
    EXPECT_EQ(restore(stick.path() + u"/Rabbits.mdb "_s),
              u"Cannot restore from "_s + stick.path() + u"/Rabbits.mdb - it is not a stud database."_s);
    EXPECT_EQ(animals(stud), 3000) << "the stud is untouched";

    // The copy fails after the stud was deleted: the breeder is told where the stud still is.
    QFile::remove(stick.path() + u"/Rabbits.mdb"_s);
    QFile::copy(stud, stick.path() + u"/Rabbits.mdb"_s);
    devices.readOnly = true;
    const QString told = restore(stick.path() + u"/Rabbits.mdb "_s);
    EXPECT_TRUE(told.startsWith(u"Could not restore database - Error 3051\n"_s)) << told.toStdString();
    EXPECT_TRUE(told.endsWith(u"\n\nThe backup is still in "_s + stick.path() +
                              u"/Rabbits.mdb: restore from it again once the fault is put right."_s))
        << told.toStdString();
}

TEST_F(DatabaseUtilitiesTest, RemoveTakesTheStudItsCopiesItsSettingsAndAnyStudItsNamePrefixes)
{
    fx.registerStud(u"Rabbits_Lop"_s, u"Lop Corner"_s);
    fx.registerStud(u"RabbitsRex"_s, u"Rex Row"_s);
    for (const QString &file : {u"Rabbits_1.mdb"_s, u"Rabbits_Compact.Mdb"_s, u"C_Rabbits.mdb"_s})
        QFile::copy(stud, inData(file));
    store.SaveSetting(u"General"_s, u"LastDatabase"_s, u"RabbitsRex"_s);
    ASSERT_EQ(utilities.studs(), (QStringList{u"Rabbits"_s, u"Rabbits_Lop"_s, u"RabbitsRex"_s}));

    fx.prompts.answerYes();
    fx.prompts.answer(Answer::Cancel);
    EXPECT_FALSE(utilities.Remove(u"Rabbits"_s));
    EXPECT_EQ(fx.prompts.messages.at(0).text, u"Remove all information from the Rabbits Database");
    EXPECT_EQ(fx.prompts.messages.at(1).text, u"All records will be lost? Are You Sure?");
    EXPECT_EQ(fx.prompts.messages.at(1).title, u"Are you sure");
    EXPECT_TRUE(QFileInfo::exists(stud));

    fx.prompts.answerYes();
    fx.prompts.answerYes();
    EXPECT_TRUE(utilities.Remove(u"Rabbits"_s));
    EXPECT_EQ(fx.prompts.statuses,
              (QStringList{u"Removing Database"_s, u"Removing Backup Databases"_s,
                           u"Removing Compact Copy Databases"_s, u"Removing Registry For Database"_s, QString()}));
    for (const QString &file :
         {u"Rabbits.mdb"_s, u"Rabbits_1.mdb"_s, u"Rabbits_Compact.Mdb"_s, u"C_Rabbits.mdb"_s, u"Rabbits_Lop.mdb"_s})
        EXPECT_FALSE(QFileInfo::exists(inData(file))) << file.toStdString();
    EXPECT_TRUE(QFileInfo::exists(inData(u"RabbitsRex.mdb"_s)));
    EXPECT_EQ(utilities.studs(), (QStringList{u"Rabbits_Lop"_s, u"RabbitsRex"_s}));
    EXPECT_EQ(store.GetSetting(u"Rabbits"_s, u"StudName"_s), QString());
    EXPECT_EQ(store.GetSetting(u"RabbitsRex"_s, u"StudName"_s), u"Rex Row") << "others keep their settings";
    EXPECT_EQ(store.GetSetting(u"General"_s, u"LastDatabase"_s), QString()) << "cleared whichever stud it named";
}

} // namespace
