#include "FmGenCheck.h"

#include "genetics/GenotypeInference.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/WorkProgress.h"

#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

FmGenCheck::FmGenCheck(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts)
{
    setObjectName(u"FmGenCheck"_s);
    setWindowTitle(u"Automatic Genetic Check"_s);
    auto *checking = make<QGroupBox>(this, "FrmChecking", u"Checking Genotype"_s);
    place(checking, 150, 150, 6000, 800);
    LblStockName = make<QLabel>(checking, "LblStockName");
    place(LblStockName, 150, 350, 5700, 300);
    auto *parents = make<QGroupBox>(this, "FrmParents", u"Parents"_s);
    place(parents, 150, 1100, 6000, 1150);
    place(make<QLabel>(parents, "LblSireWord", session.FatherWord), 150, 350, 1300, 300);
    LblSire = make<QLabel>(parents, "LblSire");
    place(LblSire, 1500, 350, 4350, 300);
    place(make<QLabel>(parents, "LblDamWord", session.MotherWord), 150, 700, 1300, 300);
    LblDam = make<QLabel>(parents, "LblDam");
    place(LblDam, 1500, 700, 4350, 300);
    Prb = make<QProgressBar>(this, "Prb");
    Prb->setTextVisible(false);
    Prb->setValue(0);
    place(Prb, 150, 2400, 6000, 270);
    CmdCheck = make<QPushButton>(this, "CmdCheck", u"&Run"_s);
    place(CmdCheck, 2850, 2850, 1500, 420);
    CmdCancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    place(CmdCancel, 4650, 2850, 1500, 420);
    onAction(CmdCheck, &QPushButton::clicked, this, &FmGenCheck::CmdCheck_Click);
    // While the walk runs, Cancel stops it; otherwise it closes the screen.
    onAction(CmdCancel, &QPushButton::clicked, this, [this] {
        if (!m_running)
            reject();
    });

    const QSize design(Design::px(6300), Design::px(3450));
    resize(design);
    FormResizeSetup(this, design);
}

void FmGenCheck::CmdCheck_Click()
{
    m_running = true;
    CmdCheck->setEnabled(false);
    const auto done = qScopeGuard([this] {
        m_running = false;
        CmdCheck->setEnabled(true);
    });
    WorkProgress progress(this, Prb, {LblStockName, LblSire, LblDam}, CmdCancel);
    Check_All_Genotypes(m_session, m_prompts, progress);
}

} // namespace tarvex
