#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "genetics/Prediction.h"

#include <QDialog>

#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QTreeWidget;

namespace tarvex {

/// The genetics screen: test-mate two animals and see every colour and genotype their
/// offspring can have, with its share.
class FmGenetics : public QDialog
{
public:
    FmGenetics(Session &session, Prompts &prompts, QWidget *parent = nullptr);

private:
    void showMenu();
    void CmdTestMate_Click();
    void CmdCalculate_Click();
    void showResults();
    void cancel();

    Session &m_session;
    Prompts &m_prompts;
    std::unique_ptr<OffspringPrediction> m_prediction;
    QWidget *PbMenu, *FrmMate, *PbProcess, *pbTestMate, *FrmProgress;
    QComboBox *CmbSire, *CmbDam;
    QLabel *PbGeneCode[2], *LblTotal, *LblPrSire, *LblPrDam;
    QCheckBox *ChkColOnly;
    QTreeWidget *lv;
    QProgressBar *Prb;
};

} // namespace tarvex
