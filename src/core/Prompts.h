#pragma once

#include <QString>

#include <optional>

namespace tarvex {

/// How the logic talks to the user: every message box, question and input box goes
/// through here. The screens show real dialogs; tests answer from a script and check
/// every text exactly. An empty title means the program's own name.
class Prompts
{
public:
    enum class Icon { None, Information, Exclamation, Question, Stop };
    /// YesNoDefaultNo: Yes and No with No taken on Enter, for a question whose Yes overwrites.
    enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, YesNoDefaultNo };
    enum class Answer { Ok, Cancel, Yes, No };

    virtual ~Prompts() = default;

    virtual Answer message(const QString &text, const QString &title, Icon icon, Buttons buttons) = 0;
    /// An input box: the text typed, or nothing when cancelled.
    virtual std::optional<QString> input(const QString &prompt, const QString &title,
                                         const QString &defaultText) = 0;
    /// The bell, for a refused key press.
    virtual void beep() {}
    /// A line in the main window's status bar.
    virtual void status(const QString &text) { (void)text; }

    void show(const QString &text, const QString &title = {}, Icon icon = Icon::None)
    {
        message(text, title, icon, Buttons::Ok);
    }
    bool askYesNo(const QString &text, const QString &title, Icon icon = Icon::None)
    {
        return message(text, title, icon, Buttons::YesNo) == Answer::Yes;
    }
};

} // namespace tarvex
