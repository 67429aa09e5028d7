#pragma once

#include "platform/LocalDevices.h"
#include "store/StoreError.h"

#include <functional>
#include <optional>
#include <stdexcept>

namespace tarvex::test {

/// This machine's devices, with the faults a real medium has on demand: a volume that reports
/// the room it is told to, cannot be read, cannot be written, or goes away part way through
/// a copy (the hook runs after the first bytes are written).
class FakeDevices : public LocalDevices
{
public:
    QList<Volume> volumes() override { return listed; }
    Space space(const QString &folder) override
    {
        ++spaceAsked;
        if (unreadable)
            throw StoreError(StoreError::CannotOpenFile, QStringLiteral("The folder cannot be read."));
        if (!reported.empty()) {
            const Space next = reported.front();
            if (reported.size() > 1)
                reported.erase(reported.begin());
            return next;
        }
        return LocalDevices::space(folder);
    }
    StudCopy::Outcome copyFile(const QString &source, const QString &destination, Progress &progress) override
    {
        ++copies;
        if (readOnly)
            throw StoreError(StoreError::CannotOpenFile,
                             QStringLiteral("The copy '%1' cannot be written (Read-only file system).").arg(destination));
        if (oddFault)
            throw std::runtime_error("The device stopped answering.");
        if (!midCopy)
            return LocalDevices::copyFile(source, destination, progress);
        struct Hooked : Progress
        {
            Progress &inner;
            std::function<void()> hook;
            explicit Hooked(Progress &p, std::function<void()> h) : inner(p), hook(std::move(h)) {}
            void start(qint64 steps, const QString &text) override { inner.start(steps, text); }
            void step(qint64 done, const QStringList &texts) override
            {
                if (hook)
                    std::exchange(hook, {})();
                inner.step(done, texts);
            }
            bool cancelled() override { return inner.cancelled(); }
        } hooked(progress, midCopy);
        return LocalDevices::copyFile(source, destination, hooked);
    }

    QList<Volume> listed;
    /// The room reported, one answer per look (the last one stays).
    std::vector<Space> reported;
    bool unreadable = false;
    bool readOnly = false;
    bool oddFault = false;
    std::function<void()> midCopy;
    int spaceAsked = 0;
    int copies = 0;
};

} // namespace tarvex::test
