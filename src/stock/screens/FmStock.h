#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "core/SingleInstance.h"
#include "core/Shell.h"
#include "core/StudLoader.h"
#include "platform/LocalDevices.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>

#include <memory>

class QAction;
class QLabel;
class QMenu;
class QPushButton;
class QGroupBox;

namespace tarvex {

class ClsResizer;
class StatusHints;
class NewLitterPanel;
class SearchPanel;
class StockRecordPanel;
class fmSplash;

/// The main window: it starts the program, opens the stud, holds the main panel with
/// its command buttons and menus, and stays for the whole run. Every other screen opens
/// modally from here.
class FmStock : public QMainWindow, public Shell
{
public:
    FmStock(Session &session, Prompts &prompts, QWidget *parent = nullptr);
    ~FmStock() override;

    StockRecordPanel *recordPanel() const { return m_record; }

    /// The start of a run, in the program's fixed order. False when the program ends
    /// without showing the window (another copy runs, no usable date format, the user
    /// left from the registration).
    bool start(const QStringList &arguments);
    /// Shows the window as it was left at the last exit.
    void showRestored();

    /// The backup devices the screens use: the machine's own unless a test gives others
    /// (nullptr gives the machine's back).
    void setDevices(Devices *devices) { m_devicesInUse = devices ? devices : &m_devices; }

    /// A function that formats a date by the machine's short date setting.
    void setShortDateFunction(ShortDateFunction f) { m_shortDate = std::move(f); }

    // Shell
    void showSplash() override;
    void repaintSplash() override;
    void setHourglass(bool on) override;
    void returnToMainPanel() override;
    void selectDatabase() override;
    bool registerFirstRun() override;
    void openDatabaseUtilities() override;
    void checkBackups() override;
    void setCaption(const QString &caption) override;
    void studOpened() override;
    void unloadSplash() override;
    void createPedigree(qint64 number) override;
    DuplicateAnswer checkDuplicate(const QString &name, const QString &id) override;
    QString chooseColourMatch(const QString &colour, bool *save) override;
    void showOptions() override;
    void endProgram() override;
    void settingsNotSaved(const QString &file) override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildMenus();
    void buildPanel();
    QPushButton *addButton(QGroupBox *frame, const char *name, const QString &caption, const QString &tip, int row);
    void afterLoad(LoadResult result);
    void Sel_Database_Click();
    void Utilities_Click();
    void mnuImpExp_Click();
    void mnuInbreeding_Click();
    /// Opens the stud again after the studs' files were worked on, as at the start.
    void reopenStud();
    Devices &devices() const { return *m_devicesInUse; }
    void mnuRegister_Click();
    void showAbout();
    void CmdBrowse_Click();
    void CmdNew_Click();
    void CmdNewLit_Click();
    void CmdSearch_Click();
    void CmdArchive_Click();
    void BrowseFilter_Click(int item);
    void lockStudMenus(bool recordOpen);

    Session &m_session;
    Prompts &m_prompts;
    std::unique_ptr<SingleInstance> m_instance;
    LocalDevices m_devices;
    Devices *m_devicesInUse = &m_devices;
    ShortDateFunction m_shortDate;
    std::unique_ptr<fmSplash> m_splash;
    ClsResizer *fResize = nullptr;
    StatusHints *m_hints = nullptr;
    bool m_ending = false;

    QWidget *FrmControl = nullptr;
    StockRecordPanel *m_record = nullptr;
    NewLitterPanel *m_litter = nullptr;
    SearchPanel *m_search = nullptr;
    QLabel *LblStudName = nullptr;
    QHash<QString, QPushButton *> m_buttons;
    QHash<QString, QAction *> m_actions;
};

} // namespace tarvex
