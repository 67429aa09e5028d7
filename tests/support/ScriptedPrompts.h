#pragma once

#include "QtPrinters.h"

#include "core/Prompts.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <deque>

namespace tarvex::test {

/// Prompts that record every message exactly and answer questions from a script.
/// A question with no scripted answer fails the test.
class ScriptedPrompts : public Prompts
{
public:
    struct Message
    {
        QString text;
        QString title;
        Icon icon;
        Buttons buttons;
    };

    void answer(Answer a) { m_answers.push_back(a); }
    void answerYes() { answer(Answer::Yes); }
    void answerNo() { answer(Answer::No); }

    Answer message(const QString &text, const QString &title, Icon icon, Buttons buttons) override;
    std::optional<QString> input(const QString &prompt, const QString &title, const QString &defaultText) override;
    void beep() override { ++beeps; }
    void status(const QString &text) override { statuses << text; }

    QList<Message> messages;
    QStringList statuses;
    int beeps = 0;
    bool allAnswered() const { return m_answers.empty(); }

    /// The texts shown, in order.
    QStringList texts() const;

private:
    std::deque<Answer> m_answers;
};

} // namespace tarvex::test
