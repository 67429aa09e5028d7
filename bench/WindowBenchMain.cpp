// The entry point of the benchmark programs that drive the program's windows: real windows,
// drawn in memory rather than on a screen, with the program's application, style and
// names, and no one to answer a message.
#include "BenchSupport.h"

#include "ui/Application.h"
#include "ui/ScaledStyle.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace tarvex;

namespace {

/// Leaves out the offscreen platform's word that it cannot pass size hints on (said at every
/// window shown), so that the figures read as a table.
QtMessageHandler standardMessages = nullptr;

void quietPlatform(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (text.contains(u"propagateSizeHints"_s))
        return;
    if (standardMessages)
        standardMessages(type, context, text);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    standardMessages = qInstallMessageHandler(quietPlatform);
    Application app(argc, argv);
    Application::setApplicationName(u"Tarvex"_s);
    Application::setOrganizationName(u"Tarvex Systems"_s);
    ScaledStyle::install();
    // A fault of an action is told to no one: the benchmark sees it in its figures.
    bench::QuietPrompts quiet;
    Application::setFallbackPrompts(&quiet);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    Application::setFallbackPrompts(nullptr);
    return 0;
}
