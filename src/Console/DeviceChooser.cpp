#include "Console/DeviceChooser.h"

#include "Console/Interrupt.h"
#include "Console/Terminal.h"
#include "Device/DeviceDelegate.h"
#include "Device/iPhone/PhoneDevice.h"
#include "Device/iPod/iPodDevice.h"
#include "Platform/MobileDevice.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QThread>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("DeviceChooser", text);
}

/// Keeps what arrives while it lives, in the place of the command's own delegate.
class ArrivalListener final : public DeviceDelegate
{
public:
    ArrivalListener()
        : _before(Device::delegate())
    {
        Device::setDelegate(this);
    }
    ~ArrivalListener() override { Device::setDelegate(_before); }

    void deviceConnected(const std::shared_ptr<Device>& device) override
    {
        devices[device->key()] = device;
    }
    void deviceDisconnected(const std::shared_ptr<Device>& device) override
    {
        devices.erase(device->key());
    }
    void deviceFailed(const QString& words, const QString& exactText) override
    {
        Terminal::say(QStringLiteral("%1 (%2)").arg(words, exactText));
    }

    /// Runs the event loop until every phone that is plugged in has been heard of.
    static void wait(double seconds)
    {
        std::vector<QString> phones;
        if (MobileDevice::attachedIdentifiers(phones) != 0)
            phones.clear();
        const QDeadlineTimer deadline(qint64(seconds * 1000));
        do
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        while (!PhoneDevice::hasHeardOf(phones) && !Interrupt::requested() &&
               !deadline.hasExpired() && pause());
    }

    Device::Devices devices;

private:
    static bool pause()
    {
        QThread::msleep(5);
        return true;
    }

    DeviceDelegate* _before;
};

void sayWhichThereAre(const Device::Devices& devices)
{
    for (const auto& [key, device] : devices)
        Terminal::say(QStringLiteral("  %1  %2").arg(key, device->description()));
}
} // namespace

Device::Devices DeviceChooser::connected(double waitSeconds)
{
    ArrivalListener listener;
    Device::Devices devices = Device::init();
    listener.wait(waitSeconds);
    Device::addFamily(listener.devices, devices); // of equal keys, the volume counts
    return listener.devices;
}

std::shared_ptr<Device> DeviceChooser::choose(const QString& name, double waitSeconds)
{
    if (!name.isNull()) {
        const QString folder = QDir(name).absolutePath();
        if (iPodDevice::isiPodAtPrefix(folder))
            return std::make_shared<iPodDevice>(folder);
    }
    const Device::Devices devices = connected(waitSeconds);
    if (!name.isNull()) {
        const auto found = devices.find(name);
        if (found != devices.end())
            return found->second;
        Terminal::say(tr("There is no device %1, and no folder of that name that holds "
                         "iPod_Control or iTunes_Control.")
                          .arg(name));
        sayWhichThereAre(devices);
        return nullptr;
    }
    if (devices.size() == 1)
        return devices.begin()->second;
    if (devices.empty()) {
        Terminal::say(tr("No device is connected."));
        return nullptr;
    }
    Terminal::say(tr("Several devices are connected; name one with --device:"));
    sayWhichThereAre(devices);
    return nullptr;
}
