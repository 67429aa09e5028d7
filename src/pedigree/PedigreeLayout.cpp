#include "PedigreeLayout.h"

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {
const QString kSansSerif = u"MS Sans Serif"_s;
const QString kSmall = u"Small Fonts"_s;
const QChar kLineEnd = u'\r';
} // namespace

void boxFont(int generation, int s, QString *name, int *size)
{
    switch (generation) {
    case 1:
        *name = kSansSerif, *size = s;
        break;
    case 2:
        *name = kSansSerif, *size = s - 1;
        break;
    case 3:
        *name = kSansSerif, *size = s - 4;
        break;
    case 4:
        if (s - 4 < 8)
            *name = kSmall, *size = 7;
        else
            *name = kSansSerif, *size = 8;
        break;
    default:
        // Generation 5 tests S - 3 where generation 4 tests S - 4; it has always been so.
        if (s - 3 < 8)
            *name = kSmall, *size = 6;
        else
            *name = kSansSerif, *size = 8;
        break;
    }
}

QString boxText(const PedigreeCell &c, int g, int p, int style, const PedigreeCaptions &captions)
{
    QString t = (p % 2 == 0) ? captions.dam : captions.sire;
    switch (style) {
    case 1:
    case 4: {
        if (g < 5)
            t += c.Name + kLineEnd;
        if (g < 5 && !c.BestAward.isEmpty())
            t += c.BestAward + kLineEnd;
        if (g < 4)
            t += c.Type + kLineEnd;
        t += c.Colour;
        // Points that end in the points name are no number: the line shows only when the
        // points have no name. The summary is where points are seen.
        bool number = false;
        const double points = c.Points.trimmed().toDouble(&number);
        if (g < 4 && number && points != 0)
            t += kLineEnd + c.Points + kLineEnd;
        break;
    }
    case 2:
    case 3:
        t += c.Name + kLineEnd;
        if (g < 5)
            t += c.BestAward;
        if (style == 2 && (g < 4 || (g == 4 && c.BestAward.isEmpty())))
            t += c.RingNo;
        break;
    default:
        if (g < 5)
            t += c.Name + kLineEnd;
        t += c.GenoType;
        break;
    }
    return t;
}

void Fill_Box(PedigreeBox &b, const PedigreeTable &table, int style, int baseFontSize,
              const PedigreeCaptions &captions)
{
    boxFont(b.generation, baseFontSize, &b.fontName, &b.fontSize);
    const PedigreeCell &c = table.cell(b.generation, b.position);
    b.caption = boxText(c, b.generation, b.position, style, captions);
    b.hint.clear();
    if (c.Number != -1)
        b.hint = u"Left Click to view full details or Right Click for summary details"_s;
    b.tag = QString::number(c.Number);
}

QList<PedigreeBox> GetStockDetails(const PedigreeTable &table, int style, int baseFontSize,
                                   const PedigreeCaptions &captions)
{
    QList<PedigreeBox> boxes;
    boxes.reserve(62);
    for (int i = 1; i <= 62; ++i) {
        const CellLocation at = Locate_Cell(i);
        PedigreeBox b;
        b.index = i;
        b.generation = at.generation;
        b.position = at.position(i);
        b.height = 32.0 / at.cells;
        b.top = (i - at.base) * b.height;
        b.left = at.generation - 1;
        Fill_Box(b, table, style, baseFontSize, captions);
        boxes << b;
    }
    return boxes;
}

void markCreatable(const PedigreeTable &table, QList<PedigreeBox> &boxes)
{
    for (PedigreeBox &b : boxes) {
        b.hint.clear();
        const PedigreeCell &c = table.cell(b.generation, b.position);
        if (c.Number != -1)
            continue;
        if (b.generation == 1 || table.cell(b.generation - 1, (b.position + 1) / 2).Number != -1) {
            b.back = PedigreeBox::Yellow;
            b.caption = u"Click Here To Create"_s;
            b.hint = u"Click on Yellow box to create details in this pedigree position"_s;
        }
    }
}

QString summaryText(const PedigreeCell &c, int index, const PedigreeCaptions &captions)
{
    QString t = (index % 2 == 0) ? captions.dam : captions.sire;
    t += c.Name + kLineEnd;
    if (!c.RingNo.isEmpty())
        t += c.RingNo + kLineEnd;
    if (!c.BestAward.isEmpty())
        t += c.BestAward + kLineEnd;
    t += c.Type + kLineEnd + c.Colour;
    if (!c.Points.isEmpty())
        t += kLineEnd + c.Points + kLineEnd;
    return t;
}

} // namespace tarvex
