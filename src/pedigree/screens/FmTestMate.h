#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

class QComboBox;

namespace tarvex {

/// "Test Mating": the pedigree a litter of a chosen sire and dam would have. Nothing is
/// saved; the window stays open so that other pairs can be tried.
class FmTestMate : public QDialog
{
public:
    FmTestMate(Session &session, Prompts &prompts, QWidget *parent = nullptr);

private:
    void CmdCalculate_Click();

    Session &m_session;
    Prompts &m_prompts;
    QComboBox *CmbSire, *CmbDam;
};

} // namespace tarvex
