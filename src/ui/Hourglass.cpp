#include "Hourglass.h"

#include <QApplication>
#include <QHash>

namespace tarvex::Hourglass {

namespace {
QHash<QWidget *, int> &depth()
{
    static QHash<QWidget *, int> d;
    return d;
}
} // namespace

void show(QWidget *window)
{
    if (depth()[window]++ == 0) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        if (window)
            window->setEnabled(false);
    }
}

void hide(QWidget *window)
{
    auto it = depth().find(window);
    if (it == depth().end())
        return;
    if (--it.value() == 0) {
        depth().erase(it);
        QApplication::restoreOverrideCursor();
        if (window)
            window->setEnabled(true);
    }
}

} // namespace tarvex::Hourglass
