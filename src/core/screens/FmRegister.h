#pragma once

#include "core/Registration.h"

#include <QDialog>

class QComboBox;
class QGroupBox;
class QLineEdit;
class QPushButton;
class QStatusBar;

namespace tarvex {

class ClsResizer;
class StatusHints;

/// Registering a stud database, or changing a registered stud's name and telephone.
class FmRegister : public QDialog
{
public:
    /// The screen's result when the user ended the program from it.
    static constexpr int EndProgram = 2;

    FmRegister(Session &session, Prompts &prompts, bool firstRun, QWidget *parent = nullptr);

    /// Reads the kinds of livestock; false when that failed and the program must end.
    bool load();
    Registration &registration() { return m_registration; }

private:
    void fillStockTypes(const QString &select);
    void onStockTypeChosen(int index);
    void onOkay();
    void onAdd();
    void onAddOk();
    void focusControl(const QString &name);

    Session &m_session;
    Prompts &m_prompts;
    Registration m_registration;
    int m_currentIndex = -1;

    QComboBox *TStockType;
    QLineEdit *TStudName, *TTelNo;
    QPushButton *CmdOkay, *CmdCancel, *CmdAdd, *CmdExit;
    QGroupBox *FrmAdd;
    QLineEdit *AStockType, *AMale, *AFemale, *AFather, *AMother, *AId[3];
    QPushButton *CmdAddOk, *CmdAddCancel;
    QStatusBar *StatusBar;
    StatusHints *m_hints;
    ClsResizer *fResize = nullptr;
};

} // namespace tarvex
