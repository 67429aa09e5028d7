#include "DeviceSelector.h"

#include "care/Devices.h"
#include "ui/Action.h"
#include "ui/FileChooser.h"

#include <QAbstractItemView>
#include <QDir>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace tarvex {

namespace {
// The folder of an entry; the last entry, "Other folder...", has none.
constexpr int kFolderRole = Qt::UserRole;

QString cleaned(const QString &folder)
{
    return folder.isEmpty() ? QString() : QDir::cleanPath(folder);
}
} // namespace

DeviceSelector::DeviceSelector(Devices &devices, QWidget *parent) : QComboBox(parent), m_devices(devices)
{
    refresh();
    connect(this, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index != otherIndex())
            m_previous = index;
    });
    onAction(this, &QComboBox::activated, this, &DeviceSelector::chosen);
}

QString DeviceSelector::folder() const
{
    const int index = currentIndex();
    if (index < 0 || index == otherIndex())
        return {};
    return itemData(index, kFolderRole).toString();
}

void DeviceSelector::setFolder(const QString &folder)
{
    const QString wanted = cleaned(folder);
    if (wanted.isEmpty()) {
        setCurrentIndex(-1);
        return;
    }
    for (int i = 0; i < otherIndex(); ++i) {
        if (cleaned(itemData(i, kFolderRole).toString()) == wanted) {
            setCurrentIndex(i);
            return;
        }
    }
    insertItem(otherIndex(), QDir::toNativeSeparators(wanted), wanted);
    setCurrentIndex(otherIndex() - 1);
}

void DeviceSelector::refresh()
{
    const QString kept = folder();
    {
        const QSignalBlocker quiet(this);
        clear();
        for (const Volume &v : m_devices.volumes()) {
            // A volume with no name of its own goes by its folder.
            const QString where = QDir::toNativeSeparators(v.path);
            addItem(v.name == v.path || v.name.isEmpty() ? where : v.name + u" ("_s + where + u")"_s, v.path);
        }
        addItem(u"Other folder..."_s);
        setCurrentIndex(-1);
    }
    m_previous = -1;
    if (!kept.isEmpty())
        setFolder(kept);
}

void DeviceSelector::showPopup()
{
    // The list opens as wide as its longest folder, even where the box itself is narrower.
    QAbstractItemView *items = view();
    items->setMinimumWidth(items->sizeHintForColumn(0) + 2 * items->frameWidth());
    QComboBox::showPopup();
}

void DeviceSelector::chosen(int index)
{
    if (index != otherIndex())
        return;
    // The chooser opens at the folder chosen before, else at the breeder's home.
    const QString start = m_previous >= 0 ? itemData(m_previous, kFolderRole).toString() : QDir::homePath();
    const QString picked = FileChooser::folder(window(), u"Select Folder"_s, start);
    if (picked.isEmpty()) {
        setCurrentIndex(m_previous);
        return;
    }
    setFolder(picked);
}

} // namespace tarvex
