#include "support/StudFixture.h"

#include "core/Options.h"
#include "core/StudLoader.h"
#include "stock/Litter.h"
#include "stock/StockRecords.h"
#include "store/StockRow.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

class LitterTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        buck = fx.add({{u"Name"_s, u"Jack"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}});
        doe = fx.add({{u"Name"_s, u"Jill"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, u"No"_s}});
        fx.session.Lists.colours = {u"Black"_s};
        fx.session.Lists.breeds = {u"Rex"_s};
    }

    /// A litter of Rex Black young of Jack and Jill, born on a day.
    LitterForm litter(const QString &young, bool automatic)
    {
        LitterForm f;
        f.young = young;
        f.dob = u"02/03/2024"_s;
        f.sire = ParentPick{int(sireList(fx.session)->indexOf(buck)), buck};
        f.dam = ParentPick{int(damList(fx.session)->indexOf(doe)), doe};
        f.breed = u"Rex"_s;
        f.colour = u"Black"_s;
        f.archive = u"No"_s;
        f.automatic = automatic;
        return f;
    }
    int count(const QString &table) { return db->scalar(u"SELECT count(*) FROM "_s + table).toInt(); }
    StockRow animal(qint64 number) { return *readAnimal(*db, number); }

    test::StudFixture fx;
    Database *db = nullptr;
    StockRecords records{fx.session, fx.prompts};
    qint64 buck = 0, doe = 0;
    QString focus;
};

TEST_F(LitterTest, AutomaticLitterNamesEachYoungAndTellsTheFirstAndLastWithTheLetterA)
{
    Options(fx.session).set(Opt::AutoPrefix, u"K"_s);
    fx.session.AutoPrefix = u"K"_s;
    LitterForm f = litter(u"3"_s, true);
    ASSERT_EQ(records.CmdNLOK(f, &focus), StockRecords::LitterStart::Created);
    ASSERT_EQ(count(u"Stock"_s), 5);
    const qint64 first = doe + 1;
    for (qint64 n = first; n < first + 3; ++n) {
        const StockRow young = animal(n);
        EXPECT_EQ(young.name, u"K"_s + QString::number(n));
        EXPECT_EQ(young.sire, buck);
        EXPECT_EQ(young.dam, doe);
        EXPECT_EQ(young.dob, QDate(2024, 3, 2));
        EXPECT_EQ(young.type, u"Rex");
        EXPECT_EQ(young.colour, u"Black");
        EXPECT_EQ(young.archive, u"No");
        EXPECT_FALSE(young.sexRecorded) << "young have no sex when the litter is created";
    }
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].text, u"Names A%1 To A%2 Automatically Created"_s.arg(first).arg(first + 2));
    EXPECT_EQ(fx.prompts.messages[0].title, u"New Litter");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Information);
    EXPECT_EQ(sireList(fx.session)->size(), 2) << "a litter leaves the sire list as it was";
}

TEST_F(LitterTest, OneYoungNamesOneNumberTwiceAndABlankDayGivesNoBirthDate)
{
    LitterForm f = litter(u"1_"_s, true);
    f.dob = fx.session.Dates.BlankDate;
    f.sire = ParentPick{0, -1};
    ASSERT_EQ(records.CmdNLOK(f, &focus), StockRecords::LitterStart::Created);
    const qint64 n = doe + 1;
    EXPECT_EQ(fx.prompts.texts(), QStringList{u"Names A%1 To A%1 Automatically Created"_s.arg(n)});
    EXPECT_FALSE(animal(n).dob.has_value());
    EXPECT_FALSE(animal(n).sire.has_value());
    EXPECT_EQ(animal(n).dam, doe);
}

TEST_F(LitterTest, RefusalsCreateNothing)
{
    LitterForm none = litter(u"__"_s, true);
    EXPECT_EQ(records.CmdNLOK(none, &focus), StockRecords::LitterStart::Refused);
    EXPECT_EQ(focus, u"NLNo");
    LitterForm badDay = litter(u"4"_s, true);
    badDay.dob = u"31/02/2024"_s;
    EXPECT_EQ(records.CmdNLOK(badDay, &focus), StockRecords::LitterStart::Refused);
    EXPECT_EQ(focus, u"NLDOB");
    // A colour used for the first time is asked about; No stops the litter before any row.
    LitterForm newColour = litter(u"4"_s, true);
    newColour.colour = u"Harlequin"_s;
    fx.prompts.answerNo();
    EXPECT_EQ(records.CmdNLOK(newColour, &focus), StockRecords::LitterStart::Refused);
    EXPECT_EQ(focus, u"NlColour");
    EXPECT_EQ(fx.prompts.texts(), (QStringList{u"Number in Litter Must be Entered"_s, u"Date: 31/02/2024 is not valid"_s,
                                               u"This is the first time this Colour has been entered\n\nCreate it?"_s}));
    EXPECT_EQ(fx.prompts.messages[2].title, u"Harlequin");
    EXPECT_EQ(count(u"Stock"_s), 2);
    EXPECT_FALSE(fx.session.Lists.colours.contains(u"Harlequin"_s));
}

TEST_F(LitterTest, AYoungTheStudRefusesTakesTheWholeLitterBackAndIsTold)
{
    // The third young cannot be written, as when the disk fills half way.
    db->execute(u"CREATE TRIGGER refuse BEFORE INSERT ON Stock WHEN NEW.Number = %1 "
                u"BEGIN SELECT RAISE(ABORT, 'database or disk is full'); END"_s.arg(doe + 3));
    LitterForm f = litter(u"5"_s, true);
    EXPECT_EQ(records.CmdNLOK(f, &focus), StockRecords::LitterStart::Refused);
    EXPECT_EQ(count(u"Stock"_s), 2) << "no young of the litter stays";
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_TRUE(fx.prompts.messages[0].text.startsWith(
        u"The litter could not be created; no animal of it was saved.\n\n"_s))
        << fx.prompts.messages[0].text.toStdString();
    EXPECT_EQ(fx.prompts.messages[0].title, u"New Litter");
    db->execute(u"DROP TRIGGER refuse"_s);
    LitterForm again = litter(u"2"_s, true);
    EXPECT_EQ(records.CmdNLOK(again, &focus), StockRecords::LitterStart::Created) << "the next try works";
    EXPECT_EQ(count(u"Stock"_s), 4);
}

TEST_F(LitterTest, YoungEnteredOneByOneShareTheLitterAndAskNoPedigreeQuestion)
{
    LitterForm f = litter(u"3"_s, false);
    f.sire = ParentPick{0, -1}; // no sire chosen: still no pedigree question
    f.status = u"Kit"_s;
    fx.session.Lists.statuses << u"Kit"_s;
    ASSERT_EQ(records.CmdNLOK(f, &focus), StockRecords::LitterStart::OneByOne);
    EXPECT_EQ(count(u"Stock"_s), 2) << "nothing is created before the first young is saved";
    EXPECT_EQ(records.litterRemaining(), 3);

    StockForm first = records.Next_Litter_Offspring();
    EXPECT_EQ(*first.dob, u"02/03/2024");
    EXPECT_EQ(first.dam->number, doe);
    EXPECT_EQ(first.sire->position, 0);
    EXPECT_EQ(*first.colour, u"Black");
    EXPECT_EQ(*first.status, u"Kit");
    first.name = u"Pip"_s;
    first.sex = u"Buck"_s;
    EXPECT_EQ(records.CmdNewUpdate(first, &focus), StockRecords::Save::NextOffspring);

    StockForm second = records.Next_Litter_Offspring();
    second.name = u"Pop"_s;
    second.sex = u"Doe"_s;
    EXPECT_EQ(records.CmdNewUpdate(second, &focus), StockRecords::Save::NextOffspring);
    // Giving up the third keeps the two saved and ends the litter.
    records.Next_Litter_Offspring();
    records.CmdNewCancel();
    EXPECT_EQ(records.litterRemaining(), 0);
    EXPECT_EQ(count(u"Stock"_s), 4);
    EXPECT_TRUE(fx.prompts.messages.isEmpty()) << fx.prompts.texts().join(u'|').toStdString();
    const qint64 pop = db->scalar(u"SELECT Number FROM Stock WHERE Name = 'Pop'"_s).toLongLong();
    EXPECT_EQ(animal(pop).dam, doe);
    EXPECT_EQ(animal(pop).dob, QDate(2024, 3, 2));
    EXPECT_EQ(animal(pop).status, u"Kit");
    EXPECT_TRUE(damList(fx.session)->indexOf(pop) > 0) << "a young given a sex joins its parent list";
}

TEST_F(LitterTest, TheLastYoungEndsTheLitter)
{
    LitterForm f = litter(u"1"_s, false);
    ASSERT_EQ(records.CmdNLOK(f, &focus), StockRecords::LitterStart::OneByOne);
    StockForm only = records.Next_Litter_Offspring();
    only.name = QString(); // named automatically, as any new animal
    EXPECT_EQ(records.CmdNewUpdate(only, &focus), StockRecords::Save::LitterEnded);
    EXPECT_EQ(records.litterRemaining(), 0);
    EXPECT_EQ(fx.prompts.texts(), QStringList{u"Automatic Name Assigned : A%1"_s.arg(doe + 1)});
    // The next new animal is an ordinary one again.
    StockForm next = records.CmdNew();
    next.name = u"Solo"_s;
    fx.prompts.answerNo();
    EXPECT_EQ(records.CmdNewUpdate(next, &focus), StockRecords::Save::Saved);
}

TEST_F(LitterTest, GenesFollowTheColourOfEachYoung)
{
    fx.useShippedGenetics();
    LitterForm f = litter(u"2"_s, true);
    ASSERT_EQ(records.CmdNLOK(f, &focus), StockRecords::LitterStart::Created);
    for (qint64 n = doe + 1; n <= doe + 2; ++n) {
        EXPECT_GT(db->scalar(u"SELECT count(*) FROM Genes WHERE StockNo = ?"_s, {n}).toInt(), 0) << n;
        EXPECT_FALSE(animal(n).genotype.isEmpty()) << n;
    }
}

} // namespace
