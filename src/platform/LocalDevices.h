#pragma once

#include "care/Devices.h"

namespace tarvex {

/// This machine's volumes and files: removable and network volumes as the system mounts them
/// (under /media, /run/media and /mnt, or of a network file system), their free and total
/// bytes, and whole-file copies that are flushed to the medium before they take their name.
class LocalDevices : public Devices
{
public:
    QList<Volume> volumes() override;
    Space space(const QString &folder) override;
    StudCopy::Outcome copyFile(const QString &source, const QString &destination, Progress &progress) override;
};

} // namespace tarvex
