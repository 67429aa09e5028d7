#pragma once

#include "care/StudCopy.h"
#include "core/Progress.h"

#include <QList>
#include <QString>

namespace tarvex {

/// A place a breeder can put copies of studs: a mounted USB stick, card, external disk or
/// network share, by the name the desktop gives it.
struct Volume
{
    QString name;
    QString path;
};

/// Free and total bytes of a volume; a total of 0 means there is nothing there to write to.
struct Space
{
    qint64 free = 0;
    qint64 total = 0;
};

/// The backup devices and the copying of whole files onto them. A backup device is a folder:
/// the root of a removable volume or any folder the breeder chose. The screens and the
/// program use the machine's own; tests put in one that runs out of room, loses its device
/// half way through a copy or cannot be written.
class Devices
{
public:
    virtual ~Devices() = default;

    /// The mounted volumes a copy can go to, removable and network ones, by their names.
    virtual QList<Volume> volumes() = 0;
    /// Free and total bytes on the volume of a folder; a total of 0 when no medium is there
    /// (a drive name brought from an older installation, a reader with no card in it).
    /// Throws StoreError when the folder does not exist or cannot be read.
    virtual Space space(const QString &folder) = 0;
    /// Copies a closed file whole onto destination: written under a temporary name beside it,
    /// flushed to the device, and only then given its name, so a copy that fails or is
    /// stopped leaves what was there before. Throws StoreError with the reason.
    virtual StudCopy::Outcome copyFile(const QString &source, const QString &destination,
                                       Progress &progress) = 0;
};

} // namespace tarvex
