#include "support/RecordingProgress.h"
#include "support/StudFixture.h"

#include "stock/ArchiveByStatus.h"

#include "core/Options.h"
#include "core/StudLoader.h"
#include "stock/StockRecords.h"
#include "store/StockRow.h"
#include "store/StockLookup.h"
#include "store/StudDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

class StockRecordsTest : public ::testing::Test
{
protected:
    void SetUp() override { db = &fx.open(); }

    qint64 add(const QString &name, const QString &sex, const QString &archive = u"No"_s, QVariantMap more = {})
    {
        more.insert(u"Name"_s, name);
        more.insert(u"Sex"_s, sex);
        more.insert(u"Archive"_s, archive);
        return fx.add(more);
    }
    QString shown() { return records.Stock_Reposition().name; }
    /// The delivered genetics files in use, and Black among the stud's colours.
    void useShippedGenetics()
    {
        fx.useShippedGenetics();
        fx.session.Lists.colours << u"Black"_s;
    }
    int count(const QString &table) { return db->scalar(u"SELECT count(*) FROM "_s + table).toInt(); }

    test::StudFixture fx;
    Database *db = nullptr;
    StockRecords records{fx.session, fx.prompts};
    QString focus;
    struct FixedClock : Clock
    {
        QDateTime now() const override { return QDateTime(QDate(2024, 2, 11), QTime(9, 0)); }
    } clock;
};

TEST_F(StockRecordsTest, BrowsesInNameOrderAndStaysAtTheEnds)
{
    add(u"Bramble"_s, u"Doe"_s);
    add(u"apple"_s, u"Buck"_s);
    add(u"Clover"_s, u"Doe"_s, u"Yes"_s);
    ASSERT_TRUE(records.CmdBrowse());
    EXPECT_EQ(shown(), u"apple");
    EXPECT_FALSE(records.movePrevious());
    EXPECT_EQ(shown(), u"apple");
    EXPECT_TRUE(records.moveNext());
    EXPECT_TRUE(records.moveNext());
    EXPECT_EQ(shown(), u"Clover");
    EXPECT_FALSE(records.moveNext());
    EXPECT_EQ(shown(), u"Clover") << "past the end the last animal stays";
}

TEST_F(StockRecordsTest, BrowseFilterSkipsAnimalsAndReportsWhenNoneAreLeft)
{
    add(u"A"_s, u"Doe"_s);
    add(u"B"_s, u"Buck"_s, u"Yes"_s);
    add(u"C"_s, u"Doe"_s, u"Yes"_s);
    fx.add({{u"Name"_s, u"D"_s}, {u"Sex"_s, u"Doe"_s}, {u"Archive"_s, QVariant()}});
    BrowseFilter &filter = records.filter();
    filter.toggle(0); // archived only
    ASSERT_TRUE(records.CmdBrowse());
    EXPECT_EQ(shown(), u"B");
    EXPECT_TRUE(records.moveNext());
    EXPECT_EQ(shown(), u"C");
    EXPECT_FALSE(records.moveNext());
    EXPECT_EQ(shown(), u"C") << "skipping past the end goes back to the last shown";

    filter.toggle(1); // unarchived only, which clears archived only
    EXPECT_FALSE(filter.ticked(0));
    ASSERT_TRUE(records.CmdBrowse());
    EXPECT_EQ(shown(), u"A");
    EXPECT_FALSE(records.moveNext()) << "a null archive passes only with no archive filter";

    filter.clear();
    filter.toggle(2); // male only
    filter.toggle(1);
    ASSERT_FALSE(records.CmdBrowse());
    EXPECT_EQ(fx.prompts.texts().last(), u"No Records to Browse");
    EXPECT_EQ(fx.prompts.messages.last().icon, Prompts::Icon::Information);
}

TEST_F(StockRecordsTest, ArchivedSireShowsOnlyWhileItsOffspringIsShown)
{
    const qint64 old = add(u"Old Buck"_s, u"Buck"_s, u"Yes"_s);
    add(u"Kit"_s, u"Doe"_s, u"No"_s, {{u"Sire"_s, old}, {u"Dam"_s, 0}});
    add(u"Other"_s, u"Doe"_s);
    const qsizetype sires = sireList(fx.session)->size();
    ASSERT_TRUE(records.CmdBrowse());
    ASSERT_EQ(shown(), u"Kit");
    const RecordView v = records.Stock_Reposition();
    EXPECT_EQ(v.sireIndex, sires) << "after the list's own entries";
    ASSERT_TRUE(records.parentAddition(true));
    EXPECT_EQ(records.parentAddition(true)->name, u"Old Buck");
    EXPECT_EQ(records.parentAddition(true)->number, old);
    EXPECT_EQ(sireList(fx.session)->size(), sires) << "the stud's own list is left as it is";
    EXPECT_TRUE(v.sireButton);
    EXPECT_EQ(v.damIndex, -1) << "a dam of 0 is no dam";
    records.moveNext();
    records.Stock_Reposition();
    EXPECT_FALSE(records.parentAddition(true));
}

TEST_F(StockRecordsTest, RecordViewFormatsDatesAgeAndWeight)
{
    fx.session.clock = &clock;
    add(u"Kit"_s, u"Doe"_s, u"No"_s,
        {{u"DOB"_s, 45323.0}, {u"Weight"_s, 3.5}, {u"Health"_s, u"   vaccinated"_s}, {u"status"_s, u"Young"_s}});
    ASSERT_TRUE(records.CmdBrowse());
    const RecordView v = records.Stock_Reposition();
    EXPECT_EQ(v.dob, u"01/02/2024");
    EXPECT_EQ(v.dod, u"__/__/____");
    EXPECT_EQ(v.weight, u"3.50");
    EXPECT_EQ(v.health, u"vaccinated");
    EXPECT_EQ(v.age, u"1.3 Wks");
    EXPECT_TRUE(v.matingsEnabled);
    EXPECT_FALSE(v.litterEnabled);
}

TEST_F(StockRecordsTest, NewAnimalsGetTheirOwnAutomaticNamesAndJoinTheParentList)
{
    StockForm f = records.CmdNew();
    const qint64 first = records.currentNumber();
    EXPECT_EQ(*f.archive, u"No");
    f.name = QString();
    f.sex = u"Buck"_s;
    fx.prompts.answerNo(); // no pedigree now
    ASSERT_EQ(records.CmdNewUpdate(f, &focus), StockRecords::Save::Saved);
    EXPECT_EQ(fx.prompts.messages[0].text, u"Automatic Name Assigned : A"_s + QString::number(first));
    EXPECT_EQ(fx.prompts.messages[1].title, u"New Stock Entered");
    EXPECT_EQ(fx.prompts.messages[1].text, u"If you know the details of the parents/ancestors of\n"
                                           u"this animal you can create the pedigree information now.\n\n"
                                           u"Create Pedigree Now?");
    EXPECT_EQ(shown(), u"A"_s + QString::number(first));
    EXPECT_EQ(sireList(fx.session)->entries().last().name, u"A"_s + QString::number(first));

    StockForm g = records.CmdNew();
    g.name = QString();
    g.sire = ParentPick{-1, -1};
    g.dam = ParentPick{-1, -1};
    ASSERT_EQ(records.CmdNewUpdate(g, &focus), StockRecords::Save::Saved);
    EXPECT_EQ(*g.name, u"A"_s + QString::number(first + 1));
    EXPECT_EQ(count(u"Stock"_s), 2);
}

TEST_F(StockRecordsTest, CancelledNewAnimalLeavesNothingAndItsNumberRetired)
{
    records.CmdNew();
    const qint64 number = records.currentNumber();
    records.CmdNewCancel();
    EXPECT_EQ(count(u"Stock"_s), 0);
    records.CmdNew();
    EXPECT_EQ(records.currentNumber(), number + 1);
    records.CmdNewCancel();
}

TEST_F(StockRecordsTest, UpdateRefusesAnEmptyNameAndRefillsWhatChanged)
{
    add(u"Jack"_s, u"Buck"_s, u"No"_s, {{u"Colour"_s, u"Black"_s}, {u"Sire"_s, 0}});
    ASSERT_TRUE(records.CmdBrowse());
    records.CmdBrowseModify();
    EXPECT_TRUE(fx.session.Stud->Stock->field(u"Sire"_s).isNull()) << "an old 0 is cleaned on opening for update";
    StockForm f;
    f.name = u"  "_s;
    ASSERT_EQ(records.CmdModifyOK(f, &focus), StockRecords::Save::Refused);
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"A Name must be entered"_s}));
    f.name = u"Jack Junior"_s;
    f.colour = u"Blue"_s;
    f.archive = u"Yes"_s;
    fx.prompts.answerYes(); // new colour
    ASSERT_EQ(records.CmdModifyOK(f, &focus), StockRecords::Save::Saved);
    EXPECT_EQ(shown(), u"Jack Junior");
    EXPECT_EQ(fx.session.Lists.colours, QStringList({u"Blue"_s})) << "Black went with the only animal that had it";
    EXPECT_EQ(sireList(fx.session)->size(), 1) << "archived now, so out of the sire list";
}

TEST_F(StockRecordsTest, RemovalAsksOnceOrTwiceAndTakesEverythingOfTheAnimal)
{
    const qint64 buck = add(u"Buck A"_s, u"Buck"_s, u"No"_s, {{u"Type"_s, u"Only Breed"_s}});
    const qint64 doe = add(u"Doe B"_s, u"Doe"_s);
    const qint64 kit = add(u"Kit C"_s, u"Doe"_s, u"No"_s, {{u"Sire"_s, buck}, {u"Dam"_s, doe}});
    for (const qint64 n : {buck, doe, kit}) {
        db->execute(u"INSERT INTO BreedNote (Number, Date, Notes) VALUES (?, 45000, 'note')"_s, {n});
        db->execute(u"INSERT INTO Awards (Number, Date, Award) VALUES (?, 45000, 'BOB')"_s, {n});
        db->execute(u"INSERT INTO Genes (StockNo, Id, allele1, allele2) VALUES (?, 1, 1, 2)"_s, {n});
        db->execute(u"INSERT INTO Images (Number, imageno, Path) VALUES (?, 1, 'x.jpg')"_s, {n});
    }
    db->execute(u"INSERT INTO Matings (Sire, Dam, MatingDate) VALUES (?, ?, 45000)"_s, {buck, doe});

    ASSERT_TRUE(records.CmdBrowse());
    ASSERT_EQ(shown(), u"Buck A");
    fx.prompts.answer(Prompts::Answer::Yes);
    fx.prompts.answer(Prompts::Answer::Cancel);
    EXPECT_EQ(records.CmdBrowseRemove(), StockRecords::Removed::Kept);
    ASSERT_EQ(fx.prompts.messages.size(), 2) << "an animal with offspring is asked about twice";
    EXPECT_EQ(fx.prompts.messages[0].title, u"Delete");
    EXPECT_EQ(fx.prompts.messages[0].text, u"Remove this Stock Record?");
    EXPECT_EQ(fx.prompts.messages[0].buttons, Prompts::Buttons::YesNoCancel);
    EXPECT_EQ(fx.prompts.messages[1].text, u"This Stock Record forms part of a pedigree\nAre You Sure you want to Delete?");
    EXPECT_EQ(count(u"Stock"_s), 3);

    fx.prompts.answerYes();
    fx.prompts.answerYes();
    EXPECT_EQ(records.CmdBrowseRemove(), StockRecords::Removed::Removed);
    EXPECT_EQ(shown(), u"Doe B");
    EXPECT_EQ(count(u"Stock"_s), 2);
    EXPECT_EQ(count(u"BreedNote"_s), 2);
    EXPECT_EQ(count(u"Awards"_s), 2);
    EXPECT_EQ(count(u"Genes"_s), 2);
    EXPECT_EQ(count(u"Images"_s), 2);
    EXPECT_EQ(count(u"Matings"_s), 0) << "the mating goes for the dam too";
    EXPECT_FALSE(fx.session.Lists.breeds.contains(u"Only Breed"_s));
    EXPECT_EQ(db->scalar(u"SELECT Sire FROM Stock WHERE Number = ?"_s, {kit}).toLongLong(), buck)
        << "offspring keep pointing at the removed animal";
    EXPECT_EQ(Get_Stock_Name(*db, buck), u"Not Found");

    records.moveNext();
    ASSERT_EQ(shown(), u"Kit C");
    fx.prompts.answerYes();
    EXPECT_EQ(records.CmdBrowseRemove(), StockRecords::Removed::Removed);
    EXPECT_EQ(shown(), u"Doe B") << "removing the last by name moves to the one before";
    fx.prompts.answerYes();
    fx.prompts.answerYes();
    EXPECT_EQ(records.CmdBrowseRemove(), StockRecords::Removed::StockEmpty);
}

TEST_F(StockRecordsTest, ArchiveByStatusRewritesEveryAnimalWithAStatus)
{
    add(u"A"_s, u"Doe"_s, u"Yes"_s, {{u"status"_s, u"Sold"_s}});
    add(u"B"_s, u"Doe"_s, u"No"_s, {{u"status"_s, u"sold"_s}});
    add(u"C"_s, u"Buck"_s, u"Yes"_s, {{u"status"_s, u"Breeding"_s}});
    add(u"D"_s, u"Buck"_s, u"Yes"_s, {{u"status"_s, u"0 Retired"_s}});
    add(u"E"_s, u"Buck"_s, u"Yes"_s);
    const QList<StatusChoice> choices = Fill_Status_List(*db);
    EXPECT_EQ(choices, (QList<StatusChoice>{{u"Breeding"_s, true}, {u"Sold"_s, true}}))
        << "the first animal of a status decides; statuses below \"1\" are not listed";

    Update_Archive_Status(*db, {{u"Breeding"_s, false}, {u"Sold"_s, true}});
    const auto archive = [&](const QString &name) {
        return db->scalar(u"SELECT Archive FROM Stock WHERE Name = ?"_s, {name}).toString();
    };
    EXPECT_EQ(archive(u"A"_s), u"Yes");
    EXPECT_EQ(archive(u"B"_s), u"Yes") << "statuses differing in case share an entry";
    EXPECT_EQ(archive(u"C"_s), u"No") << "unticked is a rewrite, not an addition";
    EXPECT_EQ(archive(u"D"_s), u"No") << "an unlisted status finds no entry";
    EXPECT_EQ(archive(u"E"_s), u"Yes") << "no status, no change";
}

TEST_F(StockRecordsTest, FailedSaveRollsBackAndKeepsTheRecordOnScreen)
{
    db->execute(u"CREATE TRIGGER refuse BEFORE INSERT ON Stock BEGIN SELECT RAISE(ABORT, 'disk trouble'); END"_s);
    StockForm f = records.CmdNew();
    f.name = u"Kept on screen"_s;
    ASSERT_EQ(records.CmdNewUpdate(f, &focus), StockRecords::Save::Refused);
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].title, u"Error Saving Record");
    EXPECT_TRUE(fx.prompts.messages[0].text.startsWith(u"The record could not be saved.\n\n"_s));
    EXPECT_EQ(fx.session.Stud->Stock->editMode(), Table::EditMode::Add) << "what was typed can be saved again";
    EXPECT_EQ(fx.session.Stud->Stock->field(u"Name"_s).toString(), u"Kept on screen");
    db->execute(u"DROP TRIGGER refuse"_s);
    fx.prompts.answerNo();
    EXPECT_EQ(records.CmdNewUpdate(f, &focus), StockRecords::Save::Saved);
    EXPECT_EQ(count(u"Stock"_s), 1);
}

TEST_F(StockRecordsTest, SavedAnimalGetsItsGenotypeFromItsColour)
{
    useShippedGenetics();
    StockForm f = records.CmdNew();
    f.name = u"Jet"_s;
    f.colour = u"Black"_s;
    f.sire = f.dam = ParentPick{-1, -1};
    ASSERT_EQ(records.CmdNewUpdate(f, &focus), StockRecords::Save::Saved);
    EXPECT_EQ(records.Stock_Reposition().genotype, u"aa B _ C _ D _ E _ _ _ enen Du _ V _ R _");
    EXPECT_EQ(count(u"Genes"_s), 9) << "every gene but the wide band is known at least in part";
}

// The genes are worked out again once the ancestors are filled in; when that cannot be saved
// the animal stays saved and the user hears what lags behind and how to put it right.
TEST_F(StockRecordsTest, GenotypeAfterThePedigreeThatCannotBeSavedIsTold)
{
    useShippedGenetics();
    StockForm f = records.CmdNew();
    f.name = u"Jet"_s;
    f.colour = u"Black"_s;
    f.sire = f.dam = ParentPick{0, -1};
    std::unique_ptr<SQLite::Database> other;
    fx.shell.onCreatePedigree = [&](qint64) {
        // Another program takes the stud while the pedigree screen is open.
        db->setBusyTimeout(50);
        other = std::make_unique<SQLite::Database>(db->path().toStdString(), SQLite::OPEN_READWRITE);
        other->exec("BEGIN IMMEDIATE");
    };
    fx.prompts.answerYes(); // create the pedigree now
    ASSERT_EQ(records.CmdNewUpdate(f, &focus), StockRecords::Save::Saved);
    ASSERT_EQ(fx.prompts.messages.size(), 2);
    EXPECT_EQ(fx.prompts.messages[1].title, u"Error Saving Record");
    EXPECT_EQ(fx.prompts.messages[1].text,
              u"The animal is saved, but its genotype could not be worked out again from its ancestors.\n\n"
              u"The stud is in use by another program. Close it and try again.\n\nAuto Check puts it right later.");
    other.reset();
    EXPECT_EQ(count(u"Stock"_s), 1);
    EXPECT_EQ(count(u"Genes"_s), 9) << "the genes of the first save stand";
    EXPECT_FALSE(db->inTransaction());
}

} // namespace

namespace {

// Leaving the name or the identification of a new animal runs the duplicate check the
// stud's options ask for there, except on the way to Cancel; a warning shown on the way to
// Save swallowed the press of Save, which is made for the user.
TEST_F(StockRecordsTest, LeavingTheNameOfANewAnimalChecksForDuplicatesInOrder)
{
    using NameLeft = StockRecords::NameLeft;
    Options options(fx.session);
    options.setFlag(Opt::DedupeOption, true, u"0"_s);
    options.setFlag(Opt::DedupeOption, true, u"2"_s);
    fx.shell.calls.clear();
    EXPECT_EQ(records.nameLeft(u"Sooty"_s, QString(), u"TxtId1"_s), NameLeft::Stay);
    EXPECT_EQ(records.idLeft(u"Sooty"_s, u"R1"_s, u"RSex"_s), NameLeft::Stay);
    EXPECT_TRUE(fx.shell.calls.isEmpty()) << "no check outside a new animal";

    records.CmdNew();
    EXPECT_EQ(records.nameLeft(u"Sooty"_s, u"R1"_s, u"TxtId1"_s), NameLeft::Stay);
    EXPECT_EQ(records.nameLeft(u"Sooty"_s, u"R1"_s, u"CmdNewCancel"_s), NameLeft::Stay);
    EXPECT_EQ(records.idLeft(u"Sooty"_s, u"R1"_s, u"CmdNewCancel"_s), NameLeft::Stay);
    EXPECT_EQ(records.idLeft(u"Sooty"_s, u"R1"_s, u"RSex"_s), NameLeft::Stay);
    EXPECT_EQ(fx.shell.calls, QStringList({u"duplicate Sooty "_s, u"duplicate Sooty R1"_s}))
        << "the name alone, then name and identification together; cancelling raises no warning";

    fx.shell.duplicate = DuplicateAnswer::Kept;
    EXPECT_EQ(records.nameLeft(u"Sooty"_s, u"R1"_s, u"RSex"_s), NameLeft::Stay);
    EXPECT_EQ(records.nameLeft(u"Sooty"_s, u"R1"_s, u"CmdNewUpdate"_s), NameLeft::SaveNew);
    EXPECT_EQ(records.idLeft(u"Sooty"_s, u"R1"_s, u"CmdNewUpdate"_s), NameLeft::SaveNew);
    fx.shell.duplicate = DuplicateAnswer::GivenUp;
    EXPECT_EQ(records.nameLeft(u"Sooty"_s, u"R1"_s, u"CmdNewUpdate"_s), NameLeft::CancelNew);
    EXPECT_EQ(records.idLeft(u"Sooty"_s, u"R1"_s, u"RSex"_s), NameLeft::CancelNew);

    fx.shell.duplicate = DuplicateAnswer::NoneFound;
    EXPECT_EQ(records.nameLeft(u"Sooty"_s, u"R1"_s, u"CmdNewUpdate"_s), NameLeft::Stay)
        << "with nothing shown, the press of Save arrives by itself";

    // The identification alone once its own tick is on; no check where no tick asks for one.
    options.setFlag(Opt::DedupeOption, true, u"1"_s);
    options.setFlag(Opt::DedupeOption, false, u"0"_s);
    fx.shell.duplicate = DuplicateAnswer::GivenUp;
    fx.shell.calls.clear();
    EXPECT_EQ(records.nameLeft(u"Sooty"_s, u"R1"_s, u"TxtId1"_s), NameLeft::Stay);
    EXPECT_EQ(records.idLeft(u"Sooty"_s, u"R1"_s, u"RSex"_s), NameLeft::CancelNew);
    EXPECT_EQ(fx.shell.calls, QStringList({u"duplicate  R1"_s}));
    records.CmdNewCancel();
}

} // namespace

namespace {

// The archive of a large stud can be stopped part way; the stud is then left as it was.
TEST_F(StockRecordsTest, ArchiveStoppedByTheUserChangesNoAnimal)
{
    db->execute(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 25000) "
                u"INSERT INTO Stock (Name, Sex, status, Archive) SELECT 'A' || i, 'Doe', 'Sold', 'No' FROM n"_s);
    test::RecordingProgress progress;
    progress.cancelAfter = 2; // stopped after two blocks were rewritten
    try {
        Update_Archive_Status(*db, {{u"Sold"_s, true}}, progress);
        FAIL() << "the update ran to its end";
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number(), 3059);
        EXPECT_EQ(e.description(), u"Operation canceled by user.");
    }
    EXPECT_EQ(progress.total, 25000);
    EXPECT_EQ(progress.steps.size(), 2);
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Stock WHERE Archive = 'Yes'"_s).toInt(), 0);
    EXPECT_FALSE(db->inTransaction());
    Update_Archive_Status(*db, {{u"Sold"_s, true}});
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Stock WHERE Archive = 'Yes'"_s).toInt(), 25000);
}

} // namespace
