#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QWidget>

#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tarvex {

class ParentListModel;
class StatusHints;
class StockRecordPanel;

/// "Create New Offspring": a litter entered in one go. The breeder gives the number of
/// young, their day of birth, the parents and the defaults; the litter is created at once
/// with automatic names, or each young is entered on the record screen in turn.
class NewLitterPanel : public QWidget
{
public:
    NewLitterPanel(Session &session, Prompts &prompts, StatusHints &hints, StockRecordPanel &record,
                   QWidget *parent);

    /// Called when the panel closes without the record screen taking over.
    std::function<void()> onClosed;

    /// Opens the panel with the stud's lists and the litter's defaults.
    void CmdNewLit_Click();
    /// The stud's words went on the labels.
    void applyStud();

private:
    void CmdNLOK_Click();
    void CmdNLCan_Click();
    void End_Litter();

    Session &m_session;
    Prompts &m_prompts;
    StockRecordPanel &m_record;
    QWidget *FrmNewLit, *PBNewLitter;
    QLineEdit *NLNo, *NLDOB, *NlDummyName;
    QComboBox *NLSire, *NLDam, *NlType, *NlColour, *NLBreeder, *NlStatus, *NlArchive;
    ParentListModel *m_sires, *m_dams;
    QLabel *LblNLSire, *LblNLDam, *LblNlColour;
    QCheckBox *CbNLAuto;
    QPushButton *CmdNLOK, *CmdNLCan;
};

} // namespace tarvex
