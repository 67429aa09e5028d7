#pragma once

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace tarvex {

/// Long work: the wait cursor shows and the window takes no input until this goes.
class Hourglass
{
public:
    explicit Hourglass(QWidget *window) : m_window(window)
    {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        if (m_window)
            m_window->setEnabled(false);
    }
    ~Hourglass()
    {
        if (m_window)
            m_window->setEnabled(true);
        QApplication::restoreOverrideCursor();
    }
    Hourglass(const Hourglass &) = delete;
    Hourglass &operator=(const Hourglass &) = delete;

private:
    QPointer<QWidget> m_window;
};

} // namespace tarvex
