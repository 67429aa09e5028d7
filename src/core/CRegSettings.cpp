#include "CRegSettings.h"

#include "SettingsFile.h"

#include <QCoreApplication>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {
QString keyName(const QString &key)
{
    return key == u"*" ? QString() : key;
}
} // namespace

QString CRegSettings::fixedRoot()
{
    return u"Tarvex Systems"_s;
}

CRegSettings::CRegSettings(const QString &application) : m_root(fixedRoot())
{
    setApplication(application);
}

void CRegSettings::setRoot(const QString &root)
{
    const QString r = root.trimmed();
    m_root = r.isEmpty() ? fixedRoot() : r;
}

void CRegSettings::setApplication(const QString &application)
{
    const QString a = application.trimmed();
    m_application = a.isEmpty() ? QCoreApplication::applicationName() : a;
    if (m_application.isEmpty())
        m_application = u"Tarvex"_s;
}

QString CRegSettings::address(const QString &section) const
{
    QString path = u"Software\\"_s + m_root + u'\\' + m_application;
    if (!section.isEmpty())
        path += u'\\' + section;
    return path;
}

QString CRegSettings::filePath() const
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' + m_root + u'/' +
           m_application + u".conf"_s;
}

QString CRegSettings::GetSetting(const QString &section, const QString &key, const QString &defaultValue) const
{
    auto file = SettingsFile::at(filePath());
    const SettingsFile::Node *node = file->find(section, false);
    if (!node)
        return defaultValue;
    const int at = node->valueIndex(keyName(key));
    return at < 0 ? defaultValue : node->values.at(at).second;
}

CRegSettings::Values CRegSettings::GetAllSettings(const QString &section) const
{
    auto file = SettingsFile::at(filePath());
    const SettingsFile::Node *node = file->find(section, false);
    return node ? node->values : Values();
}

bool CRegSettings::SaveSetting(const QString &section, const QString &key, const QString &value)
{
    auto file = SettingsFile::at(filePath());
    SettingsFile::Node *node = file->find(section, true);
    const QString name = keyName(key);
    const int at = node->valueIndex(name);
    if (at >= 0)
        node->values[at].second = value;
    else
        node->values.append({name, value});
    return file->save();
}

bool CRegSettings::DeleteSetting(const QString &section, const QString &key)
{
    auto file = SettingsFile::at(filePath());
    if (key.isEmpty()) {
        if (section.isEmpty() || !file->removeSection(section))
            return false;
        return file->save();
    }
    SettingsFile::Node *node = file->find(section, false);
    if (!node)
        return false;
    const int at = node->valueIndex(keyName(key));
    if (at < 0)
        return false;
    node->values.removeAt(at);
    return file->save();
}

} // namespace tarvex
