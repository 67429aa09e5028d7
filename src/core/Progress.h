#pragma once

#include <QString>
#include <QStringList>

namespace tarvex {

/// Long work tells how far it has come and asks whether the user wants it stopped. The
/// screens show a progress bar with the texts and a Cancel button and repaint as the work
/// goes; tests record what they are told. The logic never gives the screens a turn itself.
class Progress
{
public:
    virtual ~Progress() = default;

    /// The work begins: its steps in all (0 when not known) and what is being done.
    virtual void start(qint64 steps, const QString &text = {}) = 0;
    /// The steps done so far and what is in hand now: each text is a line of the screen's,
    /// and an empty one leaves its line as it was.
    virtual void step(qint64 done, const QStringList &texts = {}) = 0;
    /// Whether the user asked the work to stop. The work stops at its next safe place and
    /// keeps what it has finished.
    virtual bool cancelled() = 0;
    /// Whether texts told now would be shown (screens show a few steps a second): work whose
    /// texts cost something to make asks first.
    virtual bool due() { return true; }
};

/// Progress nobody watches: tools, benchmarks and work too short to show.
class NoProgress : public Progress
{
public:
    void start(qint64, const QString &) override {}
    void step(qint64, const QStringList &) override {}
    bool cancelled() override { return false; }
    bool due() override { return false; }
};

/// The one progress nobody watches, for callers that show none.
Progress &noProgress();

} // namespace tarvex
