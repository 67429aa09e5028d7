#include "Application.h"

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

QString caption(QString text)
{
    text.remove(u'&');
    return text.trimmed();
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

QString Application::actionOf(QObject *receiver, QEvent *event)
{
    (void)event;
    if (auto *action = qobject_cast<QAction *>(receiver))
        return caption(action->text());
    if (auto *menu = qobject_cast<QMenu *>(receiver)) {
        if (QAction *active = menu->activeAction())
            return caption(active->text());
        return {};
    }
    // A click may land on a part of a button; the button is what was pressed.
    for (QObject *o = receiver; o; o = o->parent()) {
        if (auto *button = qobject_cast<QAbstractButton *>(o))
            return caption(button->text().isEmpty() ? button->toolTip() : button->text());
        if (o->isWidgetType() && static_cast<QWidget *>(o)->isWindow())
            break;
    }
    return {};
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception &fault) {
        reportFailure(actionOf(receiver, event), ActionFailure::reason(fault));
    } catch (...) {
        reportFailure(actionOf(receiver, event), u"An unexpected fault occurred."_s);
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
