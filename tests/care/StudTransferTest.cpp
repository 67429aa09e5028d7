#include "support/FakeDevices.h"
#include "support/StudFixture.h"

#include "care/StudTransfer.h"
#include "store/Database.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;
using namespace tarvex::test;

namespace {

// Two registered studs on the old computer, Rabbits and Goats (whose file is spelt in small
// letters), and a catalogue name with no file; a folder stands in for the USB stick.
class StudTransferTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.registerStud(u"Rabbits"_s, u"Warren End"_s);
        fx.registerStud(u"Goats"_s, u"Hill Farm"_s, false);
        copyTemplate(fx.session.DataFolder, u"goats.mdb"_s);
        addAnimal(*Database::open(inData(u"Rabbits.mdb"_s)), {{u"Name"_s, u"Bramble"_s}});
        device = stick.path();
    }

    QString inData(const QString &file) const { return fx.session.DataFolder + file; }
    qint64 animals(const QString &path) const
    {
        return Database::open(path)->scalar(u"SELECT count(*) FROM Stock"_s).toLongLong();
    }

    StudFixture fx;
    FakeDevices devices;
    QTemporaryDir stick;
    QString device;
    const QStringList names{u"Rabbits"_s, u"Cavies"_s, u"Goats"_s};
};

TEST_F(StudTransferTest, ExportCopiesEveryStudItFindsAndTellsOfTheOnesItCannot)
{
    EXPECT_FALSE(StudTransfer::exportStuds(fx.session, fx.prompts, names, QString()));
    EXPECT_EQ(fx.prompts.messages.at(0).text, u"A Drive Must Be Selected");
    EXPECT_EQ(fx.prompts.messages.at(0).title, u"Tarvex Export");

    EXPECT_TRUE(StudTransfer::exportStuds(fx.session, fx.prompts, names, device));
    ASSERT_EQ(fx.prompts.messages.size(), 3);
    EXPECT_EQ(fx.prompts.messages.at(1).text, u"Cannot Find Database : Cavies");
    EXPECT_EQ(fx.prompts.messages.at(1).title, u"Database Not Exported");
    EXPECT_EQ(fx.prompts.messages.at(2).text,
              u"The following database(s) have been exported : \n\nRabbits.mdb\ngoats.mdb"_s);
    EXPECT_EQ(fx.prompts.messages.at(2).title, u"Database(s) Exported");
    EXPECT_EQ(animals(device + u"/Rabbits.mdb"_s), 1);
    EXPECT_TRUE(QFileInfo::exists(device + u"/goats.mdb"_s));

    // A device that cannot take the copy ends the export; what was copied stays. (Only where
    // the folder's permissions hold: the administrator writes anywhere.)
    QFile::remove(device + u"/goats.mdb"_s);
    QFile::setPermissions(device, QFile::ReadOwner | QFile::ExeOwner);
    if (!QFile(device + u"/probe"_s).open(QIODevice::WriteOnly)) {
        EXPECT_FALSE(StudTransfer::exportStuds(fx.session, fx.prompts, {u"Goats"_s}, device));
        EXPECT_TRUE(fx.prompts.messages.last().text.startsWith(u"Error : 3051("_s));
        EXPECT_EQ(fx.prompts.messages.last().title, u"Error Exporting Database");
    }
    QFile::setPermissions(device, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(StudTransferTest, ImportAsksWithNoAsTheDefaultAndBringsBackOnlyTheStudsOnTheDevice)
{
    ASSERT_TRUE(QFile::copy(inData(u"Rabbits.mdb"_s), device + u"/RABBITS.MDB"_s));
    addAnimal(*Database::open(inData(u"Rabbits.mdb"_s)), {{u"Name"_s, u"Made Here"_s}});
    const QString question = u"The following database(s) will be imported imported : \nRABBITS.MDB\n\n"
                             u"Any Data you have on this computer in these databases will be overwritten\n\n"
                             u"Continue ?"_s;

    fx.prompts.answerNo();
    EXPECT_FALSE(StudTransfer::importStuds(fx.session, fx.prompts, devices, names, device));
    EXPECT_EQ(fx.prompts.messages.at(0).text, question);
    EXPECT_EQ(fx.prompts.messages.at(0).title, u"Database Import");
    EXPECT_EQ(fx.prompts.messages.at(0).buttons, Prompts::Buttons::YesNoDefaultNo);
    EXPECT_EQ(animals(inData(u"Rabbits.mdb"_s)), 2);

    fx.prompts.answerYes();
    EXPECT_TRUE(StudTransfer::importStuds(fx.session, fx.prompts, devices, names, device));
    EXPECT_EQ(fx.prompts.messages.at(2).text, u"The following database(s) have been imported : \n\nRABBITS.MDB"_s);
    EXPECT_EQ(fx.prompts.messages.at(2).title, u"Database(s) Imported");
    EXPECT_EQ(animals(inData(u"Rabbits.mdb"_s)), 1) << "the stud as it came from the device";
    EXPECT_FALSE(QFileInfo::exists(inData(u"RABBITS.MDB"_s))) << "over the stud's own file";

    // A copy that fails is told with its number and reason; the stud here is as it was.
    devices.readOnly = true;
    fx.prompts.answerYes();
    EXPECT_FALSE(StudTransfer::importStuds(fx.session, fx.prompts, devices, names, device));
    EXPECT_EQ(fx.prompts.messages.last().text,
              u"Error : 3051(The copy '"_s + inData(u"Rabbits.mdb"_s) +
                  u"' cannot be written (Read-only file system).)"_s);
    EXPECT_EQ(fx.prompts.messages.last().title, u"Error Importing Database");
    EXPECT_EQ(animals(inData(u"Rabbits.mdb"_s)), 1);

    EXPECT_FALSE(StudTransfer::importStuds(fx.session, fx.prompts, devices, names, QString()));
    EXPECT_EQ(fx.prompts.messages.last().title, u"Tarvex Import");
}

} // namespace
