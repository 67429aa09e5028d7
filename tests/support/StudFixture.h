#pragma once

#include "RecordingShell.h"
#include "ScriptedPrompts.h"
#include "TempHome.h"

#include "core/Session.h"
#include "store/Database.h"

#include <QString>
#include <QVariantMap>

#include <memory>

namespace tarvex::test {

/// The folder of the delivered files in the build tree (EmptyStock.mdb, stocktypes.txt).
QString programFolder();

/// A fresh copy of the template stud database in a folder; returns its path.
QString copyTemplate(const QString &folder, const QString &fileName = QStringLiteral("Rabbits.mdb"));

/// Adds an animal with the given fields; returns its Number.
qint64 addAnimal(Database &db, const QVariantMap &fields);

/// A session in temporary folders with a registered Rabbits stud (words Buck, Doe, Sire,
/// Dam) whose database is a fresh copy of the template. Nothing is opened yet.
class StudFixture
{
public:
    StudFixture();

    /// Writes the catalogue entry and the stud's settings, and copies the template.
    void registerStud(const QString &stockType, const QString &studName, bool copyDatabase = true);
    /// Registers a Rabbits stud, opens it as the program does (UK dates) and returns its
    /// database connection.
    Database &open();
    /// Writes the Rabbits genetics files of a test into the data folder.
    void writeGenetics(const QByteArray &genetics, const QByteArray &colours);
    /// Puts the program's own Rabbits genetics files into the data folder.
    void copyShippedGenetics();
    /// The program's own Rabbits genetics files in use by the open stud: copied in, and
    /// genetics switched on in the settings and the session.
    void useShippedGenetics();
    /// Adds an animal to the open stud and refills the lists, as a save would.
    qint64 add(const QVariantMap &fields);

    TempHome home;
    Session session;
    ScriptedPrompts prompts;
    RecordingShell shell;
};

} // namespace tarvex::test
