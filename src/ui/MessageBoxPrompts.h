#pragma once

#include "core/Prompts.h"

#include <QFont>
#include <QPointer>
#include <QWidget>

#include <functional>

namespace tarvex {

/// The program's messages as the desktop's message boxes; an empty title shows the
/// program's name.
class MessageBoxPrompts : public Prompts
{
public:
    explicit MessageBoxPrompts(QWidget *parent = nullptr) : m_parent(parent) {}

    void setParent(QWidget *parent) { m_parent = parent; }
    void setStatusSink(std::function<void(const QString &)> sink) { m_status = std::move(sink); }
    void setDefaultTitle(const QString &title) { m_defaultTitle = title; }

    Answer message(const QString &text, const QString &title, Icon icon, Buttons buttons) override;
    std::optional<QString> input(const QString &prompt, const QString &title, const QString &defaultText) override;
    void beep() override;
    void status(const QString &text) override;

    /// The font of a box over a window: the desktop's, at the size the window's form has
    /// its fonts (the desktop's own when the window has no proportions).
    static QFont boxFont(const QWidget *owner);

private:
    QWidget *owner() const;

    QPointer<QWidget> m_parent;
    std::function<void(const QString &)> m_status;
    QString m_defaultTitle = QStringLiteral("Tarvex");
};

} // namespace tarvex
