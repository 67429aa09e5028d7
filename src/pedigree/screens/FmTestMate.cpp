#include "FmTestMate.h"

#include "fmPedigree.h"

#include "core/StudLoader.h"
#include "ui/Action.h"
#include "ui/ClsResizer.h"
#include "ui/ParentListModel.h"
#include "ui/Design.h"
#include "ui/Modal.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tarvex {

using Design::make;
using Design::place;

FmTestMate::FmTestMate(Session &session, Prompts &prompts, QWidget *parent)
    : QDialog(parent), m_session(session), m_prompts(prompts)
{
    setObjectName(u"FmTestMate"_s);
    setWindowTitle(u"Test Mating"_s);
    auto *frame = make<QGroupBox>(this, "FrmMate", u"Select Parents"_s);
    place(frame, 150, 150, 5400, 1500);
    place(make<QLabel>(frame, "LblSire", session.FatherWord), 200, 440, 1200, 300);
    CmbSire = make<QComboBox>(frame, "CmbSire");
    place(CmbSire, 1400, 400, 3800, 360);
    place(make<QLabel>(frame, "LblDam", session.MotherWord), 200, 940, 1200, 300);
    CmbDam = make<QComboBox>(frame, "CmbDam");
    place(CmbDam, 1400, 900, 3800, 360);
    ParentListModel::install(CmbSire)->setList(sireList(session));
    ParentListModel::install(CmbDam)->setList(damList(session));

    auto *calculate = make<QPushButton>(this, "CmdCalculate", u"&Pedigree"_s);
    calculate->setToolTip(u"Calculate Results"_s);
    calculate->setDefault(true);
    place(calculate, 2400, 1800, 1500, 420);
    auto *cancel = make<QPushButton>(this, "CmdNACancel", u"&Cancel"_s);
    cancel->setToolTip(u"Cancel"_s);
    place(cancel, 4050, 1800, 1500, 420);
    onAction(calculate, &QPushButton::clicked, this, &FmTestMate::CmdCalculate_Click);
    onAction(cancel, &QPushButton::clicked, this, &QDialog::reject);

    const QSize design(Design::px(5700), Design::px(2400));
    resize(design);
    FormResizeSetup(this, design);
}

void FmTestMate::CmdCalculate_Click()
{
    // The first entry of each list is the blank one: no choice.
    if (CmbSire->currentIndex() < 1 || CmbDam->currentIndex() < 1)
        return;
    m_session.TestMatingSire = CmbSire->currentData().toLongLong();
    m_session.TestMatingDam = CmbDam->currentData().toLongLong();
    m_session.CurrentStockNo = 0;
    m_session.TestMatingFromGenetics = false;
    fmPedigree pedigree(m_session, m_prompts, this);
    if (pedigree.start())
        Modal::exec(pedigree);
}

} // namespace tarvex
