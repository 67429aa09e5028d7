#include "FmDuplicate.h"

#include "stock/screens/fmStockenq.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Modal.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

namespace {
constexpr int kWidth = 7200, kHeight = 4650;
constexpr int kFirstRow = 750, kRow = 420;

QString leftTrimmed(const QString &text)
{
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    return text.mid(i);
}
} // namespace

FmDuplicate::FmDuplicate(Session &session, DuplicateWarning &warning, QWidget *parent)
    : QDialog(parent), m_session(session), m_warning(warning)
{
    setObjectName(u"FmDuplicate"_s);
    setWindowTitle(u"Duplicate Warning"_s);

    auto *frame = make<QGroupBox>(this, "FrmDuplicate", u"Possible Duplicate Found"_s);
    place(frame, 150, 120, 6900, 3300);
    lblDupeText = make<QLabel>(frame, "lblDupeText");
    place(lblDupeText, 150, 330, 6600, 300);

    const auto row = [frame](const char *caption, const char *value, const QString &text, int at) {
        place(make<QLabel>(frame, caption, text), 300, kFirstRow + at * kRow + 40, 1500, 300);
        auto *shown = make<QLabel>(frame, value);
        shown->setFrameShape(QFrame::Panel);
        shown->setFrameShadow(QFrame::Sunken);
        place(shown, 1900, kFirstRow + at * kRow, 4700, 330);
        return shown;
    };
    lblAName = row("lblName", "lblAName", u"Name"_s, 0);
    lblASex = row("lblSex", "lblASex", u"Sex"_s, 1);
    lblAid = row("lblid", "lblAid", session.IdWord, 2);
    lblASire = row("lblsire", "lblASire", leftTrimmed(session.FatherWord), 3);
    lblADam = row("lbldam", "lblADam", leftTrimmed(session.MotherWord), 4);

    CmdPrevious = make<QPushButton>(frame, "CmdPrevious", u"< Previous Match"_s);
    place(CmdPrevious, 300, 2850, 1900, 380);
    auto *enquiry = make<QPushButton>(frame, "CmdEnquiry", u"Show Details"_s);
    place(enquiry, 2500, 2850, 1900, 380);
    CmdNext = make<QPushButton>(frame, "CmdNext", u"Next Match >"_s);
    place(CmdNext, 4700, 2850, 1900, 380);
    for (QPushButton *b : {CmdPrevious, enquiry, CmdNext})
        b->setAutoDefault(false);

    auto *question = make<QLabel>(this, "lblQuestion", u"Do you want to continue creating this record?"_s);
    question->setAlignment(Qt::AlignCenter);
    place(question, 150, 3570, 6900, 300);
    auto *yes = make<QPushButton>(this, "CmdYesNo_0", u"&Yes"_s);
    place(yes, 2000, 3980, 1400, 420);
    yes->setDefault(true);
    auto *no = make<QPushButton>(this, "CmdYesNo_1", u"&No"_s);
    place(no, 3800, 3980, 1400, 420);

    onAction(CmdPrevious, &QPushButton::clicked, this, [this] {
        m_warning.previous();
        showMatch();
    });
    onAction(CmdNext, &QPushButton::clicked, this, [this] {
        m_warning.next();
        showMatch();
    });
    onAction(enquiry, &QPushButton::clicked, this, [this] {
        fmStockenq details(m_session, m_warning.current().number, this);
        Modal::exec(details);
    });
    onAction(yes, &QPushButton::clicked, this, [this] {
        m_answer = DuplicateAnswer::Kept;
        accept();
    });
    onAction(no, &QPushButton::clicked, this, [this] {
        m_answer = DuplicateAnswer::GivenUp;
        accept();
    });

    resize(Design::px(kWidth), Design::px(kHeight));
    FormResizeSetup(this, QSize(Design::px(kWidth), Design::px(kHeight)));
    showMatch();
}

DuplicateAnswer FmDuplicate::CreateRecord()
{
    // Closed without an answer, the new animal stays as typed: only No gives it up.
    m_answer = DuplicateAnswer::Kept;
    Modal::exec(*this);
    return m_answer;
}

void FmDuplicate::showMatch()
{
    const DuplicateRow &r = m_warning.current();
    lblDupeText->setText(m_warning.text());
    lblAName->setText(r.name);
    lblASex->setText(r.sex);
    lblAid->setText(r.id);
    lblASire->setText(r.sire);
    lblADam->setText(r.dam);
    CmdPrevious->setEnabled(m_warning.hasPrevious());
    CmdNext->setEnabled(m_warning.hasNext());
}

} // namespace tarvex
