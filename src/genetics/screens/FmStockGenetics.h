#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "genetics/StockGenetics.h"

#include <QDialog>

class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace tarvex {

/// One animal's genotype: the drawn genotype, each gene's two alleles to set by hand in
/// Advanced mode, and the examinations of parents and offspring.
class FmStockGenetics : public QDialog
{
public:
    FmStockGenetics(Session &session, Prompts &prompts, qint64 stockNo, QWidget *parent = nullptr);

private:
    void lockAlleles(bool locked);
    void showGenotype();
    void CmdMode_Click();
    void CmdOk_Click();
    void showButtons(bool main);

    Session &m_session;
    Prompts &m_prompts;
    AnimalInHand m_animal;
    bool m_advanced = false;
    QGroupBox *FrmGene[10];
    QComboBox *CmbAllele1[10], *CmbAllele2[10];
    QLabel *PbGeneticCode;
    QWidget *pbupdate, *PbNewAmend;
    QPushButton *CmdMode, *CmdUpdate;
};

} // namespace tarvex
