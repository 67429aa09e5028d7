#pragma once

#include <QList>
#include <QPair>
#include <QString>

namespace tarvex {

/// The per-user settings store: sections of text values under a fixed root and the
/// application name ("Tarvex" or "Tarvex Development"), which never see each other.
/// A section name may hold backslashes for sub-sections ("Rabbits\Options"). Names are
/// matched without regard to case. Failures are silent: a read gives its default and a
/// write gives false.
class CRegSettings
{
public:
    using Values = QList<QPair<QString, QString>>;

    static QString fixedRoot();

    explicit CRegSettings(const QString &application = {});

    void setRoot(const QString &root);
    QString root() const { return m_root; }
    void setApplication(const QString &application);
    QString application() const { return m_application; }

    /// "*" as key means the section's unnamed value; an empty key removes the whole section.
    bool DeleteSetting(const QString &section, const QString &key = {});
    /// Every value of the section in the order written; empty when the section is absent.
    Values GetAllSettings(const QString &section) const;
    QString GetSetting(const QString &section, const QString &key, const QString &defaultValue = {}) const;
    bool SaveSetting(const QString &section, const QString &key, const QString &value);

    QString address(const QString &section) const;
    /// The file that holds this root and application.
    QString filePath() const;

private:
    QString m_root;
    QString m_application;
};

} // namespace tarvex
