#pragma once

#include <QApplication>

namespace tarvex {

class Prompts;

/// The program's application object. It is the one place where a fault of a user's action
/// that nothing closer handled is caught: the action's transaction has rolled back, the
/// user sees one box saying what was being done and why, and the program goes on.
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

    /// The caption of what the user did with this event: the button pressed, the menu entry
    /// chosen; empty when it cannot be told.
    static QString actionOf(QObject *receiver, QEvent *event);

private:
    void report(QObject *receiver, QEvent *event, const QString &reason);
    bool m_reporting = false;
};

} // namespace tarvex
