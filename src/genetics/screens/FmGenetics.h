#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "genetics/ColourFinding.h"
#include "genetics/Prediction.h"
#include "genetics/StockGenetics.h"

#include <QDialog>

#include <memory>
#include <optional>

class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace tarvex {

class ParentListModel;

/// The genetics screen: test-mate two animals and see every colour and genotype their
/// offspring can have, with its share; or name a colour and find every pair of the stud
/// that can give it. Opened for one animal (from its genotype screen) it goes straight to
/// the test mating with that animal on its side.
class FmGenetics : public QDialog
{
public:
    FmGenetics(Session &session, Prompts &prompts, QWidget *parent = nullptr,
               std::optional<AnimalInHand> fromStock = std::nullopt);

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showMenu();
    void CmdTestMate_Click();
    void CmdColour_Click();
    void CmdCalculate_Click();
    void calculateMating();
    void findColour();
    void showResults();
    void showFindResults();
    void cancel();
    QString exportTitle(int index) const;
    void exportList(int index, const QString &title);

    Session &m_session;
    Prompts &m_prompts;
    std::optional<AnimalInHand> m_fromStock;
    bool m_activated = false;
    std::unique_ptr<OffspringPrediction> m_prediction;
    QList<MatingPair> m_hits;
    QString m_colourGenotype;
    QWidget *PbMenu, *FrmMate, *FrmColour, *PbProcess, *pbTestMate, *pbcolres, *FrmProgress;
    QComboBox *CmbSire, *CmbDam, *CmbColour, *CmbBreed;
    ParentListModel *m_sires, *m_dams;
    QLabel *PbGeneCode[3], *LblTotal, *LblPrSire, *LblPrDam;
    QCheckBox *ChkColOnly, *ChkColColOnly;
    QTreeWidget *lv[2];
    QPushButton *cmdexcel[2];
    QPushButton *CmdStop;
    QProgressBar *Prb;
};

} // namespace tarvex
