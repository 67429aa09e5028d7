#pragma once

#include "core/Session.h"

#include <QDialog>

class QCheckBox;
class QRadioButton;

namespace tarvex {

/// The print options of a pedigree: a pedigree sheet or a stud certificate, and whether
/// the name goes on it. They last for the run of the program.
class fmPedOptions : public QDialog
{
public:
    fmPedOptions(Session &session, QWidget *parent = nullptr);

private:
    void onOk();

    Session &m_session;
    QRadioButton *OptPrintType[2];
    QCheckBox *ChkPrintName, *ChkPrintInbreeding;
};

} // namespace tarvex
