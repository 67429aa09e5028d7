#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "store/StockLookup.h"
#include "ui/AnimalListModel.h"

#include <QDialog>
#include <QHash>

class QCheckBox;
class QLineEdit;
class QListView;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace tarvex {

/// "Diary Entry": one note written to every animal picked.
class FmBulkDiary : public QDialog
{
public:
    FmBulkDiary(Session &session, Prompts &prompts, QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void ChkAllStock_Click();
    void CmdUpdate_Click();
    /// The numbers of the animals picked, in the list's order.
    QList<qint64> picked() const;

    Session &m_session;
    Prompts &m_prompts;
    AnimalListModel *m_animals;
    QListView *LstStock;
    QCheckBox *ChkAllStock;
    QLineEdit *BRNDate;
    QPlainTextEdit *BrNNotes;
    QProgressBar *pbupdate;
    QPushButton *CmdCancel;
    bool m_running = false;
};

} // namespace tarvex
