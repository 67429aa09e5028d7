#pragma once

#include "Prompts.h"
#include "Session.h"
#include "StockTypes.h"

#include <functional>

namespace tarvex {

/// Registering a stud: choosing a kind of livestock, giving the stud's name and
/// telephone, creating its database from the template and writing its settings; also
/// changing the details of a registered stud and adding a kind of livestock to the list.
/// The registration screen shows what this decides.
class Registration
{
public:
    enum class Result { Stay, Done, EndProgram };
    enum class Created { Created, Kept, EndProgram };

    Registration(Session &session, Prompts &prompts, bool firstRun);

    /// Reads stocktypes.txt from the data folder; on failure shows why and gives false:
    /// the program cannot go on without it.
    bool load();
    const QList<StockTypeEntry> &stockTypes() const { return m_types; }
    QStringList stockTypeNames() const;
    bool firstRun() const { return m_firstRun; }
    bool isRegistered(const QString &stockType) const;

    /// The user picked a kind of livestock from the list.
    struct Choice
    {
        bool accepted = true;      // false: the list goes back to the previous kind
        bool fillDetails = false;  // a registered stud: show its name and telephone
        QString studName, telephone;
    };
    Choice chooseStockType(const QString &stockType);
    QString chosenStockType() const { return m_chosen; }

    /// Whether OK may go on; on refusal the message is shown and focus names the control.
    bool Validate_Registration(const QString &studName, const QString &stockType, QString *focus);

    /// OK on the registration screen. Stay keeps the screen open (focus names the control).
    Result CmdOkay(const QString &stockType, const QString &studName, const QString &telephone, QString *focus);

    /// Copies the template over <stock type>.mdb in the data folder, asking first when a
    /// file is there; Kept when no new file was made.
    Created CreateStudDatabase(const QString &telephone);

    /// "Create New Stock Type": checks, appends to stocktypes.txt and reloads the list.
    /// False keeps the panel open with focus on the named control.
    bool CmdAddOk(StockTypeEntry entry, QString *focus);

private:
    const StockTypeEntry *entry(const QString &stockType) const;

    Session &m_session;
    Prompts &m_prompts;
    bool m_firstRun;
    QList<StockTypeEntry> m_types;
    QString m_chosen;
    QString m_oldStudName;
};

} // namespace tarvex
