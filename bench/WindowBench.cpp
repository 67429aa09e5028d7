// The program's own windows on large studs, drawn offscreen: starting until the main window
// is on the screen, the next animal on the record screen, resizing the main window with the
// record screen open, and a quick search that every animal matches.
//
// The studs (100,000 and 1,000,000 animals) are generated once into the cache folder (see
// cachedStud) and each window opens a fresh copy of its stud in a temporary data folder,
// with settings of its own in which the stud is already catalogued, so that no
// registration or choice of stud comes up.
//
// Times are wall-clock times of the step alone (manual time); what each benchmark makes
// ready beforehand and puts away afterwards is not counted.
//
// peak_MB of the quick search is how far the resident peak (VmHWM) rose above the resident
// size just before the search. The peak is set back to the resident size before each search
// (/proc/self/clear_refs), so the figure belongs to the search even in a full run. Where the
// kernel refuses that, the counter peak_reset is 0 and the figure is the rise since the start
// of the benchmark, which holds only when the benchmark runs alone:
//   tarvex_window_bench --benchmark_filter='BM_QuickSearchAllMatch/1000000'
#include "BenchSupport.h"
#include "StudGenerator.h"

#include "core/Session.h"
#include "reporting/screens/FmQuickSrch.h"
#include "core/screens/FmOptions.h"
#include "platform/LocalDevices.h"
#include "stock/screens/FmStock.h"
#include "stock/screens/StockRecordPanel.h"
#include "ui/Application.h"

#include <QAbstractButton>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTreeView>
#include <QWindow>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

using bench::QuietPrompts;

constexpr int kWaitMs = 120000;

/// The stud of that many animals from the cache, made on first use.
QString stud(int animals)
{
    static std::map<int, QString> made;
    QString &path = made[animals];
    if (path.isEmpty())
        path = bench::cachedStud({animals, 40, 60});
    return path;
}

/// Fields of /proc/self/status in megabytes ("VmHWM", "VmRSS"); 0 where there is none.
double statusMB(const char *field)
{
    QFile f(u"/proc/self/status"_s);
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
        return 0;
    const QByteArray key = QByteArray(field) + ':';
    for (const QByteArray &line : f.readAll().split('\n'))
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().split(' ').value(0).toDouble() / 1024.0; // kB
    return 0;
}

/// Sets the resident peak back to the resident size; false where the kernel refuses.
bool resetPeak()
{
    QFile f(u"/proc/self/clear_refs"_s);
    return f.open(QIODevice::WriteOnly) && f.write("5") == 1;
}

/// Handles events until the window is shown and exposed, then once more for what that
/// posted; false when it did not come within the wait.
bool waitExposed(QWidget &w)
{
    const QDeadlineTimer deadline(kWaitMs);
    while (!(w.isVisible() && w.windowHandle() && w.windowHandle()->isExposed())) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    QCoreApplication::processEvents();
    return true;
}

template <typename T = QAbstractButton> T *child(QWidget &parent, const QString &name)
{
    return parent.findChild<T *>(name);
}

void click(QWidget &parent, const QString &name)
{
    if (auto *b = child(parent, name))
        b->click();
}

/// A temporary home for one run of the program: settings with the stud catalogued, the
/// data folder with a fresh copy of the stud. The XDG folders point here while it lives.
class Home
{
public:
    explicit Home(int animals)
    {
        const QString cached = stud(animals);
        if (cached.isEmpty())
            return;
        qputenv("XDG_CONFIG_HOME", m_dir.filePath(u"config"_s).toUtf8());
        qputenv("XDG_DATA_HOME", m_dir.filePath(u"data"_s).toUtf8());
        const QString data = m_dir.filePath(u"data/Tarvex"_s);
        QDir().mkpath(data);
        const QString file = data + u"/Bench.mdb"_s;
        if (!QFile::copy(cached, file))
            return;
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
        Session cataloguing;
        bench::catalogueStud(cataloguing, file);
        m_ready = true;
    }
    bool ready() const { return m_ready; }

private:
    QTemporaryDir m_dir;
    bool m_ready = false;
};

/// The program as main() makes it: a session, the main window started on the stud and
/// shown where it was left.
struct Program
{
    Session session;
    QuietPrompts prompts;
    std::unique_ptr<FmStock> window;

    bool start()
    {
        session.ProgramFolder = QStringLiteral(TARVEX_PROGRAM_FOLDER);
        Application::setPrompts(&prompts);
        window = std::make_unique<FmStock>(session, prompts);
        if (!window->start({}))
            return false;
        window->showRestored();
        return waitExposed(*window) && session.studOpen();
    }

    ~Program()
    {
        window.reset();
        Application::setPrompts(nullptr);
    }
};

/// A shown main window on a fresh copy of the stud, or the benchmark skipped with the reason.
struct Shown
{
    explicit Shown(benchmark::State &state) : home(int(state.range(0)))
    {
        if (!home.ready()) {
            state.SkipWithError("the stud could not be made or copied");
            return;
        }
        if (!program.start()) {
            state.SkipWithError("the main window did not come up on the stud");
            return;
        }
        ok = true;
    }
    FmStock &window() { return *program.window; }

    Home home;
    Program program;
    bool ok = false;
};

/// The record screen browsing the stud from its first animal; false, the benchmark skipped,
/// when it does not come up.
bool browse(FmStock &w, benchmark::State &state)
{
    click(w, u"CmdBrowse"_s);
    QCoreApplication::processEvents();
    auto *next = child(w, u"CmdNext"_s);
    if (!w.recordPanel()->isVisible() || !next || !next->isVisible() || !child<QLabel>(w, u"LblStock"_s)) {
        state.SkipWithError("the record screen is not browsing");
        return false;
    }
    return true;
}

void setCommon(benchmark::State &state)
{
    state.counters["animals"] = double(state.range(0));
}

// From the program's session and main window being made to the main window on the screen,
// with the stud open and every list filled (start() and showRestored(), as main() does).
void BM_StartToVisibleWindow(benchmark::State &state)
{
    const Home home(int(state.range(0)));
    if (!home.ready()) {
        state.SkipWithError("the stud could not be made or copied");
        return;
    }
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        auto program = std::make_unique<Program>();
        const bool started = program->start();
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
        if (!started) {
            state.SkipWithError("the main window did not come up on the stud");
            break;
        }
        program.reset(); // closes the stud and lets go of the lock for the next start
        QCoreApplication::processEvents();
    }
    setCommon(state);
}

// One press of the next-animal button while browsing: the next animal's details, its
// relatives and short pedigree put on the record screen. The repaint that follows is
// not counted. At the last animal browsing starts again from the first.
void BM_NextRecordInWindow(benchmark::State &state)
{
    Shown shown(state);
    if (!shown.ok || !browse(shown.window(), state))
        return;
    FmStock &w = shown.window();
    auto *next = child(w, u"CmdNext"_s);
    auto *name = child<QLabel>(w, u"LblStock"_s);
    qint64 restarts = 0;
    for (auto _ : state) {
        const QString before = name->text();
        QElapsedTimer clock;
        clock.start();
        next->click();
        if (name->text() == before) {
            // The end of the stud: browsing begins again, and the press is timed from there.
            click(w, u"CmdBrowse"_s);
            QCoreApplication::processEvents();
            ++restarts;
            clock.start();
            next->click();
        }
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
        QCoreApplication::processEvents();
    }
    setCommon(state);
    state.counters["restarts"] = double(restarts);
}

// The main window resized between 1024x768 and 1280x960 while the record screen is open,
// each time until the window has its new size and every event it caused (the new places
// of all controls, the repaint) has been handled.
void BM_ResizeMainWindow(benchmark::State &state)
{
    Shown shown(state);
    if (!shown.ok || !browse(shown.window(), state))
        return;
    FmStock &w = shown.window();
    const QSize sizes[] = {{1024, 768}, {1280, 960}};
    w.resize(sizes[1]);
    QCoreApplication::processEvents();
    int turn = 0;
    for (auto _ : state) {
        const QSize size = sizes[turn++ % 2];
        QElapsedTimer clock;
        clock.start();
        w.resize(size);
        const QDeadlineTimer deadline(kWaitMs);
        while (w.size() != size && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QCoreApplication::processEvents();
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
        if (w.size() != size) {
            state.SkipWithError("the window did not take its new size");
            break;
        }
    }
    setCommon(state);
}

// The quick search, as the record screen opens it while a new animal is being added,
// with the name "*" and no sex given, so that every animal matches: from the press of
// Search until the result list holds the animals and has been drawn.
void BM_QuickSearchAllMatch(benchmark::State &state)
{
    const double rssAtStart = statusMB("VmRSS");
    Shown shown(state);
    if (!shown.ok)
        return;
    FmStock &w = shown.window();
    click(w, u"CmdNew"_s);
    QCoreApplication::processEvents();
    double peak = 0;
    double rss = 0;
    double rows = 0;
    bool reset = true;
    for (auto _ : state) {
        FmQuickSrch search(shown.program.session, shown.program.prompts, QString(), &w);
        search.show();
        waitExposed(search);
        auto *name = child<QLineEdit>(search, u"TxtFName"_s);
        auto *list = child<QTreeView>(search, u"SList"_s);
        auto *go = child(search, u"CmdSearch"_s);
        if (!name || !list || !go) {
            state.SkipWithError("the quick search lacks its controls");
            break;
        }
        name->setText(u"*"_s);
        reset = resetPeak() && reset;
        const double before = reset ? statusMB("VmRSS") : rssAtStart;

        QElapsedTimer clock;
        clock.start();
        go->click();
        QCoreApplication::processEvents();
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);

        peak = std::max(peak, statusMB("VmHWM") - before);
        rss = statusMB("VmRSS");
        rows = list->model()->rowCount();
        if (rows == 0 || !list->isVisible()) {
            state.SkipWithError("the search showed no animals");
            break;
        }
        search.hide();
    }
    setCommon(state);
    state.counters["rows"] = rows;
    state.counters["peak_MB"] = peak;
    state.counters["rss_MB"] = rss;
    state.counters["peak_reset"] = reset ? 1 : 0;
}

// Each size is its own entry so that it gets its own count of iterations: at a million
// animals a step takes seconds, and few iterations keep a full run within minutes.
// The options screen made and shown over the main window: every setting read, the lists of
// the stud's breeds and statuses and of the machine's fonts filled.
void BM_OpenOptions(benchmark::State &state)
{
    Shown shown(state);
    if (!shown.ok)
        return;
    LocalDevices devices;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        FmOptions options(shown.program.session, shown.program.prompts, devices, &shown.window());
        options.show();
        QCoreApplication::processEvents();
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
    }
    setCommon(state);
}

#define WINDOW_BENCHMARK(function, animals, iterations)                                                         \
    BENCHMARK(function)->Arg(animals)->Iterations(iterations)->UseManualTime()->Unit(benchmark::kMillisecond)

WINDOW_BENCHMARK(BM_StartToVisibleWindow, 100000, 5);
WINDOW_BENCHMARK(BM_NextRecordInWindow, 100000, 100);
WINDOW_BENCHMARK(BM_ResizeMainWindow, 100000, 20);
WINDOW_BENCHMARK(BM_QuickSearchAllMatch, 100000, 3);
WINDOW_BENCHMARK(BM_OpenOptions, 100000, 10);
WINDOW_BENCHMARK(BM_StartToVisibleWindow, 1000000, 3);
WINDOW_BENCHMARK(BM_NextRecordInWindow, 1000000, 20);
WINDOW_BENCHMARK(BM_ResizeMainWindow, 1000000, 6);
WINDOW_BENCHMARK(BM_QuickSearchAllMatch, 1000000, 2);

} // namespace
