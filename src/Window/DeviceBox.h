#pragma once

#include <QWidget>

#include <memory>
#include <vector>

class Device;
class QComboBox;

/// The chooser of devices. The first device that came stays the current one as long as it is
/// connected, unless the person chooses another.
class DeviceBox final : public QWidget
{
    Q_OBJECT
public:
    explicit DeviceBox(QWidget* parent = nullptr);

    /// The devices that are there at start, in their order.
    void setDevices(const std::vector<std::shared_ptr<Device>>& devices);
    void deviceConnected(const std::shared_ptr<Device>& device);
    /// Matches by key. False when no such device is listed; nothing changes then.
    bool deviceDisconnected(const Device& device);

    /// What a listed device is called here; empty for any other.
    [[nodiscard]] QString nameOf(const Device& device) const;
    /// Null without one.
    [[nodiscard]] const std::shared_ptr<Device>& currentDevice() const { return _currentDevice; }

Q_SIGNALS:
    /// Another device is the current one, or none is. The former device is still there.
    void currentDeviceChanged();

private:
    void showCurrentDevice(int index);
    void append(const std::shared_ptr<Device>& device);
    /// The place of a device with its key; -1 without one.
    [[nodiscard]] int indexOf(const Device& device) const;

    QComboBox* _cmbDevices;
    std::vector<std::shared_ptr<Device>> _devices; ///< in the order of the box's items
    std::shared_ptr<Device> _currentDevice;
};
