#pragma once

#include "core/Prompts.h"
#include "core/Session.h"
#include "stock/ArchiveByStatus.h"

#include <QDialog>

class QListWidget;
class QProgressBar;
class QPushButton;
class QWidget;

namespace tarvex {

/// "Automatic Status Archive": one tick per status in use; OK archives every animal of a
/// ticked status and brings back every animal of an unticked one.
class FmArchive : public QDialog
{
public:
    FmArchive(Session &session, Prompts &prompts, QWidget *parent = nullptr);
    /// False when no status is in use: the user has been told and there is nothing to show.
    bool hasStatuses() const { return !m_choices.isEmpty(); }

private:
    void onUpdate();

    Session &m_session;
    Prompts &m_prompts;
    QList<StatusChoice> m_choices;
    QListWidget *LstStatus;
    QWidget *FrmUpdate;
    QProgressBar *pbupdate;
    QPushButton *CmdNACancel = nullptr;
    bool m_running = false;
};

} // namespace tarvex
