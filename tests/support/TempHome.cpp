#include "TempHome.h"

#include "core/AppFolders.h"

#include <QDir>

namespace tarvex::test {

TempHome::TempHome()
    : m_oldHome(qgetenv("HOME")), m_oldConfig(qgetenv("XDG_CONFIG_HOME")), m_oldData(qgetenv("XDG_DATA_HOME"))
{
    qputenv("HOME", m_dir.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", (m_dir.path() + QStringLiteral("/config")).toUtf8());
    qputenv("XDG_DATA_HOME", (m_dir.path() + QStringLiteral("/data")).toUtf8());
}

TempHome::~TempHome()
{
    const auto restore = [](const char *name, const QByteArray &value) {
        if (value.isEmpty())
            qunsetenv(name);
        else
            qputenv(name, value);
    };
    restore("HOME", m_oldHome);
    restore("XDG_CONFIG_HOME", m_oldConfig);
    restore("XDG_DATA_HOME", m_oldData);
}

QString TempHome::dataFolder() const
{
    return AppFolders::dataFolder();
}

QString TempHome::configFolder() const
{
    return m_dir.path() + QStringLiteral("/config");
}

} // namespace tarvex::test
