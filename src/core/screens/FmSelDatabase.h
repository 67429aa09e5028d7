#pragma once

#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>

class QComboBox;
class QPushButton;

namespace tarvex {

/// "Select Type of Livestock": which registered stud to open.
class FmSelDatabase : public QDialog
{
public:
    FmSelDatabase(Session &session, Prompts &prompts, QWidget *parent = nullptr);

private:
    void onOk();

    Session &m_session;
    Prompts &m_prompts;
    QComboBox *Cmbdatabases;
    QPushButton *CmdOk, *CmdCancel;
};

} // namespace tarvex
