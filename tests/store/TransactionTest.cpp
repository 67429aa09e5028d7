// Saves while another program holds the stud, and saves cut short by a crash: what was
// reported saved is in the file, nothing half-saved is, and the next save works.
#include "support/StudFixture.h"

#include "store/StudDatabase.h"

#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>

#include <sqlite3.h>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

class TransactionTest : public ::testing::Test
{
protected:
    void SetUp() override { path = test::copyTemplate(dir.path()); }

    /// Another program with the stud open: a plain connection of its own.
    std::unique_ptr<SQLite::Database> otherProgram()
    {
        return std::make_unique<SQLite::Database>(path.toStdString(), SQLite::OPEN_READWRITE);
    }
    static int count(Database &db) { return db.scalar(u"SELECT count(*) FROM Stock"_s).toInt(); }
    static void save(Database &db, const QString &name)
    {
        Transaction tx(db);
        test::addAnimal(db, {{u"Name"_s, name}});
        tx.commit();
    }
    static int failedSave(Database &db, const QString &name)
    {
        try {
            save(db, name);
            return 0;
        } catch (const StoreError &e) {
            EXPECT_EQ(e.description(), u"The stud is in use by another program; nothing was saved. Close it and press "
                                       u"Save again.");
            return e.number();
        }
    }

    QTemporaryDir dir;
    QString path;
};

TEST_F(TransactionTest, AnotherProgramReadingTheStudCostsNoSave)
{
    auto db = Database::open(path);
    EXPECT_EQ(db->journalMode(), u"wal");
    auto reader = otherProgram();
    reader->exec("BEGIN");
    EXPECT_EQ(reader->execAndGet("SELECT count(*) FROM Stock").getInt(), 0);
    for (int i = 0; i < 20; ++i)
        save(*db, u"Saved while read %1"_s.arg(i));
    EXPECT_EQ(reader->execAndGet("SELECT count(*) FROM Stock").getInt(), 0) << "the reader keeps what it began with";
    reader->exec("COMMIT");
    EXPECT_EQ(reader->execAndGet("SELECT count(*) FROM Stock").getInt(), 20);
    EXPECT_EQ(count(*db), 20);
}

// Where the stud keeps a rollback journal, a reader stops the commit itself. The whole save
// is undone, the connection holds no transaction, and the next save goes through.
TEST_F(TransactionTest, CommitThatMeetsAReaderIsUndoneWholeAndTheNextSaveWorks)
{
    auto db = Database::open(path, 100);
    db->sql().exec("PRAGMA journal_mode = DELETE");
    auto reader = otherProgram();
    reader->exec("BEGIN");
    reader->execAndGet("SELECT count(*) FROM Stock");

    try {
        Transaction outer(*db);
        test::addAnimal(*db, {{u"Name"_s, u"Outer"_s}});
        {
            Transaction inner(*db);
            test::addAnimal(*db, {{u"Name"_s, u"Inner"_s}});
            inner.commit();
        }
        outer.commit();
        FAIL() << "the commit went through a reader's lock";
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number(), 3218);
        EXPECT_EQ(e.description(),
                  u"The stud is in use by another program; nothing was saved. Close it and press Save again.");
    }
    EXPECT_FALSE(db->inTransaction());
    EXPECT_EQ(count(*db), 0);
    EXPECT_EQ(failedSave(*db, u"Still read"_s), 3218) << "a save while the reader stays is refused again";
    EXPECT_FALSE(db->inTransaction());

    reader->exec("COMMIT");
    save(*db, u"After"_s);
    EXPECT_EQ(count(*db), 1);
    db.reset();
    auto check = Database::open(path);
    EXPECT_EQ(check->scalar(u"SELECT group_concat(Name) FROM Stock"_s).toString(), u"After")
        << "what was refused never reached the file";
}

TEST_F(TransactionTest, AnotherProgramWritingMakesTheSaveWaitThenGiveUp)
{
    auto db = Database::open(path, 100);
    auto writer = otherProgram();
    writer->exec("BEGIN IMMEDIATE");
    EXPECT_EQ(failedSave(*db, u"Blocked"_s), 3218);
    EXPECT_FALSE(db->inTransaction());
    writer->exec("ROLLBACK");
    save(*db, u"Free again"_s);
    EXPECT_EQ(count(*db), 1);
}

TEST_F(TransactionTest, AWriterThatLetsGoWithinTheWaitCostsNoSave)
{
    auto db = Database::open(path);
    auto writer = otherProgram();
    writer->exec("BEGIN IMMEDIATE");
    QThread *release = QThread::create([&] {
        QThread::msleep(300);
        writer->exec("COMMIT");
    });
    release->start();
    save(*db, u"Waited"_s);
    release->wait();
    delete release;
    EXPECT_EQ(count(*db), 1);
}

TEST_F(TransactionTest, OpeningWaitsForABriefLockAndNamesALongOne)
{
    auto holder = otherProgram();
    holder->exec("BEGIN EXCLUSIVE");
    try {
        Database::open(path, 100);
        FAIL() << "opened through an exclusive lock";
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number(), 3218);
    }
    QThread *release = QThread::create([&] {
        QThread::msleep(300);
        holder->exec("COMMIT");
    });
    release->start();
    EXPECT_NO_THROW(Database::open(path));
    release->wait();
    delete release;
}

// A crash in the middle of a save leaves the rollback journal beside the stud, and the
// file's header describes the unfinished save. The next opening puts the file back.
TEST_F(TransactionTest, StudWithTheJournalOfACrashedSaveOpensAsItWasBefore)
{
    {
        auto db = Database::open(path);
        save(*db, u"Before the crash"_s);
    }
    const qint64 sizeBefore = QFileInfo(path).size();
    const pid_t child = fork();
    if (child == 0) {
        sqlite3 *h = nullptr;
        sqlite3_open_v2(path.toUtf8().constData(), &h, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_exec(h, "PRAGMA cache_size = 1; BEGIN; CREATE TABLE Unfinished (x);", nullptr, nullptr, nullptr);
        for (int i = 0; i < 2000; ++i)
            sqlite3_exec(h, "INSERT INTO Stock (Name, Notes) VALUES ('Half saved', hex(randomblob(200)))", nullptr,
                         nullptr, nullptr);
        _exit(0); // no commit, no rollback: the process is gone
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(QFile::exists(path + u"-journal"_s));
    {
        // The header of the unfinished save promises more pages than the file holds.
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::ReadWrite));
        ASSERT_TRUE(f.resize(sizeBefore));
        QByteArray header = f.read(100);
        header.replace(28, 4, QByteArray::fromHex("00100000"));
        header.replace(92, 4, header.mid(24, 4));
        f.seek(0);
        f.write(header);
    }
    auto db = Database::open(path);
    EXPECT_EQ(db->scalar(u"SELECT group_concat(Name) FROM Stock"_s).toString(), u"Before the crash");
    EXPECT_FALSE(db->hasTable(u"Unfinished"_s));
    EXPECT_EQ(db->scalar(u"PRAGMA integrity_check"_s).toString(), u"ok");
    EXPECT_FALSE(QFile::exists(path + u"-journal"_s));
}

// The program is killed at any moment while it saves, many times over: the stud always
// opens whole and holds every save that was reported done.
TEST_F(TransactionTest, KilledWhileSavingTheStudHoldsEverySaveReportedDone)
{
    QRandomGenerator random(20261123);
    int reported = 0;
    for (int round = 0; round < 24; ++round) {
        QProcess saver;
        QStringList args{path};
        if (round % 2 == 1)
            args << u"--rollback-journal"_s;
        saver.start(QStringLiteral(TARVEX_SAVE_LOOP), args);
        ASSERT_TRUE(saver.waitForStarted());
        const int wanted = 1 + int(random.bounded(25));
        QByteArray output;
        int done = 0;
        while (done < wanted && saver.waitForReadyRead(30000)) {
            output += saver.readAllStandardOutput();
            done = int(output.count('\n'));
        }
        // A few more saves run on while the kill is on its way.
        QThread::usleep(random.bounded(3000));
        ::kill(pid_t(saver.processId()), SIGKILL);
        saver.waitForFinished();
        output += saver.readAllStandardOutput();
        ASSERT_GT(output.count('\n'), 0) << "the saver never saved";
        reported += int(output.count('\n'));

        auto db = Database::open(path);
        ASSERT_EQ(db->scalar(u"PRAGMA integrity_check"_s).toString(), u"ok") << "round " << round;
        const int held = db->scalar(u"SELECT count(*) FROM Stock WHERE Name LIKE 'Saved *'"_s).toInt();
        EXPECT_GE(held, reported) << "round " << round << ": a save reported done is missing";
        EXPECT_LE(held, reported + 1) << "round " << round << ": at most the save under way when killed";
        EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Genes"_s).toInt(), held * 10) << "an animal without all its genes";
        reported = held;
    }
}

} // namespace
