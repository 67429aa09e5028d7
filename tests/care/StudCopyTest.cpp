#include "support/RecordingProgress.h"
#include "support/StudFixture.h"

#include "care/StudCopy.h"
#include "store/StoreError.h"
#include "store/StudDatabase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

// A stud of some 30,000 animals with long notes: about 10 MB, so a copy takes several steps.
class StudCopyTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        Transaction tx(*db);
        db->execute(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 30000) "
                    "INSERT INTO Stock (Name, Sex, Notes) SELECT 'Animal ' || i, 'Doe', printf('%.300c', 'x') "
                    "FROM n"_s);
        tx.commit();
        folder = QFileInfo(db->path()).absolutePath();
    }

    qint64 animals(Database &d) { return d.scalar(u"SELECT count(*) FROM Stock"_s).toLongLong(); }

    /// The copy opened as the program opens a stud: whole, and its animals.
    qint64 checkedAnimals(const QString &path)
    {
        auto copy = Database::open(path);
        EXPECT_EQ(copy->scalar(u"PRAGMA integrity_check"_s).toString(), u"ok");
        return animals(*copy);
    }

    StudFixture fx;
    Database *db = nullptr;
    QString folder;
};

TEST_F(StudCopyTest, ACopyTakenWhileAnotherConnectionSavesIsWholeAndConsistent)
{
    const qint64 before = animals(*db);
    std::atomic<bool> copying = true;
    std::atomic<int> saved = 0;
    // Another connection saves an animal at a time all through the copy.
    std::thread writer([&] {
        auto other = Database::open(db->path());
        while (copying) {
            try {
                Transaction tx(*other);
                other->execute(u"INSERT INTO Stock (Name, Sex) VALUES ('Newcomer', 'Buck')"_s);
                tx.commit();
                ++saved;
            } catch (const StoreError &) {
                // Held off for a moment by the copy's read: the next save goes on.
            }
        }
    });
    const QString target = folder + u"/Rabbits_1.mdb"_s;
    RecordingProgress progress;
    const StudCopy::Outcome outcome = StudCopy::copy(*db, target, progress);
    copying = false;
    writer.join();

    ASSERT_EQ(outcome, StudCopy::Outcome::Done);
    EXPECT_GT(progress.steps.size(), 1) << "the copy goes a few megabytes at a time";
    EXPECT_EQ(progress.steps.last().done, progress.total);
    const qint64 copied = checkedAnimals(target);
    EXPECT_GE(copied, before);
    EXPECT_LE(copied, before + saved);
    EXPECT_FALSE(QFileInfo::exists(target + u"-wal"_s)) << "one self-contained file";
    EXPECT_EQ(QFile::permissions(target), QFile::permissions(db->path())) << "as private as the stud";
    EXPECT_FALSE(QFileInfo::exists(StudCopy::partialName(target)));
}

TEST_F(StudCopyTest, ACopyThatFailsOrIsStoppedLeavesTheEarlierCopyAsItWas)
{
    const QString target = folder + u"/Rabbits_Compact.Mdb"_s;
    ASSERT_EQ(StudCopy::copy(*db, target), StudCopy::Outcome::Done);
    const qint64 first = checkedAnimals(target);
    db->execute(u"INSERT INTO Stock (Name) VALUES ('Later')"_s);

    RecordingProgress stop;
    stop.cancelAfter = 1;
    EXPECT_EQ(StudCopy::copy(*db, target, stop), StudCopy::Outcome::Stopped);
    EXPECT_EQ(checkedAnimals(target), first);
    EXPECT_FALSE(QFileInfo::exists(StudCopy::partialName(target)));

    // The place the copy is written to first cannot be written.
    ASSERT_TRUE(QDir().mkpath(StudCopy::partialName(target)));
    try {
        StudCopy::copy(*db, target);
        ADD_FAILURE() << "the copy cannot have been made";
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number(), StoreError::CannotOpenFile) << e.description().toStdString();
    }
    EXPECT_EQ(checkedAnimals(target), first);
    ASSERT_TRUE(QDir().rmdir(StudCopy::partialName(target)));

    // A folder that is not there.
    EXPECT_THROW(StudCopy::copy(*db, folder + u"/gone/Rabbits_1.mdb"_s), StoreError);
    EXPECT_THROW(StudCopy::compact(*db, folder + u"/gone/C_Rabbits.mdb"_s), StoreError);
    EXPECT_FALSE(QFileInfo::exists(folder + u"/gone"_s));
}

TEST_F(StudCopyTest, ACompactedCopyHoldsTheSameRowsInLessRoom)
{
    db->execute(u"DELETE FROM Stock WHERE Number % 2 = 0"_s);
    const qint64 left = animals(*db);
    const QString target = folder + u"/C_Rabbits.mdb"_s;
    QFile earlier(target);
    ASSERT_TRUE(earlier.open(QIODevice::WriteOnly));
    earlier.write("an earlier file of that name");
    earlier.close();

    StudCopy::compact(*db, target);
    EXPECT_EQ(checkedAnimals(target), left) << "the earlier file replaced by the compacted stud";
    EXPECT_LT(QFileInfo(target).size(), QFileInfo(db->path()).size() * 3 / 4);
    EXPECT_FALSE(QFileInfo::exists(StudCopy::partialName(target)));
    EXPECT_EQ(animals(*db), left) << "the stud itself is untouched";
}

} // namespace
