#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QTemporaryDir>

namespace tarvex::bench {

/// Answers every question with No and shows nothing: benchmarks run without a person.
class QuietPrompts : public Prompts
{
public:
    Answer message(const QString &, const QString &, Icon, Buttons) override { return Answer::No; }
    std::optional<QString> input(const QString &, const QString &, const QString &) override { return {}; }
};

/// Puts the stud file at path into the session's catalogue (settings under the current
/// XDG_CONFIG_HOME) as a stud with the words Buck and Doe, ready for opening.
void catalogueStud(Session &session, const QString &path);

/// A generated stud of 100,000 animals in a temporary folder, opened as the program opens
/// it (UK dates), with settings of its own.
struct LargeStud
{
    LargeStud();
    QTemporaryDir dir;
    Session session;
    QuietPrompts prompts;
};

/// The same, with the program's rabbit genetics files beside the stud and genetics on;
/// then opens the stud and reads the genetics files.
void openGeneticsStud(Session &session, Prompts &prompts, const QString &path);

} // namespace tarvex::bench
