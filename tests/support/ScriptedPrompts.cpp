#include "ScriptedPrompts.h"

#include <gtest/gtest.h>

namespace tarvex::test {

Prompts::Answer ScriptedPrompts::message(const QString &text, const QString &title, Icon icon, Buttons buttons)
{
    messages.append({text, title, icon, buttons});
    if (buttons == Buttons::Ok)
        return Answer::Ok;
    if (m_answers.empty()) {
        ADD_FAILURE() << "Unexpected question: " << title.toStdString() << ": " << text.toStdString();
        return Answer::No;
    }
    const Answer a = m_answers.front();
    m_answers.pop_front();
    return a;
}

std::optional<QString> ScriptedPrompts::input(const QString &prompt, const QString &title, const QString &)
{
    ADD_FAILURE() << "Unexpected input box: " << title.toStdString() << ": " << prompt.toStdString();
    return std::nullopt;
}

QStringList ScriptedPrompts::texts() const
{
    QStringList t;
    for (const Message &m : messages)
        t << m.text;
    return t;
}

} // namespace tarvex::test
