// The program's prediction engine against the plain transcription of the rules, on
// thousands of random matings and colour tables: every row, every share, every summary.
#include "support/ScriptedPrompts.h"

#include "ReferencePrediction.h"
#include "genetics/GeneticsFiles.h"
#include "genetics/Prediction.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

struct RandomGenetics
{
    explicit RandomGenetics(std::mt19937 &random) : r(random) {}

    int uniform(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(r); }

    // A pair in stored order: unknown, one allele known, or both.
    AllelePair pair(int alleles)
    {
        switch (uniform(0, 3)) {
        case 0:
            return {};
        case 1:
            return {quint8(uniform(1, alleles)), 0};
        default: {
            quint8 a = quint8(uniform(1, alleles));
            quint8 b = quint8(uniform(1, alleles));
            if (b < a)
                std::swap(a, b);
            return {a, b};
        }
        }
    }

    GeneticsData genetics()
    {
        GeneticsData g;
        const int genes = uniform(2, 5);
        for (int i = 0; i < genes; ++i) {
            GeneDef d;
            d.Id = quint8(i + 1);
            alleleCounts[i] = uniform(2, 5);
            for (int a = 1; a <= alleleCounts[i]; ++a)
                d.Code[a] = QString(QChar(u'A' + i)) + QString::number(a);
            g.GeneTable << d;
        }
        g.LastGene = genes - 1;
        const int rows = uniform(1, 24);
        for (int row = 0; row < rows; ++row) {
            ColourDef c;
            // Some names repeat, as alternative genotypes of one colour do.
            c.Name = u"Colour %1"_s.arg(uniform(0, rows / 2 + 1));
            for (int i = 0; i < genes; ++i) {
                if (impossiblePairs && uniform(0, 11) == 0)
                    c.Alleles[i] = {0, quint8(uniform(1, alleleCounts[i]))}; // a line written wrongly
                else
                    c.Alleles[i] = uniform(0, 2) == 0 ? AllelePair{} : pair(alleleCounts[i]);
            }
            g.ColourTable << c;
        }
        return g;
    }

    Genotype parent(const GeneticsData &g)
    {
        Genotype p{};
        for (int i = 0; i <= g.LastGene; ++i)
            p[i] = pair(alleleCounts[i]);
        return p;
    }

    std::mt19937 &r;
    std::array<int, 10> alleleCounts{};
    bool impossiblePairs = false; // colour lines may hold pairs that cannot be compared
};

TEST(PredictionProperty, FastEngineGivesExactlyWhatThePlainRulesGive)
{
    std::mt19937 random(20261122);
    test::ScriptedPrompts prompts;
    for (int trial = 0; trial < 3000; ++trial) {
        RandomGenetics make(random);
        const GeneticsData g = make.genetics();
        const Genotype sire = make.parent(g);
        const Genotype dam = make.parent(g);

        ReferencePrediction reference(g, prompts);
        reference.Prepare_Mating(sire, dam);
        reference.Enumerate_Offspring();
        OffspringPrediction fast(g, prompts);
        fast.Prepare_Mating(sire, dam);
        fast.Enumerate_Offspring();

        ASSERT_EQ(fast.IterationCount, reference.IterationCount) << "trial " << trial;
        ASSERT_EQ(fast.TotalWeight, reference.TotalWeight) << "trial " << trial;
        ASSERT_EQ(fast.rowCount(), reference.OffspringRows.size()) << "trial " << trial;
        for (qsizetype i = 0; i < fast.rowCount(); ++i) {
            const OffspringRow a = fast.row(i);
            const OffspringRow &b = reference.OffspringRows.at(i);
            ASSERT_EQ(a.ColourIndex, b.ColourIndex) << "trial " << trial << " row " << i;
            ASSERT_EQ(a.Name, b.Name) << "trial " << trial << " row " << i;
            ASSERT_EQ(a.GenoText, b.GenoText) << "trial " << trial << " row " << i;
            ASSERT_EQ(a.Weight, b.Weight) << "trial " << trial << " row " << i;
        }
        ASSERT_EQ(fast.ColourSummary.size(), reference.ColourSummary.size()) << "trial " << trial;
        for (qsizetype i = 0; i < fast.ColourSummary.size(); ++i) {
            ASSERT_EQ(fast.ColourSummary[i].Name, reference.ColourSummary[i].Name) << "trial " << trial;
            ASSERT_EQ(fast.ColourSummary[i].GenoText, reference.ColourSummary[i].GenoText) << "trial " << trial;
            ASSERT_EQ(fast.ColourSummary[i].Weight, reference.ColourSummary[i].Weight) << "trial " << trial;
        }
    }
    EXPECT_TRUE(prompts.messages.isEmpty()) << "stored pairs never reach the impossible comparison";
}

TEST(PredictionProperty, ImpossibleColourPairsAreReportedAsThePlainRulesReportThem)
{
    std::mt19937 random(20261123);
    int reported = 0;
    for (int trial = 0; trial < 400; ++trial) {
        RandomGenetics make(random);
        make.impossiblePairs = true;
        const GeneticsData g = make.genetics();
        const Genotype sire = make.parent(g);
        const Genotype dam = make.parent(g);

        test::ScriptedPrompts plainPrompts;
        ReferencePrediction reference(g, plainPrompts);
        reference.Prepare_Mating(sire, dam);
        reference.Enumerate_Offspring();
        test::ScriptedPrompts fastPrompts;
        OffspringPrediction fast(g, fastPrompts);
        fast.Prepare_Mating(sire, dam);
        fast.Enumerate_Offspring();

        ASSERT_EQ(fastPrompts.texts(), plainPrompts.texts()) << "trial " << trial;
        ASSERT_EQ(fast.rowCount(), reference.OffspringRows.size()) << "trial " << trial;
        for (qsizetype i = 0; i < fast.rowCount(); ++i)
            ASSERT_EQ(fast.rowColour(i), reference.OffspringRows.at(i).ColourIndex) << "trial " << trial;
        reported += plainPrompts.messages.isEmpty() ? 0 : 1;
    }
    EXPECT_GT(reported, 100) << "most trials meet an impossible pair";
}

TEST(PredictionProperty, RabbitMatingsAgreeWithThePlainRules)
{
    test::ScriptedPrompts prompts;
    GeneticsFiles files(QStringLiteral(TARVEX_SOURCE_DIR "/data"), prompts);
    GeneticsData g;
    ASSERT_EQ(files.Load_Colours(u"Rabbits"_s, g), GeneticsFiles::Result::Loaded);
    std::mt19937 random(7);
    RandomGenetics make(random);
    for (int i = 0; i <= g.LastGene; ++i)
        make.alleleCounts[i] = [&] {
            int n = 0;
            while (n < 9 && !g.GeneTable[i].Code[n + 1].isEmpty())
                ++n;
            return n;
        }();
    for (int trial = 0; trial < 40; ++trial) {
        Genotype sire = make.parent(g), dam = make.parent(g);
        // Keep most genes settled so that the plain rules finish quickly.
        for (int i = 4; i <= g.LastGene; ++i)
            sire[i] = dam[i] = AllelePair{1, 1};
        ReferencePrediction reference(g, prompts);
        reference.Prepare_Mating(sire, dam);
        reference.Enumerate_Offspring();
        OffspringPrediction fast(g, prompts);
        fast.Prepare_Mating(sire, dam);
        fast.Enumerate_Offspring();
        ASSERT_EQ(fast.rowCount(), reference.OffspringRows.size()) << "trial " << trial;
        for (qsizetype i = 0; i < fast.rowCount(); ++i) {
            ASSERT_EQ(fast.row(i).Name, reference.OffspringRows.at(i).Name) << "trial " << trial;
            ASSERT_EQ(fast.row(i).Weight, reference.OffspringRows.at(i).Weight) << "trial " << trial;
        }
        ASSERT_EQ(fast.ColourSummary.size(), reference.ColourSummary.size()) << "trial " << trial;
        for (qsizetype i = 0; i < fast.ColourSummary.size(); ++i)
            ASSERT_EQ(fast.ColourSummary[i].Weight, reference.ColourSummary[i].Weight) << "trial " << trial;
    }
}

} // namespace
