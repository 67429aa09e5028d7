#include "support/ScriptedPrompts.h"

#include "genetics/GeneticsFiles.h"
#include "genetics/Prediction.h"

#include <QFile>
#include <QTemporaryDir>

#include <random>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

const QByteArray kGenetics = "' two loci\r\n[Agouti]\r\nID=1\r\nTYPE=1\r\nGENE1=A,Agouti\r\nGENE2=a,Self\r\n"
                             "[Brown]\r\nID=2\r\nTYPE=1\r\nGENE1=B,Black\r\nGENE2=b,Brown\r\n";
const QByteArray kColours = "[COLOUR=Black]\r\n1=2,2\r\n2=1\r\n[COLOUR=Chocolate]\r\n1=2,2\r\n2=2,2\r\n"
                            "[PATTERN=Dutch]\r\n[COATTYPE=Rex]\r\n";

class GeneticsFilesTest : public ::testing::Test
{
protected:
    void write(const QString &name, const QByteArray &bytes)
    {
        QFile f(dir.filePath(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    GeneticsFiles::Result loadColours(const QByteArray &genetics, const QByteArray &colours)
    {
        write(u"Rabbits Genetics.Gen"_s, genetics);
        write(u"Rabbits Colours.Gen"_s, colours);
        return files.Load_Colours(u"Rabbits"_s, data);
    }
    void expectFatal(const QString &title, const QString &text)
    {
        ASSERT_EQ(prompts.messages.size(), 1);
        EXPECT_EQ(prompts.messages[0].title, title);
        EXPECT_EQ(prompts.messages[0].text, text);
        EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Stop);
    }

    QTemporaryDir dir;
    test::ScriptedPrompts prompts;
    GeneticsFiles files{dir.path(), prompts};
    GeneticsData data;
};

TEST_F(GeneticsFilesTest, TheMadeUpExampleGivesTwoRows)
{
    ASSERT_EQ(loadColours(kGenetics, kColours), GeneticsFiles::Result::Loaded);
    EXPECT_EQ(data.LastGene, 1);
    EXPECT_EQ(data.GeneTable[0].Name, u"Agouti");
    EXPECT_EQ(data.GeneTable[0].Code[2], u"a");
    EXPECT_EQ(data.GeneTable[0].Description[2], u"Self");
    EXPECT_EQ(data.GeneTable[1].Id, 2);
    ASSERT_EQ(data.ColourTable.size(), 2);
    EXPECT_EQ(data.ColourTable[0].Name, u"Black Dutch Rex");
    EXPECT_EQ(data.ColourTable[1].Name, u"Chocolate Dutch Rex");
    EXPECT_EQ(data.ColourTable[0].Alleles[0], (AllelePair{2, 2}));
    EXPECT_EQ(data.ColourTable[0].Alleles[1], (AllelePair{1, 0}));
    EXPECT_EQ(data.ColourTable[1].Alleles[1], (AllelePair{2, 2}));
    EXPECT_EQ(data.ColourList, QStringList({QString(), u"Black"_s, u"Chocolate"_s}));
    EXPECT_EQ(data.PatternList, QStringList({QString(), u"Dutch"_s}));
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST_F(GeneticsFilesTest, RowsRunThroughCoatTypesFastestAndColourWinsOverPattern)
{
    const QByteArray colours = "[colour=Black]\n1=2,2\n[COLOUR=White]\n[PATTERN=Dutch]\n1=1\n2=1,1\n"
                               "[PATTERN=Broken]\n[COATTYPE=Rex]\n[COATTYPE=Satin]\n2=2,2\n";
    ASSERT_EQ(loadColours(kGenetics, colours), GeneticsFiles::Result::Loaded);
    QStringList names;
    for (const ColourDef &c : data.ColourTable)
        names << c.Name;
    EXPECT_EQ(names, QStringList({u"Black Dutch Rex"_s, u"Black Dutch Satin"_s, u"White Dutch Rex"_s,
                                  u"White Dutch Satin"_s, u"Black Broken Rex"_s, u"Black Broken Satin"_s,
                                  u"White Broken Rex"_s, u"White Broken Satin"_s}));
    EXPECT_EQ(data.ColourTable[0].Alleles[0], (AllelePair{2, 2})) << "the colour wins over the pattern";
    EXPECT_EQ(data.ColourTable[2].Alleles[0], (AllelePair{1, 0})) << "a colour that does not care takes the pattern";
    EXPECT_EQ(data.ColourTable[5].Alleles[1], (AllelePair{2, 2})) << "the coat type fills what is left";
}

TEST_F(GeneticsFilesTest, NamesKeepTheirBlanksAndBorrowedGenesAreRead)
{
    write(u"Cavies Genetics.Gen"_s, kGenetics);
    const QByteArray colours = "[GENETICS=Cavies]\n[COLOUR=Black]\n1=2,2\n[COLOUR=Agouti]\n1=1\n[COATTYPE=Rex]\n";
    write(u"Guinea Colours.Gen"_s, colours);
    ASSERT_EQ(files.Load_Colours(u"Guinea"_s, data), GeneticsFiles::Result::Loaded);
    EXPECT_EQ(data.ColourTable[0].Name, u"Black  Rex") << "a blank pattern leaves two blanks";
}

TEST_F(GeneticsFilesTest, OneGeneOrOneColourIsNoGeneticsAndSaysNothing)
{
    EXPECT_EQ(loadColours("[Agouti]\nID=1\nGENE1=A,Agouti\n", kColours), GeneticsFiles::Result::NotLoaded);
    EXPECT_EQ(loadColours(kGenetics, "[COLOUR=Black]\n1=2,2\n"), GeneticsFiles::Result::NotLoaded);
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST_F(GeneticsFilesTest, MissingFilesAreReportedAndSurvived)
{
    EXPECT_EQ(files.Load_Colours(u"Yaks"_s, data), GeneticsFiles::Result::NotLoaded);
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].title, u"Genetics Database Error");
    EXPECT_EQ(prompts.messages[0].text, u"Colours.Gen\nError: 53 File not found");
    EXPECT_EQ(prompts.messages[0].icon, Prompts::Icon::Exclamation);
    prompts.messages.clear();
    write(u"Yaks Colours.Gen"_s, kColours);
    EXPECT_EQ(files.Load_Colours(u"Yaks"_s, data), GeneticsFiles::Result::NotLoaded);
    EXPECT_EQ(prompts.messages[0].text, u"Genetics.Gen\nError: 53 File not found");
}

struct BadFile
{
    const char *name;
    QByteArray genetics, colours;
    QString title, text;
};

class GeneticsFaultTest : public GeneticsFilesTest, public ::testing::WithParamInterface<BadFile>
{
};

TEST_P(GeneticsFaultTest, EndsTheProgramAfterItsBox)
{
    const BadFile &b = GetParam();
    EXPECT_EQ(loadColours(b.genetics, b.colours), GeneticsFiles::Result::Fatal);
    expectFatal(b.title, b.text);
}

const QString kGeneticsTitle = u"Error Reading Rabbits Genetics.Gen"_s;
const QString kColoursTitle = u"Error Reading Colours.Txt"_s;

INSTANTIATE_TEST_SUITE_P(
    Faults, GeneticsFaultTest,
    ::testing::Values(
        BadFile{"KeyWithoutEquals", "[A]\nID=1\nGENE1\n", kColours, kGeneticsTitle,
                u"Genetics Database Error : 5 Invalid procedure call or argument"_s},
        BadFile{"GeneWithoutComma", "[A]\nID=1\nGENE1=A\n", kColours, kGeneticsTitle,
                u"Genetics Database Error : 5 Invalid procedure call or argument"_s},
        BadFile{"TenthAllele", "[A]\nGENE=1,1\nGENE=2,2\nGENE=3,3\nGENE=4,4\nGENE=5,5\nGENE=6,6\nGENE=7,7\n"
                               "GENE=8,8\nGENE=9,9\nGENE=X,X\n",
                kColours, kGeneticsTitle, u"Genetics Database Error : 9 Subscript out of range"_s},
        BadFile{"TypeNotANumber", "[A]\nTYPE=big\n", kColours, kGeneticsTitle,
                u"Genetics Database Error : 13 Type mismatch"_s},
        BadFile{"IdTooLarge", "[A]\nID=300\n", kColours, kGeneticsTitle, u"Genetics Database Error : 6 Overflow"_s},
        BadFile{"NoGeneAtAll", "' nothing here\n", kColours, kGeneticsTitle,
                u"Genetics Database Error : 9 Subscript out of range"_s},
        BadFile{"ColourKeyWithoutEquals", kGenetics, "[COLOUR=Black]\n1\n", kColoursTitle,
                u"Genetics Colour Error : 5 Invalid procedure call or argument"_s},
        BadFile{"ColourKeyTooLarge", kGenetics, "[COLOUR=Black]\n1=1\n999=1\n", kColoursTitle,
                u"Genetics Colour Error : 6 Overflow"_s},
        BadFile{"NoColourSection", kGenetics, "[PATTERN=Dutch]\n1=1\n", kColoursTitle,
                u"Genetics Colour Error : 9 Subscript out of range"_s}),
    [](const auto &info) { return std::string(info.param.name); });

TEST_F(GeneticsFilesTest, OverLongFilesAndLinesEndTheProgramAfterTheirBox)
{
    // A line of 10 MB, third after two with Windows line ends.
    const QByteArray longLine =
        "[Agouti]\r\nID=1\r\n'" + QByteArray(10 * 1024 * 1024, 'x') + "\r\n" + kGenetics;
    EXPECT_EQ(loadColours(longLine, kColours), GeneticsFiles::Result::Fatal);
    expectFatal(kGeneticsTitle,
                u"Genetics Database Error : 7 Out of memory (line 3 is longer than 4096 characters)"_s);

    // More than 4 MB of lines that are each short enough.
    prompts.messages.clear();
    QByteArray comments;
    while (comments.size() <= 4 * 1024 * 1024)
        comments += "' a comment that goes on and on\n";
    EXPECT_EQ(loadColours(kGenetics, kColours + comments), GeneticsFiles::Result::Fatal);
    expectFatal(kColoursTitle, u"Genetics Colour Error : 7 Out of memory (the file is larger than 4 MB)"_s);

    prompts.messages.clear();
    EXPECT_EQ(loadColours(kGenetics, "[COLOUR=Black]\n1=" + QByteArray(4095, '2') + "\n"),
              GeneticsFiles::Result::Fatal);
    expectFatal(kColoursTitle,
                u"Genetics Colour Error : 7 Out of memory (line 2 is longer than 4096 characters)"_s);
}

TEST_F(GeneticsFilesTest, ALineOfExactly4096BytesIsRead)
{
    // "GENE2=a," and a description that brings the line to 4096 bytes before its CRLF.
    const QByteArray genetics = "[Agouti]\r\nID=1\r\nGENE1=A,Agouti\r\nGENE2=a," + QByteArray(4088, 'S') +
                                "\r\n[Brown]\r\nID=2\r\nGENE1=B,Black\r\nGENE2=b,Brown\r\n";
    ASSERT_EQ(loadColours(genetics, kColours), GeneticsFiles::Result::Loaded);
    EXPECT_EQ(data.GeneTable[0].Description[2], QString(4088, u'S'));
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST_F(GeneticsFilesTest, EncodingsLineEndsAndTheEdgesOfTheGrammar)
{
    // Windows-1252 text with LF ends, a section without its bracket, lower-case keys,
    // a blank before the "=", a gene without ID.
    const QByteArray genetics = "[Agouti\n id = 1\ngene1=A,Agouti\ngene2=a,Self \n[Br\xf6wn]\nGENE1=B,B\nGENE2=b,Brown\n";
    const QByteArray colours = "[colour=Black]\n1=2,2\nX=1,1\n[COLOUR=Brown]\n0=2,2\n";
    ASSERT_EQ(loadColours(genetics, colours), GeneticsFiles::Result::Loaded);
    EXPECT_EQ(data.GeneTable[0].Name, u"Agout") << "a section line without its bracket loses its last character";
    EXPECT_EQ(data.GeneTable[0].Id, 1);
    EXPECT_EQ(data.GeneTable[1].Name, u"Bröwn");
    EXPECT_EQ(data.GeneTable[1].Id, 0);
    EXPECT_TRUE(data.GeneTable[1].Description[1].isEmpty()) << "a description equal to its code is left empty";
    EXPECT_EQ(data.ColourTable[0].Alleles[1], (AllelePair{1, 1})) << "a key that is no number gives 0";
    EXPECT_EQ(data.ColourTable[1].Alleles[1], (AllelePair{2, 2}));
}

TEST(ShippedGenetics, RabbitFilesGiveEveryColourPatternAndCoat)
{
    test::ScriptedPrompts prompts;
    GeneticsFiles files(QStringLiteral(TARVEX_SOURCE_DIR "/data"), prompts);
    GeneticsData data;
    ASSERT_EQ(files.Load_Colours(u"Rabbits"_s, data), GeneticsFiles::Result::Loaded);
    EXPECT_TRUE(prompts.messages.isEmpty());
    EXPECT_EQ(data.LastGene, 9) << "ten loci";
    EXPECT_EQ(data.GeneTable[2].Code[2], u"cchd");
    EXPECT_EQ(data.ColourList.size(), 95) << "94 colour rows behind the empty first place";
    EXPECT_EQ(data.ColourTable.size(), 94 * 7 * 2);
    EXPECT_EQ(data.ColourTable[0].Name, u"Chestnut Agouti");
    EXPECT_EQ(data.ColourTable[1].Name, u"Chestnut Agouti  Rex");
    QStringList names;
    for (const ColourDef &c : data.ColourTable)
        names << c.Name;
    EXPECT_TRUE(names.contains(u"Black Dutch Rex"_s));
    EXPECT_TRUE(names.contains(u"Harlequin Broken"_s));
    // Every exact pair is written lower allele first, and no pair is (0, n).
    for (const ColourDef &c : data.ColourTable)
        for (const AllelePair &p : c.Alleles)
            EXPECT_TRUE(p.allele1 != 0 || p.allele2 == 0) << c.Name.toStdString();
}

TEST(ShippedGenetics, CavyFilesGiveEveryColourPatternAndCoat)
{
    test::ScriptedPrompts prompts;
    GeneticsFiles files(QStringLiteral(TARVEX_SOURCE_DIR "/data"), prompts);
    GeneticsData data;
    ASSERT_EQ(files.Load_Colours(u"Cavies"_s, data), GeneticsFiles::Result::Loaded);
    EXPECT_TRUE(prompts.messages.isEmpty());
    EXPECT_EQ(data.LastGene, 9);
    EXPECT_EQ(data.GeneTable[2].Name, u"Albino series");
    EXPECT_EQ(data.GeneTable[2].Code[4], u"ca");
    EXPECT_EQ(data.ColourList.size(), 39) << "38 colour rows behind the empty first place";
    EXPECT_EQ(data.ColourTable.size(), 38 * 5 * 8);
    QStringList names;
    for (const ColourDef &c : data.ColourTable)
        names << c.Name;
    EXPECT_TRUE(names.contains(u"Tortoiseshell and White"_s));
    EXPECT_TRUE(names.contains(u"Golden Agouti  Abyssinian"_s));
}

// The colour rows of a species must split all genotypes between them: each genotype is one
// colour, neither "Unknown" nor shared between two rows (which would halve its share). A
// homozygous sire and dam give exactly one offspring genotype to classify.
TEST(ShippedGenetics, EveryGenotypeIsExactlyOneColour)
{
    for (const QString &species : {u"Rabbits"_s, u"Cavies"_s}) {
        test::ScriptedPrompts prompts;
        GeneticsFiles files(QStringLiteral(TARVEX_SOURCE_DIR "/data"), prompts);
        GeneticsData data;
        ASSERT_EQ(files.Load_Colours(species, data), GeneticsFiles::Result::Loaded);
        std::mt19937 random(11);
        for (int trial = 0; trial < 600; ++trial) {
            Genotype sire{}, dam{};
            for (int i = 0; i <= data.LastGene; ++i) {
                int alleles = 1;
                while (alleles < 9 && !data.GeneTable[i].Code[alleles + 1].isEmpty())
                    ++alleles;
                const auto allele = [&] { return quint8(1 + random() % alleles); };
                const quint8 a = allele(), b = allele();
                sire[i] = {a, a};
                dam[i] = {b, b};
            }
            OffspringPrediction p(data, prompts);
            p.Prepare_Mating(sire, dam);
            p.Enumerate_Offspring();
            ASSERT_EQ(p.rowCount(), 1) << species.toStdString() << ": a genotype in two colour rows";
            ASSERT_GE(p.rowColour(0), 0) << species.toStdString() << ": a genotype of no colour "
                                         << p.row(0).GenoText.toStdString();
        }
    }
}

} // namespace
