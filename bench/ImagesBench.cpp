// The picture list of an animal with 50 photographs of 6000 by 4000 pixels (a camera's 24
// megapixels, JPEG), drawn offscreen: opening the window until its first two slots show
// their pictures, and moving the scroll bar on by a pair until the next two show theirs.
//
// The photographs are made once and kept between runs in the cache folder
// ($TARVEX_BENCH_CACHE, else $XDG_CACHE_HOME/tarvex-bench, as the studs are), in a folder
// named by their shape and the version of their making. Each is a different picture with
// the fine grain of a photograph, so that its file is as large and as slow to decode as a
// camera's. The stud is the delivered empty one in a temporary data folder, with one animal
// whose 50 entries point at the kept files.
//
// Times are wall-clock times of the step alone (manual time).
#include "BenchSupport.h"

#include "core/DateFormat.h"
#include "core/Session.h"
#include "core/StudLoader.h"
#include "images/screens/FmImages.h"
#include "store/Database.h"
#include "store/StudDatabase.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QWindow>

#include <benchmark/benchmark.h>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

using bench::QuietPrompts;

constexpr int kWaitMs = 60000;
constexpr QSize kPhotoSize(6000, 4000);
// Raised whenever the photographs are made differently, so that kept ones are made again.
constexpr int kPhotoVersion = 1;

/// A photograph-like picture: soft light across it, a few large shapes, and a grain of a
/// few levels on every pixel, as a camera's sensor leaves.
QImage photograph(int seed)
{
    QImage image(kPhotoSize, QImage::Format_RGB32);
    QRandomGenerator random(quint32(seed) * 7919u + 17u);
    {
        QPainter g(&image);
        QLinearGradient light(0, 0, kPhotoSize.width(), kPhotoSize.height());
        light.setColorAt(0, QColor::fromHsv((seed * 37) % 360, 90, 230));
        light.setColorAt(1, QColor::fromHsv((seed * 37 + 120) % 360, 140, 70));
        g.fillRect(image.rect(), light);
        g.setRenderHint(QPainter::Antialiasing);
        g.setPen(Qt::NoPen);
        for (int i = 0; i < 12; ++i) {
            g.setBrush(QColor::fromHsv(int(random.bounded(360)), 60 + int(random.bounded(150)),
                                       60 + int(random.bounded(180)), 170));
            g.drawEllipse(
                QPoint(int(random.bounded(kPhotoSize.width())), int(random.bounded(kPhotoSize.height()))),
                300 + int(random.bounded(1200)), 300 + int(random.bounded(900)));
        }
    }
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); x += 2) {
            const quint32 bits = random.generate();
            for (int k = 0; k < 2 && x + k < image.width(); ++k) {
                const int grain = int((bits >> (k * 8)) & 15) - 8;
                const QRgb p = line[x + k];
                line[x + k] = qRgb(std::clamp(qRed(p) + grain, 0, 255), std::clamp(qGreen(p) + grain, 0, 255),
                                   std::clamp(qBlue(p) + grain, 0, 255));
            }
        }
    }
    return image;
}

/// The kept photographs, made where missing; empty when they cannot be made.
QStringList photographs(int count)
{
    QString folder = qEnvironmentVariable("TARVEX_BENCH_CACHE");
    if (folder.isEmpty())
        folder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + u"/tarvex-bench"_s;
    folder += u"/photos-%1x%2-v%3"_s.arg(kPhotoSize.width()).arg(kPhotoSize.height()).arg(kPhotoVersion);
    if (!QDir().mkpath(folder))
        return {};
    QStringList paths;
    for (int i = 1; i <= count; ++i) {
        const QString path = QDir(folder).filePath(u"photo-%1.jpg"_s.arg(i, 3, 10, QChar(u'0')));
        if (!QFileInfo::exists(path)) {
            // Written beside its place and renamed, so a run stopped part way leaves no
            // half-written photograph to be taken for a whole one.
            const QString part = path + u".part"_s;
            if (!photograph(i).save(part, "JPEG", 90) || !QFile::rename(part, path)) {
                QFile::remove(part);
                return {};
            }
        }
        paths << path;
    }
    return paths;
}

/// A stud in a temporary data folder, opened as the program opens it, with one doe whose
/// picture list holds the photographs.
struct PictureStud
{
    explicit PictureStud(int pictures)
    {
        qputenv("XDG_CONFIG_HOME", dir.filePath(u"config"_s).toUtf8());
        const QStringList photos = photographs(pictures);
        if (photos.size() != pictures)
            return;
        const QString file = dir.filePath(u"Bench.mdb"_s);
        if (!QFile::copy(QStringLiteral(TARVEX_PROGRAM_FOLDER "EmptyStock.mdb"), file))
            return;
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
        session.ProgramFolder = QStringLiteral(TARVEX_PROGRAM_FOLDER);
        bench::catalogueStud(session, file);
        session.Dates = *Detect_Date_Format([](const QDate &d) { return d.toString(u"dd/MM/yyyy"_s); });
        if (Load_Stud_Details(session, prompts) != LoadResult::Opened)
            return;
        Database &db = session.Stud->handle();
        Transaction tx(db);
        db.execute(u"INSERT INTO Stock (Name, Sex, Archive) VALUES ('Fairfield Thistle', 'Doe', 'No')"_s);
        number = db.sql().getLastInsertRowid();
        for (int i = 0; i < photos.size(); ++i)
            db.execute(u"INSERT INTO Images (Number, imageno, Caption, Comments, Path, \"Default\") "
                       u"VALUES (?, ?, ?, ?, ?, ?)"_s,
                       {number, i + 1, u"Show photograph %1"_s.arg(i + 1), u"Taken at the spring show"_s,
                        photos.at(i), i == 0 ? 1 : 0});
        tx.commit();
        fileMB = double(QFileInfo(photos.first()).size()) / (1024 * 1024);
        ready = true;
    }

    QTemporaryDir dir;
    Session session;
    QuietPrompts prompts;
    qint64 number = 0;
    double fileMB = 0;
    bool ready = false;
};

/// Whether both slots show a picture read from its file (not the stand-by picture).
bool bothShown(FmImages &w)
{
    const auto *standBy = w.findChild<QLabel *>(u"pbNotFound"_s);
    for (const char *name : {"imgpic_0", "imgpic_1"}) {
        const auto *picture = w.findChild<QLabel *>(QString::fromLatin1(name));
        if (!picture || picture->pixmap().isNull() || !picture->isVisible() ||
            picture->pixmap().cacheKey() == standBy->pixmap().cacheKey())
            return false;
    }
    return true;
}

/// Handles events until the window is on the screen with both pictures, then once more for
/// what that posted (its first drawing); false when that did not come within the wait.
bool waitShown(FmImages &w)
{
    const QDeadlineTimer deadline(kWaitMs);
    while (!(w.isVisible() && w.windowHandle() && w.windowHandle()->isExposed() && bothShown(w))) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    QCoreApplication::processEvents();
    return true;
}

// From the window being made (the list read from the stud) to the window on the screen with
// the first two photographs read for their slots and drawn.
void BM_OpenImageList(benchmark::State &state)
{
    PictureStud stud(int(state.range(0)));
    if (!stud.ready) {
        state.SkipWithError("the stud or the photographs could not be made");
        return;
    }
    int shownWidth = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        auto w = std::make_unique<FmImages>(stud.session, stud.prompts, stud.number, u"Fairfield Thistle"_s);
        w->show();
        const bool shown = waitShown(*w);
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
        if (!shown) {
            state.SkipWithError("the first two pictures did not show");
            break;
        }
        shownWidth = w->findChild<QLabel *>(u"imgpic_0"_s)->pixmap().width();
        w.reset();
        QCoreApplication::processEvents();
    }
    state.counters["pictures"] = double(state.range(0));
    state.counters["file_MB"] = stud.fileMB;
    state.counters["read_px_wide"] = shownWidth;
}

// One step of the scroll bar by a pair (a click beside its handle), from the click until the
// next two photographs, read for the first time, are shown. At the end of the list the
// window is opened again, untimed, so that every step reads two photographs.
void BM_NextPairOfPictures(benchmark::State &state)
{
    PictureStud stud(int(state.range(0)));
    if (!stud.ready) {
        state.SkipWithError("the stud or the photographs could not be made");
        return;
    }
    std::unique_ptr<FmImages> w;
    QScrollBar *bar = nullptr;
    const auto reopen = [&] {
        w = std::make_unique<FmImages>(stud.session, stud.prompts, stud.number, u"Fairfield Thistle"_s);
        w->show();
        waitShown(*w);
        bar = w->findChild<QScrollBar *>(u"HsView"_s);
    };
    reopen();
    for (auto _ : state) {
        if (bar->value() + 2 > bar->maximum()) {
            state.PauseTiming();
            reopen();
            state.ResumeTiming();
        }
        QElapsedTimer clock;
        clock.start();
        bar->triggerAction(QScrollBar::SliderPageStepAdd);
        QCoreApplication::processEvents();
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
        if (!bothShown(*w)) {
            state.SkipWithError("the next two pictures did not show");
            break;
        }
    }
    state.counters["pictures"] = double(state.range(0));
}

BENCHMARK(BM_OpenImageList)->Arg(50)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NextPairOfPictures)->Arg(50)->Iterations(20)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
