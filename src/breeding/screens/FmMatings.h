#pragma once

#include "breeding/Matings.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

#include <optional>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStatusBar;
class QTreeWidget;

namespace tarvex {

class ParentListModel;

/// "Matings For <name>": the matings of the animal in hand (CurrentStockNo), with the
/// partner, the mating day and the expected birth day. A list panel and a panel for a new
/// or amended mating take turns.
class FmMatings : public QDialog
{
public:
    FmMatings(Session &session, Prompts &prompts, QWidget *parent = nullptr);
    /// False when the animal cannot have matings (unknown sex): the user has been told and
    /// the screen is not shown.
    bool start();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Lv_ColumnClick();
    void fillList();
    void showList(bool on);
    void openPanel(bool isNew);
    std::optional<qint64> selectedMating() const;
    void cmdNew_Click();
    void CmdAmend_Click();
    void CmdDelete_Click();
    void CmdUpdate_Click();
    void MMatingDate_LostFocus();

    Session &m_session;
    Matings m_matings;
    bool m_isNew = false;
    std::optional<qint64> m_amending; // the mating on the panel when amending

    QGroupBox *FrMatingList, *FrNewAmend;
    QWidget *pbcontrol, *PbNewAmend;
    QTreeWidget *lv;
    QPushButton *CmdAmend, *cmdDelete;
    QLabel *LblSireDam;
    QComboBox *MSireDam;
    ParentListModel *m_partners;
    QLineEdit *MMatingDate, *MBirthDate;
    QCheckBox *ChkUpdateDiary;
    QStatusBar *SBar;
};

} // namespace tarvex
