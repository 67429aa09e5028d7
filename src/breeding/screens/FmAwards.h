#pragma once

#include "breeding/Awards.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

#include <optional>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QStatusBar;
class QTreeWidget;

namespace tarvex {

/// "Awards For <name>": the show results of the animal in hand (CurrentStockNo). Three
/// arrangements take turns: the list of awards with New, Amend, Delete, Best and Back; the
/// fields of one award with Ok and Cancel; and the choice of the best award, which is kept
/// on the animal for its pedigree.
class FmAwards : public QDialog
{
public:
    FmAwards(Session &session, Prompts &prompts, QWidget *parent = nullptr);

    /// Refills the list and the window's caption from the stud.
    void Load_Award_List();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void buildList();
    void buildFields();
    void buildBestAward();
    void Build_Award_Columns();
    void showArrangement(QWidget *frame, QWidget *buttons);
    void showList();

    void CmdNew_Click();
    void CmdAmend_Click();
    void CmdDelete_Click();
    void CmdBest_Click();
    void CmdUpdate_Click();
    void CCmdBestUpdate_Click();
    void CmdNACancel_Click();
    void CmdBestCancel_Click();
    void CmdCancel_Click();
    void AAward_LostFocus();
    void AVenue_LostFocus();

    /// The panel of the award fields, blank, under its caption for a new or amended award.
    void enterPanel();
    void Fill_Star_Lists();
    /// The Unique of the selected row; nothing when no row is selected.
    std::optional<qint64> selectedAward() const;

    Session &m_session;
    Prompts &m_prompts;
    Awards m_awards;
    bool m_isNew = true;
    bool m_listsLoaded = false;
    std::optional<AwardRow> m_amending;
    QString m_awardOnFocus;

    QGroupBox *FrAwardList = nullptr;
    QWidget *PbControl = nullptr;
    QTreeWidget *lv = nullptr;
    QPushButton *CmdAmend = nullptr;
    QPushButton *CmdDelete = nullptr;

    QGroupBox *FrNewAmend = nullptr;
    QWidget *PbNewAmend = nullptr;
    QLineEdit *ADate = nullptr;
    QComboBox *AVenue = nullptr;
    QComboBox *ASecretary = nullptr;
    QComboBox *AJudge = nullptr;
    QComboBox *AStars = nullptr;
    QComboBox *AAward = nullptr;
    QComboBox *ACCStars = nullptr;
    QLineEdit *AEntered = nullptr;
    QLineEdit *AShown = nullptr;
    QPlainTextEdit *AComments = nullptr;
    QLabel *Label2 = nullptr;
    QLabel *Label3_1 = nullptr;

    QGroupBox *FrmBestAward = nullptr;
    QWidget *PbBestAward = nullptr;
    QComboBox *CmbBestAward = nullptr;

    QStatusBar *SBar = nullptr;
};

} // namespace tarvex
