#include "MessageBoxPrompts.h"

#include "ClsResizer.h"
#include "ScaledStyle.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

namespace tarvex {

namespace {
/// A box waiting for the breeder's answer shows the arrow, even in the middle of long work.
struct ArrowWhileAsking
{
    ArrowWhileAsking() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~ArrowWhileAsking() { QApplication::restoreOverrideCursor(); }
    ArrowWhileAsking(const ArrowWhileAsking &) = delete;
    ArrowWhileAsking &operator=(const ArrowWhileAsking &) = delete;
};
} // namespace

QWidget *MessageBoxPrompts::owner() const
{
    // A box comes up over the screen open in front, or over the main window.
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    return m_parent;
}

QFont MessageBoxPrompts::boxFont(const QWidget *owner)
{
    // A box reads at the size of the form behind it.
    return ScaledStyle::desktopFont(ClsResizer::windowFontScale(owner));
}

Prompts::Answer MessageBoxPrompts::message(const QString &text, const QString &title, Icon icon, Buttons buttons)
{
    QWidget *over = owner();
    QMessageBox box(over);
    box.setFont(boxFont(over));
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
    case Buttons::YesNoDefaultNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::No);
        break;
    }
    const ArrowWhileAsking arrow;
    switch (box.exec()) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    default:
        // Closing a question without an answer is a "No"; closing a notice is its "OK".
        if (buttons == Buttons::YesNo || buttons == Buttons::YesNoDefaultNo)
            return Answer::No;
        return buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
}

std::optional<QString> MessageBoxPrompts::input(const QString &prompt, const QString &title,
                                                const QString &defaultText)
{
    QWidget *over = owner();
    QInputDialog dialog(over);
    dialog.setFont(boxFont(over));
    dialog.setWindowTitle(title.isEmpty() ? m_defaultTitle : title);
    dialog.setLabelText(prompt);
    dialog.setInputMode(QInputDialog::TextInput);
    dialog.setTextEchoMode(QLineEdit::Normal);
    dialog.setTextValue(defaultText);
    const ArrowWhileAsking arrow;
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
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
