#include "core/ActionFailure.h"
#include "core/AppFolders.h"
#include "core/Session.h"
#include "stock/screens/FmStock.h"
#include "ui/Application.h"
#include "ui/MessageBoxPrompts.h"
#include "ui/ScaledStyle.h"

#include <QStatusBar>

#include <exception>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
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
