#include "FmBrNote.h"

#include "store/StudDatabase.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/DateField.h"
#include "ui/Design.h"
#include "ui/StatusHints.h"

#include <QEvent>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QStatusBar>
#include <QTextLayout>
#include <QtMath>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {

// Pixels: the space between the frame's edge and the notes, between two notes, around the
// text inside a note's box, and what a box has over its lines so that they never scroll.
constexpr int kInset = 4;
constexpr int kGap = 2;
constexpr int kTextMargin = 2;
constexpr int kSlack = 2;
constexpr int kWidth = 9000; // twips

// A note as its box shows it: every kind of line break starts a new line.
QString shownText(const QString &notes)
{
    QString text = notes;
    text.replace(u"\r\n"_s, u"\n"_s);
    text.replace(u'\r', u'\n');
    return text;
}

// The heights of the lines a note takes in a box of that font with that room for text,
// laid out as the box lays it out; counting stops one line past what a box shows.
QList<qreal> lineHeights(const QFont &font, const QString &text, qreal width)
{
    QList<qreal> heights;
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    for (const QString &paragraph : text.split(u'\n')) {
        QTextLayout layout(paragraph, font);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLeadingIncluded(true);
            line.setLineWidth(width);
            heights << line.height();
            if (heights.size() > Diary::kMaxLines)
                break;
        }
        layout.endLayout();
        if (heights.size() > Diary::kMaxLines)
            break;
    }
    return heights;
}

// The width a date takes in a label of that font.
int dateWidth(const QFont &font, const DateSettings &dates)
{
    QString widest = dates.BlankDate;
    widest.replace(u'_', u'0');
    return QFontMetrics(font).horizontalAdvance(widest) + 8;
}

} // namespace

FmBrNote::FmBrNote(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts),
      m_diary(session.Stud->handle(), session.CurrentStockNo)
{
    setObjectName(u"FmBrNote"_s);
    setWindowTitle(u"Diary For "_s + session.CurrentStockName);

    FrmBrNote = make<QFrame>(this, "FrmBrNote");
    FrmBrNote->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    place(FrmBrNote, 120, 120, kWidth - 240, 0);
    for (int i = 0; i < Diary::kRows; ++i) {
        NoteRow &row = BrRow[i];
        const std::string n = std::to_string(i);
        row.pic = make<QFrame>(FrmBrNote, ("BrPic_" + n).c_str());
        row.pic->setAutoFillBackground(true);
        row.date = make<QLabel>(row.pic, ("BrDate_" + n).c_str());
        row.date->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        row.notes = make<QPlainTextEdit>(row.pic, ("BrNotes_" + n).c_str());
        row.notes->setReadOnly(true);
        row.notes->setFocusPolicy(Qt::ClickFocus);
        row.notes->document()->setDocumentMargin(kTextMargin);
        row.notes->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        for (QObject *o : std::initializer_list<QObject *>{row.pic, row.date, row.notes->viewport()})
            o->installEventFilter(this);
        row.pic->hide();
    }
    // The frame holds fifteen notes of one line at the desktop's font, with a pixel to spare
    // for each when the fonts are scaled with the window.
    const int oneLine = rowHeight(DiaryEntry{0, QDate(), u"Ag"_s});
    const int frameTwips = (2 * kInset + Diary::kRows * (oneLine + 1)) * Design::kTwipsPerPixel;
    place(FrmBrNote, 120, 120, kWidth - 240, frameTwips);
    const int dateRoom = dateWidth(font(), session.Dates);
    for (int i = 0; i < Diary::kRows; ++i) {
        const NoteRow &row = BrRow[i];
        row.pic->setGeometry(kInset, kInset + i * oneLine, FrmBrNote->width() - 2 * kInset, oneLine - kGap);
        row.date->setGeometry(0, 0, dateRoom, oneLine - kGap);
        row.notes->setGeometry(dateRoom, 0, row.pic->width() - dateRoom, oneLine - kGap);
    }
    const int buttonsTop = 120 + frameTwips + 120;
    const int height = buttonsTop + 420 + 120 + 330;

    FrmNewAmend = make<QGroupBox>(this, "FrmNewAmend", u"Create New Diary Details:"_s);
    place(FrmNewAmend, 120, 120, kWidth - 240, frameTwips);
    place(make<QLabel>(FrmNewAmend, "LblDate", u"Date"_s), 150, 400, 900, 300);
    BRNDate = make<QLineEdit>(FrmNewAmend, "BRNDate");
    place(BRNDate, 1100, 360, 1500, 340);
    Apply_Date_Mask(BRNDate, session.Dates);
    BRNDate->installEventFilter(this);
    place(make<QLabel>(FrmNewAmend, "LblNotes", u"Details"_s), 150, 850, 900, 300);
    BrNNotes = make<QPlainTextEdit>(FrmNewAmend, "BrNNotes");
    BrNNotes->setTabChangesFocus(true);
    place(BrNNotes, 1100, 810, kWidth - 240 - 1100 - 150, frameTwips - 810 - 150);

    const auto panel = [&](const char *name) {
        auto *w = make<QWidget>(this, name);
        place(w, 120, buttonsTop, kWidth - 240, 420);
        return w;
    };
    const auto button = [](QWidget *p, const char *name, const QString &caption, int slot) {
        return Design::panelButton(p, name, caption, slot * 1265, 1170, 420);
    };
    pbcontrol = panel("pbcontrol");
    CmdNew = button(pbcontrol, "CmdNew", u"&New"_s, 0);
    CmdAmend = button(pbcontrol, "CmdAmend", u"&Amend"_s, 1);
    CmdDelete = button(pbcontrol, "CmdDelete", u"&Delete"_s, 2);
    CmdToggle = button(pbcontrol, "CmdToggle", u"&Toggle"_s, 3);
    CmdBwd = button(pbcontrol, "CmdBwd", u"&Backward"_s, 4);
    CmdFwd = button(pbcontrol, "CmdFwd", u"&Forward"_s, 5);
    CmdSchResCancel = button(pbcontrol, "CmdSchResCancel", u"&Back"_s, 6);
    PbNewAmend = panel("PbNewAmend");
    CmdUpdate = button(PbNewAmend, "CmdUpdate", u"&Ok"_s, 5);
    CmdNACancel = button(PbNewAmend, "CmdNACancel", u"&Cancel"_s, 6);

    SBar = make<QStatusBar>(this, "SBar");
    SBar->setSizeGripEnabled(false);
    place(SBar, 0, height - 330, kWidth, 330);
    m_hints = new StatusHints(SBar, this);
    const std::pair<QWidget *, QString> hints[] = {
        {CmdNew, u"Create new diary entry"_s},   {CmdAmend, u"Amend diary entry"_s},
        {CmdDelete, u"Delete diary entry"_s},    {CmdToggle, u"Reverse diary order"_s},
        {CmdBwd, u"Previous diary page "_s},     {CmdFwd, u"Next diary page "_s},
        {CmdSchResCancel, u"Leave diary"_s},     {CmdUpdate, u"Update diary entry"_s},
        {CmdNACancel, u"Cancel diary update"_s}, {BRNDate, u"Enter date or leave blank for today's date"_s},
        {BrNNotes, u"Enter diary details"_s},
    };
    for (const auto &[control, hint] : hints) {
        m_hints->add(control, hint);
        control->setToolTip(hint);
    }

    onAction(CmdNew, &QPushButton::clicked, this, &FmBrNote::CmdNew_Click);
    onAction(CmdAmend, &QPushButton::clicked, this, &FmBrNote::CmdAmend_Click);
    onAction(CmdDelete, &QPushButton::clicked, this, &FmBrNote::CmdDelete_Click);
    onAction(CmdToggle, &QPushButton::clicked, this, &FmBrNote::CmdToggle_Click);
    onAction(CmdBwd, &QPushButton::clicked, this, &FmBrNote::CmdBwd_Click);
    onAction(CmdFwd, &QPushButton::clicked, this, &FmBrNote::CmdFwd_Click);
    onAction(CmdSchResCancel, &QPushButton::clicked, this, &QDialog::accept);
    onAction(CmdUpdate, &QPushButton::clicked, this, &FmBrNote::CmdUpdate_Click);
    onAction(CmdNACancel, &QPushButton::clicked, this, &FmBrNote::CmdNACancel_Click);
    showPanel(false);

    const QSize design(Design::px(kWidth), Design::px(height));
    resize(design);
    FormResizeSetup(this, design);
}

void FmBrNote::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (event->spontaneous())
        return;
    // Each time the diary comes up it starts with the newest note.
    m_order = false;
    runAction(QString(), [this] { ShowDiary(); });
}

void FmBrNote::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    // The proportions have put the frame and fonts to the new size: the page is laid out
    // again at it, and may now hold more notes or fewer.
    if (m_diary.pageNumber() >= 1)
        runAction(QString(), [this] {
            layRows(m_diary.relay([this](const DiaryEntry &e) { return rowHeight(e); }, frameRoom()));
            CmdFwd->setEnabled(m_diary.canGoForward());
        });
}

int FmBrNote::frameRoom() const
{
    return FrmBrNote->height() - 2 * kInset;
}

int FmBrNote::rowHeight(const DiaryEntry &entry) const
{
    const QPlainTextEdit *box = BrRow[0].notes;
    const int room = FrmBrNote->width() - 2 * kInset - dateWidth(BrRow[0].date->font(), m_session.Dates) -
                     2 * box->frameWidth() - 2 * kTextMargin;
    const QList<qreal> heights = lineHeights(box->font(), shownText(entry.notes), std::max(room, 1));
    const int lines = Diary::boxLines(int(heights.size()));
    qreal text = 0;
    for (int i = 0; i < lines; ++i)
        text += i < heights.size() ? heights.at(i) : QFontMetricsF(box->font()).lineSpacing();
    return qCeil(text) + 2 * kTextMargin + 2 * box->frameWidth() + kSlack + kGap;
}

void FmBrNote::ShowDiary()
{
    if (!m_diary.showDiary(m_order)) {
        SBar->clearMessage();
        for (QPushButton *b : {CmdFwd, CmdBwd, CmdAmend, CmdDelete, CmdToggle})
            b->setEnabled(false);
        for (NoteRow &row : BrRow)
            row.pic->hide();
        return;
    }
    SBar->showMessage(u"If required, click on entry to amend/delete"_s);
    for (QPushButton *b : {CmdAmend, CmdDelete, CmdToggle})
        b->setEnabled(true);
    ShowPage();
}

void FmBrNote::ShowPage()
{
    const QList<DiaryEntry> rows =
        m_diary.page([this](const DiaryEntry &e) { return rowHeight(e); }, frameRoom());
    layRows(rows);
    CmdBwd->setEnabled(m_diary.canGoBack());
    CmdFwd->setEnabled(m_diary.canGoForward());
}

void FmBrNote::layRows(const QList<DiaryEntry> &rows)
{
    const int width = FrmBrNote->width() - 2 * kInset;
    int top = kInset;
    for (int i = 0; i < Diary::kRows; ++i) {
        NoteRow &row = BrRow[i];
        if (i >= rows.size()) {
            row.pic->hide();
            continue;
        }
        const DiaryEntry &e = rows.at(i);
        const int height = rowHeight(e) - kGap;
        const int dateRoom = dateWidth(row.date->font(), m_session.Dates);
        row.date->setText(e.date.isValid() ? m_session.Dates.format(e.date) : QString());
        row.notes->setPlainText(shownText(e.notes));
        row.pic->setGeometry(kInset, top, width, height);
        row.date->setGeometry(0, row.notes->frameWidth() + kTextMargin, dateRoom,
                              row.date->sizeHint().height());
        row.notes->setGeometry(dateRoom, 0, width - dateRoom, height);
        row.pic->show();
        top += height + kGap;
    }
    showSelection();
}

void FmBrNote::showSelection()
{
    for (int i = 0; i < Diary::kRows; ++i) {
        const bool chosen = i == m_diary.selectedRow();
        QPalette pic = palette();
        pic.setColor(QPalette::Window,
                     chosen ? palette().color(QPalette::Highlight) : palette().color(QPalette::Window));
        BrRow[i].pic->setPalette(pic);
        QPalette date = palette();
        date.setColor(QPalette::WindowText, chosen ? palette().color(QPalette::HighlightedText)
                                                   : palette().color(QPalette::WindowText));
        BrRow[i].date->setPalette(date);
    }
}

void FmBrNote::showPanel(bool on)
{
    FrmBrNote->setVisible(!on);
    pbcontrol->setVisible(!on);
    FrmNewAmend->setVisible(on);
    PbNewAmend->setVisible(on);
}

void FmBrNote::CmdNew_Click()
{
    m_diary.CmdNew_Click();
    FrmNewAmend->setTitle(u"Create New Diary Details:"_s);
    BRNDate->clear();
    BrNNotes->clear();
    showPanel(true);
    BRNDate->setFocus();
}

void FmBrNote::CmdAmend_Click()
{
    const std::optional<DiaryEntry> note = m_diary.CmdAmend_Click(m_prompts);
    if (!note)
        return;
    FrmNewAmend->setTitle(u"Amend Diary Details:"_s);
    if (note->date.isValid())
        BRNDate->setText(m_session.Dates.format(note->date));
    else
        BRNDate->clear();
    BrNNotes->setPlainText(shownText(note->notes));
    showPanel(true);
    BrNNotes->setFocus();
}

void FmBrNote::CmdUpdate_Click()
{
    QString focus;
    if (!m_diary.CmdUpdate_Click(m_session.Dates, m_prompts, BRNDate->displayText(), BrNNotes->toPlainText(),
                                 &focus)) {
        if (auto *w = findChild<QWidget *>(focus))
            w->setFocus();
        return;
    }
    showPanel(false);
    ShowDiary();
    CmdNew->setFocus();
}

void FmBrNote::CmdNACancel_Click()
{
    showPanel(false);
    CmdNew->setFocus();
}

void FmBrNote::CmdDelete_Click()
{
    if (m_diary.CmdDelete_Click(m_prompts)) {
        ShowDiary();
        return;
    }
    if (m_diary.selectedRow() >= 0)
        BrRow[m_diary.selectedRow()].notes->setFocus();
}

void FmBrNote::CmdFwd_Click()
{
    m_diary.forward();
    ShowPage();
}

void FmBrNote::CmdBwd_Click()
{
    m_diary.backward();
    ShowPage();
}

void FmBrNote::CmdToggle_Click()
{
    m_order = !m_order;
    ShowDiary();
}

bool FmBrNote::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == BRNDate && event->type() == QEvent::FocusOut) {
        runAction(QString(), [this] {
            const QString text =
                todayIfBlank(m_session.Dates, BRNDate->displayText(), m_session.clock->today());
            if (text != BRNDate->displayText())
                BRNDate->setText(text);
        });
    } else if (event->type() == QEvent::MouseButtonPress) {
        for (int i = 0; i < Diary::kRows; ++i) {
            const NoteRow &row = BrRow[i];
            if (watched == row.pic || watched == row.date || watched == row.notes->viewport()) {
                runAction(QString(), [this, i] {
                    m_diary.select(i);
                    showSelection();
                });
                break;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tarvex
