#include "Window/DeviceBox.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Window/Icons.h"
#include "Window/ShownText.h"

#include <QComboBox>
#include <QHBoxLayout>

#include <algorithm>

namespace
{
constexpr int FewestLetters = 24;

/// The device's own name; where its library gives none, what its owner may know it by.
QString nameFor(Device& device)
{
    const QString name = device.description();
    return ShownText::of(name.isEmpty() ? PathName::lastComponent(device.key()) : name);
}
} // namespace

DeviceBox::DeviceBox(QWidget* parent)
    : QWidget(parent)
    , _cmbDevices(new QComboBox)
{
    _cmbDevices->setObjectName(QStringLiteral("_cmbDevices"));
    _cmbDevices->setAccessibleName(tr("Device"));
    _cmbDevices->setToolTip(tr("The player or phone whose library is shown"));
    _cmbDevices->setPlaceholderText(tr("No device"));
    _cmbDevices->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    _cmbDevices->setMinimumContentsLength(FewestLetters);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(_cmbDevices);
    connect(_cmbDevices, &QComboBox::currentIndexChanged, this, &DeviceBox::showCurrentDevice);
}

void DeviceBox::setDevices(const std::vector<std::shared_ptr<Device>>& devices)
{
    for (const auto& device : devices)
        append(device);
}

void DeviceBox::deviceConnected(const std::shared_ptr<Device>& device)
{
    append(device);
}

void DeviceBox::append(const std::shared_ptr<Device>& device)
{
    // The name first: a library that cannot be read must leave the list as it was.
    const QString name = nameFor(*device);
    _devices.push_back(device);
    _cmbDevices->addItem(Icons::named(QStringLiteral("device")), name);
    // Deliberately the first and not the one that came.
    _cmbDevices->setCurrentIndex(0);
}

int DeviceBox::indexOf(const Device& device) const
{
    const auto found = std::find_if(_devices.begin(), _devices.end(), [&](const auto& known) {
        return known->key() == device.key();
    });
    return found == _devices.end() ? -1 : int(found - _devices.begin());
}

QString DeviceBox::nameOf(const Device& device) const
{
    return _cmbDevices->itemText(indexOf(device));
}

bool DeviceBox::deviceDisconnected(const Device& device)
{
    const int index = indexOf(device);
    if (index < 0)
        return false;
    if (index == _cmbDevices->currentIndex())
        _cmbDevices->setCurrentIndex(-1);
    // It stays alive until nobody shows it any more.
    const std::shared_ptr<Device> leaving = _devices[std::size_t(index)];
    _devices.erase(_devices.begin() + index);
    {
        // The others move up; that is no choice of another device.
        const QSignalBlocker blocker(_cmbDevices);
        _cmbDevices->removeItem(index);
    }
    if (_cmbDevices->currentIndex() < 0 && !_devices.empty())
        _cmbDevices->setCurrentIndex(0);
    return true;
}

void DeviceBox::showCurrentDevice(int index)
{
    const std::shared_ptr<Device> chosen =
        index < 0 || index >= int(_devices.size()) ? nullptr : _devices[std::size_t(index)];
    if (chosen == _currentDevice)
        return;
    const std::shared_ptr<Device> former = std::exchange(_currentDevice, chosen);
    Q_EMIT currentDeviceChanged();
}
