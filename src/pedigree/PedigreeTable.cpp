#include "PedigreeTable.h"

#include "store/DaySerial.h"
#include "store/StudDatabase.h"

#include <QRegularExpression>

#include <cfenv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {

// The numeric value of a text as the old number reader took it: the leading number, 0 when
// there is none.
double leadingNumber(const QString &text)
{
    static const QRegularExpression number(u"^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)"_s);
    const auto match = number.match(text);
    return match.hasMatch() ? match.captured(0).trimmed().toDouble() : 0.0;
}

} // namespace

CellLocation Locate_Cell(int i)
{
    int generation = 1;
    int cells = 2;
    while (i > 2 * cells - 2 && generation < 5) {
        ++generation;
        cells *= 2;
    }
    return {generation, cells, cells - 1};
}

qint16 Total_Stars(Session &s, qint64 number)
{
    Table &awards = *s.Stud->AwardsDyn;
    awards.setIndex(u"PrimaryKey"_s);
    awards.seek(u">="_s, {number});
    double total = 0;
    while (!awards.noMatch() && awards.hasCurrent() && awards.field(u"Number"_s).toLongLong() == number) {
        const QVariant stars = awards.field(u"CCStars"_s);
        // Whole numbers at each addition, halves to the even number.
        if (!stars.isNull())
            total = std::nearbyint(total + leadingNumber(stars.toString()));
        awards.moveNext();
    }
    return static_cast<qint16>(total);
}

bool Get_Animal_Details(Session &s, qint64 number, PedigreeCell &c)
{
    for (QString *text : {&c.Name, &c.RingNo, &c.Sex, &c.DOB, &c.DOD, &c.Type, &c.Colour, &c.Breeder, &c.GenoType,
                          &c.Weight, &c.Id2, &c.Id3, &c.BestAward, &c.Points})
        text->clear();
    c.Sire = c.Dam = -1;
    Table &stock = *s.Stud->StockUtil;
    stock.setIndex(u"NumberKey"_s);
    stock.seek(u"="_s, {number});
    if (stock.noMatch())
        return false;
    const auto text = [&](const QString &f) { return stock.field(f).toString(); };
    c.Name = text(u"Name"_s);
    c.RingNo = text(u"RingNo"_s);
    c.Sex = text(u"Sex"_s);
    c.Type = text(u"Type"_s);
    c.Colour = text(u"Colour"_s);
    c.Breeder = text(u"Breeder"_s);
    c.GenoType = text(u"GenoType"_s);
    c.Id2 = text(u"Id2"_s);
    c.Id3 = text(u"Id3"_s);
    c.BestAward = text(u"BestAward"_s);
    const auto date = [&](const QString &f) {
        const QDate d = DaySerial::toDate(stock.field(f));
        return d.isValid() ? s.Dates.format(d) : QString();
    };
    c.DOB = date(u"DOB"_s);
    c.DOD = date(u"DOD"_s);
    c.Weight = QString::number(stock.field(u"Weight"_s).toDouble(), 'f', 2) + u' ' + s.WeightUnit;
    const QVariant sire = stock.field(u"Sire"_s);
    const QVariant dam = stock.field(u"Dam"_s);
    if (!sire.isNull())
        c.Sire = qint32(sire.toLongLong());
    if (!dam.isNull())
        c.Dam = qint32(dam.toLongLong());
    if (s.PointsOn) {
        const qint16 total = Total_Stars(s, number);
        if (total != 0)
            c.Points = QString::number(total) + u' ' + s.PointsName;
    }
    return true;
}

bool Load_Pedigree_Table(Session &s, PedigreeTable &table, qint64 currentStockNo, qint64 testSire, qint64 testDam,
                         QString *subjectType, const std::function<void(int)> &progress)
{
    s.Stud->StockUtil->refresh();
    for (int g = 1; g <= 5; ++g) {
        for (int p = 1; p <= (1 << g); ++p) {
            PedigreeCell &c = table.cell(g, p);
            c.Number = c.Sire = c.Dam = -1;
        }
    }
    PedigreeCell &subject = table.cell(0, 1);
    subject.Number = qint32(currentStockNo);
    if (currentStockNo != 0) {
        if (!Get_Animal_Details(s, currentStockNo, subject))
            return false;
        if (subjectType)
            *subjectType = subject.Type;
        table.cell(1, 1).Number = subject.Sire;
        table.cell(1, 2).Number = subject.Dam;
    } else {
        if (subjectType)
            subjectType->clear();
        table.cell(1, 1).Number = qint32(testSire);
        table.cell(1, 2).Number = qint32(testDam);
    }
    int visited = 0;
    for (int g = 1; g <= 5; ++g) {
        for (int p = 1; p <= (1 << g); ++p) {
            if (progress)
                progress(++visited);
            PedigreeCell &c = table.cell(g, p);
            if (c.Number == -1)
                continue;
            // A place whose record is gone keeps its number; its parents stay empty.
            if (Get_Animal_Details(s, c.Number, c)) {
                table.cell(g + 1, 2 * p - 1).Number = c.Sire;
                table.cell(g + 1, 2 * p).Number = c.Dam;
            }
        }
    }
    return true;
}

void LoadImages(Session &s, PedigreeTable &table)
{
    Table &images = *s.Stud->dbImages;
    images.setIndex(u"DefaultKey"_s);
    for (int g = 0; g <= 6; ++g) {
        for (int p = 1; p <= (1 << g); ++p) {
            PedigreeCell &c = table.cell(g, p);
            if (c.Number <= 0)
                continue;
            images.seek(u"="_s, {c.Number, 1});
            c.Image = images.noMatch() ? QString() : images.field(u"Path"_s).toString();
        }
    }
}

} // namespace tarvex
