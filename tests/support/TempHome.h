#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace tarvex::test {

/// Points HOME and the XDG folders at a fresh temporary folder for one test, so the
/// settings and data folder start empty; the old values come back afterwards.
class TempHome
{
public:
    TempHome();
    ~TempHome();
    QString path() const { return m_dir.path(); }
    /// The data folder as the program finds it, with a trailing "/".
    QString dataFolder() const;
    QString configFolder() const;

private:
    QTemporaryDir m_dir;
    QByteArray m_oldHome, m_oldConfig, m_oldData;
};

} // namespace tarvex::test
