#include "support/QtPrinters.h"

#include "pedigree/PedigreeLayout.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

const PedigreeCaptions kCaptions{u"Sire: "_s, u"Dam: "_s};

PedigreeCell animal(qint32 number)
{
    PedigreeCell c;
    c.Number = number;
    c.Name = u"Name%1"_s.arg(number);
    c.BestAward = u"BOB"_s;
    c.Type = u"Rex"_s;
    c.Colour = u"Black"_s;
    c.RingNo = u"R%1"_s.arg(number);
    c.GenoType = u"aa B_"_s;
    c.Points = u"12 Stars"_s;
    return c;
}

TEST(PedigreeBoxText, EachStyleShowsItsFieldsByGeneration)
{
    const PedigreeCell c = animal(7);
    EXPECT_EQ(boxText(c, 1, 1, 1, kCaptions), u"Sire: Name7\rBOB\rRex\rBlack");
    EXPECT_EQ(boxText(c, 4, 2, 4, kCaptions), u"Dam: Name7\rBOB\rBlack");
    EXPECT_EQ(boxText(c, 5, 1, 1, kCaptions), u"Sire: Black");
    EXPECT_EQ(boxText(c, 3, 1, 2, kCaptions), u"Sire: Name7\rBOBR7") << "award and ring run together";
    EXPECT_EQ(boxText(c, 4, 1, 2, kCaptions), u"Sire: Name7\rBOB");
    EXPECT_EQ(boxText(c, 5, 1, 2, kCaptions), u"Sire: Name7\r");
    EXPECT_EQ(boxText(c, 2, 1, 3, kCaptions), u"Sire: Name7\rBOB");
    EXPECT_EQ(boxText(c, 2, 2, 5, kCaptions), u"Dam: Name7\raa B_");
    EXPECT_EQ(boxText(c, 5, 2, 5, kCaptions), u"Dam: aa B_");

    PedigreeCell unnamed = c;
    unnamed.Points = u"12"_s;
    EXPECT_EQ(boxText(unnamed, 3, 1, 1, kCaptions), u"Sire: Name7\rBOB\rRex\rBlack\r12\r")
        << "points show only when they are a plain number";
    PedigreeCell noAward = c;
    noAward.BestAward.clear();
    EXPECT_EQ(boxText(noAward, 4, 1, 2, kCaptions), u"Sire: Name7\rR7");
    EXPECT_EQ(boxText(PedigreeCell{}, 2, 2, 1, kCaptions), u"Dam: \r\r") << "an empty place shows its role";
}

TEST(PedigreeBoxes, LayoutSplitsEachColumnInTwoAndFontsShrink)
{
    PedigreeTable table;
    table.cell(1, 1) = animal(1);
    const QList<PedigreeBox> boxes = GetStockDetails(table, 1, 10, kCaptions);
    ASSERT_EQ(boxes.size(), 62);
    EXPECT_EQ(boxes[0].height, 16);
    EXPECT_EQ(boxes[1].top, 16);
    const PedigreeBox &gen3 = boxes[6];
    EXPECT_EQ(gen3.generation, 3);
    EXPECT_EQ(gen3.left, 2);
    EXPECT_EQ(gen3.height, 4) << "with three generations shown, the last column's boxes are 4 units high";
    EXPECT_EQ(boxes[61].height, 1);
    EXPECT_EQ(boxes[61].top, 31);
    EXPECT_EQ(boxes[0].tag, u"1");
    EXPECT_EQ(boxes[1].tag, u"-1");
    EXPECT_EQ(boxes[0].hint, u"Left Click to view full details or Right Click for summary details");
    EXPECT_TRUE(boxes[1].hint.isEmpty());

    QString name;
    int size = 0;
    boxFont(3, 10, &name, &size);
    EXPECT_EQ(name, u"MS Sans Serif");
    EXPECT_EQ(size, 6);
    boxFont(4, 11, &name, &size);
    EXPECT_EQ(name, u"Small Fonts");
    EXPECT_EQ(size, 7);
    boxFont(5, 11, &name, &size);
    EXPECT_EQ(name, u"MS Sans Serif") << "generation five tests S - 3";
    EXPECT_EQ(size, 8);
}

TEST(PedigreeBoxes, CreateModeOffersOnlyTheFrontier)
{
    PedigreeTable table;
    table.cell(0, 1) = animal(1);
    table.cell(1, 2) = animal(3); // the dam is known, the sire is not
    QList<PedigreeBox> boxes = GetStockDetails(table, 1, 10, kCaptions);
    markCreatable(table, boxes);
    EXPECT_EQ(boxes[0].back, PedigreeBox::Yellow);
    EXPECT_EQ(boxes[0].caption, u"Click Here To Create");
    EXPECT_EQ(boxes[0].hint, u"Click on Yellow box to create details in this pedigree position");
    EXPECT_EQ(boxes[1].back, PedigreeBox::ButtonFace);
    EXPECT_TRUE(boxes[1].hint.isEmpty());
    EXPECT_EQ(boxes[2].back, PedigreeBox::ButtonFace) << "the unknown sire's parents are not offered";
    EXPECT_EQ(boxes[4].back, PedigreeBox::Yellow) << "the dam's sire is";
    EXPECT_EQ(boxes[5].back, PedigreeBox::Yellow);
}

TEST(PedigreeBoxes, SummaryShowsWhatIsKnown)
{
    EXPECT_EQ(summaryText(animal(5), 3, kCaptions), u"Sire: Name5\rR5\rBOB\rRex\rBlack\r12 Stars\r");
    EXPECT_EQ(summaryText(PedigreeCell{}, 4, kCaptions), u"Dam: \r\r");
}

} // namespace
