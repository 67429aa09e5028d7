#pragma once

#include "care/Devices.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QString>
#include <QStringList>

namespace tarvex {

/// Moving studs to a new computer through a device both can read (a USB stick, a card, a
/// network share): export copies each registered stud's file to the device's top folder,
/// import copies them back over the studs of the same names on the new computer, where they
/// are registered first. Only the files travel, never the settings.
namespace StudTransfer {

/// Copies the file of each name to device, reporting names with no file and going on. True
/// when the export ran to its end (the screen then closes).
bool exportStuds(Session &session, Prompts &prompts, const QStringList &names, const QString &device);
/// Asks, with No as the answer on Enter, then copies each name's file found on device over
/// the stud's own. True when the import ran to its end.
bool importStuds(Session &session, Prompts &prompts, Devices &devices, const QStringList &names,
                 const QString &device);

/// The file of a name in a folder, its name's case ignored: the path as it is on disk, or
/// empty when there is none.
QString findStudFile(const QString &folder, const QString &name);

} // namespace StudTransfer
} // namespace tarvex
