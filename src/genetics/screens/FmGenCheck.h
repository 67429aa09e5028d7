#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace tarvex {

/// The whole-stud genotype check: Run walks every animal, showing it and its parents and
/// how far the walk has come; Cancel stops it, keeping the animals finished.
class FmGenCheck : public QDialog
{
public:
    FmGenCheck(Session &session, Prompts &prompts, QWidget *parent = nullptr);

private:
    void CmdCheck_Click();

    Session &m_session;
    Prompts &m_prompts;
    bool m_running = false;
    QLabel *LblStockName, *LblSire, *LblDam;
    QProgressBar *Prb;
    QPushButton *CmdCheck, *CmdCancel;
};

} // namespace tarvex
