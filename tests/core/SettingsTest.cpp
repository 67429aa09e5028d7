#include "support/TempHome.h"

#include "core/CRegSettings.h"
#include "core/Options.h"
#include "core/SettingsFile.h"
#include "core/WindowGeometry.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

class SettingsTest : public ::testing::Test
{
protected:
    test::TempHome home;
    CRegSettings settings{u"Tarvex"_s};
    Options options{u"Tarvex"_s, u"Rabbits"_s};
};

TEST_F(SettingsTest, ReadsGiveDefaultsAndCreateNothing)
{
    EXPECT_EQ(settings.GetSetting(u"Rabbits\\Options"_s, u"Weight Unit"_s, u"lbs"_s), u"lbs");
    EXPECT_TRUE(settings.GetAllSettings(u"Rabbits"_s).isEmpty());
    EXPECT_FALSE(QFile::exists(settings.filePath()));
    EXPECT_FALSE(settings.DeleteSetting(u"Rabbits"_s, u"StudName"_s));
    EXPECT_FALSE(settings.DeleteSetting(u"Rabbits"_s));
}

TEST_F(SettingsTest, NamesIgnoreCaseAndKeepTheirFirstSpelling)
{
    ASSERT_TRUE(settings.SaveSetting(u"Rabbits"_s, u"BackupCount"_s, u"1"_s));
    ASSERT_TRUE(settings.SaveSetting(u"RABBITS"_s, u"BackUpCount"_s, u"2"_s));
    EXPECT_EQ(settings.GetSetting(u"rabbits"_s, u"backupcount"_s), u"2");
    const auto all = settings.GetAllSettings(u"Rabbits"_s);
    ASSERT_EQ(all.size(), 1);
    EXPECT_EQ(all[0].first, u"BackupCount");
    ASSERT_TRUE(settings.SaveSetting(u"General"_s, u"LastDatabase"_s, u"Cavies"_s));
    EXPECT_TRUE(settings.DeleteSetting(u"General"_s, u"Lastdatabase"_s));
    EXPECT_EQ(settings.GetSetting(u"General"_s, u"LastDatabase"_s, u"none"_s), u"none");
}

TEST_F(SettingsTest, AllSettingsComeInTheOrderWritten)
{
    for (const QString &stud : {u"Rabbits"_s, u"Cavies"_s, u"Alpacas"_s})
        settings.SaveSetting(u"Databases"_s, stud, QString());
    QStringList keys;
    for (const auto &[key, value] : settings.GetAllSettings(u"Databases"_s)) {
        keys << key;
        EXPECT_TRUE(value.isEmpty());
    }
    EXPECT_EQ(keys, QStringList({u"Rabbits"_s, u"Cavies"_s, u"Alpacas"_s}));
}

TEST_F(SettingsTest, SubSectionsNestByBackslashAndGoWithTheirSection)
{
    settings.SaveSetting(u"Databases"_s, u"Rabbits"_s, QString());
    settings.SaveSetting(u"Rabbits"_s, u"StudName"_s, u"Warren End"_s);
    settings.SaveSetting(u"Rabbits\\Options"_s, u"Prefix"_s, u"WE "_s);
    settings.SaveSetting(u"Rabbits\\Genetics Map"_s, u"Black"_s, u"aa"_s);
    settings.SaveSetting(u"Cavies"_s, u"StudName"_s, u"Piggery"_s);
    EXPECT_TRUE(settings.GetAllSettings(u"Rabbits"_s).size() == 1) << "sub-sections are not values of their parent";

    EXPECT_TRUE(settings.DeleteSetting(u"Databases"_s, u"Rabbits"_s));
    EXPECT_TRUE(settings.DeleteSetting(u"Rabbits"_s));
    EXPECT_TRUE(settings.GetAllSettings(u"Rabbits\\Options"_s).isEmpty());
    EXPECT_TRUE(settings.GetAllSettings(u"Rabbits\\Genetics Map"_s).isEmpty());
    EXPECT_EQ(settings.GetSetting(u"Cavies"_s, u"StudName"_s), u"Piggery");
    EXPECT_TRUE(settings.GetAllSettings(u"Databases"_s).isEmpty());
}

TEST_F(SettingsTest, UnnamedValueAndAwkwardTextsSurviveTheFile)
{
    const QString awkward = u"  a=b\\c\nsecond line [x] # not a comment  "_s;
    settings.SaveSetting(u"Rabbits\\Options"_s, u"*"_s, u"default"_s);
    settings.SaveSetting(u"Rabbits\\Options"_s, u"Header_1"_s, awkward);
    settings.SaveSetting(u"Rabbits\\Options"_s, u"[odd]=key"_s, u"v"_s);
    settings.SaveSetting(u"Rabbits\\Options"_s, u"Dead Young"_s, u"Don't Show Age"_s);

    const auto reread = SettingsFile::parse(SettingsFile::serialise(*SettingsFile::parse(
        QString::fromUtf8([&] {
            QFile f(settings.filePath());
            f.open(QIODevice::ReadOnly);
            return f.readAll();
        }()))));
    ASSERT_EQ(reread->children.size(), 1u);
    const SettingsFile::Node *options = reread->children[0]->child(u"Options"_s);
    ASSERT_NE(options, nullptr);
    ASSERT_EQ(options->values.size(), 4);
    EXPECT_EQ(options->values[0], (QPair<QString, QString>(QString(), u"default"_s)));
    EXPECT_EQ(options->values[1].second, awkward);
    EXPECT_EQ(options->values[2].first, u"[odd]=key");
    EXPECT_EQ(settings.GetSetting(u"Rabbits\\Options"_s, u"*"_s), u"default");
    EXPECT_TRUE(settings.DeleteSetting(u"Rabbits\\Options"_s, u"*"_s));
    EXPECT_EQ(settings.GetSetting(u"Rabbits\\Options"_s, u"*"_s, u"gone"_s), u"gone");
}

TEST_F(SettingsTest, DevelopmentNameNeverSeesTheProgramsSettings)
{
    CRegSettings development(u"Tarvex Development"_s);
    settings.SaveSetting(u"Databases"_s, u"Rabbits"_s, QString());
    EXPECT_TRUE(development.GetAllSettings(u"Databases"_s).isEmpty());
    development.SaveSetting(u"Databases"_s, u"Mice"_s, QString());
    EXPECT_EQ(settings.GetAllSettings(u"Databases"_s).size(), 1);
    EXPECT_NE(settings.filePath(), development.filePath());
    EXPECT_EQ(development.address(u"Rabbits\\Options"_s), u"Software\\Tarvex Systems\\Tarvex Development\\Rabbits\\Options");
    EXPECT_EQ(settings.address(QString()), u"Software\\Tarvex Systems\\Tarvex");
}

TEST_F(SettingsTest, DamagedFileIsReadAsFarAsItGoes)
{
    settings.SaveSetting(u"Databases"_s, u"Rabbits"_s, QString());
    QFile f(settings.filePath());
    ASSERT_TRUE(f.open(QIODevice::Append));
    f.write("garbage line without equals\n\x01\x02\xff\xfe\n[Rabbits]\nStudName=Warren End\n[Broken\nTelephone=1");
    f.close();
    EXPECT_EQ(settings.GetAllSettings(u"Databases"_s).size(), 1);
    EXPECT_EQ(settings.GetSetting(u"Rabbits"_s, u"StudName"_s), u"Warren End");
    EXPECT_EQ(settings.GetSetting(u"Rabbits"_s, u"Telephone"_s), u"1");
}

// The store itself fails silently; the user is told once per file that settings will not
// be kept, and the program goes on.
TEST_F(SettingsTest, UnwritableStoreFailsAndIsToldOnce)
{
    QStringList told;
    SettingsFile::setWriteFailureHandler([&](const QString &path) { told << path; });
    settings.SaveSetting(u"General"_s, u"LastDatabase"_s, u"Rabbits"_s);
    EXPECT_TRUE(told.isEmpty());
    QFile::remove(settings.filePath());
    // A folder in the file's place: nothing can be written there.
    QDir().mkpath(settings.filePath());
    EXPECT_FALSE(settings.SaveSetting(u"General"_s, u"LastDatabase"_s, u"Cavies"_s));
    EXPECT_FALSE(settings.SaveSetting(u"General"_s, u"LastDatabase"_s, u"Goats"_s));
    EXPECT_EQ(settings.GetSetting(u"General"_s, u"LastDatabase"_s, u"none"_s), u"none");
    EXPECT_EQ(told, QStringList({settings.filePath()}));
    SettingsFile::setWriteFailureHandler({});
}

TEST_F(SettingsTest, WindowPlaceKeepsTheTopInBothEdges)
{
    WindowGeometry::save(options, WindowGeometry::Normal, QRect(300, 100, 700, 500));
    const auto p = WindowGeometry::restore(options, QSize(640, 480), QSize(1280, 1024));
    EXPECT_EQ(p.state, WindowGeometry::Normal);
    EXPECT_EQ(p.rect, QRect(100, 100, 700, 500));

    WindowGeometry::save(options, WindowGeometry::Maximised, QRect(5, 5, 10, 10));
    const auto max = WindowGeometry::restore(options, QSize(640, 480), QSize(1280, 1024));
    EXPECT_EQ(max.state, WindowGeometry::Maximised);
    EXPECT_EQ(max.rect.size(), QSize(700, 500)) << "a maximised exit keeps the last normal size";

    WindowGeometry::save(options, WindowGeometry::Minimised, QRect());
    EXPECT_EQ(WindowGeometry::restore(options, QSize(640, 480), QSize(1280, 1024)).state, WindowGeometry::Normal);
}

// Every key is read with its own default, and a flag reads the same however it was written.
TEST_F(SettingsTest, KeysGiveTheirDefaultsAndFlagsReadOneWay)
{
    EXPECT_EQ(options.text(Opt::WeightUnit), u"lbs");
    EXPECT_EQ(options.text(Opt::AutoPrefix), u"A");
    EXPECT_EQ(options.number(Opt::KeepBackUps), 5);
    EXPECT_EQ(options.number(Opt::GestationInDays), -1);
    EXPECT_TRUE(options.flag(Opt::WatermarkStretch));
    EXPECT_FALSE(options.has(Opt::WatermarkStretch)) << "reading creates nothing";
    EXPECT_FALSE(QFile::exists(settings.filePath()));

    for (const auto &[stored, on] : std::initializer_list<std::pair<QString, bool>>{
             {u"1"_s, true}, {u"-1"_s, true}, {u"True"_s, true}, {u"yes"_s, true},
             {u"0"_s, false}, {u"False"_s, false}, {QString(), false}, {u"no"_s, false}}) {
        options.set(Opt::GeneticsAdv, stored);
        EXPECT_EQ(options.flag(Opt::GeneticsAdv), on) << stored.toStdString();
    }

    options.set(Opt::Header, u"Tel: 0123"_s, u"0"_s);
    options.set(Opt::BreedWatermark, u"rex.png"_s, u"Rex"_s);
    EXPECT_EQ(settings.GetSetting(u"Rabbits\\Options"_s, u"Header_0"_s), u"Tel: 0123");
    EXPECT_EQ(settings.GetSetting(u"Rabbits"_s, u"Rex Watermark"_s), u"rex.png") << "per breed in the stud's section";
    options.setEntry(OptionSection::Catalogue, u"Rabbits"_s, QString());
    EXPECT_EQ(options.all(OptionSection::Catalogue).size(), 1);
    EXPECT_TRUE(options.removeSection(OptionSection::Stud));
    EXPECT_TRUE(settings.GetAllSettings(u"Rabbits\\Options"_s).isEmpty()) << "a stud's section goes with all beneath";
}

TEST(WindowPlacement, FirstStartIsCentredAtTheFirstSize)
{
    test::TempHome home;
    const auto p = WindowGeometry::restore(Options(u"Tarvex"_s, QString()), QSize(640, 480), QSize(1280, 1024));
    EXPECT_EQ(p.rect, QRect(320, 272, 640, 480));
}

} // namespace
