#include "core/ActionFailure.h"
#include "core/AppFolders.h"
#include "core/Session.h"
#include "pedigree/CoiCommand.h"
#include "pedigree/Inbreeding.h"
#include "stock/screens/FmStock.h"
#include "ui/Application.h"
#include "ui/MessageBoxPrompts.h"
#include "ui/ScaledStyle.h"

#include <QCoreApplication>
#include <QStatusBar>
#include <QTextStream>

#include <cstdio>
#include <cstring>

#include <exception>

using namespace Qt::StringLiterals;

namespace {

/// tarvex --coi STUD.mdb: the whole stud's coefficients as CSV, no window.
int coiCommand(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout), err(stderr);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 3) {
        err << "Usage: tarvex --coi STUD.mdb\n";
        return 1;
    }
    return tarvex::Coi_Command(args.at(2), tarvex::kAllGenerations, out, err);
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc >= 2 && std::strcmp(argv[1], "--coi") == 0)
        return coiCommand(argc, argv);
    tarvex::Application app(argc, argv);
    tarvex::Application::setApplicationName(u"Tarvex"_s);
    tarvex::Application::setApplicationVersion(QStringLiteral(TARVEX_VERSION));
    tarvex::Application::setOrganizationName(u"Tarvex Systems"_s);
    // Check boxes and radio buttons grow with the text of the forms.
    tarvex::ScaledStyle::install();

    tarvex::Session session;
    session.ProgramFolder = tarvex::AppFolders::programFolder(tarvex::Application::applicationDirPath());

    tarvex::MessageBoxPrompts prompts;
    tarvex::Application::setPrompts(&prompts);
    tarvex::FmStock window(session, prompts);
    prompts.setParent(&window);
    prompts.setStatusSink([&window](const QString &text) { window.statusBar()->showMessage(text); });

    try {
        if (!window.start(tarvex::Application::arguments().mid(1)))
            return 0;
    } catch (const std::exception &fault) {
        // The start has no event of a user's action around it: its fault is told here.
        prompts.show(tarvex::ActionFailure::text(u"Start Tarvex"_s, tarvex::ActionFailure::reason(fault)),
                     tarvex::ActionFailure::title(), tarvex::Prompts::Icon::Stop);
        return 1;
    }
    prompts.setDefaultTitle(session.AppName);
    window.showRestored();
    return tarvex::Application::exec();
}
