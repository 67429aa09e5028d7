#pragma once

#include "core/Progress.h"
#include "store/Database.h"

#include <QList>
#include <QString>


namespace tarvex {

/// One status in use, and whether its animals are to be archived.
struct StatusChoice
{
    QString status;
    bool archive = false;
    bool operator==(const StatusChoice &) const = default;
};

/// Every status in use above "1" in index order, each proposed for archiving when the
/// first animal of that status is archived already.
QList<StatusChoice> Fill_Status_List(Database &db);

/// Rewrites Archive of every animal with a status: "Yes" for a ticked status, "No" for any
/// other (statuses are matched without regard to case). Animals without a status keep
/// theirs. All or nothing: a failure, or the user stopping it through progress (StoreError
/// 3059, "Operation canceled by user."), leaves every animal as it was.
void Update_Archive_Status(Database &db, const QList<StatusChoice> &choices, Progress &progress = noProgress());

} // namespace tarvex
