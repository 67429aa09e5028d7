#include "support/StudFixture.h"

#include "core/Options.h"
#include "pedigree/AncestorCreation.h"
#include "store/Recordset.h"
#include "store/StudDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

TEST(AncestorCreation, NewAncestorIsLinkedWithItsOwnParentsUnknown)
{
    test::StudFixture fx;
    Database &db = fx.open();
    const qint64 kit = test::addAnimal(db, {{u"Name"_s, u"Kit"_s}});
    const qint64 dam = addAncestor(fx.session, {u" Old Doe "_s, u"R9"_s, u"Rex"_s, u"Black"_s, {}, {}, u"Yes"_s}, false);
    ASSERT_TRUE(Link_Offspring(fx.session, fx.prompts, kit, dam, false));
    Recordset rs(db, u"SELECT * FROM Stock WHERE Number = ?"_s, {dam});
    ASSERT_FALSE(rs.eof());
    EXPECT_EQ(rs.field(u"Name"_s).toString(), u"Old Doe");
    EXPECT_EQ(rs.field(u"Sex"_s).toString(), u"Doe");
    EXPECT_EQ(rs.field(u"Sire"_s).toLongLong(), -1);
    EXPECT_EQ(rs.field(u"Dam"_s).toLongLong(), -1);
    EXPECT_TRUE(rs.field(u"Breeder"_s).isNull());
    EXPECT_EQ(db.scalar(u"SELECT Dam FROM Stock WHERE Number = ?"_s, {kit}).toLongLong(), dam);

    EXPECT_FALSE(Link_Offspring(fx.session, fx.prompts, 999, dam, true));
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].text, u"Offspring not Found");
    EXPECT_EQ(fx.prompts.messages[0].title, u"Error");
    EXPECT_EQ(fx.prompts.messages[0].icon, Prompts::Icon::Stop);
}

TEST(AncestorCreation, MissingChildLeavesNoAncestorBehind)
{
    test::StudFixture fx;
    Database &db = fx.open();
    EXPECT_EQ(createAncestor(fx.session, fx.prompts, {u"Orphan"_s, {}, {}, {}, {}, {}, u"Yes"_s}, 4242, true), -1);
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"Offspring not Found"_s}));
    EXPECT_EQ(db.scalar(u"SELECT count(*) FROM Stock"_s).toInt(), 0) << "neither half of the change is made";

    const qint64 kit = test::addAnimal(db, {{u"Name"_s, u"Kit"_s}});
    const qint64 sire = createAncestor(fx.session, fx.prompts, {u"Sire"_s, {}, {}, {}, {}, {}, u"Yes"_s}, kit, true);
    EXPECT_GT(sire, 0);
    EXPECT_EQ(db.scalar(u"SELECT Sire FROM Stock WHERE Number = ?"_s, {kit}).toLongLong(), sire);
}

TEST(AncestorCreation, TypedAncestorIsCheckedForDuplicatesUnlessAddedOrCancelled)
{
    test::StudFixture fx;
    fx.open();
    Options options(fx.session);
    options.setFlag(Opt::DedupeOption, true, u"0"_s);
    options.setFlag(Opt::DedupeOption, true, u"1"_s);
    fx.shell.calls.clear();
    fx.shell.duplicate = DuplicateAnswer::GivenUp;
    const auto name = DuplicateField::Name;
    const auto id = DuplicateField::Identifier;
    EXPECT_FALSE(ancestorGivenUp(fx.session, name, u"Jack"_s, u"R1"_s, u"CmdAdd"_s));
    EXPECT_FALSE(ancestorGivenUp(fx.session, id, u"Jack"_s, u"R1"_s, u"CmdCancel"_s));
    EXPECT_TRUE(fx.shell.calls.isEmpty());
    EXPECT_TRUE(ancestorGivenUp(fx.session, name, u"Jack"_s, u"R1"_s, u"TxtFRingNo"_s));
    fx.shell.duplicate = DuplicateAnswer::Kept;
    EXPECT_FALSE(ancestorGivenUp(fx.session, id, u"Jack"_s, u"R1"_s, u"CmbFType"_s));
    EXPECT_EQ(fx.shell.calls, QStringList({u"duplicate Jack "_s, u"duplicate  R1"_s}))
        << "each box passes on its own text alone";

    // Name and identification together, and no check on leaving the name once its tick is off.
    options.setFlag(Opt::DedupeOption, false, u"0"_s);
    options.setFlag(Opt::DedupeOption, false, u"1"_s);
    options.setFlag(Opt::DedupeOption, true, u"2"_s);
    fx.shell.duplicate = DuplicateAnswer::GivenUp;
    fx.shell.calls.clear();
    EXPECT_FALSE(ancestorGivenUp(fx.session, name, u"Jack"_s, u"R1"_s, u"TxtFRingNo"_s));
    EXPECT_TRUE(ancestorGivenUp(fx.session, id, u"Jack"_s, u"R1"_s, u"CmbFType"_s));
    EXPECT_EQ(fx.shell.calls, QStringList({u"duplicate Jack R1"_s}));
}

} // namespace

namespace {

// An empty place of the pedigree takes a parent of the animal in the place it descends
// from: odd places are sires, even ones dams; a place under another empty place takes none.
TEST(AncestorCreation, EmptyPlaceNamesTheChildWhoseParentItBecomes)
{
    PedigreeTable table;
    table.cell(1, 1) = {};
    table.cell(1, 1).Number = 7;
    table.cell(1, 1).Name = u"Jack"_s;
    table.cell(1, 1).Type = u"Rex"_s;
    table.cell(1, 2).Number = -1;

    const auto dam = ancestorTarget(table, 2, 42, u"Lop"_s);
    ASSERT_TRUE(dam);
    EXPECT_EQ(dam->child, 42) << "generation 1: the subject's own parent";
    EXPECT_EQ(dam->breed, u"Lop");
    EXPECT_FALSE(dam->sire);

    const auto sireOfSire = ancestorTarget(table, 3, 42, u"Lop"_s);
    ASSERT_TRUE(sireOfSire);
    EXPECT_EQ(sireOfSire->generation, 2);
    EXPECT_EQ(sireOfSire->position, 1);
    EXPECT_EQ(sireOfSire->child, 7);
    EXPECT_EQ(sireOfSire->breed, u"Rex") << "the breed of the animal it is the parent of";
    EXPECT_TRUE(sireOfSire->sire);

    EXPECT_FALSE(ancestorTarget(table, 5, 42, u"Lop"_s)) << "the dam's sire: the dam is not there";
    EXPECT_FALSE(ancestorTarget(table, 62, 42, u"Lop"_s));
}

} // namespace
