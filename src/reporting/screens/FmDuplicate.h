#pragma once

#include "core/Session.h"
#include "reporting/Duplicate.h"

#include <QDialog>

class QLabel;
class QPushButton;

namespace tarvex {

/// "Duplicate Warning": the animals already in the stud that look like the new one, shown
/// one at a time, and the question whether the new animal is to be created all the same.
class FmDuplicate : public QDialog
{
public:
    FmDuplicate(Session &session, DuplicateWarning &warning, QWidget *parent = nullptr);

    /// Shows the warning modally; GivenUp when the user answered No, Kept otherwise.
    DuplicateAnswer CreateRecord();
    DuplicateAnswer answer() const { return m_answer; }

private:
    void showMatch();

    Session &m_session;
    DuplicateWarning &m_warning;
    DuplicateAnswer m_answer = DuplicateAnswer::Kept;

    QLabel *lblDupeText, *lblAName, *lblASex, *lblAid, *lblASire, *lblADam;
    QPushButton *CmdPrevious, *CmdNext;
};

} // namespace tarvex
