#include "FmArchive.h"

#include "store/StudDatabase.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/WorkProgress.h"

#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

FmArchive::FmArchive(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts)
{
    setObjectName(u"FmArchive"_s);
    setWindowTitle(u"Automatic Status Archive"_s);

    const QString lines[] = {
        u"All Status Codes used in your stock records have been listed.  By examining your records, the system has "
        u"ticked the Status Codes that it believes should be archived. "_s,
        u"Tick all boxes of the stock you wish to archive and stock which is current in your stud leave blank. "_s,
        u"When you select OK all stock with the ticked status will all be automatically archived, all stock with "
        u"non-ticked status will not be archived."_s};
    for (int i = 0; i < 3; ++i) {
        auto *l = make<QLabel>(this, ("LblInstruction_" + std::to_string(i)).c_str(), lines[i]);
        l->setWordWrap(true);
        place(l, 4200, 150 + i * 1050, 3900, 1000);
    }

    LstStatus = make<QListWidget>(this, "LstStatus");
    place(LstStatus, 150, 150, 3900, 3300);
    m_choices = Fill_Status_List(session.Stud->handle());
    for (const StatusChoice &c : m_choices) {
        auto *item = new QListWidgetItem(c.status, LstStatus);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(c.archive ? Qt::Checked : Qt::Unchecked);
    }
    LstStatus->setCurrentRow(0);

    auto *update = make<QPushButton>(this, "CmdUpdate", u"&OK"_s);
    update->setToolTip(u"Update archive status"_s);
    update->setDefault(true);
    place(update, 4200, 3600, 1800, 420);
    auto *cancel = make<QPushButton>(this, "CmdNACancel", u"&Cancel"_s);
    cancel->setToolTip(u"Cancel archive "_s);
    place(cancel, 6300, 3600, 1800, 420);

    auto *frame = make<QGroupBox>(this, "FrmUpdate", u"Updating"_s);
    FrmUpdate = frame;
    place(frame, 150, 3550, 3900, 900);
    pbupdate = make<QProgressBar>(frame, "pbupdate");
    pbupdate->setRange(0, 100);
    place(pbupdate, 150, 300, 3600, 250);
    auto *scale = make<QLabel>(frame, "LblScale",
                               u"  0%                                        50%                                   100%"_s);
    place(scale, 150, 570, 3600, 250);
    frame->hide();

    onAction(update, &QPushButton::clicked, this, &FmArchive::onUpdate);
    // While the stud is being updated, Cancel stops it, leaving every animal as it was.
    onAction(cancel, &QPushButton::clicked, this, [this] {
        if (!m_running)
            reject();
    });
    CmdNACancel = cancel;

    const QSize design(Design::px(8300), Design::px(4600));
    resize(design);
    FormResizeSetup(this, design);

    if (m_choices.isEmpty())
        m_prompts.show(u"No animals with a Status have been entered"_s, u"No Stock Entered"_s,
                       Prompts::Icon::Information);
}

void FmArchive::onUpdate()
{
    for (int i = 0; i < LstStatus->count(); ++i)
        m_choices[i].archive = LstStatus->item(i)->checkState() == Qt::Checked;
    FrmUpdate->show();
    m_running = true;
    try {
        WorkProgress progress(this, pbupdate, {}, CmdNACancel);
        Update_Archive_Status(m_session.Stud->handle(), m_choices, progress);
    } catch (const StoreError &e) {
        m_running = false;
        FrmUpdate->hide();
        if (e.number() != StoreError::Cancelled)
            m_prompts.show(u"The archive status could not be updated; no animal was changed.\n\n"_s +
                               e.description(),
                           u"Automatic Status Archive"_s, Prompts::Icon::Stop);
        return;
    }
    m_running = false;
    accept();
}

} // namespace tarvex
