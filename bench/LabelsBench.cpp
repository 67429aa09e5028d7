// Hutch labels to a PDF file: BM_LabelsPdf/500 prints the labels of 500 animals picked across
// a generated stud of 100,000 (a copy of the stud kept between runs), each animal read again
// with its parents' names, every detail and the comments box on 6 by 9 cm labels, eight to
// a landscape A4 page (63 pages), and the whole file written. Picking the animals is not
// part of it.
#include "BenchSupport.h"
#include "StudGenerator.h"

#include "core/Session.h"
#include "core/StudLoader.h"
#include "platform/QPainterSurface.h"
#include "reporting/HutchLabels.h"
#include "store/StockLookup.h"
#include "store/StudDatabase.h"

#include <QFileInfo>
#include <QPdfWriter>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

struct LabelStud
{
    LabelStud()
    {
        qputenv("XDG_CONFIG_HOME", dir.filePath(u"config"_s).toUtf8());
        const QString file = dir.filePath(u"Labels.mdb"_s);
        if (!bench::copyOfStud(file, {100000, 40, 60}))
            return;
        session.Dates = *Detect_Date_Format([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
        bench::catalogueStud(session, file);
        Load_Stud_Details(session, prompts);
        session.FatherWord = u"Sire"_s;
        session.MotherWord = u"Dam"_s;
    }

    QTemporaryDir dir;
    Session session;
    bench::QuietPrompts prompts;
};

LabelStud &stud()
{
    static auto s = std::make_unique<LabelStud>();
    return *s;
}

void BM_LabelsPdf(benchmark::State &state)
{
    LabelStud &s = stud();
    if (!s.session.Stud) {
        state.SkipWithError("the generated stud could not be opened");
        return;
    }
    // Animals spread over the list the screen shows, in its order.
    const QList<qint64> every = everyAnimal(s.session.Stud->handle());
    const qsizetype count = qsizetype(state.range(0));
    QList<qint64> picked;
    for (qsizetype i = 0; i < count && i < every.size(); ++i)
        picked << every.at(i * every.size() / count);

    LabelOptions options;
    options.include.fill(true);
    options.size = 0;
    options.colours = {0xC00000, 0x0000C0};
    const QString file = s.dir.filePath(u"labels.pdf"_s);
    bool printed = false;
    for (auto _ : state) {
        QPdfWriter pdf(file);
        pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                                      QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter));
        pdf.setResolution(600);
        QPainterSurface page(&pdf);
        printed = printHutchLabels(page, s.session, s.prompts, options, picked);
    }
    if (!printed)
        state.SkipWithError("no label was printed");
    state.SetItemsProcessed(state.iterations() * count);
    state.counters["file_kB"] = double(QFileInfo(file).size()) / 1024;
}

} // namespace

BENCHMARK(BM_LabelsPdf)->Arg(500)->Unit(benchmark::kMillisecond);
