#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "reporting/StockSearch.h"

#include <QWidget>

#include <array>
#include <functional>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTabWidget;
class QTreeView;

namespace tarvex {

class ParentListModel;
class SearchResultsModel;
class StatusHints;

/// The search mode of the main window: the criteria (general details, then the Diary,
/// Pedigree and Awards tabs), the list of the animals found, and from it each animal on the
/// stock view, stepped through record by record. The search itself is StockSearch's.
class SearchPanel : public QWidget
{
public:
    SearchPanel(Session &session, Prompts &prompts, StatusHints &hints, QWidget *parent);
    ~SearchPanel() override;

    /// Search mode has ended: the main panel comes back.
    std::function<void()> onLeft;
    /// Shows an animal of the list on the stock view.
    std::function<void(qint64)> onShowAnimal;

    /// Enters search mode with every criterion cleared.
    void CmdSearch_Click();
    /// The stud's words went on the labels.
    void applyStud();
    /// Back from an animal on show: the list as it was, with that animal's row selected.
    void returnToResults();
    /// Shows the next (or previous) animal of the list; false at either end.
    bool CmdDataSearch_Click(bool next);
    /// The place of the animal on show in the list, 1-based; 0 when none.
    int resultPosition() const { return m_resultPosition; }

private:
    void buildCriteria();
    void buildTabs();
    void buildResults();
    /// A text box or list at its design place (a field's height), with its hint.
    QLineEdit *addText(QWidget *frame, const char *name, const QString &hint, bool wildcards, int left, int top,
                       int width);
    QComboBox *addCombo(QWidget *frame, const char *name, const QString &hint, bool wildcards, bool editable,
                        int left, int top, int width);
    QLabel *addLabel(QWidget *frame, const char *name, const QString &caption, int left, int top, int width);
    std::array<QRadioButton *, 4> addDateOptions(QWidget *frame, const char *name, const QString &hint, int left,
                                                 int top);
    void ClearSearchCriteria();
    void fillParents(bool sire);
    void fillAwardLists();
    SearchCriteria criteria() const;
    void CmdSearchOk_Click();
    void ShowSearchResults(bool newSearch);
    void showRow(int row);
    void lvslist_Click();
    void CmdSchResCancel_Click();
    void leave();
    void CmdSearchResPrint_Click();
    void cmdsearchexcel_Click();
    void CmbSid_Click();
    void storeIdText();
    void showToDates();

    Session &m_session;
    Prompts &m_prompts;
    StatusHints &m_hints;
    std::array<QString, 3> SearchIdText;
    int m_shownId = 0;
    bool m_awardListsLoaded = false;
    qint64 SavedSire = 0, SavedDam = 0;
    int m_resultPosition = 0;

    QGroupBox *FrmSearch = nullptr;
    QTabWidget *TbSearch = nullptr;
    QWidget *PbSearch = nullptr, *PbSearchRes = nullptr, *FrmSearchProgress = nullptr;
    QGroupBox *FrmSearchRes = nullptr;
    QLineEdit *SName, *SRingNo, *SNotes, *SGenotype, *SHealth, *SDiaryText;
    QLineEdit *SDOB, *SToDOB, *SDiaryFromDate, *SDiaryToDate, *MskSShowDate, *MskSToShowDate;
    QComboBox *CmbSid, *Stype, *SColour, *SBreeder, *SSex, *SStatus, *SArchive, *SSire, *SDam, *SPedigree;
    QComboBox *CmbSShowJudge, *CmbSShowAward;
    QCheckBox *ChkAllSire, *ChkAllDam;
    std::array<QRadioButton *, 4> SDOBOpt{}, OptSShowDate{};
    std::array<QRadioButton *, 3> OptPedDir{};
    QLabel *LabSid, *LabSSire, *LabSDam, *LabSColour, *SLToDOB, *LblToShowDate;
    ParentListModel *m_sires, *m_dams, *m_pedigree;
    QTreeView *lvSList = nullptr;
    SearchResultsModel *m_results = nullptr;
    QPushButton *CmdSearchOk, *CmdSearchCancel, *CmdSearchClear;
    QPushButton *cmdsearchexcel, *CmdSearchResPrint, *CmdSearchResExit, *CmdSchResCancel;
    QProgressBar *PrbSearch = nullptr;
    QPushButton *CmdSearchStop = nullptr;
};

} // namespace tarvex
