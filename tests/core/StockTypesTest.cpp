#include "core/StockTypes.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

class StockTypesTest : public ::testing::Test
{
protected:
    QString write(const QByteArray &bytes, const QString &name = u"stocktypes.txt"_s)
    {
        QFile f(dir.filePath(name));
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        return f.fileName();
    }
    QByteArray contents(const QString &path)
    {
        QFile f(path);
        f.open(QIODevice::ReadOnly);
        return f.readAll();
    }
    QTemporaryDir dir;
};

TEST_F(StockTypesTest, ReadsQuotedTrimmedFieldsWithMissingOnesEmpty)
{
    const QString path = write("\"Rabbits\",\"Doe\",\"Buck\",\"Dam\",\"Sire\",\"Ring No.\",\"Tattoo\",\"GC\"\r\n"
                               "\r\n"
                               "  Cavies , Sow ,\"Boar\"\r\n");
    FileError error;
    const auto types = StockTypes::read(path, &error);
    ASSERT_TRUE(types);
    ASSERT_EQ(types->size(), 2);
    EXPECT_EQ(types->at(0), (StockTypeEntry{u"Rabbits"_s, u"Doe"_s, u"Buck"_s, u"Dam"_s, u"Sire"_s, u"Ring No."_s,
                                           u"Tattoo"_s, u"GC"_s}));
    EXPECT_EQ(types->at(1), (StockTypeEntry{u"Cavies"_s, u"Sow"_s, u"Boar"_s, {}, {}, {}, {}, {}}));
}

TEST_F(StockTypesTest, ReadsWindowsTextAsWellAsUtf8)
{
    const auto latin = StockTypes::read(write("\"Ch\xe8vres\",\"Ch\xe8vre\",\"Bouc\"\n"), nullptr);
    ASSERT_TRUE(latin);
    EXPECT_EQ(latin->at(0).stockType, u"Chèvres");
    const auto utf8 = StockTypes::read(write("\"Chèvres\",\"Chèvre\",\"Bouc\"\n"), nullptr);
    ASSERT_TRUE(utf8);
    EXPECT_EQ(utf8->at(0).femaleWord, u"Chèvre");
}

TEST_F(StockTypesTest, FileNameIsFoundInAnyCase)
{
    write("\"Mice\"\n", u"StockTypes.Txt"_s);
    EXPECT_EQ(StockTypes::locate(dir.path()), dir.filePath(u"StockTypes.Txt"_s));
    QTemporaryDir empty;
    EXPECT_EQ(StockTypes::locate(empty.path()), empty.filePath(u"stocktypes.txt"_s));
}

TEST_F(StockTypesTest, MissingFileIsReportedByNumber)
{
    FileError error;
    EXPECT_FALSE(StockTypes::read(dir.filePath(u"none.txt"_s), &error));
    EXPECT_EQ(error.number, 53);
    EXPECT_EQ(error.description, u"File not found");
}

TEST_F(StockTypesTest, MalformedLinesAreReadByTheSameRuleAndTheRestOfTheFileFollows)
{
    // A quote left open, an odd number of quotes, a NUL from a damaged disk.
    const char bytes[] = "\"Rabbits\",\"Doe\n"
                         "\"Mini \"Rex\",\"Doe\",\"Buck\"\n"
                         "\"Mi\0ce\",\"Doe\",\"Buck\"\n"
                         "\"Cavies\",\"Sow\",\"Boar\"\n";
    const auto types = StockTypes::read(write(QByteArray(bytes, sizeof bytes - 1)), nullptr);
    ASSERT_TRUE(types);
    ASSERT_EQ(types->size(), 4);
    EXPECT_EQ(types->at(0), (StockTypeEntry{u"Rabbits"_s, u"Doe"_s, {}, {}, {}, {}, {}, {}}));
    EXPECT_EQ(types->at(1), (StockTypeEntry{u"Mini Rex"_s, u"Doe"_s, u"Buck"_s, {}, {}, {}, {}, {}}));
    EXPECT_EQ(types->at(2).stockType, u"Mi"_s + QChar(0) + u"ce"_s);
    EXPECT_EQ(types->at(3), (StockTypeEntry{u"Cavies"_s, u"Sow"_s, u"Boar"_s, {}, {}, {}, {}, {}}));
}

TEST_F(StockTypesTest, QuotesInAFieldAreDroppedOnWritingSoTheLineReadsBack)
{
    const StockTypeEntry lops{u"Lops \"Mini\""_s, u"Doe\""_s,        u"Buck"_s, u"Dam"_s,
                              u"Sire"_s,          u"Ring \"No.\""_s, {},        {}};
    EXPECT_EQ(StockTypes::formatLine(lops),
              u"\"Lops Mini\",\"Doe\",\"Buck\",\"Dam\",\"Sire\",\"Ring No.\",\"\",\"\""_s);
    const QString path = write("\"Rabbits\",\"Doe\",\"Buck\"\n");
    ASSERT_TRUE(StockTypes::append(path, lops, nullptr));
    const auto types = StockTypes::read(path, nullptr);
    ASSERT_TRUE(types);
    ASSERT_EQ(types->size(), 2);
    EXPECT_EQ(
        types->at(1),
        (StockTypeEntry{u"Lops Mini"_s, u"Doe"_s, u"Buck"_s, u"Dam"_s, u"Sire"_s, u"Ring No."_s, {}, {}}));
}

TEST_F(StockTypesTest, AppendKeepsTheFilesLineEndsAndQuotesEveryField)
{
    const QString path = write("\"Rabbits\",\"Doe\",\"Buck\",\"Dam\",\"Sire\",\"Ring No.\",\"\",\"\"\r\n\"Cats\"");
    const StockTypeEntry llamas{u"Llamas"_s, u"Hembra"_s, u"Macho"_s, u"Dam"_s, u"Sire"_s, u"Tag"_s, {}, {}};
    ASSERT_TRUE(StockTypes::append(path, llamas, nullptr));
    EXPECT_TRUE(contents(path).endsWith(
        "\"Cats\"\r\n\"Llamas\",\"Hembra\",\"Macho\",\"Dam\",\"Sire\",\"Tag\",\"\",\"\"\r\n"));
    const auto types = StockTypes::read(path, nullptr);
    ASSERT_TRUE(types);
    EXPECT_EQ(types->last(), llamas);
}

TEST_F(StockTypesTest, CommaInAFieldShiftsTheColumns)
{
    const QString path = write("");
    StockTypes::append(path, {u"Pigs, Pot-bellied"_s, u"Sow"_s, u"Boar"_s, u"Dam"_s, u"Sire"_s, u"Tag"_s, {}, {}},
                       nullptr);
    const auto types = StockTypes::read(path, nullptr);
    ASSERT_TRUE(types);
    EXPECT_EQ(types->at(0).stockType, u"Pigs");
    EXPECT_EQ(types->at(0).femaleWord, u"Pot-bellied");
}

TEST(DeliveredStockTypes, HoldRabbitsAndTenMoreWithAllTheirWords)
{
    const auto types = StockTypes::read(QStringLiteral(TARVEX_SOURCE_DIR "/data/stocktypes.txt"), nullptr);
    ASSERT_TRUE(types);
    EXPECT_GE(types->size(), 11);
    EXPECT_EQ(types->at(0), (StockTypeEntry{u"Rabbits"_s, u"Doe"_s, u"Buck"_s, u"Dam"_s, u"Sire"_s, u"Ring No."_s,
                                           u"Tattoo"_s, u"GC No."_s}));
    for (const StockTypeEntry &e : *types) {
        EXPECT_FALSE(e.maleWord.isEmpty() || e.femaleWord.isEmpty() || e.fatherWord.isEmpty() ||
                     e.motherWord.isEmpty() || e.id1.isEmpty())
            << e.stockType.toStdString();
    }
}

} // namespace
