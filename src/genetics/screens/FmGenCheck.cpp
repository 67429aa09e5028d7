#include "FmGenCheck.h"

#include "genetics/GenotypeInference.h"
#include "ui/ClsResizer.h"
#include "ui/Design.h"
#include "ui/Hourglass.h"

#include <QGroupBox>
#include <QLabel>
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
    CmdCheck = make<QPushButton>(this, "CmdCheck", u"&Run"_s);
    place(CmdCheck, 2850, 2450, 1500, 420);
    CmdCancel = make<QPushButton>(this, "CmdCancel", u"&Cancel"_s);
    place(CmdCancel, 4650, 2450, 1500, 420);
    connect(CmdCheck, &QPushButton::clicked, this, &FmGenCheck::CmdCheck_Click);
    connect(CmdCancel, &QPushButton::clicked, this, &QDialog::reject);

    const QSize design(Design::px(6300), Design::px(3050));
    resize(design);
    FormResizeSetup(this, design);
}

void FmGenCheck::CmdCheck_Click()
{
    // The walk cannot be stopped part way; the buttons wait for it.
    CmdCheck->setEnabled(false);
    CmdCancel->setEnabled(false);
    const auto enable = qScopeGuard([this] {
        CmdCheck->setEnabled(true);
        CmdCancel->setEnabled(true);
    });
    {
        HourglassScope wait(this);
        Check_All_Genotypes(m_session, m_prompts, [this](const CheckProgress &p) {
            LblStockName->setText(p.animal);
            // An animal without a parent leaves the name shown before.
            if (!p.sire.isEmpty())
                LblSire->setText(p.sire);
            if (!p.dam.isEmpty())
                LblDam->setText(p.dam);
        });
    }
}

} // namespace tarvex
