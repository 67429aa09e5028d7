#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

class QLabel;
class QPushButton;

namespace tarvex {

/// The whole-stud genotype check: Run walks every animal, showing it and its parents.
class FmGenCheck : public QDialog
{
public:
    FmGenCheck(Session &session, Prompts &prompts, QWidget *parent = nullptr);

private:
    void CmdCheck_Click();

    Session &m_session;
    Prompts &m_prompts;
    QLabel *LblStockName, *LblSire, *LblDam;
    QPushButton *CmdCheck, *CmdCancel;
};

} // namespace tarvex
