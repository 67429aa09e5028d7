#include "core/AppFolders.h"
#include "core/Session.h"
#include "stock/screens/FmStock.h"
#include "ui/MessageBoxPrompts.h"

#include <QApplication>
#include <QStatusBar>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"Tarvex"_s);
    QApplication::setApplicationVersion(QStringLiteral(TARVEX_VERSION));
    QApplication::setOrganizationName(u"Tarvex Systems"_s);

    tarvex::Session session;
    session.ProgramFolder = tarvex::AppFolders::programFolder(QApplication::applicationDirPath());

    tarvex::MessageBoxPrompts prompts;
    tarvex::FmStock window(session, prompts);
    prompts.setParent(&window);
    prompts.setStatusSink([&window](const QString &text) { window.statusBar()->showMessage(text); });

    if (!window.start(QApplication::arguments().mid(1)))
        return 0;
    prompts.setDefaultTitle(session.AppName);
    window.showRestored();
    return QApplication::exec();
}
