#include "FmSelDatabase.h"

#include "core/StudLoader.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

FmSelDatabase::FmSelDatabase(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts)
{
    setObjectName(u"FmSelDatabase"_s);
    setWindowTitle(u"Select Type of Livestock"_s);

    place(make<QLabel>(this, "LblSelect", u"Type of Livestock"_s), 300, 300, 4200, 300);
    Cmbdatabases = make<QComboBox>(this, "Cmbdatabases");
    place(Cmbdatabases, 300, 660, 4200, 360);
    const StudChoice choice = studChoice(session);
    Cmbdatabases->addItems(choice.studs);
    Cmbdatabases->setCurrentIndex(choice.selected >= 0 ? choice.selected : 0);

    CmdOk = make<QPushButton>(this, "CmdOk", u"&OK"_s);
    CmdOk->setDefault(true);
    place(CmdOk, 1500, 1350, 1400, 400);
    CmdCancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    place(CmdCancel, 3100, 1350, 1400, 400);

    onAction(CmdOk, &QPushButton::clicked, this, &FmSelDatabase::onOk);
    onAction(CmdCancel, &QPushButton::clicked, this, &QDialog::reject);

    const QSize design(Design::px(4800), Design::px(2100));
    resize(design);
    FormResizeSetup(this, design);
}

void FmSelDatabase::onOk()
{
    chooseStud(m_session, m_prompts, Cmbdatabases->currentText());
    accept();
}

} // namespace tarvex
