#include "support/RecordingProgress.h"
#include "support/StudFixture.h"

#include "core/StudLoader.h"
#include "genetics/ColourFinding.h"
#include "genetics/Genotypes.h"
#include "store/StudDatabase.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

class ColourFindingTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        for (const QString &name : {u"Rabbits Genetics.Gen"_s, u"Rabbits Colours.Gen"_s})
            QFile::copy(test::programFolder() + name, fx.session.DataFolder + name);
        db = &fx.open();
        ASSERT_TRUE(Ensure_Genetics_Loaded(fx.session, fx.prompts));
    }
    qint64 animal(const QString &name, const QString &sex, const QString &colour, const QString &breed,
                  const QString &archive = u"No"_s)
    {
        const qint64 n = test::addAnimal(*db, {{u"Name"_s, name}, {u"Sex"_s, sex}, {u"Archive"_s, archive},
                                               {u"Type"_s, breed}});
        if (!colour.isEmpty())
            Update_Genes(fx.session, fx.prompts, colour, breed, n, sex);
        return n;
    }
    QStringList pairs(const QList<MatingPair> &hits)
    {
        QStringList out;
        for (const MatingPair &h : hits)
            out << h.Sire + u" x "_s + h.Dam;
        return out;
    }

    test::StudFixture fx;
    Database *db = nullptr;
};

TEST_F(ColourFindingTest, FindsThePairsThatCanGiveTheColourWithinABreed)
{
    animal(u"Black Buck"_s, u"Buck"_s, u"Black"_s, u"Rex"_s);
    animal(u"Chocolate Buck"_s, u"Buck"_s, u"Chocolate"_s, u"Rex"_s);
    animal(u"Old Black"_s, u"Buck"_s, u"Black"_s, u"Rex"_s, u"Yes"_s);
    animal(u"Black Doe"_s, u"Doe"_s, u"Black"_s, u"Rex"_s);
    animal(u"Lop Doe"_s, u"Doe"_s, u"Black"_s, u"Lop"_s);
    animal(u"No Genes"_s, u"Doe"_s, QString(), u"Rex"_s);
    Refill_All_Lists(fx.session);
    ColourFinder finder(fx.session, fx.prompts);
    QList<MatingPair> hits;
    // The archived buck is in no list; the finder would leave it out all the same.
    ColourFinder::Entries sires = sireList(fx.session)->entries();
    sires.append({u"Old Black"_s, 3});
    ASSERT_TRUE(finder.Find_Matings(sires, damList(fx.session)->entries(), u"Black"_s, QString(), &hits));
    EXPECT_EQ(pairs(hits), QStringList({u"Black Buck x Black Doe"_s, u"Black Buck x Lop Doe"_s,
                                        u"Chocolate Buck x Black Doe"_s, u"Chocolate Buck x Lop Doe"_s}));
    const float blackShare = hits[0].total();
    EXPECT_GT(blackShare, 0);
    EXPECT_LE(blackShare, 100.001);
    EXPECT_EQ(hits[0].rows, hits[1].rows) << "pairs of the same two genotypes share their rows";

    ASSERT_TRUE(finder.Find_Matings(sires, damList(fx.session)->entries(), u"Black"_s, u"Rex"_s, &hits));
    EXPECT_EQ(pairs(hits), QStringList({u"Black Buck x Black Doe"_s, u"Chocolate Buck x Black Doe"_s}))
        << "a cross between breeds is never found";

    EXPECT_FALSE(finder.Find_Matings(sires, damList(fx.session)->entries(), u"Steel"_s, QString(), &hits))
        << "no black carries the steel allele; the pairs worked out for Black are not taken for Steel";
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages[0].title, u"No Match");
    EXPECT_EQ(fx.prompts.messages[0].text, u"No Matings Found for Colour Selected");

    EXPECT_FALSE(finder.Find_Matings({{QString(), -1}}, damList(fx.session)->entries(), u"Black"_s, QString(), &hits));
    EXPECT_EQ(fx.prompts.messages.size(), 1) << "an empty list says nothing";
    EXPECT_EQ(Get_Stock_Details_For_Search(fx.session, 999).name, u"Not Found");
}

// The user may stop a search of a large stud: the pairs found so far are kept, and a search
// stopped before it found any says nothing.
TEST_F(ColourFindingTest, StoppedSearchKeepsThePairsFoundSoFar)
{
    animal(u"Black Buck"_s, u"Buck"_s, u"Black"_s, u"Rex"_s);
    animal(u"Chocolate Buck"_s, u"Buck"_s, u"Chocolate"_s, u"Rex"_s);
    animal(u"Black Doe"_s, u"Doe"_s, u"Black"_s, u"Rex"_s);
    animal(u"Lop Doe"_s, u"Doe"_s, u"Black"_s, u"Lop"_s);
    Refill_All_Lists(fx.session);
    const ColourFinder::Entries sires = sireList(fx.session)->entries(), dams = damList(fx.session)->entries();
    ColourFinder finder(fx.session, fx.prompts);
    QList<MatingPair> hits;

    test::RecordingProgress progress;
    progress.cancelAfter = 3; // both pairs of the first buck, and the buck done
    ASSERT_TRUE(finder.Find_Matings(sires, dams, u"Black"_s, QString(), &hits, progress));
    EXPECT_EQ(pairs(hits), QStringList({u"Black Buck x Black Doe"_s, u"Black Buck x Lop Doe"_s}));
    EXPECT_EQ(progress.total, 2) << "one step a buck";
    ASSERT_GE(progress.steps.size(), 3);
    EXPECT_EQ(progress.steps[0].texts, QStringList({u"Black Buck"_s, u"Black Doe"_s}));
    EXPECT_EQ(progress.steps[2].done, 1);

    test::RecordingProgress early;
    early.cancelAfter = 1;
    EXPECT_FALSE(finder.Find_Matings(sires, dams, u"Black"_s, QString(), &hits, early));
    EXPECT_TRUE(hits.isEmpty());
    EXPECT_TRUE(fx.prompts.messages.isEmpty()) << "a stopped search is not a search without matches";
}

} // namespace
