#include "Console/DeviceChooser.h"

#include "Console/Terminal.h"
#include "Device/iPod/iPodDevice.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("DeviceChooser", text);
}

void sayWhichThereAre(const Device::Devices& devices)
{
    for (const auto& [key, device] : devices)
        Terminal::say(QStringLiteral("  %1  %2").arg(key, device->description()));
}
} // namespace

Device::Devices DeviceChooser::connected()
{
    return Device::init();
}

std::shared_ptr<Device> DeviceChooser::choose(const QString& name)
{
    if (!name.isNull()) {
        const QString folder = QDir(name).absolutePath();
        if (iPodDevice::isiPodAtPrefix(folder))
            return std::make_shared<iPodDevice>(folder);
    }
    const Device::Devices devices = connected();
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
