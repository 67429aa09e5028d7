#pragma once

#include <QComboBox>
#include <QString>

namespace tarvex {

class Devices;

/// Where copies of studs go or come from: the mounted volumes the devices offer, each shown
/// as "name (path)", and at the end "Other folder...", which asks for any folder and adds
/// it to the list. Nothing is chosen at first, so that a screen can insist on a choice.
class DeviceSelector : public QComboBox
{
public:
    explicit DeviceSelector(Devices &devices, QWidget *parent = nullptr);

    /// The folder chosen; empty when none is.
    QString folder() const;
    /// Chooses a folder, adding it to the list when it is not there yet.
    void setFolder(const QString &folder);
    /// Reads the volumes again (a stick put in since), keeping the folder chosen.
    void refresh();

    void showPopup() override;

private:
    void chosen(int index);
    int otherIndex() const { return count() - 1; }

    Devices &m_devices;
    /// The entry chosen before "Other folder...", taken again when no folder is picked.
    int m_previous = -1;
};

} // namespace tarvex
