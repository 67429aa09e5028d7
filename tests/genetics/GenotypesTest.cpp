#include "support/StudFixture.h"

#include "genetics/Genotypes.h"
#include "store/StudDatabase.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

TEST(OrderAlleles, LowerFirstUnknownLast)
{
    const auto ordered = [](quint8 a, quint8 b) {
        Order_Alleles(a, b);
        return AllelePair{a, b};
    };
    EXPECT_EQ(ordered(0, 3), (AllelePair{3, 0}));
    EXPECT_EQ(ordered(3, 1), (AllelePair{1, 3}));
    EXPECT_EQ(ordered(0, 0), (AllelePair{0, 0}));
    EXPECT_EQ(ordered(3, 0), (AllelePair{3, 0}));
    EXPECT_EQ(ordered(2, 2), (AllelePair{2, 2}));
}

class GenotypesTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = &fx.open();
        fx.writeGenetics("[Agouti]\nID=1\nGENE1=A,Agouti\nGENE2=a,Self\n[Brown]\nID=2\n"
                         "GENE1=B,Black\nGENE2=b,Brown\n[Colour]\nID=3\nGENE1=C,Full\nGENE2=ch,Himalayan\n",
                         "[COLOUR=Black]\n1=2,2\n2=1\n[COLOUR=Chocolate]\n1=2,2\n2=2,2\n"
                         "[COLOUR=Himalayan]\n3=2,2\n[PATTERN=]\n[COATTYPE=]\n");
        fx.session.GeneticsOn = true;
        fx.session.GeneticsFile = u"Rabbits"_s;
        ASSERT_TRUE(Ensure_Genetics_Loaded(fx.session, fx.prompts));
        kit = test::addAnimal(*db, {{u"Name"_s, u"Kit"_s}, {u"Colour"_s, u"black"_s}});
    }
    QString genotype(qint64 n)
    {
        return db->scalar(u"SELECT GenoType FROM Stock WHERE Number = ?"_s, {n}).toString();
    }
    int rows(qint64 n) { return db->scalar(u"SELECT count(*) FROM Genes WHERE StockNo = ?"_s, {n}).toInt(); }

    test::StudFixture fx;
    Database *db = nullptr;
    qint64 kit = 0;
};

TEST_F(GenotypesTest, GenotypeTextShowsEveryGeneWithUnderscores)
{
    Genotype g{};
    g[0] = {1, 2};
    g[1] = {1, 0};
    EXPECT_EQ(Genotype_Text(*fx.session.Genetics, g), u"Aa B _ _ _");
    EXPECT_EQ(Genotype_Text(*fx.session.Genetics, Genotype{}), u"_ _ _ _ _ _");
}

TEST_F(GenotypesTest, WriteStoresOrderedPairsAndDeletesUnknownGenes)
{
    fx.session.CurrentStockNo = kit;
    fx.session.CurrentAlleles = {};
    fx.session.CurrentAlleles[0] = {2, 1};
    fx.session.CurrentAlleles[2] = {0, 2};
    Write_Genes(fx.session, fx.prompts);
    EXPECT_EQ(rows(kit), 2);
    EXPECT_EQ(genotype(kit), u"Aa _ _ ch _");
    EXPECT_EQ(db->scalar(u"SELECT allele1 FROM Genes WHERE StockNo = ? AND Id = 3"_s, {kit}).toInt(), 2);

    fx.session.CurrentAlleles[0] = {};
    Write_Genes(fx.session, fx.prompts);
    EXPECT_EQ(rows(kit), 1) << "a gene with both alleles unknown has no row";
    ASSERT_TRUE(Read_Genes(fx.session, fx.prompts, kit));
    EXPECT_EQ(fx.session.CurrentAlleles[2], (AllelePair{2, 0}));
    EXPECT_FALSE(Read_Genes(fx.session, fx.prompts, 0));
}

TEST_F(GenotypesTest, UnknownGeneIdStopsTheReading)
{
    db->execute(
        u"INSERT INTO Genes (StockNo, Id, allele1, allele2) VALUES (?, 1, 1, 1), (?, 2, 1, 2), (?, 9, 1, 1)"_s,
        {kit, kit, kit});
    db->execute(u"UPDATE Genes SET Id = 0 WHERE Id = 2"_s); // Id 0 sorts before 1 and is unknown to the file
    EXPECT_FALSE(Read_Genes(fx.session, fx.prompts, kit));
    EXPECT_EQ(fx.prompts.texts(), QStringList({u"Unknown Gene Number"_s}));
    EXPECT_EQ(rows(kit), 3) << "the rows are left alone";
}

TEST_F(GenotypesTest, ColourGivesTheFirstGenotypeWithoutRegardToCase)
{
    Update_Genes(fx.session, fx.prompts, u"black"_s, u"Rex"_s, kit, u"Buck"_s);
    EXPECT_EQ(genotype(kit), u"aa B _ _ _");
    // A saved genotype is kept when the colour changes.
    Update_Genes(fx.session, fx.prompts, u"Chocolate"_s, u"Rex"_s, kit, u"Buck"_s);
    EXPECT_EQ(genotype(kit), u"aa B _ _ _");
}

TEST_F(GenotypesTest, UnknownColourIsMatchedByTheUserAndTheMatchKept)
{
    QStringList asked;
    fx.shell.onColourMatch = [&](const QString &colour, bool *save) {
        asked << colour;
        *save = true;
        return u"Chocolate"_s;
    };
    Update_Genes(fx.session, fx.prompts, u"Havana"_s, u"Rex"_s, kit, u"Doe"_s);
    EXPECT_EQ(asked, QStringList({u"Havana"_s}));
    EXPECT_EQ(genotype(kit), u"aa bb _ _");
    EXPECT_EQ(CRegSettings(fx.session.AppName).GetSetting(u"Rabbits\\Genetics Map"_s, u"Havana"_s), u"Chocolate");

    const qint64 other = test::addAnimal(*db, {{u"Name"_s, u"Other"_s}});
    Update_Genes(fx.session, fx.prompts, u"HAVANA"_s, u"Rex"_s, other, u"Doe"_s);
    EXPECT_EQ(asked.size(), 1) << "the kept match answers without asking";
    EXPECT_EQ(genotype(other), u"aa bb _ _");

    fx.shell.onColourMatch = [](const QString &, bool *) { return QString(); };
    const qint64 third = test::addAnimal(*db, {{u"Name"_s, u"Third"_s}});
    Update_Genes(fx.session, fx.prompts, u"Tartan"_s, QString(), third, u"Doe"_s);
    EXPECT_EQ(rows(third), 0) << "a cancelled match writes nothing";
    EXPECT_TRUE(genotype(third).isEmpty());
}

TEST_F(GenotypesTest, ColourAndBreedAreMatchedTogetherWhenAsked)
{
    CRegSettings(fx.session.AppName).SaveSetting(u"Rabbits\\Options"_s, u"MatchColour"_s, u"1"_s);
    QString asked;
    fx.shell.onColourMatch = [&](const QString &colour, bool *) {
        asked = colour;
        return QString();
    };
    Update_Genes(fx.session, fx.prompts, u"Black"_s, u"Rex"_s, kit, u"Doe"_s);
    EXPECT_EQ(asked, u"Black Rex");
    Update_Genes(fx.session, fx.prompts, u"Black"_s, QString(), kit, u"Doe"_s);
    EXPECT_EQ(genotype(kit), u"aa B _ _ _") << "with no breed the colour alone is sought";
}

} // namespace
