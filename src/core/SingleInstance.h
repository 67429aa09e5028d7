#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace tarvex {

/// Holds the lock that lets only one copy of the program run for a user. The lock goes
/// with the process, so a crashed run never blocks the next.
class SingleInstance
{
public:
    explicit SingleInstance(const QString &folder);
    /// False when another running copy holds the lock.
    bool acquire();

private:
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace tarvex
