#include "SingleInstance.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace tarvex {

SingleInstance::SingleInstance(const QString &folder)
{
    QDir().mkpath(folder);
    m_lock = std::make_unique<QLockFile>(QDir(folder).filePath(u"Tarvex.lock"_s));
    m_lock->setStaleLockTime(0);
}

bool SingleInstance::acquire()
{
    return m_lock->tryLock(0);
}

} // namespace tarvex
