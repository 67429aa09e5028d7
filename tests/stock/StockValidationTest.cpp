#include "support/StudFixture.h"

#include "stock/StockValidation.h"
#include "store/StudDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

class ValidateStockTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fx.open();
        fx.add({{u"Name"_s, u"Jack"_s}, {u"Sex"_s, u"Buck"_s}, {u"Archive"_s, u"No"_s}, {u"Type"_s, u"Rex"_s},
                {u"Colour"_s, u"Black"_s}, {u"Breeder"_s, u"Me"_s}, {u"status"_s, u"Breeding"_s}});
        row().addNew();
        number = row().field(u"Number"_s).toLongLong();
    }
    Table &row() { return *fx.session.Stud->Stock; }

    StockForm complete()
    {
        StockForm f;
        f.name = u"  Thumper "_s;
        f.breed = u"Rex"_s;
        f.colour = u"Black"_s;
        f.breeder = u"Me"_s;
        f.status = u"Breeding"_s;
        f.archive = u"No"_s;
        f.sex = u"Doe"_s;
        f.dob = u"01/02/2024"_s;
        f.dod = u"__/__/____"_s;
        f.sire = ParentPick{1, 1};
        f.dam = ParentPick{0, -1};
        f.weight = u"3.50"_s;
        f.health = u"Fine"_s;
        f.notes = QString();
        return f;
    }

    bool validate(StockForm &f, bool autoName = true)
    {
        return Validate_Stock(fx.session, fx.prompts, row(), f, autoName, number, &focus, &assigned);
    }

    void expectRefusal(StockForm f, const QString &text, const QString &title, const QString &control,
                       bool autoName = true)
    {
        fx.prompts.messages.clear();
        EXPECT_FALSE(validate(f, autoName));
        ASSERT_EQ(fx.prompts.messages.size(), 1) << text.toStdString();
        EXPECT_EQ(fx.prompts.messages[0].text, text);
        EXPECT_EQ(fx.prompts.messages[0].title, title);
        EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Exclamation);
        EXPECT_EQ(focus, control);
    }

    test::StudFixture fx;
    qint64 number = 0;
    QString focus, assigned;
};

TEST_F(ValidateStockTest, CompleteFormIsWrittenToTheRow)
{
    StockForm f = complete();
    ASSERT_TRUE(validate(f));
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
    EXPECT_EQ(*f.name, u"Thumper");
    EXPECT_EQ(*f.weight, u"3.5") << "the weight is written back as the number it became";
    Table &t = row();
    EXPECT_EQ(t.field(u"Name"_s).toString(), u"Thumper");
    EXPECT_EQ(t.field(u"Sire"_s).toLongLong(), 1);
    EXPECT_TRUE(t.field(u"Dam"_s).isNull());
    EXPECT_EQ(t.field(u"DOB"_s).toDouble(), 45323.0);
    EXPECT_TRUE(t.field(u"DOD"_s).isNull());
    EXPECT_EQ(t.field(u"Weight"_s).toDouble(), 3.5);
    EXPECT_TRUE(t.field(u"Notes"_s).isNull());
}

TEST_F(ValidateStockTest, NamelessNewAnimalGetsItsNumberAsName)
{
    StockForm f = complete();
    f.name = u"   "_s;
    ASSERT_TRUE(validate(f));
    const QString expected = u"A"_s + QString::number(number);
    EXPECT_EQ(*f.name, expected);
    EXPECT_EQ(assigned, expected);
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"Automatic Name Assigned : "_s + expected}));
    EXPECT_EQ(fx.prompts.messages[0].title, QString());

    f.name = QString();
    // An update never gets an automatic name.
    expectRefusal(f, u"A Name must be entered"_s, u"Invalid Name"_s, u"TxtName"_s, false);
}

TEST_F(ValidateStockTest, EachRefusalNamesItsFieldAndKeepsTheForm)
{
    StockForm f = complete();
    f.archive = u"yes"_s;
    expectRefusal(f, u"Must be Yes or No"_s, u"Invalid Archive"_s, u"RArchive"_s);
    f = complete();
    f.sex = u"Male"_s;
    expectRefusal(f, u"Must be Buck, Doe or Nothing"_s, u"Invalid Sex"_s, u"RSex"_s);
    f = complete();
    f.sire = ParentPick{3, number};
    expectRefusal(f, u"Animal cannot be its own Sire"_s, u"Invalid Sire"_s, u"RSire"_s);
    f = complete();
    f.dam = ParentPick{2, number};
    expectRefusal(f, u"Animal cannot be its own Dam"_s, u"Invalid Dam"_s, u"RDam"_s);
    for (const QString &bad : {u"-1"_s, u"heavy"_s}) {
        f = complete();
        f.weight = bad;
        expectRefusal(f, u"Must be a valid weight"_s, u"Invalid Archive"_s, u"RWeight"_s);
    }
    EXPECT_EQ(row().editMode(), Table::EditMode::Add) << "nothing is saved";
    EXPECT_EQ(fx.session.Stud->handle().scalar(u"SELECT count(*) FROM Stock"_s).toInt(), 1);
}

TEST_F(ValidateStockTest, BadDateShowsTheDateBoxAndReturnsToTheField)
{
    StockForm f = complete();
    f.dob = u"31/02/2024"_s;
    EXPECT_FALSE(validate(f));
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"Date: 31/02/2024 is not valid"_s}));
    EXPECT_EQ(focus, u"RDOB");
    f = complete();
    f.dod = u"01/01/2020"_s;
    EXPECT_TRUE(validate(f)) << "a death before the birth is accepted";
}

TEST_F(ValidateStockTest, NewVocabularyIsAskedForOnceCutToLengthAndComparedExactly)
{
    StockForm f = complete();
    f.breed = u"rex"_s;
    f.breeder = QString(40, u'b');
    fx.prompts.answerYes(); // breed "rex"
    fx.prompts.answerNo();  // breeder
    EXPECT_FALSE(validate(f));
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(fx.prompts.messages[0].title, u"rex") << "a breed differing only in case is new";
    EXPECT_EQ(fx.prompts.messages[0].text, u"This is the first time this Breed has been entered\n\nCreate it?");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Question);
    EXPECT_EQ(fx.prompts.messages[1].title, QString(35, u'b'));
    EXPECT_EQ(fx.prompts.messages[1].text, u"This is the first time this Breeder has been entered\n\nCreate it?");
    EXPECT_EQ(focus, u"RBreeder");
    EXPECT_TRUE(fx.session.Lists.breeds.contains(u"rex"_s)) << "a created entry stays though a later step refused";

    fx.prompts.messages.clear();
    f.colour = QString(40, u'c');
    f.status = u"Sold"_s;
    fx.prompts.answerYes(); // breeder
    fx.prompts.answerYes(); // colour
    fx.prompts.answerYes(); // status
    ASSERT_TRUE(validate(f));
    EXPECT_EQ(fx.prompts.messages.size(), 3) << "the breed is known now";
    EXPECT_EQ(row().field(u"Colour"_s).toString(), QString(30, u'c'));
}

} // namespace
