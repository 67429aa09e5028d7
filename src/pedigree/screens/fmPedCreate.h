#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

#include <functional>

class QComboBox;
class QLineEdit;
class QWidget;

namespace tarvex {

/// "Fasttrack Pedigree Creation": fills an empty place of a pedigree with a new animal
/// typed in, or with one picked by the quick search.
class fmPedCreate : public QDialog
{
public:
    fmPedCreate(Session &session, Prompts &prompts, qint64 child, const QString &breed, bool sire,
                QWidget *parent = nullptr);

    /// The parent now linked to the child, or -1 when nothing was done.
    qint64 newNumber() const { return m_newNumber; }
    /// The animal picked by the search, or -1 when the parent was typed in.
    qint64 chosenNumber() const { return m_chosenNumber; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showNew(bool on);
    void CmdSearch_Click();
    void CmdAdd_Click();

    Session &m_session;
    Prompts &m_prompts;
    qint64 m_child;
    bool m_sire;
    bool m_enteringNew = false;
    qint64 m_newNumber = -1;
    qint64 m_chosenNumber = -1;
    QWidget *PbSelect, *pbNew, *FrmNew;
    QLineEdit *TxtFName, *TxtFRingNo;
    QComboBox *CmbFType, *cmbFColour, *CmbfBreeder, *CmbFStatus, *CmbFArchive;
};

} // namespace tarvex
