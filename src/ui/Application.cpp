#include "Application.h"

#include "Action.h"
#include "MessageBoxPrompts.h"

#include "core/ActionFailure.h"

#include <QAbstractButton>
#include <QAction>
#include <QMenu>

#include <exception>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {
Prompts *&failurePrompts()
{
    static Prompts *prompts = nullptr;
    return prompts;
}

Prompts *&fallbackPrompts()
{
    static Prompts *prompts = nullptr;
    return prompts;
}
} // namespace

Application::Application(int &argc, char **argv) : QApplication(argc, argv) {}

void Application::setPrompts(Prompts *prompts)
{
    failurePrompts() = prompts;
}

void Application::setFallbackPrompts(Prompts *prompts)
{
    fallbackPrompts() = prompts;
}

QString Application::actionOf(QObject *receiver)
{
    if (auto *menu = qobject_cast<QMenu *>(receiver))
        return actionName(menu->activeAction());
    // A click may land on a part of a button; the button is what was pressed.
    for (QObject *o = receiver; o; o = o->parent()) {
        if (qobject_cast<QAction *>(o) || qobject_cast<QAbstractButton *>(o))
            return actionName(o);
        if (o->isWidgetType() && static_cast<QWidget *>(o)->isWindow())
            break;
    }
    return {};
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        reportFailure(actionOf(receiver), ActionFailure::reason(std::current_exception()));
    }
    return true;
}

void Application::reportFailure(const QString &action, const QString &reason)
{
    // A fault while its box is up (a repaint of a broken screen) is not reported again.
    static bool reporting = false;
    if (reporting)
        return;
    reporting = true;
    static MessageBoxPrompts boxes;
    Prompts &prompts = failurePrompts()    ? *failurePrompts()
                       : fallbackPrompts() ? *fallbackPrompts()
                                           : boxes;
    prompts.show(ActionFailure::text(action, reason), ActionFailure::title(), Prompts::Icon::Stop);
    reporting = false;
}

} // namespace tarvex
