#include "support/StudFixture.h"

#include "core/Registration.h"
#include "store/Database.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using test::ScriptedPrompts;

namespace {

QByteArray bytesOf(const QString &path)
{
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return f.readAll();
}

class RegistrationTest : public ::testing::Test
{
protected:
    Registration make(bool firstRun)
    {
        Registration r(fx.session, fx.prompts, firstRun);
        EXPECT_TRUE(r.load());
        return r;
    }
    QString setting(const QString &section, const QString &key)
    {
        return CRegSettings(fx.session.AppName).GetSetting(section, key, u"<absent>"_s);
    }
    QString rabbitsFile() const { return fx.session.DataFolder + u"Rabbits.mdb"_s; }

    test::StudFixture fx;
    QString focus;
};

TEST_F(RegistrationTest, RefusesShortStudNamesAndMissingStockType)
{
    Registration r = make(true);
    EXPECT_FALSE(r.Validate_Registration(u"ab   "_s, u"Rabbits"_s, &focus));
    EXPECT_EQ(focus, u"TStudName");
    EXPECT_FALSE(r.Validate_Registration(u"Warren"_s, QString(), &focus));
    EXPECT_EQ(focus, u"TStockType");
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(fx.prompts.messages[0].text, u"At Least 3 character Breeder/Stud Name must be entered");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Exclamation);
    EXPECT_EQ(fx.prompts.messages[1].text, u"Type of Stock must be selected");
    EXPECT_EQ(r.CmdOkay(u"Rabbits"_s, u" a "_s, QString(), &focus), Registration::Result::Stay);
    EXPECT_FALSE(QFile::exists(rabbitsFile())) << "nothing is created for a refused registration";
}

TEST_F(RegistrationTest, NewStudGetsTemplateCopyAndItsSettings)
{
    Registration r = make(true);
    EXPECT_TRUE(r.chooseStockType(u"Rabbits"_s).accepted);
    fx.prompts.answerNo(); // keep Buck and Doe
    fx.prompts.answerNo(); // no options now
    ASSERT_EQ(r.CmdOkay(u"Rabbits"_s, u"  Warren End "_s, u"0123 456"_s, &focus), Registration::Result::Done);

    ASSERT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(fx.prompts.messages[0].title, u"Sex Terminology");
    EXPECT_EQ(fx.prompts.messages[0].text, u"Tarvex automatically uses the terminology 'Buck' and 'Doe'\n\n"
                                           u"Would you prefer to use 'Male' and 'Female' ?");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Question);
    EXPECT_EQ(fx.prompts.messages[1].title, u"Options");
    EXPECT_EQ(fx.prompts.messages[1].text, u"Tarvex has a number of options that you can change\n"
                                           u"to make it work the way you want to work.\n\n"
                                           u"Do you want to view/set up the options now?");

    EXPECT_EQ(bytesOf(rabbitsFile()), bytesOf(test::programFolder() + u"EmptyStock.mdb"_s));
    EXPECT_EQ(setting(u"Databases"_s, u"Rabbits"_s), QString());
    EXPECT_EQ(setting(u"Rabbits"_s, u"StudName"_s), u"Warren End");
    EXPECT_EQ(setting(u"Rabbits"_s, u"Telephone"_s), u"0123 456");
    EXPECT_EQ(setting(u"Rabbits"_s, u"Male"_s), u"Buck");
    EXPECT_EQ(setting(u"Rabbits"_s, u"Female"_s), u"Doe");
    EXPECT_EQ(setting(u"Rabbits"_s, u"Father"_s), u"Sire");
    EXPECT_EQ(setting(u"Rabbits"_s, u"Mother"_s), u"Dam");
    EXPECT_EQ(setting(u"Rabbits"_s, u"Id"_s), u"Ring No.");
    EXPECT_EQ(setting(u"Rabbits"_s, u"Id2"_s), u"Tattoo");
    EXPECT_EQ(setting(u"Rabbits"_s, u"Id3"_s), u"Tattoo") << "the third caption starts as the second";
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Header_0"_s), u"Tel: 0123 456");
    EXPECT_EQ(fx.session.StockType, u"Rabbits");
}

TEST_F(RegistrationTest, ChoosingMaleAndFemaleStoresThoseWordsAndOptionsCanOpen)
{
    Registration r = make(true);

    fx.prompts.answerYes();
    fx.prompts.answerYes();
    ASSERT_EQ(r.CmdOkay(u"Cavies"_s, u"Piggery"_s, QString(), &focus), Registration::Result::Done);
    EXPECT_EQ(setting(u"Cavies"_s, u"Male"_s), u"Male");
    EXPECT_EQ(setting(u"Cavies"_s, u"Female"_s), u"Female");
    EXPECT_EQ(fx.session.MaleWord, u"Male");
    EXPECT_TRUE(fx.shell.calls.contains(u"options"_s));
}

TEST_F(RegistrationTest, ExistingFileIsKeptUnlessBothQuestionsSayOverwrite)
{
    test::copyTemplate(fx.session.DataFolder);
    {
        auto db = Database::open(rabbitsFile());
        test::addAnimal(*db, {{u"Name"_s, u"Thumper"_s}});
    }
    Registration r = make(true);
    fx.prompts.answerNo();  // sex words
    fx.prompts.answerYes(); // overwrite?
    fx.prompts.answerNo();  // ...really? no
    fx.prompts.answerNo();  // options
    ASSERT_EQ(r.CmdOkay(u"Rabbits"_s, u"Warren End"_s, QString(), &focus), Registration::Result::Done);
    EXPECT_EQ(fx.prompts.messages[1].title, u"Database Already Exists");
    EXPECT_EQ(fx.prompts.messages[1].text, u"A Database already exists for Rabbits\nOverwrite the Existing Database?");
    EXPECT_EQ(fx.prompts.messages[2].title, u"Overwrite Existing Database");
    EXPECT_EQ(fx.prompts.messages[2].text, u"This action will lose all data in the Rabbits Database\n"
                                           u"and all Registration Information will be removed\nContinue?");
    {
        auto db = Database::open(rabbitsFile());
        EXPECT_EQ(db->scalar(u"SELECT Name FROM Stock"_s).toString(), u"Thumper");
    }
    EXPECT_EQ(setting(u"Rabbits"_s, u"StudName"_s), u"Warren End") << "the kept file is registered";

    // Registered now: choosing it again fills its details and asks nothing about the file.
    Registration again = make(false);
    const Registration::Choice choice = again.chooseStockType(u"Rabbits"_s);
    EXPECT_TRUE(choice.fillDetails);
    EXPECT_EQ(choice.studName, u"Warren End");
    fx.prompts.messages.clear();
    ASSERT_EQ(again.CmdOkay(u"Rabbits"_s, u"Warren End Stud"_s, u"999"_s, &focus), Registration::Result::Done);
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
    EXPECT_EQ(setting(u"Rabbits"_s, u"StudName"_s), u"Warren End Stud");
}

TEST_F(RegistrationTest, OverwritingGivesAnEmptyFileAndKeepsTheOldOptions)
{
    test::copyTemplate(fx.session.DataFolder);
    {
        auto db = Database::open(rabbitsFile());
        test::addAnimal(*db, {{u"Name"_s, u"Thumper"_s}});
    }
    CRegSettings(fx.session.AppName).SaveSetting(u"Rabbits\\Options"_s, u"Prefix"_s, u"WE "_s);
    Registration r = make(true);
    for (int i = 0; i < 4; ++i)
        fx.prompts.answer(i == 0 || i == 3 ? Prompts::Answer::No : Prompts::Answer::Yes);
    ASSERT_EQ(r.CmdOkay(u"Rabbits"_s, u"Warren End"_s, u"1"_s, &focus), Registration::Result::Done);
    auto db = Database::open(rabbitsFile());
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Stock"_s).toInt(), 0);
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Prefix"_s), u"WE ");
}

TEST_F(RegistrationTest, NewKindOutsideFirstRunIsConfirmed)
{
    fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
    Registration r = make(false);
    fx.prompts.answerNo();
    const Registration::Choice refused = r.chooseStockType(u"Cavies"_s);
    EXPECT_FALSE(refused.accepted);
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].title, u"New Database Cavies");
    EXPECT_EQ(fx.prompts.messages[0].text, u"Register New Database?");
    fx.prompts.answerYes();
    EXPECT_TRUE(r.chooseStockType(u"Cavies"_s).accepted);
    EXPECT_EQ(r.chosenStockType(), u"Cavies");
}

TEST_F(RegistrationTest, MissingTemplateIsReportedAndTheStudStillRegistered)
{
    fx.session.ProgramFolder = fx.home.path() + u"/nowhere/"_s;
    Registration r = make(true);
    fx.prompts.answerNo();
    fx.prompts.answerNo();
    ASSERT_EQ(r.CmdOkay(u"Rabbits"_s, u"Warren End"_s, QString(), &focus), Registration::Result::Done);
    EXPECT_EQ(fx.prompts.messages[1].text, u"Empty Database Does not Exists - Reinstall Software");
    EXPECT_FALSE(QFile::exists(rabbitsFile()));
}

TEST_F(RegistrationTest, StockTypeThatCannotBeAFileNameEndsAtTheCopy)
{
    StockTypeEntry odd{u"Pigs/Boars"_s, u"Sow"_s, u"Boar"_s, u"Dam"_s, u"Sire"_s, {}, {}, {}};
    Registration r = make(true);
    ASSERT_TRUE(r.CmdAddOk(odd, &focus));
    fx.prompts.answerNo();
    EXPECT_EQ(r.CmdOkay(u"Pigs/Boars"_s, u"Hog Hall"_s, QString(), &focus), Registration::Result::EndProgram);
    EXPECT_EQ(fx.prompts.messages.last().text, u"Cannot Copy Empty Database - Reinstall Software\nError : 76");
    EXPECT_EQ(setting(u"Databases"_s, u"Pigs/Boars"_s), u"<absent>");
}

TEST_F(RegistrationTest, AddingAStockTypeNeedsTheWordsAndFillsTheFirstId)
{
    Registration r = make(true);
    EXPECT_FALSE(r.CmdAddOk({u"Llamas"_s, u"Hembra"_s, QString(), u"Dam"_s, u"Sire"_s, {}, {}, {}}, &focus));
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].text, u"All Details Must Be Entered");
    EXPECT_EQ(fx.prompts.messages[0].title, u"Validation Error");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Exclamation);
    EXPECT_EQ(focus, u"AStockType");

    const int before = int(r.stockTypes().size());
    ASSERT_TRUE(r.CmdAddOk({u" Llamas "_s, u"Hembra"_s, u"Macho"_s, u"Dam"_s, u"Sire"_s, u"  "_s, {}, {}}, &focus));
    ASSERT_EQ(r.stockTypes().size(), before + 1);
    EXPECT_EQ(r.stockTypes().last(),
              (StockTypeEntry{u"Llamas"_s, u"Hembra"_s, u"Macho"_s, u"Dam"_s, u"Sire"_s, u"Identification"_s, {}, {}}));
}

TEST_F(RegistrationTest, AStockTypeTypedWithQuotesIsThereOnTheNextStart)
{
    Registration r = make(true);
    EXPECT_FALSE(r.CmdAddOk({u" \"\" "_s, u"Doe"_s, u"Buck"_s, u"Dam"_s, u"Sire"_s, {}, {}, {}}, &focus))
        << "a name of nothing but quotes is no name";
    ASSERT_EQ(fx.prompts.texts(), QStringList({u"All Details Must Be Entered"_s}));
    ASSERT_TRUE(
        r.CmdAddOk({u"Mini \"Rex"_s, u"Doe"_s, u"Buck"_s, u"Dam\""_s, u"Sire"_s, {}, {}, {}}, &focus));

    Registration next(fx.session, fx.prompts, false);
    ASSERT_TRUE(next.load());
    EXPECT_EQ(next.stockTypes().last(),
              (StockTypeEntry{
                  u"Mini Rex"_s, u"Doe"_s, u"Buck"_s, u"Dam"_s, u"Sire"_s, u"Identification"_s, {}, {}}));
    EXPECT_EQ(fx.prompts.messages.size(), 1);
}

TEST_F(RegistrationTest, ALineWithAStrayQuoteDoesNotKeepTheListFromLoading)
{
    // As earlier versions wrote a quote typed into a new kind's name.
    QFile file(fx.session.DataFolder + u"stocktypes.txt"_s);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("\"Mini \"Rex\",\"Doe\",\"Buck\",\"Dam\",\"Sire\",\"Identification\",\"\",\"\"\n");
    file.close();
    Registration r(fx.session, fx.prompts, true);
    ASSERT_TRUE(r.load());
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
    EXPECT_TRUE(r.stockTypeNames().contains(u"Rabbits"_s));
    EXPECT_EQ(r.stockTypeNames().last(), u"Mini Rex");
}

TEST_F(RegistrationTest, UnreadableStockTypesStopTheProgram)
{
    QFile::remove(fx.session.DataFolder + u"stocktypes.txt"_s);
    Registration r(fx.session, fx.prompts, true);
    EXPECT_FALSE(r.load());
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].text, u"Error : 53 File not found");
    EXPECT_EQ(fx.prompts.messages[0].title, u"Error Reading StockTypes.Txt");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Stop);
}

TEST_F(RegistrationTest, GeneticsFileSwitchesGeneticsOn)
{
    QFile gen(fx.session.DataFolder + u"Rabbits Genetics.Gen"_s);
    ASSERT_TRUE(gen.open(QIODevice::WriteOnly));
    gen.close();
    Registration r = make(true);
    fx.prompts.answerNo();
    fx.prompts.answerNo();
    ASSERT_EQ(r.CmdOkay(u"Rabbits"_s, u"Warren End"_s, QString(), &focus), Registration::Result::Done);
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Genetics"_s), u"1");
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"GeneticsFile"_s), u"Rabbits");
}

} // namespace
