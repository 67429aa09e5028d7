#include "WorkProgress.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QWidget>
#include <QWindow>

namespace tarvex {

namespace {
// The bar's own range is a whole number; long work is shown in ten-thousandths.
constexpr int kBarSteps = 10000;
constexpr int kShowEveryMs = 50;

bool isUserInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Wheel:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}
} // namespace

WorkProgress::WorkProgress(QWidget *window, QProgressBar *bar, QList<QLabel *> lines, QAbstractButton *cancel,
                           Turns turns)
    : m_window(window), m_bar(bar), m_cancel(cancel), m_turns(turns)
{
    for (QLabel *l : lines)
        m_lines << l;
    if (m_cancel) {
        m_cancelWasEnabled = m_cancel->isEnabled();
        m_cancel->setEnabled(true);
        m_cancel->setCursor(Qt::ArrowCursor);
        connect(m_cancel, &QAbstractButton::clicked, this, [this] { m_cancelled = true; });
    }
    if (m_window)
        m_window->setCursor(Qt::WaitCursor);
    qApp->installEventFilter(this);
}

WorkProgress::~WorkProgress()
{
    // The screen is left showing where the work ended.
    showTexts();
    qApp->removeEventFilter(this);
    if (m_window)
        m_window->unsetCursor();
    if (m_cancel) {
        m_cancel->unsetCursor();
        m_cancel->setEnabled(m_cancelWasEnabled);
    }
}

void WorkProgress::start(qint64 steps, const QString &text)
{
    m_steps = steps;
    m_done = 0;
    if (m_bar) {
        // A work of unknown length shows a busy bar.
        m_bar->setRange(0, steps > 0 ? int(std::min<qint64>(steps, kBarSteps)) : 0);
        m_bar->setValue(0);
    }
    if (!text.isEmpty() && !m_lines.isEmpty() && m_lines.first())
        m_lines.first()->setText(text);
    show(true);
}

void WorkProgress::step(qint64 done, const QStringList &texts)
{
    m_done = done;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        if (texts.at(i).isEmpty())
            continue;
        if (m_texts.size() <= i)
            m_texts.resize(i + 1);
        m_texts[i] = texts.at(i);
    }
    show(false);
}

bool WorkProgress::cancelled()
{
    show(false);
    return m_cancelled;
}

bool WorkProgress::due()
{
    return !m_sinceShown.isValid() || m_sinceShown.elapsed() >= kShowEveryMs;
}

void WorkProgress::showTexts()
{
    if (m_bar && m_steps > 0) {
        const qint64 value = m_steps <= kBarSteps ? m_done : m_done * kBarSteps / m_steps;
        m_bar->setValue(int(std::clamp<qint64>(value, 0, m_bar->maximum())));
    }
    for (qsizetype i = 0; i < m_texts.size() && i < m_lines.size(); ++i)
        if (m_lines.at(i) && !m_texts.at(i).isEmpty())
            m_lines.at(i)->setText(m_texts.at(i));
}

void WorkProgress::show(bool now)
{
    if (!now && m_sinceShown.isValid() && m_sinceShown.elapsed() < kShowEveryMs)
        return;
    showTexts();
    // The screen repaints and the Cancel button can be pressed; every other press waits.
    if (m_turns == Turns::Repaint)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    m_sinceShown.start();
}

bool WorkProgress::aimedAtCancel(QObject *watched) const
{
    for (QObject *o = watched; o; o = o->parent())
        if (o == m_cancel)
            return true;
    return false;
}

bool WorkProgress::inBoxOfTheWork(QObject *watched) const
{
    // A box the work itself puts up (load another disk, try again) comes up in front of the
    // window and waits for its answer.
    QWidget *box = QApplication::activeModalWidget();
    if (!box || !m_window || box == m_window->window() || box->isAncestorOf(m_window))
        return false;
    if (auto *widget = qobject_cast<QWidget *>(watched))
        return widget->window() == box;
    return watched == box->windowHandle();
}

bool WorkProgress::eventFilter(QObject *watched, QEvent *event)
{
    if (!isUserInput(event->type()) || inBoxOfTheWork(watched))
        return false;
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape &&
        m_cancel) {
        m_cancelled = true;
        return true;
    }
    if (m_cancel && event->type() != QEvent::Close && aimedAtCancel(watched))
        return false;
    return true;
}

} // namespace tarvex
