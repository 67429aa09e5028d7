#include "support/StudFixture.h"

#include "care/Backups.h"
#include "core/CRegSettings.h"
#include "store/Database.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

TEST(RotatingBackupRing, GoesRoundTheRingFromTheStoredCycle)
{
    // From a fresh start the stored cycle is 1 and is raised before use.
    QList<int> ring;
    int cycle = 1;
    for (int i = 0; i < 6; ++i)
        ring << (cycle = nextCycle(cycle, 5));
    EXPECT_EQ(ring, (QList<int>{2, 3, 4, 5, 1, 2}));
    EXPECT_EQ(nextCycle(7, 5), 1) << "a smaller ring starts again at 1";
    EXPECT_EQ(nextCycle(1, 0), 1) << "KeepBackUps of 0 (or text) keeps one file";
}

// A registered Rabbits stud, not yet open, as the program has it when backups are due.
class RotatingBackupTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
        fx.session.StockType = u"Rabbits"_s;
        fx.session.DatabaseFile = u"Rabbits.mdb"_s;
        fx.session.Dates = *Detect_Date_Format([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
        fx.session.clock = &clock;
        option(u"AutoBackup"_s, u"1"_s);
    }

    void option(const QString &key, const QString &value) { store.SaveSetting(u"Options"_s, key, value); }
    QString stud(const QString &key) { return store.GetSetting(u"Rabbits"_s, key); }

    struct FixedClock : Clock
    {
        QDateTime now() const override { return QDateTime(QDate(2026, 3, 14), QTime(9, 0)); }
    } clock;
    StudFixture fx;
    CRegSettings store{fx.session.AppName};
};

TEST_F(RotatingBackupTest, EveryTurnCopiesTheStudIntoTheNextRingFileAndRecordsIt)
{
    RotatingBackup(fx.session, fx.prompts);
    const QString ring = fx.session.DataFolder + u"Rabbits_2.mdb"_s;
    ASSERT_TRUE(QFileInfo::exists(ring)) << fx.prompts.texts().join(u'|').toStdString();
    EXPECT_EQ(Database::open(ring)->scalar(u"PRAGMA integrity_check"_s).toString(), u"ok");
    EXPECT_EQ(stud(u"BackUpCycle"_s), u"2");
    EXPECT_EQ(stud(u"BackupCount"_s), u"0");
    EXPECT_EQ(stud(u"Backup 2"_s), ring + u" - 14/03/2026"_s);
    EXPECT_TRUE(fx.prompts.messages.isEmpty());

    // Every third opening: the count goes 1, 2, then the copy.
    option(u"BackUpEvery"_s, u"3"_s);
    RotatingBackup(fx.session, fx.prompts);
    RotatingBackup(fx.session, fx.prompts);
    EXPECT_EQ(stud(u"BackupCount"_s), u"2");
    EXPECT_FALSE(QFileInfo::exists(fx.session.DataFolder + u"Rabbits_3.mdb"_s));
    RotatingBackup(fx.session, fx.prompts);
    EXPECT_TRUE(QFileInfo::exists(fx.session.DataFolder + u"Rabbits_3.mdb"_s));
    EXPECT_EQ(stud(u"BackUpCycle"_s), u"3");

    option(u"AutoBackup"_s, u"0"_s);
    option(u"BackUpEvery"_s, u"1"_s);
    RotatingBackup(fx.session, fx.prompts);
    EXPECT_EQ(stud(u"BackUpCycle"_s), u"3") << "off: nothing happens";
}

TEST_F(RotatingBackupTest, DecliningKeepsTheCycleAndAFailedCopyIsToldAndLeavesTheRing)
{
    option(u"PromptBackup"_s, u"1"_s);
    fx.prompts.answerNo();
    RotatingBackup(fx.session, fx.prompts);
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].text, u"Backup Rabbits Database Now?");
    EXPECT_EQ(fx.prompts.messages[0].title, u"Automatic Database Backup");
    EXPECT_FALSE(QFileInfo::exists(fx.session.DataFolder + u"Rabbits_2.mdb"_s));
    EXPECT_EQ(stud(u"BackupCount"_s), u"0");
    EXPECT_EQ(stud(u"BackUpCycle"_s), QString()) << "the same ring file next time";

    // The ring file's name is taken by a folder: the copy cannot take its place.
    option(u"PromptBackup"_s, u"0"_s);
    const QString ring = fx.session.DataFolder + u"Rabbits_2.mdb"_s;
    ASSERT_TRUE(QDir().mkpath(ring));
    RotatingBackup(fx.session, fx.prompts);
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(fx.prompts.messages[1].text,
              u"Backup failed copying "_s + fx.session.DataFolder + u"Rabbits.mdb to "_s + ring);
    EXPECT_EQ(fx.prompts.messages[1].title, u"Backup Failed");
    EXPECT_EQ(fx.prompts.messages[1].icon, Prompts::Icon::Stop);
    EXPECT_EQ(stud(u"BackUpCycle"_s), QString()) << "the cycle is not advanced";
    EXPECT_EQ(stud(u"Backup 2"_s), QString());
    EXPECT_TRUE(QFileInfo(ring).isDir());
}

} // namespace
