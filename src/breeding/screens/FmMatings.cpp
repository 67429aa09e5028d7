#include "FmMatings.h"

#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/DateField.h"
#include "ui/Design.h"
#include "ui/ListSort.h"
#include "ui/ParentListModel.h"
#include "ui/StatusHints.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QStyle>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
constexpr int kWidth = 7200;
constexpr int kHeight = 5200;

const QString kMatingHead = u"Mating Date"_s;
const QString kBirthHead = u"Birth Date"_s;
const QString kListHint = u"If required, click on mating to amend/delete or Column heading to sort"_s;
} // namespace

FmMatings::FmMatings(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_matings(session, prompts, session.CurrentStockNo)
{
    setObjectName(u"FmMatings"_s);

    // The list panel.
    FrMatingList = make<QGroupBox>(this, "FrMatingList");
    place(FrMatingList, 150, 100, 6900, 4000);
    lv = make<QTreeWidget>(FrMatingList, "lv");
    lv->setRootIsDecorated(false);
    lv->setUniformRowHeights(true);
    lv->setAllColumnsShowFocus(true);
    lv->setHeaderLabels({kMatingHead + u" v"_s, kBirthHead, QString()});
    place(lv, 120, 200, 6660, 3680);
    Lv_ColumnClick();

    pbcontrol = make<QWidget>(this, "pbcontrol");
    place(pbcontrol, 150, 4200, 6900, 420);
    auto *cmdNew = Design::panelButton(pbcontrol, "cmdNew", u"&New"_s, 0, 1500, 420);
    CmdAmend = Design::panelButton(pbcontrol, "CmdAmend", u"&Amend"_s, 1650, 1500, 420);
    cmdDelete = Design::panelButton(pbcontrol, "cmdDelete", u"&Delete"_s, 3300, 1500, 420);
    auto *cmdCancel = Design::panelButton(pbcontrol, "CmdCancel", u"&Back"_s, 5400, 1500, 420);

    // The panel of a new or amended mating, in the list's place.
    FrNewAmend = make<QGroupBox>(this, "FrNewAmend", u"Create Mating Details:"_s);
    place(FrNewAmend, 150, 100, 6900, 4000);
    Design::FormRows rows(FrNewAmend, 500, 300, 2000, 2400, 4200);
    MSireDam = make<QComboBox>(FrNewAmend, "MSireDam");
    m_partners = ParentListModel::install(MSireDam);
    rows.add("LblSireDam", QString(), MSireDam);
    LblSireDam = FrNewAmend->findChild<QLabel *>(u"LblSireDam"_s);
    MMatingDate = make<QLineEdit>(FrNewAmend, "MMatingDate");
    rows.add("LblMatingDate", kMatingHead, MMatingDate);
    MBirthDate = make<QLineEdit>(FrNewAmend, "MBirthDate");
    rows.add("LblBirthDate", kBirthHead, MBirthDate);
    Apply_Date_Mask(MMatingDate, session.Dates);
    Apply_Date_Mask(MBirthDate, session.Dates);
    ChkUpdateDiary = make<QCheckBox>(FrNewAmend, "ChkUpdateDiary", u"Update Diary"_s);
    place(ChkUpdateDiary, 2400, 500 + 3 * 430, 3000, 300);
    MMatingDate->installEventFilter(this);

    PbNewAmend = make<QWidget>(this, "PbNewAmend");
    place(PbNewAmend, 150, 4200, 6900, 420);
    auto *cmdUpdate = Design::panelButton(PbNewAmend, "CmdUpdate", u"&Ok"_s, 3750, 1500, 420);
    cmdUpdate->setDefault(true);
    auto *cmdNACancel = Design::panelButton(PbNewAmend, "CmdNACancel", u"&Cancel"_s, 5400, 1500, 420);

    SBar = make<QStatusBar>(this, "SBar");
    SBar->setSizeGripEnabled(false);
    place(SBar, 0, kHeight - 330, kWidth, 330);
    auto *hints = new StatusHints(SBar, this);
    hints->add(MSireDam, u"Select Partner"_s);
    hints->add(MMatingDate, u"Enter Mating Date or Tab for Today"_s);
    hints->add(MBirthDate, u"Enter Expected Birth Date"_s);
    hints->add(ChkUpdateDiary, u"Update Diary Entry for Sire and Dam"_s);
    hints->add(lv, kListHint);

    onAction(cmdNew, &QPushButton::clicked, this, &FmMatings::cmdNew_Click);
    onAction(CmdAmend, &QPushButton::clicked, this, &FmMatings::CmdAmend_Click);
    onAction(cmdDelete, &QPushButton::clicked, this, &FmMatings::CmdDelete_Click);
    onAction(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    onAction(cmdUpdate, &QPushButton::clicked, this, &FmMatings::CmdUpdate_Click);
    onAction(cmdNACancel, &QPushButton::clicked, this, [this] { showList(true); });
    onAction(lv, &QTreeWidget::itemSelectionChanged, this, [this] {
        const bool chosen = selectedMating().has_value();
        CmdAmend->setEnabled(chosen);
        cmdDelete->setEnabled(chosen);
    });
    showList(true);

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
}

bool FmMatings::start()
{
    if (!m_matings.open())
        return false;
    setWindowTitle(u"Matings For "_s + m_session.CurrentStockName);
    LblSireDam->setText(m_matings.partnerWord());
    lv->headerItem()->setText(2, m_matings.partnerWord());
    m_partners->setList(m_matings.partners());
    MSireDam->setCurrentIndex(-1);
    fillList();
    showList(true);
    return true;
}

// A click on a column's head sorts the list by it; the dates sort by their "yyyy/mm/dd"
// text, the partner by name. Each column is as wide as "############", and at least as its
// head with either mark.
void FmMatings::Lv_ColumnClick()
{
    const QFontMetrics fm(lv->font());
    const int margin = lv->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, lv->header());
    const int mark = std::max(fm.horizontalAdvance(u" v"_s), fm.horizontalAdvance(u" ^"_s));
    const QString heads[] = {kMatingHead, kBirthHead, u"Sire"_s};
    for (int c = 0; c < 3; ++c)
        lv->setColumnWidth(c, std::max(fm.horizontalAdvance(u"############"_s),
                                       fm.horizontalAdvance(heads[c]) + mark + 2 * margin + fm.averageCharWidth()));
    ColumnSortOptions options;
    options.keyColumns = {0, 1};
    enableColumnSort(lv, options);
}

void FmMatings::fillList()
{
    lv->clear();
    CmdAmend->setEnabled(false);
    cmdDelete->setEnabled(false);
    const DateSettings &dates = m_session.Dates;
    const auto shown = [&](const QDate &d) { return d.isValid() ? dates.format(d) : QString(); };
    const QList<MatingRow> rows = m_matings.rows();
    QList<QTreeWidgetItem *> items;
    items.reserve(rows.size());
    for (const MatingRow &r : rows) {
        auto *item = new QTreeWidgetItem({shown(r.matingDate), shown(r.birthDate), r.partnerName});
        item->setData(0, Qt::UserRole, r.unique);
        item->setData(0, kSortKeyRole, sortableDate(r.matingDate));
        item->setData(1, kSortKeyRole, sortableDate(r.birthDate));
        items << item;
    }
    lv->addTopLevelItems(items);
    // Filled in the order of the animal's side of the stud, the list starts as it was drawn.
    lv->headerItem()->setText(0, kMatingHead + u" v"_s);
    lv->headerItem()->setText(1, kBirthHead);
    lv->headerItem()->setText(2, m_matings.partnerWord());
    setSortColumn(lv, 0, Qt::AscendingOrder);
    if (!rows.isEmpty())
        SBar->showMessage(kListHint);
}

void FmMatings::showList(bool on)
{
    FrMatingList->setVisible(on);
    pbcontrol->setVisible(on);
    FrNewAmend->setVisible(!on);
    PbNewAmend->setVisible(!on);
}

void FmMatings::openPanel(bool isNew)
{
    m_matings.gestation();
    m_isNew = isNew;
    FrNewAmend->setTitle(isNew ? u"Create Mating Details:"_s : u"Amend Mating Details:"_s);
    // Diary lines are written for new matings only.
    ChkUpdateDiary->setVisible(isNew);
    ChkUpdateDiary->setChecked(isNew);
    showList(false);
    MSireDam->setFocus();
}

std::optional<qint64> FmMatings::selectedMating() const
{
    const QList<QTreeWidgetItem *> chosen = lv->selectedItems();
    if (chosen.isEmpty())
        return std::nullopt;
    return chosen.first()->data(0, Qt::UserRole).toLongLong();
}

void FmMatings::cmdNew_Click()
{
    m_amending.reset();
    m_partners->setAddition(std::nullopt);
    MSireDam->setCurrentIndex(-1);
    MMatingDate->clear();
    MBirthDate->clear();
    openPanel(true);
}

void FmMatings::CmdAmend_Click()
{
    const std::optional<MatingRow> row = m_matings.amend(selectedMating());
    if (!row)
        return;
    m_amending = row->unique;
    const DateSettings &dates = m_session.Dates;
    MMatingDate->setText(row->matingDate.isValid() ? dates.format(row->matingDate) : QString());
    MBirthDate->setText(row->birthDate.isValid() ? dates.format(row->birthDate) : QString());
    openPanel(false);
    const std::optional<qsizetype> partner = m_matings.partnerPlace(*row);
    m_partners->setAddition(partner ? std::nullopt : std::optional<ParentEntry>(Matings::notFoundPartner()));
    MSireDam->setCurrentIndex(partner ? int(*partner) : m_partners->rowCount() - 1);
}

void FmMatings::CmdDelete_Click()
{
    if (m_matings.remove(selectedMating()))
        fillList();
}

void FmMatings::CmdUpdate_Click()
{
    MatingForm form;
    if (!m_isNew)
        form.unique = m_amending;
    const qint64 partner = m_partners->numberAt(MSireDam->currentIndex());
    if (partner != -1)
        form.partner = partner;
    form.partnerText = MSireDam->currentText();
    form.matingDate = MMatingDate->displayText();
    form.birthDate = MBirthDate->displayText();
    form.updateDiary = m_isNew && ChkUpdateDiary->isChecked();
    QString focus;
    if (!m_matings.save(form, &focus)) {
        if (auto *control = findChild<QWidget *>(focus))
            control->setFocus();
        return;
    }
    showList(true);
    fillList();
}

void FmMatings::MMatingDate_LostFocus()
{
    QString mated = MMatingDate->displayText();
    QString due = MBirthDate->displayText();
    m_matings.matingDateLeft(mated, due);
    if (mated != MMatingDate->displayText())
        MMatingDate->setText(mated);
    if (due != MBirthDate->displayText())
        MBirthDate->setText(due);
}

bool FmMatings::eventFilter(QObject *watched, QEvent *event)
{
    // Leaving the mating day for another control of the screen, not for a box or another
    // window, fills in the days.
    if (watched == MMatingDate && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && FrNewAmend->isVisible())
            runAction(QString(), [this] { MMatingDate_LostFocus(); });
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tarvex
