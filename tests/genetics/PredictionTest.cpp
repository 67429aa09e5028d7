#include "support/ScriptedPrompts.h"

#include "ReferencePrediction.h"
#include "genetics/Prediction.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

// Two genes, Agouti (A, at, a) and Brown (B, b), and a few colours.
GeneticsData twoGenes(std::initializer_list<std::pair<QString, Genotype>> colours)
{
    GeneticsData g;
    GeneDef agouti;
    agouti.Id = 1;
    agouti.Name = u"Agouti"_s;
    agouti.Code = {QString(), u"A"_s, u"at"_s, u"a"_s};
    GeneDef brown;
    brown.Id = 2;
    brown.Name = u"Brown"_s;
    brown.Code = {QString(), u"B"_s, u"b"_s};
    g.GeneTable = {agouti, brown};
    g.LastGene = 1;
    for (const auto &[name, pairs] : colours)
        g.ColourTable.append({name, pairs});
    return g;
}

Genotype pairs(AllelePair a, AllelePair b)
{
    Genotype g{};
    g[0] = a;
    g[1] = b;
    return g;
}

class PredictionTest : public ::testing::Test
{
protected:
    test::ScriptedPrompts prompts;
};

TEST_F(PredictionTest, HeterozygousParentsGiveAQuarterAHalfAndAQuarter)
{
    const GeneticsData g = twoGenes({{u"Agouti"_s, pairs({1, 0}, {})}, {u"Self"_s, pairs({3, 3}, {})}});
    OffspringPrediction p(g, prompts);
    p.Prepare_Mating(pairs({1, 3}, {1, 1}), pairs({1, 3}, {1, 1}));
    EXPECT_EQ(p.IterationCount, 3);
    EXPECT_EQ(p.Genes[0].Outcome[0].Count, 1);
    EXPECT_EQ(p.Genes[0].Outcome[1].Count, 2);
    EXPECT_EQ(p.Genes[0].Outcome[1].Second, 3);
    EXPECT_EQ(p.Genes[1].LastOutcome, 0);
    p.Enumerate_Offspring();
    EXPECT_EQ(p.TotalWeight, 16) << "four combinations per gene, two genes";
    ASSERT_EQ(p.rowCount(), 3);
    EXPECT_EQ(p.row(0).GenoText, u"AA BB");
    EXPECT_EQ(percentText(p.row(0).Weight / p.TotalWeight), u"25.00%");
    EXPECT_EQ(p.row(1).GenoText, u"Aa BB");
    EXPECT_EQ(percentText(p.row(1).Weight / p.TotalWeight), u"50.00%");
    EXPECT_EQ(p.row(2).Name, u"Self");
    ASSERT_EQ(p.ColourSummary.size(), 2);
    EXPECT_EQ(p.ColourSummary[0].Name, u"Agouti");
    EXPECT_FLOAT_EQ(p.ColourSummary[0].Weight, 12);
    EXPECT_EQ(p.ColourSummary[0].GenoText, u"A _ _ _") << "the summary shows the colour's definition";
}

TEST_F(PredictionTest, AnUnknownAlleleStaysLastAndTiesShareTheWeight)
{
    const GeneticsData g = twoGenes({{u"Agouti"_s, pairs({1, 0}, {})},
                                     {u"Tan"_s, pairs({2, 0}, {})},
                                     {u"Self"_s, pairs({3, 3}, {})},
                                     {u"Any Black"_s, pairs({}, {1, 0})},
                                     {u"Pure Black"_s, pairs({}, {1, 1})}});
    OffspringPrediction p(g, prompts);
    p.Prepare_Mating(pairs({1, 0}, {1, 1}), pairs({2, 2}, {1, 1}));
    EXPECT_EQ(p.Genes[0].Outcome[0].First, 1);
    EXPECT_EQ(p.Genes[0].Outcome[0].Second, 2);
    EXPECT_EQ(p.Genes[0].Outcome[0].Count, 2);
    EXPECT_EQ(p.Genes[0].Outcome[1].First, 2);
    EXPECT_EQ(p.Genes[0].Outcome[1].Second, 0);
    EXPECT_EQ(p.Genes[0].BestParentAllele, 1);
    p.Enumerate_Offspring();
    // (1,2) fits Agouti and both blacks; (2,0) fits Tan and both blacks, not Agouti (the
    // parents' best allele is A itself) and not Self.
    ASSERT_EQ(p.rowCount(), 6);
    EXPECT_EQ(p.row(0).Name, u"Agouti");
    EXPECT_EQ(p.row(3).Name, u"Tan");
    EXPECT_NEAR(p.row(3).Weight, 8.0 / 3, 1e-5) << "a genotype fitting three rows gives each a third";
    EXPECT_EQ(p.row(3).GenoText, u"at _ BB");
    ASSERT_EQ(p.ColourSummary.size(), 4);
    EXPECT_EQ(p.ColourSummary[1].Name, u"Any Black") << "the summary keeps the order of first appearance";
    EXPECT_NEAR(p.ColourSummary[1].Weight, 16.0 / 3, 1e-5);
}

TEST_F(PredictionTest, GenotypesFittingNothingAreOneUnknownColour)
{
    const GeneticsData g = twoGenes({{u"Agouti"_s, pairs({1, 0}, {})}});
    OffspringPrediction p(g, prompts);
    p.Prepare_Mating(pairs({3, 3}, {1, 2}), pairs({3, 3}, {1, 2}));
    p.Enumerate_Offspring();
    ASSERT_EQ(p.rowCount(), 3);
    for (qsizetype i = 0; i < p.rowCount(); ++i) {
        const OffspringRow r = p.row(i);
        EXPECT_EQ(r.Name, u"Unknown");
        EXPECT_EQ(r.ColourIndex, -1);
    }
    ASSERT_EQ(p.ColourSummary.size(), 1);
    EXPECT_FLOAT_EQ(p.ColourSummary[0].Weight, 16);
    EXPECT_TRUE(p.ColourSummary[0].GenoText.isEmpty());
}

TEST_F(PredictionTest, IdenticalHomozygousParentsHaveOnePass)
{
    const GeneticsData g = twoGenes({{u"All"_s, pairs({}, {})}});
    OffspringPrediction p(g, prompts);
    p.Prepare_Mating(pairs({3, 3}, {2, 2}), pairs({3, 3}, {2, 2}));
    EXPECT_EQ(p.IterationCount, 1);
    p.Enumerate_Offspring();
    ASSERT_EQ(p.rowCount(), 1);
    EXPECT_FLOAT_EQ(p.row(0).Weight, 16);
    EXPECT_EQ(p.row(0).Name, u"All") << "a colour of (0,0) pairs fits every genotype";
}

TEST_F(PredictionTest, CompareAllelesCases)
{
    const GeneticsData g = twoGenes({});
    OffspringPrediction p(g, prompts);
    EXPECT_TRUE(p.Compare_Alleles(1, 2, 0, 0, 1));  // 1: the colour does not care
    EXPECT_TRUE(p.Compare_Alleles(0, 0, 2, 2, 2));  // 2: unknown offspring, colour not above the parents
    EXPECT_FALSE(p.Compare_Alleles(0, 0, 1, 0, 2)); // 2: the colour is more dominant than the parents carry
    EXPECT_TRUE(p.Compare_Alleles(0, 0, 1, 0, 0));  // 2: an unknown parent: anything goes
    EXPECT_TRUE(p.Compare_Alleles(1, 3, 1, 3, 1));  // 3
    EXPECT_FALSE(p.Compare_Alleles(1, 3, 1, 2, 1)); // 3
    EXPECT_TRUE(p.Compare_Alleles(1, 3, 1, 0, 1));  // 4: the dominant allele shows
    EXPECT_TRUE(p.Compare_Alleles(2, 0, 2, 3, 1));  // 5: a equals c
    EXPECT_TRUE(p.Compare_Alleles(3, 0, 2, 3, 2));  // 5: c not above p and a equals d
    EXPECT_FALSE(p.Compare_Alleles(3, 0, 1, 3, 2)); // 5: c above the parents
    EXPECT_TRUE(p.Compare_Alleles(2, 0, 2, 0, 1));  // 6: equal
    EXPECT_FALSE(p.Compare_Alleles(1, 0, 2, 0, 1)); // 6: a more dominant allele hides c
    EXPECT_TRUE(p.Compare_Alleles(3, 0, 2, 0, 1));  // 6: the hidden allele may be c
    EXPECT_FALSE(p.Compare_Alleles(3, 0, 2, 0, 2)); // 6: p equals c gives no, deliberately
    EXPECT_TRUE(p.Compare_Alleles(3, 0, 2, 0, 0));  // 6: an unknown parent
    EXPECT_TRUE(prompts.messages.isEmpty());

    EXPECT_TRUE(p.Compare_Alleles(0, 2, 1, 0, 1)); // 7: a pair out of order
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].title, u"Compare");
    EXPECT_EQ(prompts.messages[0].text, u"Tell Ruben - Unexpected Comparison : 0, 2, 1, 0");
    EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Information);
}

// A colour line whose Brown pair is written (0, b): the comparison cannot be made, the user
// is told, and the line counts as fitting that gene.
TEST_F(PredictionTest, AnImpossibleColourPairIsReportedOnlyWhereTheWalkReachesIt)
{
    const GeneticsData g =
        twoGenes({{u"Agouti"_s, pairs({1, 0}, {})}, {u"Odd Self"_s, pairs({3, 3}, {0, 2})}});
    OffspringPrediction behindAFailure(g, prompts);
    behindAFailure.Prepare_Mating(pairs({1, 1}, {1, 2}), pairs({1, 1}, {1, 2}));
    behindAFailure.Enumerate_Offspring();
    EXPECT_TRUE(prompts.messages.isEmpty()) << "no offspring is self, so Brown is never compared";
    EXPECT_EQ(behindAFailure.rowCount(), 3);

    const GeneticsData reached =
        twoGenes({{u"Agouti"_s, pairs({1, 0}, {})}, {u"Odd Agouti"_s, pairs({1, 0}, {0, 2})}});
    OffspringPrediction p(reached, prompts);
    p.Prepare_Mating(pairs({1, 3}, {1, 2}), pairs({1, 3}, {1, 2}));
    p.Enumerate_Offspring();
    // AA and Aa offspring reach Brown, aa ones do not: once for each such genotype, in walk order.
    const QStringList once{u"Tell Ruben - Unexpected Comparison : 1, 1, 0, 2"_s,
                           u"Tell Ruben - Unexpected Comparison : 1, 2, 0, 2"_s,
                           u"Tell Ruben - Unexpected Comparison : 2, 2, 0, 2"_s};
    EXPECT_EQ(prompts.texts(), once + once);
    for (const auto &m : std::as_const(prompts.messages)) {
        EXPECT_EQ(m.title, u"Compare");
        EXPECT_EQ(m.icon, Prompts::Icon::Information);
        EXPECT_EQ(m.buttons, Prompts::Buttons::Ok);
    }
    ASSERT_EQ(p.rowCount(), 15);
    EXPECT_EQ(p.row(1).Name, u"Odd Agouti") << "the impossible pair counts as fitting";
}

TEST_F(PredictionTest, ImpossibleColourPairsAreReportedAsThePlainRulesReportThem)
{
    // Lines impossible at the first gene, at the second, at both, and behind a gene that
    // sometimes fails; several matings.
    const GeneticsData g = twoGenes({{u"Odd Agouti"_s, pairs({1, 0}, {0, 2})},
                                     {u"Odd Any"_s, pairs({0, 3}, {1, 0})},
                                     {u"Black"_s, pairs({}, {1, 0})},
                                     {u"Odd Both"_s, pairs({0, 1}, {0, 2})},
                                     {u"Odd Tan"_s, pairs({2, 0}, {0, 1})}});
    const std::pair<Genotype, Genotype> matings[] = {
        {pairs({1, 3}, {1, 2}), pairs({1, 3}, {1, 2})},
        {pairs({2, 0}, {2, 2}), pairs({1, 3}, {1, 0})},
        {pairs({}, {1, 2}), pairs({2, 3}, {})},
        {pairs({3, 3}, {2, 2}), pairs({3, 3}, {2, 2})},
    };
    for (const auto &[sire, dam] : matings) {
        test::ScriptedPrompts fastPrompts;
        test::ScriptedPrompts plainPrompts;
        OffspringPrediction fast(g, fastPrompts);
        fast.Prepare_Mating(sire, dam);
        fast.Enumerate_Offspring();
        ReferencePrediction plain(g, plainPrompts);
        plain.Prepare_Mating(sire, dam);
        plain.Enumerate_Offspring();
        EXPECT_FALSE(plainPrompts.messages.isEmpty());
        EXPECT_EQ(fastPrompts.texts(), plainPrompts.texts());
        ASSERT_EQ(fast.rowCount(), plain.OffspringRows.size());
        for (qsizetype i = 0; i < fast.rowCount(); ++i)
            EXPECT_EQ(fast.row(i).Name, plain.OffspringRows.at(i).Name);
    }
}

TEST_F(PredictionTest, TheSameMatingAgainReportsAgain)
{
    // The answers of a gene are kept between matings; what they have to say is kept too.
    const GeneticsData g = twoGenes({{u"Odd Agouti"_s, pairs({1, 0}, {0, 2})}});
    OffspringPrediction p(g, prompts);
    for (int run = 0; run < 2; ++run) {
        p.Prepare_Mating(pairs({1, 1}, {2, 2}), pairs({1, 1}, {2, 2}));
        p.Enumerate_Offspring();
    }
    EXPECT_EQ(prompts.texts(), QStringList(2, u"Tell Ruben - Unexpected Comparison : 2, 2, 0, 2"_s));
}

} // namespace
