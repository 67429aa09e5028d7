#pragma once

#include "breeding/Diary.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

#include <array>

class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QStatusBar;

namespace tarvex {

class StatusHints;

/// "Diary For <name>": the diary of the animal in hand (CurrentStockNo), a page at a time,
/// each note in a box as high as its text up to five lines; the panel below the pages
/// writes a new note or changes the one clicked.
class FmBrNote : public QDialog
{
public:
    FmBrNote(Session &session, Prompts &prompts, QWidget *parent = nullptr);

    /// The logic behind the screen: the page showing and the note chosen.
    const Diary &diary() const { return m_diary; }

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct NoteRow
    {
        QFrame *pic;
        QLabel *date;
        QPlainTextEdit *notes;
    };

    void ShowDiary();
    void ShowPage();
    /// Places the rows of the notes read for the page and fills them.
    void layRows(const QList<DiaryEntry> &rows);
    void showSelection();
    /// The height of a note's row at the boxes' present width and font.
    int rowHeight(const DiaryEntry &entry) const;
    int frameRoom() const;
    void showPanel(bool on);

    void CmdNew_Click();
    void CmdAmend_Click();
    void CmdUpdate_Click();
    void CmdDelete_Click();
    void CmdFwd_Click();
    void CmdBwd_Click();
    void CmdToggle_Click();
    void CmdNACancel_Click();

    Session &m_session;
    Prompts &m_prompts;
    Diary m_diary;
    bool m_order = false; // false: newest first

    std::array<NoteRow, Diary::kRows> BrRow;
    QFrame *FrmBrNote;
    QWidget *pbcontrol, *PbNewAmend;
    QGroupBox *FrmNewAmend;
    QLineEdit *BRNDate;
    QPlainTextEdit *BrNNotes;
    QPushButton *CmdNew, *CmdAmend, *CmdDelete, *CmdToggle, *CmdBwd, *CmdFwd, *CmdSchResCancel;
    QPushButton *CmdUpdate, *CmdNACancel;
    QStatusBar *SBar;
    StatusHints *m_hints;
};

} // namespace tarvex
