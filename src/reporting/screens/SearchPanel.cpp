#include "SearchPanel.h"

#include "SearchResultsModel.h"

#include "breeding/Awards.h"
#include "core/StudLoader.h"
#include "platform/QPainterSurface.h"
#include "reporting/SearchResultsSheet.h"
#include "store/StockLookup.h"
#include "store/StudDatabase.h"
#include "ui/Action.h"
#include "ui/DateField.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/ListToSheet.h"
#include "ui/ParentListModel.h"
#include "ui/PrintJob.h"
#include "ui/StatusHints.h"
#include "ui/WorkProgress.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QProgressBar>
#include <QRadioButton>
#include <QScopeGuard>
#include <QShortcut>
#include <QTabWidget>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {

const QString kWildcards = u"(* and ? wildcards can be used)"_s;
constexpr int kWidth = 9600;

// The date option chosen among four buttons.
DateOption chosenOption(const std::array<QRadioButton *, 4> &options)
{
    for (int i = 0; i < 4; ++i)
        if (options[size_t(i)]->isChecked())
            return DateOption(i);
    return DateOption::EqualTo;
}

} // namespace

SearchPanel::SearchPanel(Session &session, Prompts &prompts, StatusHints &hints, QWidget *parent)
    : QWidget(parent), m_session(session), m_prompts(prompts), m_hints(hints)
{
    setObjectName(u"SearchPanel"_s);
    buildCriteria();
    buildTabs();
    buildResults();
    // Enter searches and Escape goes back, as in a dialog: the panel's default and cancel
    // buttons.
    for (const QKeySequence &key : {QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)}) {
        auto *enter = new QShortcut(key, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
        onAction(enter, &QShortcut::activated, this, [this] {
            if (PbSearch->isVisible())
                CmdSearchOk->click();
            else if (lvSList->hasFocus())
                lvslist_Click();
        });
    }
    auto *escape = new QShortcut(QKeySequence(Qt::Key_Escape), this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    onAction(escape, &QShortcut::activated, this, [this] {
        if (PbSearch->isVisible())
            CmdSearchCancel->click();
        else if (PbSearchRes->isVisible())
            CmdSchResCancel->click();
    });
    hide();
}

SearchPanel::~SearchPanel() = default;

QLabel *SearchPanel::addLabel(QWidget *frame, const char *name, const QString &caption, int left, int top, int width)
{
    auto *l = make<QLabel>(frame, name, caption);
    place(l, left, top + 40, width, 300);
    return l;
}

QLineEdit *SearchPanel::addText(QWidget *frame, const char *name, const QString &hint, bool wildcards, int left,
                                 int top, int width)
{
    auto *e = make<QLineEdit>(frame, name);
    place(e, left, top, width, 360);
    m_hints.add(e, wildcards ? hint + kWildcards : hint);
    return e;
}

QComboBox *SearchPanel::addCombo(QWidget *frame, const char *name, const QString &hint, bool wildcards, bool editable,
                                  int left, int top, int width)
{
    auto *c = make<QComboBox>(frame, name);
    place(c, left, top, width, 360);
    c->setEditable(editable);
    c->setInsertPolicy(QComboBox::NoInsert);
    m_hints.add(c, wildcards ? hint + kWildcards : hint);
    return c;
}

std::array<QRadioButton *, 4> SearchPanel::addDateOptions(QWidget *frame, const char *name, const QString &hint,
                                                          int left, int top)
{
    std::array<QRadioButton *, 4> options{};
    const QString captions[] = {u"Equal To"_s, u"Before"_s, u"After"_s, u"Range"_s};
    for (int i = 0; i < 4; ++i) {
        auto *r = make<QRadioButton>(frame, (QByteArray(name) + '_' + QByteArray::number(i)).constData(), captions[i]);
        place(r, left + i * 1150, top, 1120, 330);
        m_hints.add(r, hint);
        onAction(r, &QRadioButton::toggled, this, [this] { showToDates(); });
        options[size_t(i)] = r;
    }
    return options;
}

void SearchPanel::buildCriteria()
{
    FrmSearch = make<QGroupBox>(this, "FrmSearch", u"Search Details:"_s);
    place(FrmSearch, 120, 60, kWidth - 240, 3780);
    QWidget *f = FrmSearch;
    // Two columns of captioned fields, then the dates and texts across the frame.
    constexpr int l1 = 150, c1 = 1400, w1 = 3000, l2 = 4650, c2 = 5900, w2 = 3100, row = 420;
    int y = 300;
    addLabel(f, "LblSName", u"Name"_s, l1, y, 1200);
    SName = addText(f, "SName", u"Enter Name  "_s, true, c1, y, w1);
    LabSid = addLabel(f, "LabSid", QString(), l2, y, 1200);
    CmbSid = addCombo(f, "CmbSid", u"Enter Ring Number  "_s, true, false, l2, y, 1200);
    SRingNo = addText(f, "SRingNo", u"Enter Ring Number  "_s, true, c2, y, w2);
    onAction(CmbSid, &QComboBox::activated, this, [this] { CmbSid_Click(); });
    onAction(SRingNo, &QLineEdit::editingFinished, this, [this] { storeIdText(); });

    y += row;
    addLabel(f, "LblSType", u"Breed"_s, l1, y, 1200);
    Stype = addCombo(f, "Stype", u"Select or Enter Type  "_s, true, true, c1, y, w1);
    LabSColour = addLabel(f, "LabSColour", QString(), l2, y, 1200);
    SColour = addCombo(f, "SColour", u"Select or Enter Colour  "_s, true, true, c2, y, w2);

    y += row;
    addLabel(f, "LblSBreeder", u"Breeder"_s, l1, y, 1200);
    SBreeder = addCombo(f, "SBreeder", u"Select or Enter Breeder  "_s, true, true, c1, y, w1);
    addLabel(f, "LblSStatus", u"Status"_s, l2, y, 1200);
    SStatus = addCombo(f, "SStatus", u"Select or Enter Status  "_s, true, true, c2, y, w2);

    y += row;
    addLabel(f, "LblSSex", u"Sex"_s, l1, y, 1200);
    SSex = addCombo(f, "SSex", u"Select Sex "_s, false, false, c1, y, 1500);
    addLabel(f, "LblSArchive", u"Archive"_s, l2, y, 1200);
    SArchive = addCombo(f, "SArchive", u"Select Archive "_s, false, false, c2, y, 1500);

    y += row;
    LabSSire = addLabel(f, "LabSSire", QString(), l1, y, 1200);
    SSire = addCombo(f, "SSire", u"Select Sire "_s, false, false, c1, y, 1400);
    ChkAllSire = make<QCheckBox>(f, "ChkAllSire", u"Include Archive"_s);
    place(ChkAllSire, c1 + 1450, y + 20, 1800, 330);
    m_hints.add(ChkAllSire, u"Include Archived Sires for Selection"_s);
    LabSDam = addLabel(f, "LabSDam", QString(), l2, y, 1200);
    SDam = addCombo(f, "SDam", u"Select Dam "_s, false, false, c2, y, 1400);
    ChkAllDam = make<QCheckBox>(f, "ChkAllDam", u"Include Archive"_s);
    place(ChkAllDam, c2 + 1450, y + 20, 1800, 330);
    m_hints.add(ChkAllDam, u"Include Archived Dams for Selection"_s);
    m_sires = ParentListModel::install(SSire);
    m_dams = ParentListModel::install(SDam);
    onAction(ChkAllSire, &QCheckBox::toggled, this, [this] { fillParents(true); });
    onAction(ChkAllDam, &QCheckBox::toggled, this, [this] { fillParents(false); });

    y += row;
    addLabel(f, "LblSDOB", u"Date of Birth"_s, l1, y, 1200);
    SDOB = addText(f, "SDOB", u"Enter Date of birth"_s, false, c1, y, 1500);
    SDOBOpt = addDateOptions(f, "SDOBOpt", u"Select the search criteria for the Date of Birth"_s, 3000, y + 15);
    SLToDOB = addLabel(f, "SLToDOB", u"To"_s, 7650, y, 400);
    SToDOB = addText(f, "SToDOB", u"Enter To Date for Range"_s, false, 8050, y, 1150);

    y += row;
    addLabel(f, "LblSGenotype", u"Genotype"_s, l1, y, 1200);
    SGenotype = addText(f, "SGenotype", u"Select or Enter Genotype "_s, true, c1, y, w1);
    addLabel(f, "LblSHealth", u"Health"_s, l2, y, 1200);
    SHealth = addText(f, "SHealth", u"Enter Health subject "_s, true, c2, y, w2);

    y += row;
    addLabel(f, "LblSNotes", u"Notes"_s, l1, y, 1200);
    SNotes = addText(f, "SNotes", u"Enter Notes  "_s, true, c1, y, 7600);

    PbSearch = make<QWidget>(this, "PbSearch");
    place(PbSearch, 120, 6000, kWidth - 240, 520);
    CmdSearchOk = make<QPushButton>(PbSearch, "CmdSearchOk", u"&Search"_s);
    place(CmdSearchOk, 2000, 0, 1600, 480);
    CmdSearchClear = make<QPushButton>(PbSearch, "CmdSearchClear", u"&Clear"_s);
    place(CmdSearchClear, 3900, 0, 1600, 480);
    m_hints.add(CmdSearchClear, u"Clear search details entered"_s);
    CmdSearchCancel = make<QPushButton>(PbSearch, "CmdSearchCancel", u"&Back"_s);
    place(CmdSearchCancel, 5800, 0, 1600, 480);
    m_hints.add(CmdSearchCancel, u"Cancel Search"_s);
    onAction(CmdSearchOk, &QPushButton::clicked, this, [this] { CmdSearchOk_Click(); });
    onAction(CmdSearchClear, &QPushButton::clicked, this, [this] {
        ClearSearchCriteria();
        SName->setFocus();
    });
    onAction(CmdSearchCancel, &QPushButton::clicked, this, [this] { leave(); });

    // While a long search runs: its progress and a way to stop it.
    FrmSearchProgress = make<QWidget>(this, "FrmSearchProgress");
    place(FrmSearchProgress, 120, 6000, kWidth - 240, 520);
    PrbSearch = make<QProgressBar>(FrmSearchProgress, "PrbSearch");
    PrbSearch->setTextVisible(false);
    place(PrbSearch, 2000, 80, 3600, 330);
    CmdSearchStop = make<QPushButton>(FrmSearchProgress, "CmdSearchStop", u"Cancel"_s);
    place(CmdSearchStop, 5800, 0, 1600, 480);
    FrmSearchProgress->hide();
}

void SearchPanel::buildTabs()
{
    TbSearch = make<QTabWidget>(this, "TbSearch");
    place(TbSearch, 120, 3900, kWidth - 240, 2040);
    const auto tab = [&](const char *name, const QString &caption) {
        auto *page = make<QWidget>(TbSearch, name);
        TbSearch->addTab(page, caption);
        return page;
    };
    QWidget *diary = tab("frsearchtab_0", u"Diary"_s);
    addLabel(diary, "LblSDiaryText", u"Diary Text"_s, 150, 150, 1600);
    SDiaryText = addText(diary, "SDiaryText", u"Enter Diary Text "_s, true, 1800, 150, 7200);
    addLabel(diary, "LblSDiaryFrom", u"From Date"_s, 150, 650, 1600);
    SDiaryFromDate =
        addText(diary, "SDiaryFromDate", u"Enter Date to search Diary from"_s, false, 1800, 650, 1500);
    addLabel(diary, "LblSDiaryTo", u"To Date"_s, 3700, 650, 1000);
    SDiaryToDate = addText(diary, "SDiaryToDate", u"Enter Date to search Diary to"_s, false, 4750, 650, 1500);

    QWidget *pedigree = tab("frsearchtab_1", u"Pedigree"_s);
    addLabel(pedigree, "LblSPedigree", u"Only Animals in the Pedigree of:"_s, 150, 150, 3300);
    SPedigree = addCombo(pedigree, "SPedigree", u"Select Animal whose pedigree is to be searched"_s, false, false,
                         3500, 150, 4500);
    m_pedigree = ParentListModel::install(SPedigree);
    const QString directions[] = {u"Forward (Progeny/Offspring)"_s, u"Backward (Ancestors)"_s, u"Both"_s};
    for (int i = 0; i < 3; ++i) {
        OptPedDir[size_t(i)] = make<QRadioButton>(pedigree, ("OptPedDir_" + std::to_string(i)).c_str(), directions[i]);
        place(OptPedDir[size_t(i)], 3500, 600 + i * 360, 4500, 330);
    }

    QWidget *awards = tab("frsearchtab_2", u"Awards"_s);
    addLabel(awards, "LblSShowJudge", u"Judge"_s, 150, 150, 1200);
    CmbSShowJudge = addCombo(awards, "CmbSShowJudge", u"Select or Enter Judge "_s, true, true, 1400, 150, 3000);
    addLabel(awards, "LblSShowAward", u"Award"_s, 4650, 150, 1100);
    CmbSShowAward = addCombo(awards, "CmbSShowAward", u"Select or Enter Award "_s, true, true, 5800, 150, 3200);
    addLabel(awards, "LblSShowDate", u"Show Date"_s, 150, 650, 1200);
    MskSShowDate = addText(awards, "MskSShowDate", u"Enter Show Date"_s, false, 1400, 650, 1500);
    OptSShowDate = addDateOptions(awards, "OptSShowDate", u"Select the search criteria for the Show Date"_s, 3000, 665);
    LblToShowDate = addLabel(awards, "LblToShowDate", u"To"_s, 3000, 1100, 400);
    MskSToShowDate = addText(awards, "MskSToShowDate", u"Enter To Show Date for Range"_s, false, 3450, 1100, 1500);
    onAction(TbSearch, &QTabWidget::currentChanged, this, [this](int index) {
        if (index == 2)
            fillAwardLists();
    });
}

void SearchPanel::buildResults()
{
    FrmSearchRes = make<QGroupBox>(this, "FrmSearchRes");
    place(FrmSearchRes, 120, 60, kWidth - 240, 5850);
    lvSList = make<QTreeView>(FrmSearchRes, "lvSList");
    lvSList->setRootIsDecorated(false);
    lvSList->setUniformRowHeights(true);
    lvSList->setAllColumnsShowFocus(true);
    lvSList->setSelectionBehavior(QAbstractItemView::SelectRows);
    lvSList->setSelectionMode(QAbstractItemView::SingleSelection);
    lvSList->setEditTriggers(QAbstractItemView::NoEditTriggers);
    place(lvSList, 150, 330, kWidth - 540, 5370);
    m_results = new SearchResultsModel(this);
    lvSList->setModel(m_results);
    lvSList->header()->setSectionsClickable(true);
    lvSList->header()->setSortIndicatorShown(false);
    onAction(lvSList->header(), &QHeaderView::sectionClicked, this, [this](int column) {
        HourglassScope wait(window());
        m_results->sortByColumn(column);
        showRow(0);
    });
    onAction(lvSList, &QTreeView::clicked, this, [this] { lvslist_Click(); });
    onAction(lvSList, &QTreeView::activated, this, [this] { lvslist_Click(); });
    FrmSearchRes->hide();

    PbSearchRes = make<QWidget>(this, "PbSearchRes");
    place(PbSearchRes, 120, 6000, kWidth - 240, 520);
    const auto button = [&](const char *name, const QString &caption, const QString &tip, int left) {
        auto *b = make<QPushButton>(PbSearchRes, name, caption);
        place(b, left, 0, 1600, 480);
        if (!tip.isEmpty())
            m_hints.add(b, tip);
        return b;
    };
    cmdsearchexcel = button("cmdsearchexcel", u"&Excel"_s, QString(), 1000);
    CmdSearchResPrint = button("CmdSearchResPrint", u"&Print"_s, u"Print List of Search Results"_s, 2900);
    CmdSearchResExit = button("CmdSearchResExit", u"&Menu"_s, u"Exit search"_s, 4800);
    CmdSchResCancel = button("CmdSchResCancel", u"&Back"_s, u"Cancel search results"_s, 6700);
    onAction(cmdsearchexcel, &QPushButton::clicked, this, [this] { cmdsearchexcel_Click(); });
    onAction(CmdSearchResPrint, &QPushButton::clicked, this, [this] { CmdSearchResPrint_Click(); });
    onAction(CmdSearchResExit, &QPushButton::clicked, this, [this] { leave(); });
    onAction(CmdSchResCancel, &QPushButton::clicked, this, [this] { CmdSchResCancel_Click(); });
    PbSearchRes->hide();
}

void SearchPanel::applyStud()
{
    const Session &s = m_session;
    LabSSire->setText(s.FatherWord);
    LabSDam->setText(s.MotherWord);
    LabSColour->setText(s.ColourWord);
    LabSid->setText(s.IdWord);
    // One text box edits each identification the stud uses, chosen in CmbSid.
    CmbSid->clear();
    if (!s.Id2Word.isEmpty()) {
        for (const QString &word : {s.IdWord, s.Id2Word, s.Id3Word})
            if (!word.isEmpty())
                CmbSid->addItem(word);
    }
    CmbSid->setVisible(CmbSid->count() > 0);
    for (QLineEdit *d : {SDOB, SToDOB, SDiaryFromDate, SDiaryToDate, MskSShowDate, MskSToShowDate})
        Apply_Date_Mask(d, s.Dates);
    LabSid->setVisible(CmbSid->count() == 0);
}

void SearchPanel::CmdSearch_Click()
{
    const StudLists &l = m_session.Lists;
    const auto fill = [](QComboBox *c, const QStringList &items) {
        c->clear();
        c->addItems(items);
    };
    fill(Stype, l.breeds);
    fill(SColour, l.colours);
    fill(SBreeder, l.breeders);
    fill(SStatus, l.statuses);
    fill(SSex, l.sexes);
    fill(SArchive, QStringList{QString()} + l.archive);
    m_awardListsLoaded = false;
    // Any sire or dam may be the animal whose pedigree is searched.
    QList<ParentEntry> both = sireList(m_session)->entries();
    const QList<ParentEntry> &dams = damList(m_session)->entries();
    both.append(dams.mid(1));
    m_pedigree->setList(std::make_shared<const ParentList>(std::move(both)));
    TbSearch->setCurrentIndex(0);
    ClearSearchCriteria();
    FrmSearchRes->hide();
    PbSearchRes->hide();
    FrmSearch->show();
    TbSearch->show();
    PbSearch->show();
    CmdSearchOk->setDefault(true);
    if (CmbSid->count() > 0) {
        CmbSid->setCurrentIndex(0);
        m_shownId = 0;
        SearchIdText = {};
    }
    show();
    SName->setFocus();
}

void SearchPanel::ClearSearchCriteria()
{
    {
        const QSignalBlocker a(ChkAllSire), b(ChkAllDam);
        ChkAllSire->setChecked(false);
        ChkAllDam->setChecked(false);
    }
    fillParents(true);
    fillParents(false);
    for (QLineEdit *e : {SName, SRingNo, SNotes, SGenotype, SHealth, SDiaryText})
        e->clear();
    for (QComboBox *c : {Stype, SColour, SBreeder, SStatus, CmbSShowJudge, CmbSShowAward})
        c->setEditText(QString());
    SSex->setCurrentIndex(0);
    SArchive->setCurrentIndex(0);
    SPedigree->setCurrentIndex(0);
    SSire->setCurrentIndex(-1);
    SDam->setCurrentIndex(-1);
    for (QLineEdit *d : {SDOB, SToDOB, SDiaryFromDate, SDiaryToDate, MskSShowDate, MskSToShowDate})
        d->clear();
    SDOBOpt[0]->setChecked(true);
    OptSShowDate[0]->setChecked(true);
    OptPedDir[1]->setChecked(true);
    SearchIdText = {};
    showToDates();
}

void SearchPanel::fillParents(bool sire)
{
    // Ticked: every male (or female) of the stud, archived ones too; else the stud's list.
    const bool all = (sire ? ChkAllSire : ChkAllDam)->isChecked();
    // Every buck or doe of a large stud is hundreds of thousands of names.
    HourglassScope wait(window());
    const QString &word = sire ? m_session.MaleWord : m_session.FemaleWord;
    std::shared_ptr<const ParentList> list =
        all ? std::make_shared<const ParentList>(parentList(m_session.Stud->handle(), word, true))
            : (sire ? sireList(m_session) : damList(m_session));
    (sire ? m_sires : m_dams)->setList(std::move(list));
}

void SearchPanel::fillAwardLists()
{
    if (m_awardListsLoaded || !m_session.Stud)
        return;
    m_awardListsLoaded = true;
    Database &db = m_session.Stud->handle();
    for (const auto &[combo, names] :
         {std::pair{CmbSShowJudge, Fill_Judge_Names(db)}, std::pair{CmbSShowAward, Fill_Award_Names(db)}}) {
        const QString typed = combo->currentText();
        combo->clear();
        combo->addItems(names);
        combo->setEditText(typed);
    }
}

void SearchPanel::showToDates()
{
    const bool dobRange = SDOBOpt[3]->isChecked();
    SToDOB->setVisible(dobRange);
    SLToDOB->setVisible(dobRange);
    const bool showRange = OptSShowDate[3]->isChecked();
    MskSToShowDate->setVisible(showRange);
    LblToShowDate->setVisible(showRange);
}

void SearchPanel::storeIdText()
{
    if (CmbSid->count() > 0)
        SearchIdText[size_t(m_shownId)] = SRingNo->text();
}

void SearchPanel::CmbSid_Click()
{
    storeIdText();
    m_shownId = std::clamp(CmbSid->currentIndex(), 0, 2);
    SRingNo->setText(SearchIdText[size_t(m_shownId)]);
}

SearchCriteria SearchPanel::criteria() const
{
    SearchCriteria c;
    c.type = Stype->currentText();
    c.colour = SColour->currentText();
    c.status = SStatus->currentText();
    c.breeder = SBreeder->currentText();
    c.sex = SSex->currentText();
    c.archive = SArchive->currentText();
    c.name = SName->text();
    c.idChoice = CmbSid->count() > 0;
    if (c.idChoice) {
        c.ids = SearchIdText;
        c.ids[size_t(m_shownId)] = SRingNo->text();
    } else {
        c.ids[0] = SRingNo->text();
    }
    c.sire = SSire->currentIndex() > 0 ? m_sires->numberAt(SSire->currentIndex()) : 0;
    c.dam = SDam->currentIndex() > 0 ? m_dams->numberAt(SDam->currentIndex()) : 0;
    c.dobOption = chosenOption(SDOBOpt);
    c.dob = SDOB->displayText();
    c.toDob = SToDOB->displayText();
    c.notes = SNotes->text();
    c.health = SHealth->text();
    c.genotype = SGenotype->text();
    c.diaryText = SDiaryText->text();
    c.diaryFrom = SDiaryFromDate->displayText();
    c.diaryTo = SDiaryToDate->displayText();
    c.judge = CmbSShowJudge->currentText();
    c.award = CmbSShowAward->currentText();
    c.showDateOption = chosenOption(OptSShowDate);
    c.showDate = MskSShowDate->displayText();
    c.toShowDate = MskSToShowDate->displayText();
    c.pedigreeRoot = SPedigree->currentIndex() > 0 ? m_pedigree->numberAt(SPedigree->currentIndex()) : 0;
    for (int i = 0; i < 3; ++i)
        if (OptPedDir[size_t(i)]->isChecked())
            c.pedigreeDirection = PedigreeDirection(i);
    return c;
}

void SearchPanel::CmdSearchOk_Click()
{
    if (!m_session.Stud)
        return;
    // The dates first: the first one that is no date is told and gets the focus.
    for (QLineEdit *d : {SDOB, SToDOB, SDiaryFromDate, SDiaryToDate, MskSShowDate}) {
        // A date field shows its blank mask when empty.
        if (!Is_Valid_Date(d->displayText(), m_session.Dates, m_prompts)) {
            d->setFocus();
            return;
        }
    }
    SDiaryText->setText(SDiaryText->text().trimmed());
    CmbSShowJudge->setEditText(CmbSShowJudge->currentText().trimmed());
    CmbSShowAward->setEditText(CmbSShowAward->currentText().trimmed());
    SavedSire = SSire->currentIndex() > 0 ? m_sires->numberAt(SSire->currentIndex()) : 0;
    SavedDam = SDam->currentIndex() > 0 ? m_dams->numberAt(SDam->currentIndex()) : 0;

    Database &db = m_session.Stud->handle();
    const SearchCriteria c = criteria();
    PbSearch->hide();
    FrmSearchProgress->show();
    const auto restore = qScopeGuard([this] {
        FrmSearchProgress->hide();
        if (!FrmSearchRes->isVisible())
            PbSearch->show();
    });
    std::unique_ptr<SearchResults> results;
    StockSearch::SearchFound found;
    {
        WorkProgress progress(window(), PrbSearch, {}, CmdSearchStop);
        const std::optional<StockSearch::SearchPlan> plan = StockSearch::planSearch(db, c, m_session.Dates, progress);
        if (!plan) {
            // Nothing was asked for.
            SName->setFocus();
            return;
        }
        found = StockSearch::RunStockSearch(db, *plan, progress);
        results = std::make_unique<SearchResults>(db, m_session.Dates, found.numbers);
    }
    if (!StockSearch::tellFound(found, m_prompts)) {
        SName->setFocus();
        return;
    }
    const QStringList heads{u"Name"_s, m_session.IdWord, u"Sex"_s, u"DOB"_s, u"Breed"_s, m_session.ColourWord};
    m_results->setResults(std::move(results), heads);
    FrmSearchRes->setTitle(u"Search Results ("_s + QString::number(found.count) + u" Found) :"_s);
    ShowSearchResults(true);
}

void SearchPanel::ShowSearchResults(bool newSearch)
{
    m_prompts.status(u"Click on name to show details or on Column heading to sort"_s);
    FrmSearch->hide();
    TbSearch->hide();
    PbSearch->hide();
    FrmSearchRes->show();
    PbSearchRes->show();
    // Without a spreadsheet program the list is offered as a file to save instead.
    cmdsearchexcel->show();
    show();
    const int rows = m_results->rowCount();
    if (newSearch) {
        // The name column takes what the others leave.
        const int width = lvSList->viewport()->width();
        lvSList->setColumnWidth(1, width / 8);
        lvSList->setColumnWidth(2, fontMetrics().horizontalAdvance(
                                        m_session.MaleWord.size() > m_session.FemaleWord.size() ? m_session.MaleWord
                                                                                              : m_session.FemaleWord) +
                                        24);
        lvSList->setColumnWidth(3, fontMetrics().horizontalAdvance(m_session.Dates.format(QDate::currentDate())) + 24);
        lvSList->setColumnWidth(4, width / 8);
        lvSList->setColumnWidth(5, width / 8);
        int rest = width;
        for (int col = 1; col < 6; ++col)
            rest -= lvSList->columnWidth(col);
        lvSList->setColumnWidth(0, std::max(rest, width / 4));
        showRow(0);
    } else {
        showRow(std::clamp(m_resultPosition, 1, std::max(rows, 1)) - 1);
    }
    lvSList->setFocus();
}

void SearchPanel::showRow(int row)
{
    if (row < 0 || row >= m_results->rowCount())
        return;
    const QModelIndex index = m_results->index(row, 0);
    lvSList->setCurrentIndex(index);
    lvSList->scrollTo(index);
}

void SearchPanel::lvslist_Click()
{
    const QModelIndex index = lvSList->currentIndex();
    if (!index.isValid() || !m_results->results())
        return;
    m_resultPosition = index.row() + 1;
    hide();
    if (onShowAnimal)
        onShowAnimal(m_results->numberAt(index.row()));
}

bool SearchPanel::CmdDataSearch_Click(bool next)
{
    const int rows = m_results->rowCount();
    const int row = m_resultPosition - 1 + (next ? 1 : -1);
    if (row < 0 || row >= rows)
        return false;
    m_resultPosition = row + 1;
    showRow(row);
    if (onShowAnimal)
        onShowAnimal(m_results->numberAt(row));
    return true;
}

void SearchPanel::returnToResults()
{
    ShowSearchResults(false);
}

void SearchPanel::CmdSchResCancel_Click()
{
    m_results->setResults(nullptr, {});
    FrmSearchRes->hide();
    PbSearchRes->hide();
    FrmSearch->show();
    TbSearch->show();
    PbSearch->show();
    CmdSearchOk->setDefault(true);
    // A tick in "Include Archive" may have rebuilt the lists since the search ran.
    const auto reselect = [](QComboBox *combo, ParentListModel *model, qint64 number) {
        if (number <= 0)
            return;
        const QList<ParentEntry> entries = model->entries();
        for (int i = 0; i < entries.size(); ++i)
            if (entries.at(i).number == number) {
                combo->setCurrentIndex(i);
                return;
            }
    };
    reselect(SSire, m_sires, SavedSire);
    reselect(SDam, m_dams, SavedDam);
    SName->setFocus();
}

void SearchPanel::leave()
{
    m_results->setResults(nullptr, {});
    m_resultPosition = 0;
    hide();
    if (onLeft)
        onLeft();
}

void SearchPanel::CmdSearchResPrint_Click()
{
    SearchResults *results = m_results->results();
    if (!results)
        return;
    PrintJob job(this, u"Search Results List"_s, [&](QPagedPaintDevice *device) {
        QPainterSurface page(device);
        return printSearchResults(page, *results, m_session.IdWord);
    });
    job.setOrientation(QPageLayout::Landscape);
    job.preview();
}

void SearchPanel::cmdsearchexcel_Click()
{
    clslvtoExcel &excel = clslvtoExcel::shared();
    excel.Heading(u"Search Results"_s);
    excel.listviewA(lvSList->model());
    excel.CreateExcel(this, m_prompts);
}

} // namespace tarvex
