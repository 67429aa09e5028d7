#include "StatusHints.h"

#include <QEvent>

namespace tarvex {

StatusHints::StatusHints(QStatusBar *bar, QObject *parent) : QObject(parent), m_bar(bar) {}

void StatusHints::add(QWidget *control, const QString &hint)
{
    m_hints.insert(control, hint);
    control->installEventFilter(this);
}

bool StatusHints::eventFilter(QObject *watched, QEvent *event)
{
    if (m_bar && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
        const auto it = m_hints.constFind(watched);
        if (it != m_hints.cend() && event->type() == QEvent::FocusIn)
            m_bar->showMessage(it.value());
        else if (it != m_hints.cend() && m_bar->currentMessage() == it.value())
            m_bar->clearMessage();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tarvex
