#include "FmDatabaseUtil.h"

#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/StatusHints.h"

#include <QComboBox>
#include <QGroupBox>
#include <QListWidget>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {

constexpr int kWidth = 5400, kHeight = 4200;

/// The caller's prompts, with the step in hand shown on this screen's status bar, which is
/// painted at once: the utilities give the screen no turn while they work.
class ScreenPrompts : public Prompts
{
public:
    ScreenPrompts(Prompts &prompts, QStatusBar *bar) : m_prompts(prompts), m_bar(bar) {}

    Answer message(const QString &text, const QString &title, Icon icon, Buttons buttons) override
    {
        return m_prompts.message(text, title, icon, buttons);
    }
    std::optional<QString> input(const QString &prompt, const QString &title, const QString &defaultText) override
    {
        return m_prompts.input(prompt, title, defaultText);
    }
    void beep() override { m_prompts.beep(); }
    void status(const QString &text) override
    {
        if (!m_bar)
            return;
        m_bar->showMessage(text);
        m_bar->repaint();
    }

private:
    Prompts &m_prompts;
    QPointer<QStatusBar> m_bar;
};

} // namespace

FmDatabaseUtil::FmDatabaseUtil(Session &session, Prompts &prompts, Devices &devices, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(u"FmDatabaseUtil"_s);
    setWindowTitle(u"Database Utilities"_s);

    Sb = make<QStatusBar>(this, "Sb");
    Sb->setSizeGripEnabled(false);
    place(Sb, 0, kHeight - 330, kWidth, 330);
    m_prompts = std::make_unique<ScreenPrompts>(prompts, Sb);
    m_utilities = std::make_unique<DatabaseUtilities>(session, *m_prompts, devices);
    auto *hints = new StatusHints(Sb, this);
    const auto hint = [hints](QWidget *control, const QString &text) {
        control->setToolTip(text);
        hints->add(control, text);
    };

    m_menu = make<QMenuBar>(this, "MenuBar");
    m_menu->setNativeMenuBar(false);
    place(m_menu, 0, 0, kWidth, 330);
    QMenu *file = m_menu->addMenu(u"&File"_s);
    file->setObjectName(u"mnuFile"_s);
    QAction *exit = file->addAction(u"E&xit"_s);
    exit->setObjectName(u"Sel_Exit"_s);
    onAction(exit, &QAction::triggered, this, &QDialog::reject);
    QAction *endProgram = file->addAction(u"Exit &Program"_s);
    endProgram->setObjectName(u"Exitprogram"_s);
    onAction(endProgram, &QAction::triggered, this, [this] { done(EndProgram); });

    auto *select = make<QGroupBox>(this, "FraSelect", u"Select Database"_s);
    place(select, 120, 480, kWidth - 240, 840);
    Cmbdatabases = make<QComboBox>(select, "Cmbdatabases");
    place(Cmbdatabases, 240, 330, kWidth - 720, 360);
    Cmbdatabases->addItems(m_utilities->studs());
    Cmbdatabases->setCurrentIndex(Cmbdatabases->findText(session.StockType));

    // The buttons of the utilities, and in their place while a backup is being chosen, the
    // list of backups.
    PbUtils = make<QWidget>(this, "PbUtils");
    place(PbUtils, 120, 1470, kWidth - 240, 1080);
    const auto button = [&](const char *name, const QString &caption, const QString &tip, int left, int top) {
        auto *b = make<QPushButton>(PbUtils, name, caption);
        place(b, left, top, 1560, 420);
        b->setAutoDefault(false);
        hint(b, tip);
        return b;
    };
    CmdCompact = button("CmdCompact", u"&Compact"_s, u"Compact database"_s, 0, 0);
    CmdRepair = button("CmdRepair", u"&Repair"_s, u"Repair damaged database"_s, 1800, 0);
    CmdRestore = button("CmdRestore", u"&Restore"_s, u"Restore database from backup copy"_s, 3600, 0);
    CmdRemove = button("CmdRemove", u"&Remove"_s, u"Remove a database which is no longer required"_s, 0, 540);
    auto *close = button("CmdBrowseCancel", u"Cancel"_s, u"Cancel database utilities"_s, 3600, 540);

    FrmRestore = make<QGroupBox>(this, "FrmRestore", u"Select Database To Restore"_s);
    place(FrmRestore, 120, 1470, kWidth - 240, 2220);
    LbDatabase = make<QListWidget>(FrmRestore, "LbDatabase");
    place(LbDatabase, 240, 330, kWidth - 720, 1200);
    auto *restore = make<QPushButton>(FrmRestore, "Comrestore", u"&Restore "_s);
    place(restore, 240, 1650, 1560, 420);
    restore->setAutoDefault(false);
    hint(restore, u"Restore the selected backup database"_s);
    auto *cancelRestore = make<QPushButton>(FrmRestore, "CmdCancel", u"&Cancel"_s);
    place(cancelRestore, kWidth - 480 - 1560, 1650, 1560, 420);
    cancelRestore->setAutoDefault(false);
    hint(cancelRestore, u"Cancel restore function"_s);
    FrmRestore->hide();

    onAction(Cmbdatabases, &QComboBox::currentIndexChanged, this, &FmDatabaseUtil::Cmbdatabases_Click);
    onAction(CmdCompact, &QPushButton::clicked, this, &FmDatabaseUtil::CmdCompact_Click);
    onAction(CmdRepair, &QPushButton::clicked, this, &FmDatabaseUtil::CmdRepair_Click);
    onAction(CmdRestore, &QPushButton::clicked, this, &FmDatabaseUtil::CmdRestore_Click);
    onAction(CmdRemove, &QPushButton::clicked, this, &FmDatabaseUtil::CmdRemove_Click);
    onAction(close, &QPushButton::clicked, this, &QDialog::reject);
    onAction(restore, &QPushButton::clicked, this, &FmDatabaseUtil::Comrestore_Click);
    onAction(cancelRestore, &QPushButton::clicked, this, [this] { showRestore(false); });
    Cmbdatabases_Click();

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

FmDatabaseUtil::~FmDatabaseUtil() = default;

QString FmDatabaseUtil::chosenStud() const
{
    return Cmbdatabases->currentText().trimmed();
}

void FmDatabaseUtil::Cmbdatabases_Click()
{
    const bool chosen = !chosenStud().isEmpty();
    for (QPushButton *b : {CmdRepair, CmdCompact, CmdRemove, CmdRestore})
        b->setEnabled(chosen);
}

void FmDatabaseUtil::CmdCompact_Click()
{
    const QString name = chosenStud();
    if (name.isEmpty())
        return;
    HourglassScope busy(this);
    m_utilities->Compact(name);
}

void FmDatabaseUtil::CmdRepair_Click()
{
    const QString name = chosenStud();
    if (name.isEmpty())
        return;
    HourglassScope busy(this);
    m_utilities->Repair(name);
}

void FmDatabaseUtil::CmdRemove_Click()
{
    const QString name = chosenStud();
    if (name.isEmpty())
        return;
    bool removed = false;
    {
        HourglassScope busy(this);
        removed = m_utilities->Remove(name);
    }
    if (!removed)
        return;
    Cmbdatabases->removeItem(Cmbdatabases->findText(name));
    Cmbdatabases->setCurrentIndex(-1);
    Cmbdatabases_Click();
}

void FmDatabaseUtil::CmdRestore_Click()
{
    const QString name = chosenStud();
    if (name.isEmpty())
        return;
    LbDatabase->clear();
    LbDatabase->addItems(m_utilities->restoreList(name));
    showRestore(true);
}

void FmDatabaseUtil::Comrestore_Click()
{
    const QString name = chosenStud();
    QListWidgetItem *entry = LbDatabase->currentItem();
    if (name.isEmpty() || !entry || !entry->isSelected())
        return;
    bool restored = false;
    {
        HourglassScope busy(this);
        restored = m_utilities->Restore(name, LbDatabase->row(entry), entry->text());
    }
    if (restored)
        showRestore(false);
}

void FmDatabaseUtil::showRestore(bool on)
{
    m_menu->setVisible(!on);
    m_menu->findChild<QMenu *>(u"mnuFile"_s)->menuAction()->setVisible(!on);
    PbUtils->setVisible(!on);
    FrmRestore->setVisible(on);
    if (on)
        LbDatabase->setFocus();
}

} // namespace tarvex
