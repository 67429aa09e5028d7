#pragma once

#include "core/Shell.h"

#include <QStringList>

#include <functional>

namespace tarvex::test {

/// The screens as the logic sees them, with every call written down and the answers given
/// by the test.
class RecordingShell : public Shell
{
public:
    void showSplash() override { calls << QStringLiteral("showSplash"); }
    void repaintSplash() override {}
    void setHourglass(bool on) override { hourglass += on ? 1 : -1; }
    void returnToMainPanel() override { calls << QStringLiteral("mainPanel"); }
    void selectDatabase() override
    {
        calls << QStringLiteral("select");
        if (onSelect)
            onSelect();
    }
    bool registerFirstRun() override
    {
        calls << QStringLiteral("register");
        return onRegister ? onRegister() : false;
    }
    void openDatabaseUtilities() override { calls << QStringLiteral("utilities"); }
    void checkBackups() override { calls << QStringLiteral("backups"); }
    void setCaption(const QString &c) override { caption = c; }
    void studOpened() override { calls << QStringLiteral("opened"); }
    void unloadSplash() override { calls << QStringLiteral("splash"); }
    void createPedigree(qint64 number) override
    {
        calls << QStringLiteral("pedigree %1").arg(number);
        if (onCreatePedigree)
            onCreatePedigree(number);
    }
    DuplicateAnswer checkDuplicate(const QString &name, const QString &id) override
    {
        calls << QStringLiteral("duplicate %1 %2").arg(name, id);
        return duplicate;
    }
    QString chooseColourMatch(const QString &colour, bool *save) override
    {
        calls << QStringLiteral("colour %1").arg(colour);
        return onColourMatch ? onColourMatch(colour, save) : QString();
    }
    void showOptions() override { calls << QStringLiteral("options"); }
    void endProgram() override { calls << QStringLiteral("end"); }
    void settingsNotSaved(const QString &file) override { calls << QStringLiteral("settings %1").arg(file); }

    QStringList calls;
    QString caption;
    int hourglass = 0;
    DuplicateAnswer duplicate = DuplicateAnswer::NoneFound;
    std::function<void()> onSelect;
    std::function<bool()> onRegister;
    std::function<void(qint64)> onCreatePedigree;
    std::function<QString(const QString &colour, bool *save)> onColourMatch;
};

} // namespace tarvex::test
