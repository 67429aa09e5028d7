#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStatusBar>
#include <QWidget>

namespace tarvex {

/// Shows a control's hint in the status bar while the control has the focus.
class StatusHints : public QObject
{
public:
    StatusHints(QStatusBar *bar, QObject *parent);
    void add(QWidget *control, const QString &hint);
    QString hint(const QWidget *control) const { return m_hints.value(control); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPointer<QStatusBar> m_bar;
    QHash<const QObject *, QString> m_hints;
};

} // namespace tarvex
