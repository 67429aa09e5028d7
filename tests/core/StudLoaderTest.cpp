#include "support/RecordingShell.h"
#include "support/StudFixture.h"

#include "core/StudLoader.h"
#include "store/StudDatabase.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

class StudLoaderTest : public ::testing::Test
{
protected:
    void SetUp() override { fx.session.setShell(&shell); }
    LoadResult load() { return Load_Stud_Details(fx.session, fx.prompts); }
    QString setting(const QString &section, const QString &key)
    {
        return CRegSettings(fx.session.AppName).GetSetting(section, key, u"<absent>"_s);
    }

    test::StudFixture fx;
    test::RecordingShell shell;
};

TEST_F(StudLoaderTest, EmptyCatalogueLeadsToRegistrationUntilAStudExists)
{
    int rounds = 0;
    shell.onRegister = [&] {
        // Closing the registration without a stud brings it back.
        if (++rounds == 2)
            fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
        return true;
    };
    ASSERT_EQ(load(), LoadResult::Opened);
    EXPECT_EQ(shell.calls.count(u"register"_s), 2);
    EXPECT_EQ(shell.caption, u"Tarvex-Rabbits   Warren End");
    EXPECT_TRUE(fx.session.studOpen());
    EXPECT_EQ(shell.hourglass, 0) << "every hourglass shown is hidden again";
}

TEST_F(StudLoaderTest, LeavingTheFirstRegistrationEndsTheProgram)
{
    EXPECT_EQ(load(), LoadResult::EndProgram);
    EXPECT_EQ(shell.calls, QStringList({u"register"_s}));
}

TEST_F(StudLoaderTest, OneStudOpensWithoutAskingAndFillsTheLists)
{
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    {
        auto db = Database::open(fx.session.DataFolder + u"Rabbits.mdb"_s);
        test::addAnimal(*db, {{u"Name"_s, u"Jack"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s},
                              {u"Colour"_s, u"Black"_s}, {u"Type"_s, u"Rex"_s}});
        test::addAnimal(*db, {{u"Name"_s, u"Jill"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s},
                              {u"Colour"_s, u"black"_s}, {u"status"_s, u"Breeding"_s}, {u"Breeder"_s, u"Me"_s}});
    }
    ASSERT_EQ(load(), LoadResult::Opened);
    EXPECT_FALSE(shell.calls.contains(u"select"_s));
    EXPECT_EQ(shell.calls, QStringList({u"mainPanel"_s, u"backups"_s, u"opened"_s, u"splash"_s}));
    const StudLists &l = fx.session.Lists;
    EXPECT_EQ(l.colours, QStringList({u"Black"_s}));
    EXPECT_EQ(l.breeds, QStringList({u"Rex"_s}));
    EXPECT_EQ(l.statuses, QStringList({u"Breeding"_s}));
    EXPECT_EQ(l.breeders, QStringList({u"Me"_s}));
    EXPECT_EQ(l.sexes, QStringList({QString(), u"Buck"_s, u"Doe"_s}));
    EXPECT_FALSE(l.sires) << "the sire and dam lists are read when first wanted";
    ASSERT_EQ(sireList(fx.session)->size(), 2);
    EXPECT_EQ(sireList(fx.session)->at(1).name, u"Jack");
    EXPECT_EQ(sireList(fx.session), sireList(fx.session)) << "read once until the stud changes";
    ASSERT_EQ(damList(fx.session)->size(), 2);
    EXPECT_EQ(l.archive, QStringList({u"Yes"_s, u"No"_s}));
    EXPECT_EQ(fx.session.FatherWord, u"Sire");
    EXPECT_EQ(fx.session.DatabaseFile, u"Rabbits.mdb");
    EXPECT_EQ(fx.session.PointsName, u"Stars");
    EXPECT_EQ(fx.session.MaxPoints, 5);
}

TEST_F(StudLoaderTest, SeveralStudsAskWhichAndRememberTheChoice)
{
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    fx.registerStud(u"Cavies"_s, u"Piggery"_s);
    CRegSettings(fx.session.AppName).SaveSetting(u"General"_s, u"LastDatabase"_s, u"Cavies"_s);
    shell.onSelect = [&] {
        const StudChoice choice = studChoice(fx.session);
        EXPECT_EQ(choice.studs, QStringList({u"Rabbits"_s, u"Cavies"_s}));
        EXPECT_EQ(choice.selected, 1) << "the stud opened last is preselected";
        chooseStud(fx.session, fx.prompts, u"Rabbits"_s);
    };
    ASSERT_EQ(load(), LoadResult::Opened);
    EXPECT_EQ(fx.session.StockType, u"Rabbits");
    EXPECT_EQ(setting(u"General"_s, u"LastDatabase"_s), u"Rabbits");
    EXPECT_EQ(fx.prompts.statuses, QStringList({u"Opening Database"_s}));
    EXPECT_EQ(fx.session.PointsName, u"Stars");

    // Selecting the stud that is open closes and opens it again, without asking.
    Close_Databases(fx.session);
    EXPECT_FALSE(fx.session.studOpen());
    fx.session.PreselectedStud = fx.session.StockType;
    shell.calls.clear();
    ASSERT_EQ(load(), LoadResult::Opened);
    EXPECT_FALSE(shell.calls.contains(u"select"_s));
    EXPECT_EQ(fx.session.StockType, u"Rabbits");
}

TEST_F(StudLoaderTest, DeletedFileOffersToRegisterAgainAndForgetsTheStud)
{
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    fx.registerStud(u"Cavies"_s, u"Piggery"_s, false);
    CRegSettings(fx.session.AppName).SaveSetting(u"General"_s, u"LastDatabase"_s, u"Cavies"_s);
    fx.session.PreselectedStud = u"Cavies"_s;
    fx.prompts.answerYes();
    ASSERT_EQ(load(), LoadResult::Opened);
    ASSERT_GE(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].title, u"Database Not Found");
    EXPECT_EQ(fx.prompts.messages[0].text,
              u"The database for Cavies has not been found\n\nDo you wish to Register the database again?");
    EXPECT_EQ(setting(u"Databases"_s, u"Cavies"_s), u"<absent>");
    EXPECT_EQ(setting(u"Cavies"_s, u"StudName"_s), u"<absent>");
    EXPECT_EQ(setting(u"General"_s, u"LastDatabase"_s), u"<absent>");
    EXPECT_EQ(fx.session.StockType, u"Rabbits") << "the next pass opens the remaining stud";
}

// A stud whose file lacks the stud's tables, registered again at its opening.
class UnreadableStudTest : public StudLoaderTest
{
protected:
    void SetUp() override
    {
        StudLoaderTest::SetUp();
        fx.session.clock = &clock;
        fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
        auto db = Database::open(path());
        db->execute(u"DROP TABLE Genes"_s);
        db->execute(u"INSERT INTO Stock (Name) VALUES ('Years of work')"_s);
        shell.onRegister = [] { return false; };
        fx.prompts.answerYes(); // register it again
    }
    QString path() const { return fx.session.DataFolder + u"Rabbits.mdb"_s; }
    QString kept() const { return path() + u".unreadable-20261123-140509"_s; }

    struct FixedClock : Clock
    {
        QDateTime now() const override { return QDateTime(QDate(2026, 11, 23), QTime(14, 5, 9)); }
    } clock;
};

// The file is moved aside, never deleted, and the box says where.
TEST_F(UnreadableStudTest, IsKeptAsideWhenRegisteredAgain)
{
    EXPECT_EQ(load(), LoadResult::EndProgram) << "with no stud left, registration comes and is left";
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(fx.prompts.messages[1].title, u"Database Kept");
    EXPECT_EQ(fx.prompts.messages[1].text,
              u"The file that could not be read has been kept as\n"_s + kept() + u"\n\nNothing in it has been deleted."_s);
    EXPECT_FALSE(QFile::exists(path()));
    auto db = Database::open(kept());
    EXPECT_EQ(db->scalar(u"SELECT Name FROM Stock"_s).toString(), u"Years of work");
    EXPECT_EQ(setting(u"Databases"_s, u"Rabbits"_s), u"<absent>");
}

// When even moving it aside fails, the file stays where it is, untouched, and the box says so.
TEST_F(UnreadableStudTest, ThatCannotBeMovedStaysWhereItIs)
{
    // Something already has the name the file would be kept under.
    ASSERT_TRUE(QDir().mkpath(kept()));
    EXPECT_EQ(load(), LoadResult::EndProgram);
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(fx.prompts.messages[1].title, u"Database Kept");
    EXPECT_EQ(fx.prompts.messages[1].icon, Prompts::Icon::Exclamation);
    EXPECT_EQ(fx.prompts.messages[1].text,
              u"The file that could not be read could not be moved aside; it stays as\n"_s + path());
    EXPECT_EQ(Database::open(path())->scalar(u"SELECT Name FROM Stock"_s).toString(), u"Years of work");
}

TEST_F(StudLoaderTest, DeletedFileAndNoEndsTheProgram)
{
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s, false);
    fx.prompts.answerNo();
    EXPECT_EQ(load(), LoadResult::EndProgram);
    EXPECT_EQ(setting(u"Databases"_s, u"Rabbits"_s), QString()) << "the catalogue is left as it was";
}

TEST_F(StudLoaderTest, DamagedFileIsReportedAndLeavesNoStudOpen)
{
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s, false);
    const QString path = fx.session.DataFolder + u"Rabbits.mdb"_s;
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("This is not a stud database, just some words about rabbits.");
    f.close();
    ASSERT_EQ(load(), LoadResult::NoStudOpen);
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].title, u"Error Opening Database");
    EXPECT_EQ(fx.prompts.messages[0].text,
              u"Cannot Open Database : Rabbits.mdb\nError:3343  Unrecognized database format '"_s + path + u"'."_s);
    EXPECT_TRUE(shell.calls.contains(u"utilities"_s));
    EXPECT_FALSE(fx.session.studOpen());
    EXPECT_TRUE(QFile::exists(path)) << "the damaged file is left for repair";
    EXPECT_EQ(shell.hourglass, 0);
}

TEST_F(StudLoaderTest, FileWithoutPicturesTableNeedsAnUpgrade)
{
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    {
        auto db = Database::open(fx.session.DataFolder + u"Rabbits.mdb"_s);
        db->execute(u"DROP TABLE Images"_s);
    }
    EXPECT_EQ(load(), LoadResult::EndProgram);
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].title, u"Upgrade Required");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Stop);
    EXPECT_TRUE(fx.prompts.messages[0].text.startsWith(
        u"You have installed the latest 1.6 Version without\nupgrading your database to the latest version.\n\n"
        u"You will need to download and install the free Upgrade\nfrom "_s));
    EXPECT_TRUE(fx.prompts.messages[0].text.endsWith(u" before continuing."_s));
}

TEST_F(StudLoaderTest, OldIdentificationCaptionsMoveOutOfTheOptions)
{
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    CRegSettings s(fx.session.AppName);
    s.SaveSetting(u"Rabbits\\Options"_s, u"Id"_s, u"Ear Tag"_s);
    s.SaveSetting(u"Rabbits\\Options"_s, u"Id2"_s, QString());
    s.SaveSetting(u"Rabbits\\Options"_s, u"Id3"_s, u"Chip"_s);
    ASSERT_EQ(load(), LoadResult::Opened);
    EXPECT_EQ(fx.session.IdWord, u"Ear Tag");
    EXPECT_EQ(fx.session.Id2Word, QString());
    EXPECT_EQ(fx.session.Id3Word, u"Chip");
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Id"_s), u"<absent>");
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Id3"_s), u"<absent>");
}

TEST_F(StudLoaderTest, TermsPointsAndGeneticsFollowTheStudsOptions)
{
    fx.registerStud(u"Cavies"_s, u"Piggery"_s);
    CRegSettings s(fx.session.AppName);
    s.SaveSetting(u"Cavies\\Options"_s, u"Pedigree Terminology"_s, u"1"_s);
    s.SaveSetting(u"Cavies\\Options"_s, u"Colour Spelling"_s, u"1"_s);
    s.SaveSetting(u"Cavies\\Options"_s, u"Weight Unit"_s, u"g"_s);
    QFile gen(fx.session.DataFolder + u"Cavies Genetics.Gen"_s);
    ASSERT_TRUE(gen.open(QIODevice::WriteOnly));
    gen.close();
    ASSERT_EQ(load(), LoadResult::Opened);
    EXPECT_EQ(fx.session.PedigreeWord, u"Family Tree");
    EXPECT_EQ(fx.session.PedigreeWordShort, u"Family Tr'");
    EXPECT_EQ(fx.session.ColourWord, u"Color");
    EXPECT_EQ(fx.session.WeightUnit, u"g");
    EXPECT_EQ(fx.session.AutoPrefix, u"A");
    EXPECT_FALSE(fx.session.PointsOn) << "only rabbits count stars by default";
    EXPECT_EQ(setting(u"Cavies\\Options"_s, u"Genetics"_s), u"1");
    EXPECT_EQ(setting(u"Cavies\\Options"_s, u"GeneticsFile"_s), u"Cavies");
    EXPECT_TRUE(fx.session.GeneticsOn);

    Close_Databases(fx.session);
    s.SaveSetting(u"Cavies\\Options"_s, u"PointsSystem"_s, u"1"_s);
    s.SaveSetting(u"Cavies\\Options"_s, u"PointsName"_s, u"Points"_s);
    s.SaveSetting(u"Cavies\\Options"_s, u"MaxPoints"_s, u"20"_s);
    ASSERT_EQ(load(), LoadResult::Opened);
    EXPECT_TRUE(fx.session.PointsOn);
    EXPECT_EQ(fx.session.PointsName, u"Points");
    EXPECT_EQ(fx.session.MaxPoints, 20);
}

} // namespace
