#include "PedigreeTable.h"

#include "breeding/Awards.h"
#include "images/DefaultImage.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"

using namespace Qt::StringLiterals;

namespace tarvex {


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
    // The awards in the order of their key: date, then the order they were entered.
    StarTotal total;
    s.Stud->handle().eachRow(u"SELECT CCStars FROM Awards WHERE Number = ? ORDER BY Date, \"Unique\", rowid"_s,
                             {number}, [&](const Row &row) {
                                 if (!row.isNull(u"CCStars"_s))
                                     total.add(row.text(u"CCStars"_s));
                             });
    return total.value();
}

bool Get_Animal_Details(Session &s, qint64 number, PedigreeCell &c)
{
    for (QString *text : {&c.Name, &c.RingNo, &c.Sex, &c.DOB, &c.DOD, &c.Type, &c.Colour, &c.Breeder, &c.GenoType,
                          &c.Weight, &c.Id2, &c.Id3, &c.BestAward, &c.Points})
        text->clear();
    c.Sire = c.Dam = -1;
    const std::optional<StockRow> animal = readAnimal(s.Stud->handle(), number);
    if (!animal)
        return false;
    c.Name = animal->name;
    c.RingNo = animal->ringNo;
    c.Sex = animal->sex;
    c.Type = animal->type;
    c.Colour = animal->colour;
    c.Breeder = animal->breeder;
    c.GenoType = animal->genotype;
    c.Id2 = animal->id2;
    c.Id3 = animal->id3;
    c.BestAward = animal->bestAward;
    const auto date = [&](const std::optional<QDate> &d) { return d ? s.Dates.format(*d) : QString(); };
    c.DOB = date(animal->dob);
    c.DOD = date(animal->dod);
    c.Weight = QString::number(animal->weight.value_or(0), 'f', 2) + u' ' + s.WeightUnit;
    if (animal->sire)
        c.Sire = qint32(*animal->sire);
    if (animal->dam)
        c.Dam = qint32(*animal->dam);
    if (s.PointsOn) {
        const qint16 total = Total_Stars(s, number);
        if (total != 0)
            c.Points = QString::number(total) + u' ' + s.PointsName;
    }
    return true;
}

bool Load_Pedigree_Table(Session &s, PedigreeTable &table, qint64 currentStockNo, qint64 testSire, qint64 testDam,
                         QString *subjectType, Progress &progress)
{
    progress.start(62, u"Accessing "_s + s.PedigreeWord);
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
            progress.step(++visited);
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
    Database &db = s.Stud->handle();
    for (int g = 0; g <= 6; ++g) {
        for (int p = 1; p <= (1 << g); ++p) {
            PedigreeCell &c = table.cell(g, p);
            if (c.Number <= 0)
                continue;
            c.Image = GetDefaultImagePath(db, c.Number);
        }
    }
}

} // namespace tarvex
