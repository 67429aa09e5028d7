#pragma once

#include <QApplication>

namespace tarvex {

class Prompts;

/// The program's application object. Faults of a user's action are caught where the action
/// runs (runAction, which every slot of the screens goes through); a fault anywhere else in
/// an event's handling is caught here as a last resort. Either way the user sees one box
/// saying what was being done and why, and the program goes on.
class Application : public QApplication
{
public:
    Application(int &argc, char **argv);

    /// Where the boxes of failed actions are shown (the program's message boxes, or a
    /// test's recorder).
    static void setPrompts(Prompts *prompts);
    /// Where they go while no prompts are set (the desktop's message boxes unless changed).
    static void setFallbackPrompts(Prompts *prompts);

    bool notify(QObject *receiver, QEvent *event) override;

    /// Shows the box of an action that failed (once at a time: a fault while it is up is
    /// not told again).
    static void reportFailure(const QString &action, const QString &reason);

    /// The caption of what the user did with an event that reached receiver: the button
    /// pressed, the menu entry chosen; empty when it cannot be told.
    static QString actionOf(QObject *receiver);
};

} // namespace tarvex
