#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

class QComboBox;
class QLineEdit;
class QTreeView;
class QWidget;

namespace tarvex {

/// The quick search: narrows the animals by a few fields and hands back one.
class FmQuickSrch : public QDialog
{
public:
    /// sex, when not empty, fixes the sex searched for.
    FmQuickSrch(Session &session, Prompts &prompts, const QString &sex, QWidget *parent = nullptr);

    /// The chosen animal's number, or -1 when nothing was chosen.
    qint64 QuickSearchNumber = -1;
    QString QuickSearchName;

private:
    void onSearch();
    void onSelect();
    void showResults(bool on);

    Session &m_session;
    Prompts &m_prompts;
    QWidget *PbSearch, *pbSrchRes, *FrmSearch, *FrmSearchRes;
    QLineEdit *TxtFName, *TxtFRingNo, *TxtfNotes;
    QComboBox *CmbFType, *cmbFColour, *CmbfSex, *CmbFStatus, *CmbFArchive;
    QTreeView *SList;
    class QuickSearchModel *m_results;
};

} // namespace tarvex
