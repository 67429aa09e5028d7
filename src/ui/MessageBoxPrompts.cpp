#include "MessageBoxPrompts.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

namespace tarvex {

Prompts::Answer MessageBoxPrompts::message(const QString &text, const QString &title, Icon icon, Buttons buttons)
{
    QMessageBox box(m_parent);
    box.setWindowTitle(title.isEmpty() ? m_defaultTitle : title);
    box.setText(text);
    switch (icon) {
    case Icon::Information:
        box.setIcon(QMessageBox::Information);
        break;
    case Icon::Exclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case Icon::Question:
        box.setIcon(QMessageBox::Question);
        break;
    case Icon::Stop:
        box.setIcon(QMessageBox::Critical);
        break;
    case Icon::None:
        break;
    }
    switch (buttons) {
    case Buttons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case Buttons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    case Buttons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    case Buttons::YesNoCancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        break;
    }
    switch (box.exec()) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    default:
        // Closing a question without an answer is a "No"; closing a notice is its "OK".
        return buttons == Buttons::YesNo ? Answer::No : buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
}

std::optional<QString> MessageBoxPrompts::input(const QString &prompt, const QString &title,
                                                const QString &defaultText)
{
    bool ok = false;
    const QString text = QInputDialog::getText(m_parent, title.isEmpty() ? m_defaultTitle : title, prompt,
                                               QLineEdit::Normal, defaultText, &ok);
    if (!ok)
        return std::nullopt;
    return text;
}

void MessageBoxPrompts::beep()
{
    QApplication::beep();
}

void MessageBoxPrompts::status(const QString &text)
{
    if (m_status)
        m_status(text);
}

} // namespace tarvex
