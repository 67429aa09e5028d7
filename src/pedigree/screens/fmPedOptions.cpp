#include "fmPedOptions.h"

#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

fmPedOptions::fmPedOptions(Session &session, QWidget *parent) : QDialog(parent), m_session(session)
{
    setObjectName(u"fmPedOptions"_s);
    const QString term = session.PedigreeWord;
    setWindowTitle(term + u" Print Options"_s);
    auto *frame = make<QGroupBox>(this, "Frame1", u"Print "_s + term + u" or Stud Certificate"_s);
    place(frame, 150, 150, 4800, 1300);
    OptPrintType[0] = make<QRadioButton>(frame, "OptPrintType_0", term);
    place(OptPrintType[0], 300, 400, 4200, 300);
    OptPrintType[1] = make<QRadioButton>(frame, "OptPrintType_1", u"Stud Certificate"_s);
    place(OptPrintType[1], 300, 800, 4200, 300);
    OptPrintType[session.PrintType == 1 ? 1 : 0]->setChecked(true);
    ChkPrintName = make<QCheckBox>(this, "ChkPrintName", u"Print Name on "_s + term);
    ChkPrintName->setChecked(session.PrintName);
    place(ChkPrintName, 300, 1600, 4600, 300);
    // Off at every opening of the pedigree, so that the sheet is the plain one unless asked.
    ChkPrintInbreeding = make<QCheckBox>(this, "ChkPrintInbreeding", u"Print COI and Common Ancestors"_s);
    ChkPrintInbreeding->setChecked(session.PrintInbreeding);
    place(ChkPrintInbreeding, 300, 1950, 4600, 300);

    auto *ok = make<QPushButton>(this, "CmdOk", u"&OK"_s);
    ok->setDefault(true);
    place(ok, 1900, 2450, 1400, 400);
    auto *cancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    place(cancel, 3550, 2450, 1400, 400);
    onAction(ok, &QPushButton::clicked, this, &fmPedOptions::onOk);
    onAction(cancel, &QPushButton::clicked, this, &QDialog::reject);

    const QSize design(Design::px(5100), Design::px(3050));
    resize(design);
    FormResizeSetup(this, design);
}

void fmPedOptions::onOk()
{
    m_session.PrintType = OptPrintType[1]->isChecked() ? 1 : 0;
    m_session.PrintName = ChkPrintName->isChecked();
    m_session.PrintInbreeding = ChkPrintInbreeding->isChecked();
    accept();
}

} // namespace tarvex
