#include "FmStock.h"

#include "care/Backups.h"
#include "care/screens/FmBackup.h"
#include "care/screens/FmDatabaseUtil.h"
#include "care/screens/FmImpExp.h"
#include "core/screens/FmOptions.h"
#include "core/AppFolders.h"
#include "core/SettingsFile.h"
#include "core/Startup.h"
#include "core/WindowGeometry.h"
#include "core/screens/FmRegister.h"
#include "core/screens/FmSelDatabase.h"
#include "genetics/Genotypes.h"
#include "genetics/screens/FmColourMatch.h"
#include "genetics/screens/FmGenCheck.h"
#include "genetics/screens/FmGenetics.h"
#include "pedigree/screens/FmInbreeding.h"
#include "pedigree/screens/FmTestMate.h"
#include "pedigree/screens/fmPedigree.h"
#include "reporting/screens/FmDuplicate.h"
#include "reporting/screens/FmLabels.h"
#include "reporting/screens/FmReports.h"
#include "breeding/screens/FmBulkDiary.h"
#include "reporting/screens/SearchPanel.h"
#include "stock/screens/FmArchive.h"
#include "stock/screens/NewLitterPanel.h"
#include "stock/screens/StockRecordPanel.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/Modal.h"
#include "ui/PrintJob.h"
#include "ui/StatusHints.h"
#include "ui/fmAbout.h"
#include "ui/fmSplash.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
// The main panel's design canvas, in twips.
constexpr int kWidth = 9600;
constexpr int kHeight = 6600;
} // namespace

FmStock::FmStock(Session &session, Prompts &prompts, QWidget *parent)
    : QMainWindow(parent), m_session(session), m_prompts(prompts)
{
    setObjectName(u"FmStock"_s);
    setWindowTitle(u"Tarvex"_s);
    m_shortDate = [](const QDate &d) { return QLocale::system().toString(d, QLocale::ShortFormat); };
    auto *bar = make<QStatusBar>(this, "StatusBar1");
    setStatusBar(bar);
    m_hints = new StatusHints(bar, this);
    buildMenus();
    buildPanel();
    m_session.setShell(this);
    // A settings file that cannot be written is told once; the program goes on without it.
    SettingsFile::setWriteFailureHandler([this](const QString &path) { settingsNotSaved(path); });
}

FmStock::~FmStock()
{
    Close_Databases(m_session);
    m_session.setShell(nullptr);
    SettingsFile::setWriteFailureHandler({});
}

void FmStock::buildMenus()
{
    const auto action = [this](QMenu *menu, const char *name, const QString &caption, bool enabled) {
        QAction *a = menu->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        a->setEnabled(enabled);
        m_actions.insert(a->objectName(), a);
        return a;
    };
    QMenu *file = menuBar()->addMenu(u"&File"_s);
    file->setObjectName(u"File"_s);
    onAction(action(file, "Sel_Database", u"&Select Type of Livestock"_s, true), &QAction::triggered, this,
            &FmStock::Sel_Database_Click);
    onAction(action(file, "Options", u"&Options"_s, true), &QAction::triggered, this, &FmStock::showOptions);
    onAction(action(file, "mnuRegister", u"&Register Database"_s, true), &QAction::triggered, this,
            &FmStock::mnuRegister_Click);
    onAction(action(file, "Utilities", u"Database &Utilities"_s, true), &QAction::triggered, this,
             &FmStock::Utilities_Click);
    onAction(action(file, "MnuPrinter", u"Printer Set&up"_s, true), &QAction::triggered, this,
            [this] { PrintJob::pageSetup(this); });
    onAction(action(file, "mnuImpExp", u"Import/Export Database(s)"_s, true), &QAction::triggered, this,
             &FmStock::mnuImpExp_Click);
    file->addSeparator();
    onAction(action(file, "Exit", u"E&xit"_s, true), &QAction::triggered, this, &FmStock::close);

    QMenu *filter = menuBar()->addMenu(u"Bro&wse Filter"_s);
    filter->setObjectName(u"BrowseFilterMenu"_s);
    const QString filters[] = {u"&Archived Only"_s, u"&Unarchived Only"_s, u"&Male Only"_s, u"&Female Only"_s};
    for (int i = 0; i < 4; ++i) {
        QAction *a = action(filter, ("BrowseFilter_" + std::to_string(i)).c_str(), filters[i], true);
        a->setCheckable(true);
        onAction(a, &QAction::triggered, this, [this, i] { BrowseFilter_Click(i); });
    }

    // The whole stud's coefficients of inbreeding: a menu of its own, beside the others.
    QMenu *inbreeding = menuBar()->addMenu(u"&Inbreeding"_s);
    inbreeding->setObjectName(u"InbreedingMenu"_s);
    onAction(action(inbreeding, "mnuInbreeding", u"&Whole Stud Table"_s, true), &QAction::triggered, this,
             &FmStock::mnuInbreeding_Click);

    QMenu *help = menuBar()->addMenu(u"&Help"_s);
    help->setObjectName(u"mnuHelp"_s);
    action(help, "MnuTarvex_Help", u"Tarvex Livestock Management &Help "_s, false);
    action(help, "mnuContents", u"&Contents and Index"_s, false);
    onAction(action(help, "AboutTarvex", u"&About Tarvex Livestock Management System"_s, true), &QAction::triggered,
            this, &FmStock::showAbout);
}

QPushButton *FmStock::addButton(QGroupBox *frame, const char *name, const QString &caption, const QString &tip,
                                int row)
{
    auto *b = make<QPushButton>(frame, name, caption);
    place(b, 240, 360 + row * 600, 2420, 480);
    b->setToolTip(tip);
    m_hints->add(b, tip);
    // Each button opens its screen once that part of the program is there.
    b->setEnabled(false);
    m_buttons.insert(b->objectName(), b);
    return b;
}

void FmStock::buildPanel()
{
    auto *central = make<QWidget>(this, "FrmCentral");
    setCentralWidget(central);
    FrmControl = make<QWidget>(central, "FrmControl");
    place(FrmControl, 0, 0, kWidth, kHeight);

    LblStudName = make<QLabel>(FrmControl, "LblStudName");
    QFont f = LblStudName->font();
    f.setPointSize(16);
    f.setBold(true);
    LblStudName->setFont(f);
    LblStudName->setAlignment(Qt::AlignCenter);
    place(LblStudName, 240, 150, 9120, 540);

    const auto frame = [&](const char *name, const QString &caption, int left, int top, int rows) {
        auto *g = make<QGroupBox>(FrmControl, name, caption);
        place(g, left, top, 2900, 420 + rows * 600);
        return g;
    };
    QGroupBox *view = frame("FraView", u"View/Update"_s, 240, 900, 3);
    addButton(view, "CmdBrowse", u"&Browse"_s, u"Browse Livestock in alphabetic order"_s, 0);
    addButton(view, "CmdSearch", u"&Search"_s, u"Search for animals"_s, 1);
    QPushButton *exit = addButton(view, "CmdCancel", u"E&xit"_s, u"Exit Tarvex"_s, 2);
    exit->setEnabled(true);
    onAction(exit, &QPushButton::clicked, this, &FmStock::close);

    QGroupBox *create = frame("FraCreate", u"Create"_s, 3350, 900, 3);
    addButton(create, "CmdNew", u"&New Animal"_s, u"Enter details of new animal"_s, 0);
    addButton(create, "CMdNewLit", u"New &Litter"_s, u"Enter details of new offspring"_s, 1);
    addButton(create, "CmdMassDiary", u"&Diary"_s, u"Enter Diary Entry for a number of animals"_s, 2);

    QGroupBox *reports = frame("FraReports", u"Reports"_s, 6460, 900, 2);
    addButton(reports, "CmdLabels", u"Lab&els"_s, u"Print hutch/cage Labels"_s, 0);
    addButton(reports, "CmdReports", u"&Reports"_s, u"Report Options"_s, 1);

    QGroupBox *matings = frame("FraMatings", u"Matings"_s, 240, 3450, 2);
    addButton(matings, "CmdGenetic", u"&Genetics"_s, u"Genetics functions"_s, 0);
    addButton(matings, "CmdTestMate", u"&Test Mate"_s, u"Produce Pedigree for a Test Mating"_s, 1);

    QGroupBox *utility = frame("FraUtility", u"Utility"_s, 3350, 3450, 2);
    addButton(utility, "CmdAutoGenetics", u"Auto &Check"_s,
              u"Automatically Check Genetics of Entire Database and Update if Applicable"_s, 0);
    addButton(utility, "CmdArchive", u"&Auto Archive"_s, u"Automatically Archive according to Status"_s, 1);

    for (const char *name : {"CmdBrowse", "CmdSearch", "CmdNew", "CMdNewLit", "CmdMassDiary", "CmdArchive", "CmdTestMate",
                             "CmdReports", "CmdLabels"})
        m_buttons.value(QString::fromLatin1(name))->setEnabled(true);
    onAction(m_buttons.value(u"CmdGenetic"_s), &QPushButton::clicked, this, [this] {
        if (!m_session.studOpen() || !Ensure_Genetics_Loaded(m_session, m_prompts))
            return;
        FmGenetics genetics(m_session, m_prompts, this);
        Modal::exec(genetics);
    });
    onAction(m_buttons.value(u"CmdAutoGenetics"_s), &QPushButton::clicked, this, [this] {
        if (!m_session.studOpen())
            return;
        FmGenCheck check(m_session, m_prompts, this);
        Modal::exec(check);
    });
    onAction(m_buttons.value(u"CmdTestMate"_s), &QPushButton::clicked, this, [this] {
        if (!m_session.studOpen())
            return;
        FmTestMate mate(m_session, m_prompts, this);
        Modal::exec(mate);
    });
    onAction(m_buttons.value(u"CmdLabels"_s), &QPushButton::clicked, this, [this] {
        if (!m_session.studOpen())
            return;
        FmLabels labels(m_session, m_prompts, this);
        Modal::exec(labels);
    });
    onAction(m_buttons.value(u"CmdReports"_s), &QPushButton::clicked, this, [this] {
        if (!m_session.studOpen())
            return;
        FmReports reports(m_session, m_prompts, this);
        Modal::exec(reports);
    });
    onAction(m_buttons.value(u"CmdBrowse"_s), &QPushButton::clicked, this, &FmStock::CmdBrowse_Click);
    onAction(m_buttons.value(u"CmdNew"_s), &QPushButton::clicked, this, &FmStock::CmdNew_Click);
    onAction(m_buttons.value(u"CmdSearch"_s), &QPushButton::clicked, this, &FmStock::CmdSearch_Click);
    onAction(m_buttons.value(u"CmdArchive"_s), &QPushButton::clicked, this, &FmStock::CmdArchive_Click);
    onAction(m_buttons.value(u"CMdNewLit"_s), &QPushButton::clicked, this, &FmStock::CmdNewLit_Click);
    onAction(m_buttons.value(u"CmdMassDiary"_s), &QPushButton::clicked, this, [this] {
        if (!m_session.studOpen())
            return;
        FmBulkDiary diary(m_session, m_prompts, this);
        Modal::exec(diary);
    });

    m_record = new StockRecordPanel(m_session, m_prompts, *m_hints, central);
    place(m_record, 0, 0, kWidth, kHeight);
    m_record->onClosed = [this] {
        // An animal shown from the search goes back to the list of results.
        if (m_record->fromSearch() && m_search->resultPosition() > 0) {
            m_search->returnToResults();
            lockStudMenus(true);
        } else
            returnToMainPanel();
    };
    m_record->onDataSearch = [this](bool next) { m_search->CmdDataSearch_Click(next); };
    m_record->onOpened = [this](bool open) { lockStudMenus(open); };
    m_litter = new NewLitterPanel(m_session, m_prompts, *m_hints, *m_record, central);
    place(m_litter, 0, 0, kWidth, kHeight);
    m_litter->onClosed = [this] { returnToMainPanel(); };
    m_search = new SearchPanel(m_session, m_prompts, *m_hints, central);
    place(m_search, 0, 0, kWidth, kHeight);
    m_search->onLeft = [this] { returnToMainPanel(); };
    m_search->onShowAnimal = [this](qint64 number) {
        if (!m_record->showFoundAnimal(number)) {
            m_prompts.show(u"This animal is no longer in the stud."_s, QString(), Prompts::Icon::Information);
            m_search->returnToResults();
        }
    };

    auto *brand = make<QLabel>(FrmControl, "LblBrand", u"Tarvex\nPedigree and Livestock\nManagement System"_s);
    brand->setAlignment(Qt::AlignCenter);
    brand->setStyleSheet(u"color: #6b4f2a;"_s);
    place(brand, 6460, 3560, 2900, 1400);
}

bool FmStock::start(const QStringList &arguments)
{
    if (!Startup::Form_Load(m_session, m_prompts, arguments, m_shortDate, m_instance))
        return false;
    fResize = new ClsResizer(centralWidget(), QSize(Design::px(kWidth), Design::px(kHeight)));
    fResize->Initialise();
    centralWidget()->setMinimumSize(Design::px(kWidth), Design::px(kHeight));
    return true;
}

void FmStock::showSplash()
{
    m_splash = std::make_unique<fmSplash>();
    m_splash->show();
    repaintSplash();
}

void FmStock::repaintSplash()
{
    // The splash repaints between the long steps of the start.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void FmStock::showRestored()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QSize screenSize = screen ? screen->availableGeometry().size() : QSize(1024, 768);
    // At a first start the panel opens at the size any form opens at on this screen, with
    // the menu and status bars around it; a size kept from the last run wins.
    const QSize design(Design::px(kWidth), Design::px(kHeight));
    const QSize bars = sizeHint().expandedTo(minimumSizeHint()) - design;
    const QSize firstSize = (ClsResizer::openingSize(design, screenSize) + bars).boundedTo(screenSize);
    const WindowGeometry::Placement p = WindowGeometry::restore(Options(m_session), firstSize, screenSize);
    resize(p.rect.size());
    move(p.rect.topLeft());
    if (p.state == WindowGeometry::Maximised)
        showMaximized();
    else
        show();
    m_session.RepositionEnabled = true;
    unloadSplash();
}

void FmStock::closeEvent(QCloseEvent *event)
{
    Close_Databases(m_session);
    unloadSplash();
    Options options(m_session);
    const WindowGeometry::State state = isMinimized()   ? WindowGeometry::Minimised
                                        : isMaximized() ? WindowGeometry::Maximised
                                                        : WindowGeometry::Normal;
    WindowGeometry::save(options, state, QRect(pos(), size()));
    event->accept();
}

void FmStock::setHourglass(bool on)
{
    if (on)
        Hourglass::show(this);
    else
        Hourglass::hide(this);
}

void FmStock::returnToMainPanel()
{
    if (m_record->state() != StockRecordPanel::State::Closed)
        m_record->hide();
    m_litter->hide();
    m_search->hide();
    FrmControl->show();
    lockStudMenus(false);
}

void FmStock::lockStudMenus(bool recordOpen)
{
    for (const char *name : {"mnuRegister", "Sel_Database", "Utilities", "mnuImpExp", "Options"})
        m_actions.value(QString::fromLatin1(name))->setEnabled(!recordOpen);
}

void FmStock::CmdBrowse_Click()
{
    if (!m_session.studOpen())
        return;
    if (m_record->CmdBrowse_Click())
        FrmControl->hide();
}

void FmStock::CmdNewLit_Click()
{
    if (!m_session.studOpen())
        return;
    FrmControl->hide();
    lockStudMenus(true);
    m_litter->CmdNewLit_Click();
}

void FmStock::CmdSearch_Click()
{
    if (!m_session.studOpen())
        return;
    FrmControl->hide();
    lockStudMenus(true);
    m_search->CmdSearch_Click();
}

void FmStock::CmdNew_Click()
{
    if (!m_session.studOpen())
        return;
    m_record->CmdNew_Click();
    FrmControl->hide();
}

void FmStock::CmdArchive_Click()
{
    if (!m_session.studOpen())
        return;
    lockStudMenus(true);
    {
        FmArchive archive(m_session, m_prompts, this);
        if (archive.hasStatuses())
            Modal::exec(archive);
    }
    refillSires(m_session);
    refillDams(m_session);
    m_record->fillLists();
    returnToMainPanel();
}

void FmStock::BrowseFilter_Click(int item)
{
    BrowseFilter &filter = m_record->records().filter();
    filter.toggle(item);
    for (int i = 0; i < 4; ++i)
        m_actions.value(u"BrowseFilter_%1"_s.arg(i))->setChecked(filter.ticked(i));
    if (m_record->state() == StockRecordPanel::State::Browsing && !m_record->CmdBrowse_Click())
        returnToMainPanel();
}

void FmStock::selectDatabase()
{
    FmSelDatabase dialog(m_session, m_prompts, this);
    Modal::exec(dialog);
}

bool FmStock::registerFirstRun()
{
    unloadSplash();
    FmRegister dialog(m_session, m_prompts, true, this);
    if (!dialog.load())
        return false;
    return Modal::exec(dialog) != FmRegister::EndProgram;
}

void FmStock::openDatabaseUtilities()
{
    // The stud could not be opened: the loader goes on once the screen is closed.
    FmDatabaseUtil dialog(m_session, m_prompts, devices(), this);
    if (Modal::exec(dialog) == FmDatabaseUtil::EndProgram)
        endProgram();
}

void FmStock::checkBackups()
{
    // The reminder of the external backup, the backup itself when agreed, then the rotating
    // copies beside the stud.
    HourglassScope busy(this);
    CheckBackups(m_session, m_prompts, [this] {
        FmBackup dialog(m_session, m_prompts, devices(), this);
        Modal::exec(dialog);
    });
}

void FmStock::setCaption(const QString &caption)
{
    setWindowTitle(caption);
}

void FmStock::studOpened()
{
    LblStudName->setText(m_session.StudName);
    m_record->records().filter().clear();
    for (int i = 0; i < 4; ++i)
        m_actions.value(u"BrowseFilter_%1"_s.arg(i))->setChecked(false);
    m_record->applyStud();
    m_litter->applyStud();
    m_search->applyStud();
    // The genetics screen needs genetics switched on and a file named (read at first use).
    const bool genetics = m_session.GeneticsOn && !m_session.GeneticsFile.isEmpty();
    m_buttons.value(u"CmdGenetic"_s)->setEnabled(genetics);
    m_buttons.value(u"CmdAutoGenetics"_s)->setEnabled(genetics);
    statusBar()->showMessage(m_session.StockType + u" - "_s + m_session.StudName);
}

void FmStock::unloadSplash()
{
    if (m_splash) {
        m_splash->close();
        m_splash.reset();
    }
}

void FmStock::afterLoad(LoadResult result)
{
    if (result == LoadResult::EndProgram)
        endProgram();
    else if (result == LoadResult::NoStudOpen)
        LblStudName->setText(QString());
}

void FmStock::Sel_Database_Click()
{
    Close_Databases(m_session);
    selectDatabase();
    m_session.PreselectedStud = m_session.StockType;
    afterLoad(Load_Stud_Details(m_session, m_prompts));
}

void FmStock::Utilities_Click()
{
    // The utilities work on the studs' files, so none is held open meanwhile.
    Close_Databases(m_session);
    int result = QDialog::Rejected;
    {
        FmDatabaseUtil dialog(m_session, m_prompts, devices(), this);
        result = Modal::exec(dialog);
    }
    if (result == FmDatabaseUtil::EndProgram) {
        endProgram();
        return;
    }
    reopenStud();
}

void FmStock::mnuInbreeding_Click()
{
    if (!m_session.studOpen())
        return;
    FmInbreeding table(m_session, m_prompts, this);
    Modal::exec(table);
}

void FmStock::mnuImpExp_Click()
{
    // An import copies over the open stud's file.
    Close_Databases(m_session);
    {
        FmImpExp dialog(m_session, m_prompts, devices(), this);
        Modal::exec(dialog);
    }
    reopenStud();
}

void FmStock::reopenStud()
{
    m_session.PreselectedStud = m_session.StockType;
    afterLoad(Load_Stud_Details(m_session, m_prompts));
}

void FmStock::mnuRegister_Click()
{
    const QString openStud = m_session.StockType;
    FmRegister dialog(m_session, m_prompts, false, this);
    if (!dialog.load()) {
        endProgram();
        return;
    }
    const int result = Modal::exec(dialog);
    if (result == FmRegister::EndProgram) {
        endProgram();
        return;
    }
    if (result == QDialog::Accepted) {
        // The stud just registered, or whose details changed, is the one to work on.
        Close_Databases(m_session);
        m_session.PreselectedStud = m_session.StockType;
        afterLoad(Load_Stud_Details(m_session, m_prompts));
    } else if (m_session.StockType != openStud || !m_session.Stud) {
        // Left without registering: go back to the stud that was open.
        Close_Databases(m_session);
        m_session.PreselectedStud = openStud;
        afterLoad(Load_Stud_Details(m_session, m_prompts));
    }
}

void FmStock::showAbout()
{
    fmAbout about(this);
    Modal::exec(about);
}

QString FmStock::chooseColourMatch(const QString &colour, bool *save)
{
    // A colour the genetics files do not know is put to the user.
    FmColourMatch match(m_session, colour, this);
    Modal::exec(match);
    *save = match.saveMatch();
    return match.chosen();
}

void FmStock::createPedigree(qint64 number)
{
    m_session.CurrentStockNo = number;
    m_session.CurrentStockName = Get_Stock_Name(m_session.Stud->handle(), number);
    fmPedigree pedigree(m_session, m_prompts, this);
    if (!pedigree.start())
        return;
    pedigree.startCreating();
    Modal::exec(pedigree);
}

DuplicateAnswer FmStock::checkDuplicate(const QString &name, const QString &id)
{
    // The warning stands over the screen the animal is typed in, the pedigree's included.
    QWidget *over = QApplication::activeModalWidget() ? QApplication::activeModalWidget() : this;
    return CheckDuplicate(m_session, name, id, [this, over](DuplicateWarning &warning) {
        FmDuplicate screen(m_session, warning, over);
        return screen.CreateRecord();
    });
}

void FmStock::showOptions()
{
    // The options belong to a kind of livestock: the open stud's, or the one just registered.
    if (m_session.StockType.isEmpty())
        return;
    FmOptions dialog(m_session, m_prompts, devices(), this);
    if (Modal::exec(dialog) != QDialog::Accepted)
        return;
    applyOptions(m_session);
    studOpened();
}

void FmStock::settingsNotSaved(const QString &file)
{
    m_prompts.show(u"Tarvex could not save its settings in\n"_s + file +
                       u"\n\nThe disk may be full or the folder read-only. Settings changed from now on "
                       u"will be lost when Tarvex closes."_s,
                   u"Settings Not Saved"_s, Prompts::Icon::Exclamation);
}

void FmStock::endProgram()
{
    m_ending = true;
    QTimer::singleShot(0, this, &FmStock::close);
}

} // namespace tarvex
