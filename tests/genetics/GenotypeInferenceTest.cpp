#include "support/RecordingProgress.h"
#include "support/StudFixture.h"

#include "genetics/GenotypeInference.h"
#include "genetics/Genotypes.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

// Three genes: Agouti (A, a), Brown (B, b) and Colour (C, ch, c), with Ids 1, 2 and 3.
class GenotypeInferenceTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        fx.writeGenetics("[Agouti]\nID=1\nGENE1=A,Agouti\nGENE2=a,Self\n[Brown]\nID=2\n"
                         "GENE1=B,Black\nGENE2=b,Brown\n[Colour]\nID=3\nGENE1=C,Full\n"
                         "GENE2=ch,Himalayan\nGENE3=c,Albino\n",
                         "[COLOUR=Black]\n1=2,2\n2=1\n[COLOUR=REW]\n3=3,3\n[PATTERN=]\n[COATTYPE=]\n");
        fx.session.GeneticsOn = true;
        fx.session.GeneticsFile = u"Rabbits"_s;
        ASSERT_TRUE(Ensure_Genetics_Loaded(fx.session, fx.prompts));
    }

    /// An animal with its parents and its pairs for Agouti, Brown and Colour.
    qint64 animal(const QString &name, const QString &sex, Genotype genes = {}, qint64 sire = 0,
                  qint64 dam = 0)
    {
        QVariantMap fields{{u"Name"_s, name}, {u"Sex"_s, sex}};
        if (sire)
            fields[u"Sire"_s] = sire;
        if (dam)
            fields[u"Dam"_s] = dam;
        const qint64 n = test::addAnimal(*db, fields);
        for (int i = 0; i < 3; ++i) {
            if (genes[i].allele1 || genes[i].allele2)
                db->execute(u"INSERT INTO Genes (StockNo, Id, allele1, allele2) VALUES (?, ?, ?, ?)"_s,
                            {n, i + 1, genes[i].allele1, genes[i].allele2});
        }
        return n;
    }
    static Genotype colour(quint8 a, quint8 b)
    {
        Genotype g{};
        g[2] = {a, b};
        return g;
    }
    QString genotype(qint64 n)
    {
        return db->scalar(u"SELECT GenoType FROM Stock WHERE Number = ?"_s, {n}).toString();
    }
    void examineParents(qint64 n, bool silent)
    {
        fx.session.CurrentStockNo = n;
        Examine_Parents(fx.session, fx.prompts, silent);
    }
    void examineOffspring(qint64 n, const QString &sex, bool silent)
    {
        fx.session.CurrentStockNo = n;
        Examine_Offspring(fx.session, fx.prompts, sex, silent);
    }

    test::StudFixture fx;
    Database *db = nullptr;
};

TEST_F(GenotypeInferenceTest, HomozygousParentsPassTheirAllelesOn)
{
    const qint64 sire = animal(u"Sire"_s, u"Buck"_s, colour(2, 2));
    const qint64 dam = animal(u"Dam"_s, u"Doe"_s, colour(3, 3));
    const qint64 bothDam = animal(u"Both"_s, u"Doe"_s, colour(2, 2));
    const qint64 mixedDam = animal(u"Mixed"_s, u"Doe"_s, colour(1, 3));

    const qint64 fromSire = animal(u"K1"_s, u"Buck"_s, {}, sire, mixedDam);
    examineParents(fromSire, true);
    EXPECT_EQ(genotype(fromSire), u"_ _ _ _ ch _") << "a parent that is not homozygous adds nothing";

    const qint64 fromBoth = animal(u"K2"_s, u"Buck"_s, {}, sire, dam);
    examineParents(fromBoth, true);
    EXPECT_EQ(genotype(fromBoth), u"_ _ _ _ chc");

    // Both parents homozygous alike: only the first allele is looked at.
    const qint64 twoAlike = animal(u"K3"_s, u"Buck"_s, colour(2, 3), sire, bothDam);
    examineParents(twoAlike, true);
    EXPECT_EQ(genotype(twoAlike), u"_ _ _ _ chch");
    const qint64 empty = animal(u"K4"_s, u"Buck"_s, {}, sire, bothDam);
    examineParents(empty, true);
    EXPECT_EQ(genotype(empty), u"_ _ _ _ chch");
    EXPECT_TRUE(fx.prompts.messages.isEmpty()) << "silent and free of conflicts: nothing is asked";
    EXPECT_EQ(fx.session.CurrentAlleles[2], (AllelePair{2, 2}));
}

TEST_F(GenotypeInferenceTest, ConflictsAreNamedAndTheirGenesKept)
{
    Genotype sireGenes = colour(2, 2);
    sireGenes[0] = {1, 1};
    sireGenes[1] = {2, 2};
    const qint64 sire = animal(u"Sire"_s, u"Buck"_s, sireGenes);
    const qint64 dam = animal(u"Dam"_s, u"Doe"_s, colour(2, 2));
    Genotype kitGenes = colour(1, 3);
    kitGenes[0] = {2, 2};
    const qint64 kit = animal(u"Kit"_s, u"Buck"_s, kitGenes, sire, dam);
    ASSERT_TRUE(Read_Genes(fx.session, fx.prompts, kit));
    const Genotype before = fx.session.CurrentAlleles;

    fx.prompts.answerNo();
    examineParents(kit, true);
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    const auto &asked = fx.prompts.messages.at(0);
    EXPECT_EQ(asked.text,
              u"Old Genotype   : aa _ _ Cc\nNew Genotype : aa b _ Cc\n\n"
              u"Ignored Conflicts Found on Agouti and Colour\n\nDo you want to update to this Genotype?");
    EXPECT_EQ(asked.title, u"Parents Examined");
    EXPECT_EQ(asked.icon, Prompts::Icon::Question);
    EXPECT_EQ(asked.buttons, Prompts::Buttons::YesNo);
    EXPECT_EQ(genotype(kit), QString()) << "No leaves the stored genotype alone";
    EXPECT_EQ(fx.session.CurrentAlleles, before);

    fx.prompts.answerYes();
    examineParents(kit, false);
    EXPECT_EQ(genotype(kit), u"aa b _ Cc") << "the other genes are updated, the conflicting ones kept";

    examineParents(kit, false);
    EXPECT_EQ(fx.prompts.messages.last().text,
              u"No Changes Detected\n\nIgnored Conflicts Found on Agouti and Colour\n");
    EXPECT_EQ(fx.prompts.messages.last().title, u"Parents Genetics Examined");
    EXPECT_EQ(fx.prompts.messages.last().icon, Prompts::Icon::Information);
    const qsizetype shown = fx.prompts.messages.size();
    examineParents(kit, true);
    EXPECT_EQ(fx.prompts.messages.size(), shown) << "silent and unchanged shows nothing, conflicts or not";
}

TEST_F(GenotypeInferenceTest, OffspringTellWhatTheParentCarries)
{
    const qint64 sire = animal(u"Sire"_s, u"Buck"_s, colour(1, 0));
    const qint64 dam = animal(u"Dam"_s, u"Doe"_s);
    animal(u"K1"_s, u"Doe"_s, colour(2, 2), sire, dam);
    examineOffspring(sire, u"Buck"_s, true);
    EXPECT_EQ(genotype(sire), u"_ _ _ _ Cch") << "a homozygous child gives its allele to each parent";

    const qint64 sire2 = animal(u"Sire2"_s, u"Buck"_s, colour(1, 3));
    animal(u"K2"_s, u"Doe"_s, colour(2, 2), sire2, dam);
    examineOffspring(sire2, u"Buck"_s, true);
    ASSERT_EQ(fx.prompts.messages.size(), 0) << "texts alike: the conflict alone asks nothing";

    // The child's C can only have come from the sire, its dam being chch.
    const qint64 sire3 = animal(u"Sire3"_s, u"Buck"_s);
    const qint64 dam3 = animal(u"Dam3"_s, u"Doe"_s, colour(2, 2));
    animal(u"K3"_s, u"Doe"_s, colour(1, 2), sire3, dam3);
    examineOffspring(sire3, u"Buck"_s, true);
    EXPECT_EQ(genotype(sire3), u"_ _ _ _ C _");

    // The same from the dam's side, and nothing at all for an animal of no known sex.
    const qint64 sire4 = animal(u"Sire4"_s, u"Buck"_s, colour(3, 3));
    const qint64 dam4 = animal(u"Dam4"_s, u"Doe"_s);
    animal(u"K4"_s, u"Doe"_s, colour(2, 3), sire4, dam4);
    examineOffspring(dam4, u"Unknown"_s, true);
    EXPECT_EQ(genotype(dam4), QString());
    examineOffspring(dam4, u"Doe"_s, true);
    EXPECT_EQ(genotype(dam4), u"_ _ _ _ ch _");
}

TEST_F(GenotypeInferenceTest, ChildWithoutGenesIsJudgedOnTheChildBefore)
{
    const qint64 sire = animal(u"Sire"_s, u"Buck"_s);
    const qint64 dam1 = animal(u"Dam1"_s, u"Doe"_s, colour(3, 3));
    const qint64 dam2 = animal(u"Dam2"_s, u"Doe"_s, colour(2, 2));
    animal(u"K1"_s, u"Doe"_s, colour(1, 3), sire, dam1);
    animal(u"K2"_s, u"Doe"_s, {}, sire, dam2); // no genes: K1's pairs stand in against Dam2
    fx.prompts.answerYes();
    examineOffspring(sire, u"Buck"_s, false);
    ASSERT_EQ(fx.prompts.messages.size(), 1);
    EXPECT_EQ(fx.prompts.messages.at(0).text, u"Old Genotype   : _ _ _ _ _ _\nNew Genotype : _ _ _ _ Cc\n\n"
                                              u"Do you want to update to this Genotype?");
    EXPECT_EQ(fx.prompts.messages.at(0).title, u"Offspring Genetics Examined");
    EXPECT_EQ(genotype(sire), u"_ _ _ _ Cc");
}

TEST_F(GenotypeInferenceTest, SavingAnAnimalExaminesItsRelatives)
{
    const qint64 sire = animal(u"Sire"_s, u"Buck"_s, colour(1, 1));
    const qint64 dam = animal(u"Dam"_s, u"Doe"_s, colour(3, 3));
    const qint64 kit = animal(u"Kit"_s, u"Buck"_s, {}, sire, dam);
    Update_Genes(fx.session, fx.prompts, u"Black"_s, u"Rex"_s, kit, u"Buck"_s);
    EXPECT_EQ(genotype(kit), u"aa B _ Cc");
    EXPECT_TRUE(fx.prompts.messages.isEmpty());
    // A child saved later teaches its parent.
    const qint64 dam2 = animal(u"Dam2"_s, u"Doe"_s);
    const qint64 kit2 = animal(u"Kit2"_s, u"Doe"_s, {}, kit, dam2);
    Update_Genes(fx.session, fx.prompts, u"REW"_s, QString(), kit2, u"Doe"_s);
    EXPECT_EQ(genotype(kit2), u"a _ _ _ cc") << "its sire is aa";
    Update_Genes(fx.session, fx.prompts, u"Black"_s, QString(), dam2, u"Doe"_s);
    EXPECT_EQ(genotype(dam2), u"aa B _ c _") << "the colour first, then the child's c";
}

TEST_F(GenotypeInferenceTest, WholeStudCheckGivesEveryAnimalItsGenotype)
{
    const qint64 sire =
        test::addAnimal(*db, {{u"Name"_s, u"Zed"_s}, {u"Sex"_s, u"Buck"_s}, {u"Colour"_s, u"REW"_s}});
    const qint64 dam =
        test::addAnimal(*db, {{u"Name"_s, u"Amber"_s}, {u"Sex"_s, u"Doe"_s}, {u"Colour"_s, u"Black"_s}});
    test::addAnimal(*db, {{u"Name"_s, u"Kit"_s}, {u"Sex"_s, u"Doe"_s}, {u"Sire"_s, sire}, {u"Dam"_s, dam}});
    test::addAnimal(*db, {{u"Name"_s, u"Lone"_s}, {u"Colour"_s, u"Unheard Of"_s}});
    QStringList asked;
    fx.shell.onColourMatch = [&](const QString &c, bool *) {
        asked << c;
        return QString();
    };
    test::RecordingProgress progress;
    EXPECT_TRUE(Check_All_Genotypes(fx.session, fx.prompts, progress));

    EXPECT_EQ(progress.total, 4);
    ASSERT_EQ(progress.steps.size(), 4);
    EXPECT_EQ(progress.steps.at(0).texts, QStringList({u"Amber"_s, QString(), QString()})) << "in name order";
    EXPECT_EQ(progress.steps.at(1).texts, QStringList({u"Kit"_s, u"Zed"_s, u"Amber"_s}));
    EXPECT_EQ(progress.steps.at(1).done, 2);
    EXPECT_EQ(progress.steps.at(2).texts.at(1), u"Zed") << "no sire: the name shown before stays";
    EXPECT_EQ(asked, QStringList({u"Unheard Of"_s}));
    EXPECT_EQ(genotype(dam), u"aa B _ _ _");
    EXPECT_EQ(genotype(sire), u"_ _ _ _ cc");
    // Kit was checked before its sire had genes: it has only what its dam passed on.
    const qint64 kit = db->scalar(u"SELECT Number FROM Stock WHERE Name = 'Kit'"_s).toLongLong();
    EXPECT_EQ(genotype(kit), u"a _ _ _ _ _");
}

// Stopped part way, the check keeps the animals it finished; run again, it does the rest.
TEST_F(GenotypeInferenceTest, WholeStudCheckStoppedPartWayKeepsWhatItFinished)
{
    for (const QString &name : {u"Amber"_s, u"Bramble"_s, u"Clover"_s})
        test::addAnimal(*db, {{u"Name"_s, name}, {u"Sex"_s, u"Doe"_s}, {u"Colour"_s, u"Black"_s}});
    test::RecordingProgress progress;
    progress.cancelAfter = 2;
    EXPECT_FALSE(Check_All_Genotypes(fx.session, fx.prompts, progress));
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Stock WHERE GenoType <> ''"_s).toInt(), 2);
    EXPECT_FALSE(db->inTransaction());
    EXPECT_TRUE(Check_All_Genotypes(fx.session, fx.prompts));
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM Stock WHERE GenoType <> ''"_s).toInt(), 3);
}

} // namespace
