#include "support/StudFixture.h"

#include "core/AppFolders.h"
#include "core/Options.h"
#include "core/Startup.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

void touch(const QString &path, const QByteArray &bytes = "x")
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

TEST(Startup, DevelopmentNameOnlyForTheWholeCommandLine)
{
    EXPECT_EQ(Startup::appNameFor({u"/DEV"_s}), u"Tarvex Development");
    EXPECT_EQ(Startup::appNameFor({}), u"Tarvex");
    EXPECT_EQ(Startup::appNameFor({u"/DEV"_s, u"now"_s}), u"Tarvex");
    EXPECT_EQ(Startup::appNameFor({u"/DEVX"_s}), u"Tarvex");
}

TEST(Startup, WordProcessorIsLookedForOncePerUser)
{
    test::StudFixture fx;
    int probes = 0;
    const auto probe = [&] {
        ++probes;
        return true;
    };
    EXPECT_TRUE(Startup::detectWordProcessor(fx.session, probe));
    EXPECT_TRUE(Startup::detectWordProcessor(fx.session, probe));
    EXPECT_EQ(probes, 1);
    EXPECT_EQ(CRegSettings(fx.session.AppName).GetSetting(u"Options"_s, u"WordDetected"_s), u"1");
    CRegSettings(fx.session.AppName).SaveSetting(u"Options"_s, u"WordDetected"_s, QString());
    EXPECT_FALSE(Startup::detectWordProcessor(fx.session, [] { return false; }));
    EXPECT_EQ(CRegSettings(fx.session.AppName).GetSetting(u"Options"_s, u"WordDetected"_s), u"0");
    EXPECT_TRUE(Startup::detectWordProcessor(fx.session, probe)) << "not found before: asked again";
    EXPECT_EQ(probes, 2);
}

TEST(Startup, FirstStartCopiesDeliveredFilesAndKeepsTheUsersOwn)
{
    test::TempHome home;
    const QString data = AppFolders::dataFolder();
    AppFolders::prepareDataFolder(data, test::programFolder());
    EXPECT_TRUE(QFile::exists(data + u"stocktypes.txt"_s));
    EXPECT_FALSE(QFile::exists(data + u"EmptyStock.mdb"_s)) << "the template stays where it was delivered";

    touch(data + u"stocktypes.txt"_s, "\"Yaks\"\n");
    AppFolders::prepareDataFolder(data, test::programFolder());
    QFile f(data + u"stocktypes.txt"_s);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), "\"Yaks\"\n");
}

TEST(Startup, ImportBringsOldFilesIntoAnEmptyDataFolderOnce)
{
    QTemporaryDir old, data;
    touch(old.filePath(u"Rabbits.mdb"_s));
    touch(old.filePath(u"stocktypes.txt"_s));
    touch(old.filePath(u"Cavies.mdb_old"_s));
    const QString target = data.path() + u'/';
    EXPECT_EQ(AppFolders::importOldFiles(old.path(), target).size(), 2);
    EXPECT_TRUE(QFile::exists(target + u"Rabbits.mdb"_s));
    EXPECT_FALSE(QFile::exists(target + u"Cavies.mdb_old"_s));
    EXPECT_TRUE(QFile::exists(old.filePath(u"Rabbits.mdb_OLD"_s))) << "the source is kept, marked as imported";

    touch(old.filePath(u"Mice.mdb"_s));
    EXPECT_TRUE(AppFolders::importOldFiles(old.path(), target).isEmpty()) << "a folder with studs is left alone";
    EXPECT_EQ(Startup::importFolder({u"--import-from=/media/old"_s}), u"/media/old");
    EXPECT_FALSE(Startup::importFolder({u"/DEV"_s}));
}

} // namespace

namespace {

QString ukDate(const QDate &d)
{
    return d.toString(u"dd/MM/yyyy"_s);
}

// The start of a run in its fixed order: splash, folders, one running copy, the name, the
// date format, the stud, and the word processor looked for once.
TEST(StartupOrder, StartOpensTheStudAfterTheChecksInOrder)
{
    test::StudFixture fx;
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    std::unique_ptr<SingleInstance> instance;
    ASSERT_TRUE(Startup::Form_Load(fx.session, fx.prompts, {}, ukDate, instance));
    EXPECT_EQ(fx.shell.calls, QStringList({u"showSplash"_s, u"mainPanel"_s, u"backups"_s, u"opened"_s, u"splash"_s}));
    EXPECT_EQ(fx.session.AppName, u"Tarvex");
    EXPECT_EQ(fx.session.Dates.DateFormat, u"dd/mm/yyyy");
    EXPECT_TRUE(fx.session.studOpen());
    EXPECT_FALSE(Options(fx.session).text(Opt::WordDetected).isEmpty());

    // A second copy is refused before anything is opened.
    Session second;
    second.ProgramFolder = fx.session.ProgramFolder;
    test::RecordingShell shell;
    second.setShell(&shell);
    test::ScriptedPrompts prompts;
    std::unique_ptr<SingleInstance> other;
    EXPECT_FALSE(Startup::Form_Load(second, prompts, {}, ukDate, other));
    EXPECT_EQ(prompts.texts(), QStringList({u"Program already running"_s}));
    EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Stop);
    EXPECT_EQ(shell.calls, QStringList({u"showSplash"_s, u"splash"_s}));
    EXPECT_FALSE(second.studOpen());
}

TEST(StartupOrder, UnusableDateFormatEndsTheStartWithItsBox)
{
    test::StudFixture fx;
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    std::unique_ptr<SingleInstance> instance;
    const auto weekday = [](const QDate &d) { return d.toString(u"dddd"_s); };
    EXPECT_FALSE(Startup::Form_Load(fx.session, fx.prompts, {}, weekday, instance));
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].title, u"Date Formatting Error");
    EXPECT_FALSE(fx.session.studOpen());
}

} // namespace
