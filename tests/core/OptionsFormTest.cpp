// The options screen's settings: read when it opens (with its special cases), checked at OK
// in order, and written only for the groups the breeder changed.
#include "support/StudFixture.h"

#include "core/CRegSettings.h"
#include "core/OptionsForm.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

using Group = OptionsForm::Group;

class OptionsFormTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
        fx.session.StockType = u"Rabbits"_s;
        fx.copyShippedGenetics();
    }
    OptionsForm read() { return readOptionsForm(fx.session, {u"Rex"_s, u"Dutch"_s}, {u"Sold"_s, u"Died"_s}); }
    QString setting(const QString &section, const QString &key)
    {
        return store.GetSetting(section, key, u"(absent)"_s);
    }

    StudFixture fx;
    CRegSettings store{fx.session.AppName};
};

TEST_F(OptionsFormTest, OpeningOffersStarsToRabbitBreedersAndShowsWhatIsStored)
{
    OptionsForm f = read();
    EXPECT_TRUE(f.points);
    EXPECT_EQ(f.pointsName, u"Stars");
    EXPECT_TRUE(f.changed.count(Group::Points)) << "the points never set are stored at OK";
    EXPECT_EQ(f.maxPoints, u"5") << "five stars an award, as the awards count them";
    EXPECT_TRUE(f.autoBackup) << "the screen's own default";
    EXPECT_EQ(f.remindEvery, 10);
    EXPECT_FALSE(f.wordDetected);
    EXPECT_TRUE(f.geneticsFiles.contains(u"Rabbits"_s));
    EXPECT_EQ(f.generations, 5);
    ASSERT_EQ(f.breeds.size(), 2);
    EXPECT_EQ(f.breeds[0].gestation, u"0");

    fx.session.StockType = u"Cavies"_s;
    store.SaveSetting(u"Options"_s, u"WordDetected"_s, u"1"_s);
    store.SaveSetting(u"Cavies\\Options"_s, u"Default Generations"_s, u"9"_s);
    store.SaveSetting(u"Cavies\\Options"_s, u"Sold"_s, u"Don't Show Age"_s);
    f = read();
    EXPECT_FALSE(f.points);
    EXPECT_EQ(f.pointsName, QString());
    EXPECT_TRUE(f.wordDetected);
    EXPECT_EQ(f.generations, 5) << "a number out of the list is brought back into it";
    EXPECT_EQ(f.ages, (QList<QPair<QString, bool>>{{u"Sold"_s, true}, {u"Died"_s, false}}));
}

TEST_F(OptionsFormTest, OkChecksThePointsTheTermsAndANewImageFolderInThatOrder)
{
    OptionsForm f = read();
    f.pointsName = u"  "_s;
    auto fault = validateOptionsForm(f);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->text, u"Points System Name must be Entered");
    EXPECT_EQ(optionsTabs().value(fault->tab), u"Awards System");
    EXPECT_EQ(fault->control, u"TxtPoints");
    f.pointsName = u"Stars"_s;
    f.maxPoints = u"abc"_s;
    EXPECT_EQ(validateOptionsForm(f)->text, u"A maximum number of Points must be Entered");
    f.points = false;
    EXPECT_FALSE(validateOptionsForm(f)) << "with points off nothing is checked";

    f.ids = {u" "_s, u"Tattoo"_s, u"Ear Tag"_s};
    EXPECT_FALSE(validateOptionsForm(f));
    EXPECT_EQ(f.ids, (std::array<QString, 3>{u"Tattoo"_s, u"Ear Tag"_s, u"Ear Tag"_s})) << "a term may stand twice";
    f.ids = {QString(), QString(), QString()};
    validateOptionsForm(f);
    EXPECT_EQ(f.ids, (std::array<QString, 3>{u"Identification"_s, QString(), QString()}));

    QTemporaryDir dir;
    f.storedImageFolder = f.imageFolder = dir.filePath(u"removed since"_s);
    EXPECT_FALSE(validateOptionsForm(f)) << "an unchanged folder is not looked at";
    f.imageFolder = dir.filePath(u"nowhere"_s);
    fault = validateOptionsForm(f);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->text, u"The Image Folder entered does not exist");
    EXPECT_EQ(optionsTabs().value(fault->tab), u"Image Information");
    EXPECT_EQ(fault->control, u"TxtDefImgFolder");
    QFile file(dir.filePath(u"photo.jpg"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    f.imageFolder = file.fileName();
    EXPECT_EQ(validateOptionsForm(f)->text, u"The Image Folder entered is not a folder");
}

TEST_F(OptionsFormTest, OnlyTheGroupsChangedAreWrittenAndTheyReadBackAsSet)
{
    OptionsForm f = read();
    f.changed.clear();
    f.header = {u"Warren End Rabbitry"_s, u"Tel 0123"_s, QString(), QString()};
    f.footer = u"Bred with care"_s;
    f.autoBackup = false; // shown, but its group not marked changed
    f.change(Group::HeaderFooter);
    writeOptionsForm(fx.session, f);
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Header_0"_s), u"Warren End Rabbitry");
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Footer"_s), u"Bred with care");
    EXPECT_EQ(setting(u"Options"_s, u"AutoBackup"_s), u"(absent)");
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"PointsSystem"_s), u"(absent)");

    // Every group, set and read back.
    f = read();
    f.autoBackup = false;
    f.backupEvery = 2;
    f.keepBackups = 7;
    f.remindEvery = 20;
    f.backupDrive = u"/media/breeder/STICK"_s;
    f.points = true;
    f.pointsName = u"Points"_s;
    f.maxPoints = u"20"_s;
    f.logo = u" /home/breeder/logo.png "_s;
    f.pedigreeStyle = 3;
    f.generations = 4;
    f.pedigreeFont = u"Liberation Serif"_s;
    f.pedigreeTerminology = 1;
    f.colourSpelling = 1;
    f.gestation = u"31"_s;
    f.weightUnit = u"kg"_s;
    f.genetics = true;
    f.geneticsFile = u"Rabbits"_s;
    f.geneticsAdvanced = false;
    f.prefix = u"Warren End "_s;
    f.ids = {u"Ring No."_s, u"Tattoo"_s, u"Chip"_s};
    f.dedupe = {true, false, true};
    f.breeds[0].gestation = u"32"_s;
    f.breeds[0].stretch = true;
    f.ages[1].second = true;
    for (int g = 0; g <= int(Group::Ages); ++g)
        f.change(Group(g));
    ASSERT_FALSE(validateOptionsForm(f));
    writeOptionsForm(fx.session, f);
    const OptionsForm back = read();
    EXPECT_FALSE(back.autoBackup);
    EXPECT_EQ(back.backupEvery, 2);
    EXPECT_EQ(back.keepBackups, 7);
    EXPECT_EQ(back.remindEvery, 20);
    EXPECT_EQ(back.backupDrive, u"/media/breeder/STICK");
    EXPECT_TRUE(back.points);
    EXPECT_EQ(back.pointsName, u"Points");
    EXPECT_EQ(back.maxPoints, u"20");
    EXPECT_EQ(back.logo, u"/home/breeder/logo.png") << "trimmed";
    EXPECT_EQ(back.pedigreeStyle, 3);
    EXPECT_EQ(back.generations, 4);
    EXPECT_EQ(back.pedigreeFont, u"Liberation Serif");
    EXPECT_EQ(back.pedigreeTerminology, 1);
    EXPECT_EQ(back.colourSpelling, 1);
    EXPECT_EQ(back.gestation, u"31");
    EXPECT_EQ(back.weightUnit, u"kg");
    EXPECT_TRUE(back.genetics);
    EXPECT_EQ(back.geneticsFile, u"Rabbits");
    EXPECT_FALSE(back.geneticsAdvanced);
    EXPECT_EQ(back.prefix, u"Warren End ");
    EXPECT_EQ(back.ids, f.ids);
    EXPECT_EQ(back.dedupe, f.dedupe);
    EXPECT_EQ(back.breeds[0].gestation, u"32");
    EXPECT_TRUE(back.breeds[0].stretch);
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Died"_s), u"Don't Show Age");
    EXPECT_FALSE(back.changed.count(Group::Points)) << "stored now";
}

TEST_F(OptionsFormTest, TextInANumberBoxNeverReachesTheSettingsAndGeneticsOffForgetsItsFile)
{
    store.SaveSetting(u"Rabbits\\Genetics Map"_s, u"Blue Otter"_s, u"Otter Blue"_s);
    store.SaveSetting(u"Rabbits\\Genetics Map"_s, u"Chocolate"_s, u"Chocolate"_s);
    OptionsForm f = read();
    ASSERT_EQ(f.colourMatches.size(), 2);
    f.gestation = u"about a month"_s;
    f.breeds[1].gestation = u"x"_s;
    f.genetics = false;
    f.geneticsFile = u"Rabbits"_s;
    f.colourMatches[0].second = false;
    f.change(Group::General);
    f.change(Group::Genetics);
    writeOptionsForm(fx.session, f);
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Gestation In Days"_s), u"(absent)");
    EXPECT_EQ(setting(u"Rabbits"_s, u"Dutch Gestation"_s), u"0");
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"GeneticsFile"_s), QString());
    EXPECT_EQ(setting(u"Rabbits\\Options"_s, u"Genetics"_s), u"0");
    EXPECT_EQ(setting(u"Rabbits\\Genetics Map"_s, u"Blue Otter"_s), u"(absent)");
    EXPECT_EQ(setting(u"Rabbits\\Genetics Map"_s, u"Chocolate"_s), u"Chocolate");

    // Asking for a new search for the word processor empties what was found.
    store.SaveSetting(u"Options"_s, u"WordDetected"_s, u"1"_s);
    f = read();
    f.searchWordAgain = true;
    writeOptionsForm(fx.session, f);
    EXPECT_EQ(setting(u"Options"_s, u"WordDetected"_s), QString());
}

} // namespace
