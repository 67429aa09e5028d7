#pragma once

#include "care/Devices.h"
#include "core/Prompts.h"
#include "core/Session.h"

#include <QDialog>
#include <QStringList>

namespace tarvex {

class DeviceSelector;

/// "Import/Export Database(s)": moving the registered studs to a new computer through a
/// device both can read. Export copies every stud's file onto the device chosen and closes
/// the screen; import copies the files found on a device over the studs of this computer.
class FmImpExp : public QDialog
{
public:
    FmImpExp(Session &session, Prompts &prompts, Devices &devices, QWidget *parent = nullptr);

private:
    /// The registered studs, by name.
    QStringList studNames() const;
    void cmdexport_Click();
    void cmdimport_Click();

    Session &m_session;
    Prompts &m_prompts;
    Devices &m_devices;
    DeviceSelector *drvexp = nullptr;
    DeviceSelector *drvimp = nullptr;
};

} // namespace tarvex
