#include "Action.h"

#include "Application.h"

#include "core/ActionFailure.h"

#include <QAbstractButton>
#include <QAction>

#include <exception>

using namespace Qt::StringLiterals;

namespace tarvex {

QString actionName(const QObject *control)
{
    QString caption;
    if (const auto *action = qobject_cast<const QAction *>(control))
        caption = action->text();
    else if (const auto *button = qobject_cast<const QAbstractButton *>(control))
        caption = button->text().isEmpty() ? button->toolTip() : button->text();
    caption.remove(u'&');
    return caption.trimmed();
}

void runAction(const QString &action, const std::function<void()> &work)
{
    try {
        work();
    } catch (...) {
        Application::reportFailure(action, ActionFailure::reason(std::current_exception()));
    }
}

} // namespace tarvex
