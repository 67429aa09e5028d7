#pragma once

#include "core/Progress.h"

#include <QList>
#include <QStringList>

namespace tarvex::test {

/// Progress as a screen would be told it, written down; it can play the user who presses
/// Cancel once a number of steps have been told.
class RecordingProgress : public Progress
{
public:
    struct Step
    {
        qint64 done;
        QStringList texts;
    };

    void start(qint64 steps, const QString &text) override
    {
        total = steps;
        title = text;
    }
    void step(qint64 done, const QStringList &texts) override { steps.append({done, texts}); }
    bool cancelled() override { return cancelAfter >= 0 && steps.size() >= cancelAfter; }

    qint64 total = -1;
    QString title;
    QList<Step> steps;
    qsizetype cancelAfter = -1;
};

} // namespace tarvex::test
