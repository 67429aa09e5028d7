#include "FmAwards.h"

#include "store/StudDatabase.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/DateField.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"
#include "ui/ListSort.h"
#include "ui/StatusHints.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
constexpr int kWidth = 9000;
constexpr int kHeight = 6000;
// Where each arrangement's frame and its row of buttons stand.
constexpr int kFrameLeft = 120, kFrameTop = 120, kFrameWidth = 8760, kFrameHeight = 4920;
constexpr int kButtonsTop = 5130, kButtonHeight = 420, kButtonWidth = 1560;
// The columns of the award fields: captions, then the controls.
constexpr int kLabelLeft = 240, kLabelWidth = 1150, kFieldLeft = 1500, kRow = 450, kFirstRow = 360;

QString listHint()
{
    return u"If required, click on award to amend/delete or Column heading to sort"_s;
}

// A three-digit number typed through a mask; blank places show "_".
QLineEdit *numberField(QWidget *parent, const char *name)
{
    auto *field = make<QLineEdit>(parent, name);
    field->setInputMask(u"999;_"_s);
    return field;
}

void addIfMissing(QComboBox *list, const QString &text)
{
    if (!text.isEmpty() && list->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
        list->addItem(text);
}
} // namespace

FmAwards::FmAwards(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts),
      m_awards(session, prompts, session.CurrentStockNo, session.CurrentStockName)
{
    setObjectName(u"FmAwards"_s);

    SBar = make<QStatusBar>(this, "SBar");
    SBar->setSizeGripEnabled(false);
    place(SBar, 0, kHeight - 330, kWidth, 330);

    buildList();
    buildFields();
    buildBestAward();
    showList();

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));

    Load_Award_List();
}

void FmAwards::buildList()
{
    FrAwardList = make<QGroupBox>(this, "FrAwardList", u"Awards List:"_s);
    place(FrAwardList, kFrameLeft, kFrameTop, kFrameWidth, kFrameHeight);
    lv = make<QTreeWidget>(FrAwardList, "lv");
    place(lv, 120, 300, kFrameWidth - 240, kFrameHeight - 420);
    lv->setRootIsDecorated(false);
    lv->setUniformRowHeights(true);
    lv->setAllColumnsShowFocus(true);
    lv->setSelectionMode(QAbstractItemView::SingleSelection);
    Build_Award_Columns();

    PbControl = make<QWidget>(this, "PbControl");
    place(PbControl, kFrameLeft, kButtonsTop, kFrameWidth, kButtonHeight);
    const auto button = [this](const char *name, const QString &caption, int slot) {
        auto *b = Design::panelButton(PbControl, name, caption, slot * 1800, kButtonWidth, kButtonHeight);
        b->setAutoDefault(false);
        return b;
    };
    auto *cmdNew = button("CmdNew", u"&New"_s, 0);
    CmdAmend = button("CmdAmend", u"&Amend"_s, 1);
    CmdDelete = button("CmdDelete", u"&Delete"_s, 2);
    auto *cmdBest = button("CmdBest", u"&Best "_s, 3);
    auto *cmdCancel = button("CmdCancel", u"&Back"_s, 4);

    onAction(cmdNew, &QPushButton::clicked, this, &FmAwards::CmdNew_Click);
    onAction(CmdAmend, &QPushButton::clicked, this, &FmAwards::CmdAmend_Click);
    onAction(CmdDelete, &QPushButton::clicked, this, &FmAwards::CmdDelete_Click);
    onAction(cmdBest, &QPushButton::clicked, this, &FmAwards::CmdBest_Click);
    onAction(cmdCancel, &QPushButton::clicked, this, &FmAwards::CmdCancel_Click);
    onAction(lv, &QTreeWidget::itemDoubleClicked, this, &FmAwards::CmdAmend_Click);
}

void FmAwards::Build_Award_Columns()
{
    const QList<AwardColumn> columns = m_awards.Build_Award_Columns();
    lv->setColumnCount(int(columns.size()));
    QTreeWidgetItem *head = lv->headerItem();
    const QFontMetrics fm(lv->font());
    // A head has room for its text, the sort mark it may gain and the header's margins.
    const int margin = lv->header()->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, lv->header());
    const int mark = std::max(fm.horizontalAdvance(u" v"_s), fm.horizontalAdvance(u" ^"_s));
    int widened = 0;
    for (const AwardColumn &c : columns)
        widened += c.widened ? 1 : 0;
    int absent = 0;
    for (const QString &pattern : m_awards.absentWidthPatterns())
        absent += fm.horizontalAdvance(pattern);
    QList<int> widths, least;
    for (int i = 0; i < columns.size(); ++i) {
        const AwardColumn &c = columns.at(i);
        QString text = c.head;
        if (text.endsWith(u" v"_s))
            text.chop(2);
        const int width = fm.horizontalAdvance(c.widthPattern) + (c.widened ? absent / widened : 0) + 2 * margin;
        least << fm.horizontalAdvance(text) + mark + 2 * margin + 4;
        if (i == 0) // the date itself is never cut short
            least.last() = std::max(least.last(), fm.horizontalAdvance(m_awards.shortDate(QDate(2000, 12, 28))) +
                                                      2 * margin + 4);
        widths << std::max(width, least.last());
        head->setText(i, c.head);
        if (c.rightAligned)
            head->setTextAlignment(i, Qt::AlignRight | Qt::AlignVCenter);
    }
    // The columns share out the list's width: where the patterns ask for more, each column
    // gives up part of what it has beyond its head.
    const int room = lv->width() - 2 * lv->frameWidth() - lv->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    int total = 0, spare = 0;
    for (int i = 0; i < widths.size(); ++i) {
        total += widths.at(i);
        spare += widths.at(i) - least.at(i);
    }
    for (int i = 0; i < widths.size(); ++i) {
        if (total > room && spare > 0)
            widths[i] -= int((qint64(widths.at(i) - least.at(i)) * std::min(total - room, spare) + spare - 1) / spare);
        lv->setColumnWidth(i, widths.at(i));
    }
    // Lv_ColumnClick: a click on a head sorts by that column, ascending first and reversed by a
    // second click; dates sort by their "yyyy/MM/dd" key. The list starts in ascending date
    // order with "Date v" naming the column it is in order of.
    ColumnSortOptions sorting;
    sorting.ascendingMark = u" ^"_s;
    sorting.keyColumns = {0};
    enableColumnSort(lv, sorting);
    setSortColumn(lv, 0, Qt::AscendingOrder);
}

void FmAwards::buildFields()
{
    FrNewAmend = make<QGroupBox>(this, "FrNewAmend", u"Create Award Details:"_s);
    place(FrNewAmend, kFrameLeft, kFrameTop, kFrameWidth, kFrameHeight);
    QWidget *f = FrNewAmend;
    const auto label = [f](const char *name, const QString &caption, int left, int row, int width = kLabelWidth) {
        auto *l = make<QLabel>(f, name, caption);
        place(l, left, kFirstRow + row * kRow + 40, width, 300);
        return l;
    };
    const auto list = [this, f](const char *name, int left, int row, int width, int limit) {
        auto *c = Design::editableList(f, name, {});
        place(c, left, kFirstRow + row * kRow, width, 340);
        if (limit > 0)
            Design::limitTyping(c, limit, m_prompts);
        return c;
    };

    label("LblDate", u"Date"_s, kLabelLeft, 0);
    ADate = make<QLineEdit>(f, "ADate");
    place(ADate, kFieldLeft, kFirstRow, 1500, 340);
    Apply_Date_Mask(ADate, m_session.Dates);

    label("LblVenue", u"Club"_s, kLabelLeft, 1);
    AVenue = list("AVenue", kFieldLeft, 1, 7000, AwardLimits::Venue);

    label("LblSecretary", u"Secretary"_s, kLabelLeft, 2);
    ASecretary = list("ASecretary", kFieldLeft, 2, 3000, AwardLimits::Secretary);
    label("LblJudge", u"Judge"_s, 4700, 2, 850);
    AJudge = list("AJudge", 5600, 2, 2900, AwardLimits::Judge);

    // The show's stars have a row of their own, which the fields below close up when the
    // points system is off.
    Label2 = label("Label2", m_session.PointsName, kLabelLeft, 3);
    AStars = list("AStars", kFieldLeft, 3, 1000, 0);
    const int award = m_session.PointsOn ? 4 : 3;

    label("Label3_0", u"Award"_s, kLabelLeft, award);
    AAward = list("AAward", kFieldLeft, award, 5300, AwardLimits::Award);
    ACCStars = list("ACCStars", 6900, award, 850, 0);
    Label3_1 = label("Label3_1", m_session.PointsName, 7820, award, 850);

    label("LblEntered", u"Entered"_s, kLabelLeft, award + 1);
    AEntered = numberField(f, "AEntered");
    place(AEntered, kFieldLeft, kFirstRow + (award + 1) * kRow, 800, 340);
    label("LblShown", u"Shown"_s, 2700, award + 1, 800);
    AShown = numberField(f, "AShown");
    place(AShown, 3550, kFirstRow + (award + 1) * kRow, 800, 340);

    label("LblComments", u"Comments"_s, kLabelLeft, award + 2);
    AComments = make<QPlainTextEdit>(f, "AComments");
    AComments->setTabChangesFocus(true);
    const int commentsTop = kFirstRow + (award + 2) * kRow;
    place(AComments, kFieldLeft, commentsTop, 7000, kFrameHeight - 160 - commentsTop);

    // The points system's two lists and their captions show only while it is on.
    for (QWidget *w : std::initializer_list<QWidget *>{Label2, Label3_1, AStars, ACCStars})
        w->setVisible(m_session.PointsOn);
    QWidget *const order[] = {ADate, AVenue, ASecretary, AJudge, AStars, AAward, ACCStars, AEntered, AShown, AComments};
    for (std::size_t i = 1; i < std::size(order); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);

    auto *hints = new StatusHints(SBar, this);
    hints->add(ADate, u"Enter show date"_s);
    hints->add(AVenue, u"Select or enter name of club"_s);
    hints->add(ASecretary, u"Select or enter Secretaries name"_s);
    hints->add(AJudge, u"Select or enter name of judge"_s);
    hints->add(AStars, u"Select show stars"_s);
    hints->add(AAward, u"Select or enter award"_s);
    hints->add(ACCStars, u"Select CC stars awarded"_s);
    hints->add(AEntered, u"Enter number of animals entered"_s);
    hints->add(AShown, u"Enter number of animals shown"_s);
    hints->add(AComments, u"Enter judge critique or comments"_s);
    AAward->installEventFilter(this);
    AVenue->installEventFilter(this);

    PbNewAmend = make<QWidget>(this, "PbNewAmend");
    place(PbNewAmend, kFrameLeft, kButtonsTop, kFrameWidth, kButtonHeight);
    auto *update = Design::panelButton(PbNewAmend, "CmdUpdate", u"&Ok"_s, 3 * 1800, kButtonWidth, kButtonHeight);
    auto *cancel = Design::panelButton(PbNewAmend, "CmdNACancel", u"&Cancel"_s, 4 * 1800, kButtonWidth, kButtonHeight);
    update->setAutoDefault(false);
    cancel->setAutoDefault(false);
    onAction(update, &QPushButton::clicked, this, &FmAwards::CmdUpdate_Click);
    onAction(cancel, &QPushButton::clicked, this, &FmAwards::CmdNACancel_Click);
}

void FmAwards::buildBestAward()
{
    FrmBestAward = make<QGroupBox>(this, "FrmBestAward", u"Best Award:"_s);
    place(FrmBestAward, kFrameLeft, kFrameTop, kFrameWidth, kFrameHeight);
    CmbBestAward = Design::editableList(FrmBestAward, "CmbBestAward", {});
    place(CmbBestAward, kLabelLeft, 420, 5300, 340);
    auto *note = make<QLabel>(FrmBestAward, "LblBestNote",
                              u"(Note: The Best Award will be shown on the              pedigree sheet)"_s);
    note->setWordWrap(true);
    place(note, kLabelLeft, 900, 5300, 700);

    PbBestAward = make<QWidget>(this, "PbBestAward");
    place(PbBestAward, kFrameLeft, kButtonsTop, kFrameWidth, kButtonHeight);
    auto *update =
        Design::panelButton(PbBestAward, "CCmdBestUpdate", u"&Ok"_s, 3 * 1800, kButtonWidth, kButtonHeight);
    auto *cancel =
        Design::panelButton(PbBestAward, "CmdBestCancel", u"&Cancel"_s, 4 * 1800, kButtonWidth, kButtonHeight);
    update->setAutoDefault(false);
    cancel->setAutoDefault(false);
    onAction(update, &QPushButton::clicked, this, &FmAwards::CCmdBestUpdate_Click);
    onAction(cancel, &QPushButton::clicked, this, &FmAwards::CmdBestCancel_Click);
}

void FmAwards::showArrangement(QWidget *frame, QWidget *buttons)
{
    for (QWidget *w : std::initializer_list<QWidget *>{FrAwardList, PbControl, FrNewAmend, PbNewAmend, FrmBestAward,
                                                        PbBestAward})
        w->setVisible(w == frame || w == buttons);
}

void FmAwards::showList()
{
    showArrangement(FrAwardList, PbControl);
    if (lv->topLevelItemCount() > 0) {
        SBar->showMessage(listHint());
        lv->setFocus();
    } else {
        SBar->clearMessage();
    }
}

void FmAwards::Load_Award_List()
{
    const QList<AwardRow> rows = m_awards.Load_Award_List();
    setWindowTitle(m_awards.caption());
    lv->hide();
    lv->clear();
    SBar->clearMessage();
    CmdAmend->hide();
    CmdDelete->hide();
    // Freshly read rows stand in date order, whatever order the heads were clicked to.
    const QList<AwardColumn> columns = m_awards.Build_Award_Columns();
    for (int i = 0; i < columns.size(); ++i)
        lv->headerItem()->setText(i, columns.at(i).head);
    setSortColumn(lv, 0, Qt::AscendingOrder);
    if (rows.isEmpty())
        return;
    SBar->showMessage(listHint());
    QList<QTreeWidgetItem *> items;
    items.reserve(rows.size());
    for (const AwardRow &row : rows) {
        auto *item = new QTreeWidgetItem(m_awards.rowTexts(row));
        item->setData(0, Qt::UserRole, row.unique);
        item->setData(0, kSortKeyRole, sortableDate(row.date));
        for (int i = 0; i < columns.size(); ++i)
            if (columns.at(i).rightAligned)
                item->setTextAlignment(i, Qt::AlignRight | Qt::AlignVCenter);
        items << item;
    }
    lv->addTopLevelItems(items);
    CmdAmend->show();
    CmdDelete->show();
    lv->setCurrentItem(items.first());
    lv->scrollToItem(items.first());
    lv->show();
    lv->setFocus();
}

std::optional<qint64> FmAwards::selectedAward() const
{
    const QTreeWidgetItem *item = lv->currentItem();
    if (!item || !item->isSelected())
        return std::nullopt;
    return item->data(0, Qt::UserRole).toLongLong();
}

void FmAwards::Fill_Star_Lists()
{
    const QStringList stars = m_awards.Fill_Star_Lists();
    for (QComboBox *list : {AStars, ACCStars}) {
        list->clear();
        list->addItems(stars);
    }
}

void FmAwards::enterPanel()
{
    if (!m_listsLoaded) {
        HourglassScope wait(this);
        Database &db = m_session.Stud->handle();
        Fill_Star_Lists();
        AJudge->addItems(Fill_Judge_Names(db));
        AVenue->addItems(Fill_Venue_Names(db));
        AAward->addItems(Fill_Award_Names(db));
        m_listsLoaded = true;
    }
    FrNewAmend->setTitle(m_isNew ? u"Create Award Details:"_s : u"Amend Award Details:"_s);
    for (QComboBox *list : {AVenue, ASecretary, AJudge, AStars, AAward, ACCStars}) {
        list->setCurrentIndex(-1);
        list->setEditText(QString());
    }
    ADate->clear();
    AEntered->clear();
    AShown->clear();
    AComments->clear();
    showArrangement(FrNewAmend, PbNewAmend);
    ADate->setFocus();
}

void FmAwards::CmdNew_Click()
{
    m_isNew = true;
    m_amending.reset();
    enterPanel();
}

void FmAwards::CmdAmend_Click()
{
    std::optional<AwardRow> row = m_awards.amend(selectedAward());
    if (!row)
        return;
    m_isNew = false;
    m_amending = std::move(row);
    enterPanel();
    const AwardForm form = m_awards.formOf(*m_amending);
    ADate->setText(form.date);
    AStars->setEditText(form.stars);
    ACCStars->setEditText(form.ccStars);
    AVenue->setEditText(form.venue);
    ASecretary->setEditText(form.secretary);
    AJudge->setEditText(form.judge);
    AAward->setEditText(form.award);
    AEntered->setText(form.entered);
    AShown->setText(form.shown);
    AComments->setPlainText(form.comments);
    ADate->setFocus();
}

void FmAwards::CmdDelete_Click()
{
    const std::optional<qint64> selected = selectedAward();
    if (selected)
        lv->scrollToItem(lv->currentItem());
    m_awards.remove(selected);
    if (selected)
        Load_Award_List();
}

void FmAwards::CmdBest_Click()
{
    showArrangement(FrmBestAward, PbBestAward);
    SBar->showMessage(u"Enter/Select Best Award"_s);
    CmbBestAward->clear();
    CmbBestAward->addItems(m_awards.bestAwardChoices());
    CmbBestAward->setEditText(m_awards.bestAward());
    CmbBestAward->setFocus();
}

void FmAwards::CmdUpdate_Click()
{
    AwardForm form;
    form.date = ADate->displayText();
    form.venue = AVenue->currentText();
    form.secretary = ASecretary->currentText();
    form.judge = AJudge->currentText();
    form.award = AAward->currentText();
    form.stars = AStars->currentText();
    form.ccStars = ACCStars->currentText();
    form.entered = AEntered->displayText();
    form.shown = AShown->displayText();
    form.comments = AComments->toPlainText();
    QString focus;
    if (!m_awards.save(form, m_isNew ? std::nullopt : m_amending, &focus)) {
        if (auto *w = findChild<QWidget *>(focus))
            w->setFocus();
        return;
    }
    // A name typed for the first time is offered at once by its list.
    addIfMissing(AAward, form.award);
    addIfMissing(AJudge, form.judge);
    addIfMissing(AVenue, form.venue);
    addIfMissing(ASecretary, form.secretary);
    CmdNACancel_Click();
    Load_Award_List();
}

void FmAwards::CCmdBestUpdate_Click()
{
    m_awards.setBestAward(CmbBestAward->currentText());
    showList();
}

void FmAwards::CmdNACancel_Click()
{
    m_amending.reset();
    showList();
}

void FmAwards::CmdBestCancel_Click()
{
    showList();
}

void FmAwards::CmdCancel_Click()
{
    reject();
}

void FmAwards::AAward_LostFocus()
{
    if (const std::optional<QString> stars =
            m_awards.AAward_LostFocus(AAward->currentText(), m_awardOnFocus, AStars->currentText()))
        ACCStars->setEditText(*stars);
}

void FmAwards::AVenue_LostFocus()
{
    const QString venue = Awards::AVenue_LostFocus(AVenue->currentText());
    if (venue != AVenue->currentText())
        AVenue->setEditText(venue);
    if (!ASecretary->currentText().isEmpty() || venue.isEmpty() || !m_isNew)
        return;
    // One short read, while the focus is on its way to the next field: no hourglass, which
    // would take the focus from the window.
    const QStringList names = m_awards.secretariesOf(venue);
    ASecretary->clear();
    ASecretary->addItems(names);
    ASecretary->setEditText(names.isEmpty() ? QString() : names.first());
}

bool FmAwards::eventFilter(QObject *watched, QEvent *event)
{
    const bool focusIn = event->type() == QEvent::FocusIn;
    // A list's own pop-up takes the focus for a moment: that is no leaving of the field.
    if ((focusIn || event->type() == QEvent::FocusOut) &&
        static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason) {
        if (watched == AAward && focusIn)
            m_awardOnFocus = AAward->currentText();
        else if (watched == AAward)
            runAction(QString(), [this] { AAward_LostFocus(); });
        else if (watched == AVenue && !focusIn)
            runAction(QString(), [this] { AVenue_LostFocus(); });
    }
    return QDialog::eventFilter(watched, event);
}

void FmAwards::keyPressEvent(QKeyEvent *event)
{
    // Escape gives up the award or the best award in hand, as their Cancel does; from the
    // list it closes the window.
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier && FrAwardList->isHidden()) {
        runAction(u"Cancel"_s, [this] {
            if (!FrNewAmend->isHidden())
                CmdNACancel_Click();
            else
                CmdBestCancel_Click();
        });
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

} // namespace tarvex
