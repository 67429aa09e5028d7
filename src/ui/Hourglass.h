#pragma once

#include <QPointer>
#include <QWidget>

namespace tarvex {

/// Long work: the wait cursor shows and the window takes no input until it is hidden
/// again. Shows nest: the window comes back with the last hide.
namespace Hourglass {
void show(QWidget *window);
void hide(QWidget *window);
} // namespace Hourglass

/// The hourglass for the length of a scope.
class HourglassScope
{
public:
    explicit HourglassScope(QWidget *window) : m_window(window) { Hourglass::show(window); }
    ~HourglassScope() { Hourglass::hide(m_window); }
    HourglassScope(const HourglassScope &) = delete;
    HourglassScope &operator=(const HourglassScope &) = delete;

private:
    QPointer<QWidget> m_window;
};

} // namespace tarvex
