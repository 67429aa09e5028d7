#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "store/StockLookup.h"

#include <QAbstractListModel>
#include <QDialog>
#include <QHash>

class QCheckBox;
class QLineEdit;
class QListView;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace tarvex {

/// Every animal of the stud as the bulk diary entry lists them: the name shown, the number
/// behind it. A stud may hold a million animals, so the list holds their numbers only and
/// reads a name when its row is first shown, without a widget item for each.
class AnimalListModel : public QAbstractListModel
{
public:
    AnimalListModel(Database &db, QList<qint64> numbers, QObject *parent = nullptr);

    qint64 numberAt(int row) const { return m_numbers.at(row); }
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    Database &m_db;
    QList<qint64> m_numbers;
    mutable QHash<int, QString> m_names; // the rows shown so far
};

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
