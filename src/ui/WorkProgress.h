#pragma once

#include "core/Progress.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QPointer>

class QAbstractButton;
class QLabel;
class QProgressBar;
class QWidget;

namespace tarvex {

/// Long work shown on a screen's own progress bar and lines, with its Cancel button. While
/// the work runs the window shows the wait cursor and takes no input but a press of Cancel
/// or Escape; it repaints a few times a second. A box the work puts up meanwhile takes its
/// answer as usual.
class WorkProgress : public QObject, public Progress
{
public:
    /// Repaint: the screen repaints as the work goes. Still: the bar and lines are set but the
    /// screen is given no turn, for work that runs while Qt itself is painting (a printout
    /// drawn for the print preview), which must not be entered again.
    enum class Turns { Repaint, Still };

    WorkProgress(QWidget *window, QProgressBar *bar, QList<QLabel *> lines = {}, QAbstractButton *cancel = nullptr,
                 Turns turns = Turns::Repaint);
    ~WorkProgress() override;

    void start(qint64 steps, const QString &text = {}) override;
    void step(qint64 done, const QStringList &texts = {}) override;
    bool cancelled() override;
    bool due() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void show(bool now);
    void showTexts();
    bool aimedAtCancel(QObject *watched) const;
    bool inBoxOfTheWork(QObject *watched) const;

    QPointer<QWidget> m_window;
    QPointer<QProgressBar> m_bar;
    QList<QPointer<QLabel>> m_lines;
    QPointer<QAbstractButton> m_cancel;
    qint64 m_steps = 0;
    qint64 m_done = 0;
    QStringList m_texts;
    bool m_cancelled = false;
    Turns m_turns = Turns::Repaint;
    bool m_cancelWasEnabled = false;
    QElapsedTimer m_sinceShown;
};

} // namespace tarvex
