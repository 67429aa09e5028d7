#include "FmBulkDiary.h"

#include "breeding/Diary.h"
#include "store/StockRow.h"
#include "store/StudDatabase.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/DateField.h"
#include "ui/Design.h"
#include "ui/WorkProgress.h"

#include <QCheckBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

FmBulkDiary::FmBulkDiary(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts)
{
    setObjectName(u"FmBulkDiary"_s);
    setWindowTitle(u"Diary Entry"_s);

    place(make<QLabel>(this, "LblStock", u"Animals"_s), 120, 150, 3300, 300);
    LstStock = make<QListView>(this, "LstStock");
    LstStock->setSelectionMode(QAbstractItemView::MultiSelection);
    LstStock->setUniformItemSizes(true);
    LstStock->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_animals = new AnimalListModel(session.Stud->handle(), everyAnimal(session.Stud->handle()), LstStock);
    LstStock->setModel(m_animals);
    place(LstStock, 120, 480, 3300, 3900);
    ChkAllStock = make<QCheckBox>(this, "ChkAllStock", u"Include All"_s);
    place(ChkAllStock, 120, 4500, 3300, 330);

    place(make<QLabel>(this, "LblDate", u"Date"_s), 3660, 510, 1000, 300);
    BRNDate = make<QLineEdit>(this, "BRNDate");
    place(BRNDate, 4700, 480, 1500, 340);
    Apply_Date_Mask(BRNDate, session.Dates);
    BRNDate->setToolTip(u"Enter date or leave blank for today's date"_s);
    BRNDate->installEventFilter(this);
    place(make<QLabel>(this, "LblNotes", u"Details"_s), 3660, 960, 1000, 300);
    BrNNotes = make<QPlainTextEdit>(this, "BrNNotes");
    BrNNotes->setTabChangesFocus(true);
    BrNNotes->setToolTip(u"Enter diary details"_s);
    place(BrNNotes, 3660, 1290, 3420, 3090);

    auto *update = make<QPushButton>(this, "CmdUpdate", u"&Update"_s);
    place(update, 3660, 4500, 1500, 420);
    auto *cancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    place(cancel, 5580, 4500, 1500, 420);

    onAction(ChkAllStock, &QCheckBox::clicked, this, &FmBulkDiary::ChkAllStock_Click);
    onAction(update, &QPushButton::clicked, this, &FmBulkDiary::CmdUpdate_Click);
    // While the notes are written, Cancel stops it and nothing is written.
    onAction(cancel, &QPushButton::clicked, this, [this] {
        if (!m_running)
            reject();
    });
    CmdCancel = cancel;
    pbupdate = make<QProgressBar>(this, "pbupdate");
    pbupdate->setTextVisible(false);
    place(pbupdate, 120, 4860, 3300, 180);
    pbupdate->hide();

    const QSize design(Design::px(7200), Design::px(5100));
    resize(design);
    FormResizeSetup(this, design);
}

void FmBulkDiary::ChkAllStock_Click()
{
    // One range for the whole list, however many animals it holds.
    if (ChkAllStock->isChecked())
        LstStock->selectAll();
    else
        LstStock->clearSelection();
}

QList<qint64> FmBulkDiary::picked() const
{
    std::vector<int> rows;
    for (const QItemSelectionRange &range : LstStock->selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    QList<qint64> numbers;
    numbers.reserve(qsizetype(rows.size()));
    for (const int row : rows)
        numbers << m_animals->numberAt(row);
    return numbers;
}

void FmBulkDiary::CmdUpdate_Click()
{
    QString focus;
    const QList<qint64> numbers = picked();
    const std::optional<QDate> date =
        checkBulkDiary(m_session.Dates, m_prompts, BRNDate->displayText(), BrNNotes->toPlainText(), numbers, &focus);
    if (!date) {
        if (auto *w = focus.isEmpty() ? LstStock : findChild<QWidget *>(focus))
            w->setFocus();
        return;
    }
    pbupdate->show();
    m_running = true;
    try {
        WorkProgress progress(this, pbupdate, {}, CmdCancel);
        writeBulkDiary(m_session.Stud->handle(), *date, BrNNotes->toPlainText(), numbers, progress);
    } catch (const StoreError &e) {
        m_running = false;
        pbupdate->hide();
        // Stopped by the user, nothing was written and the screen stays as it was.
        if (e.number() != StoreError::Cancelled)
            throw;
        return;
    }
    m_running = false;
    accept();
}

bool FmBulkDiary::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == BRNDate && event->type() == QEvent::FocusOut)
        runAction(QString(), [this] {
            const QString text =
                todayIfBlank(m_session.Dates, BRNDate->displayText(), m_session.clock->today());
            if (text != BRNDate->displayText())
                BRNDate->setText(text);
        });
    return QDialog::eventFilter(watched, event);
}

} // namespace tarvex
