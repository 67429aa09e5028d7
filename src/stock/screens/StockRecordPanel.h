#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "stock/StockRecords.h"

#include <QWidget>

#include <array>
#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;
class QTreeWidget;

namespace tarvex {

class ParentListModel;
class StatusHints;

/// The record screen of the main window: one animal at a time with its details, notes,
/// health and breeding page, and the panels for browsing, adding and changing animals.
class StockRecordPanel : public QWidget
{
public:
    enum class State { Closed, Browsing, Updating, Adding };

    StockRecordPanel(Session &session, Prompts &prompts, StatusHints &hints, QWidget *parent);

    /// Called when the record screen closes and the main panel should come back.
    std::function<void()> onClosed;
    /// Called with true while a record is open, to lock the stud menus.
    std::function<void(bool)> onOpened;

    /// Starts browsing; false when there is nothing to browse (the user has been told).
    bool CmdBrowse_Click();
    /// Shows an animal found by the search, with the buttons that step through the list of
    /// results instead of the stud; false when it is no longer in the stud.
    bool showFoundAnimal(qint64 number);
    /// The record on show came from the search's list.
    bool fromSearch() const { return m_fromSearch; }
    /// The search's step to the next (true) or previous animal of its list.
    std::function<void(bool)> onDataSearch;
    void CmdNew_Click();
    /// Begins the next young of a litter entered by hand, its day of birth and parents fixed.
    void Next_Litter_Offspring();
    /// The stud's words, terms and lists went on the controls.
    void applyStud();
    void fillLists();
    /// The sire and dam lists as the record in hand needs them.
    void fillParentLists();
    State state() const { return m_state; }
    StockRecords &records() { return m_records; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildDetails(QWidget *page);
    void buildBreeding(QWidget *page);
    void buildPanels();
    void setState(State state);
    void lockFields(bool locked);
    void display();
    void showNew(const StockForm &form);
    void showRelatives();
    void showShortPedigree();
    StockForm readForm() const;
    void writeBack(const StockForm &form);
    void focusControl(const QString &name);
    void updateAge();
    void close();
    void enquire(qint64 number);
    void pickParent(bool sire);

    void saveRecord(bool adding);
    void CmdNewUpdate_Click();
    void CmdNewCancel_Click();
    void CmdBrowseModify_Click();
    void CmdModifyOK_Click();
    void cmdModifyCancel_Click();
    void CmdBrowseRemove_Click();

    Session &m_session;
    Prompts &m_prompts;
    StatusHints &m_hints;
    StockRecords m_records;
    State m_state = State::Closed;
    RelativesCache m_relatives;
    StudLists m_shown; // what the lists on screen hold
    std::array<RelativeRow, 6> m_pedigree;
    bool m_fromSearch = false;
    QWidget *pbDataSearch = nullptr;

    QWidget *frmStock, *PbBrowse, *PbModify, *pbNew, *Stock;
    QTabWidget *tbsstock;
    QLineEdit *TxtName, *TxtId1, *TxtId2, *TxtId3, *RDOB, *RDOD, *RWeight, *RGenotype, *TxtAge;
    QComboBox *Rtype, *RColour, *RBreeder, *RStatus, *RArchive, *RSex, *RSire, *RDam;
    ParentListModel *m_sires, *m_dams;
    QPlainTextEdit *RNotes, *RHealth;
    QPushButton *pbSire, *pbdam;
    QLabel *LabId, *LabId2, *labid3, *LabColour, *LabRSire, *LabRDam, *LblWeightUnits, *LblStock, *LblCoi;
    QCheckBox *chkbrarchive;
    std::array<QRadioButton *, 3> optbrsex;
    QComboBox *cmbbrshow;
    std::array<QTreeWidget *, 3> lvrels;
    std::array<QPushButton *, 6> lblbrrel;
    QLabel *labbrsire, *labbrdam;
    QPushButton *CmdPedigree, *CmdGenes, *CmdMatings, *CmdLitter, *CmdBrowseRemove, *CmdBrowseModify, *CmdBrowseCancel,
        *CmdNext, *CmdPrevious;
};

} // namespace tarvex
