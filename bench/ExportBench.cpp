// Copying a long list to a spreadsheet: a search result of a large stud, six columns of
// the texts an animal list shows (name, sex, colour, date of birth, breed, registration),
// laid out by writeListSheet and saved as a whole .xlsx file by XlsxSheetWriter in a
// temporary folder. Reading the list off the screen is not part of it. The argument is
// the number of rows; 10,000 beside 100,000 shows how the time grows.
#include "platform/XlsxSheetWriter.h"
#include "reporting/ListSheet.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <random>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

ListSheet animalList(int rows)
{
    static const QStringList colours = {
        u"Black"_s,           u"Blue"_s, u"Chocolate"_s,   u"Lilac"_s,     u"Agouti"_s,
        u"Ruby-Eyed White"_s, u"Fawn"_s, u"Sable Point"_s, u"Harlequin"_s, u"Siamese Smoke Pearl"_s};
    static const QStringList breeds = {u"Netherland Dwarf"_s, u"Mini Lop"_s, u"Rex"_s, u"Dutch"_s,
                                       u"English Spot"_s,     u"Lionhead"_s};
    static const QStringList stems = {u"Bramble"_s, u"Clover"_s, u"Thistle"_s, u"Juniper"_s, u"Hazel"_s,
                                      u"Rowan"_s,   u"Willow"_s, u"Sorrel"_s,  u"Tansy"_s,   u"Yarrow"_s};
    std::mt19937 random(7);
    ListSheet list;
    list.title = u"Search Results"_s;
    list.headings = {u"Name v"_s, u"Sex"_s, u"Colour"_s, u"DOB"_s, u"Breed"_s, u"Reg No"_s};
    list.rows.reserve(rows);
    for (int i = 0; i < rows; ++i) {
        const auto pick = [&](const QStringList &from) { return from.at(int(random() % from.size())); };
        list.rows.append({u"Fairfield %1 %2"_s.arg(pick(stems)).arg(i + 1),
                          random() % 2 ? u"Buck"_s : u"Doe"_s, pick(colours),
                          u"%1/%2/%3"_s.arg(int(1 + random() % 28), 2, 10, QChar(u'0'))
                              .arg(int(1 + random() % 12), 2, 10, QChar(u'0'))
                              .arg(int(2000 + random() % 25)),
                          pick(breeds), u"R%1"_s.arg(100000 + i)});
    }
    return list;
}

void BM_ExportXlsx(benchmark::State &state)
{
    const ListSheet list = animalList(int(state.range(0)));
    QTemporaryDir dir;
    const QString path = dir.filePath(u"Search Results.xlsx"_s);
    for (auto _ : state) {
        XlsxSheetWriter writer;
        if (const auto failure = writeListSheet(list, writer, path)) {
            state.SkipWithError(failure->toStdString().c_str());
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["file_bytes"] = double(QFileInfo(path).size());
}

} // namespace

BENCHMARK(BM_ExportXlsx)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
