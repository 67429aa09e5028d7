// Merging a pedigree into the breeder's template: every field of every ancestor to the fifth
// generation (63 places, 14 fields) and six pictures, into a template of about three pages,
// saved as the merged copy.
#include "BenchSupport.h"

#include "pedigree/WordMerge.h"
#include "platform/DocumentWordProcessor.h"
#include "platform/TemplateDocument.h"
#include "store/StudDatabase.h"

#include <QImage>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

void BM_MergeFiveGenerations(benchmark::State &state)
{
    static bench::LargeStud stud;
    const qint64 subject = 100000;
    PedigreeTable table;
    QString type;
    if (!Load_Pedigree_Table(stud.session, table, subject, -1, -1, &type)) {
        state.SkipWithError("no pedigree");
        return;
    }
    // Photographs of the subject, its parents and three grandparents.
    QTemporaryDir work;
    QImage photo(1200, 900, QImage::Format_RGB32);
    photo.fill(Qt::darkGreen);
    const std::pair<int, int> places[] = {{0, 1}, {1, 1}, {1, 2}, {2, 1}, {2, 2}, {2, 3}};
    int n = 0;
    for (const auto &[g, p] : places) {
        const QString file = work.filePath(u"photo%1.jpg"_s.arg(++n));
        photo.save(file, "JPG");
        stud.session.Stud->handle().execute(
            u"INSERT INTO Images (Number, imageno, Caption, Path, \"Default\") VALUES (?, 1, 'Photo', ?, 1)"_s,
            {table.cell(g, p).Number, file});
    }
    const QString templ = QStringLiteral(TARVEX_SOURCE_DIR) + u"/tests/fixtures/templates/five-generations.docx"_s;
    const QString merged = work.filePath(u"merged.docx"_s);
    bench::QuietPrompts prompts;
    for (auto _ : state) {
        DocumentWordProcessor word;
        word.open(templ);
        if (!mergePedigree(stud.session, prompts, word, table, subject))
            state.SkipWithError("the merge failed");
        word.save(merged, u"docx"_s);
    }
    // Every place filled: no placeholder is left, and the pictures are in.
    auto check = TemplateDocument::open(merged);
    for (const QString &left : {u"Gen5.Name"_s, u"Gen0.Image"_s, u"Header.StudName"_s})
        if (check->contains(left))
            state.SkipWithError("a placeholder was left");
}
BENCHMARK(BM_MergeFiveGenerations)->Unit(benchmark::kMillisecond);

} // namespace
