#include "Platform/MobileDevice.h"

#include <QDir>
#include <QFile>

#include <usbmuxd.h>

namespace
{
constexpr const char* SocketVariable = "USBMUXD_SOCKET_ADDRESS";
/// The maker's number on the USB, and the range of its numbers that are phones and tablets.
constexpr int PhoneVendor = 0x05ac;
constexpr int FirstPhoneProduct = 0x1290;
constexpr int LastPhoneProduct = 0x12af;

/// The handler of a subscription is called until the process ends, so nothing frees it.
void tell(const usbmuxd_event_t* event, void* cookie)
{
    const usbmuxd_device_info_t& device = event->device;
    if (device.conn_type != CONNECTION_TYPE_USB)
        return;
    const auto& handler = *static_cast<MobileDevice::NotificationHandler*>(cookie);
    handler(MobileDevice::Message(event->event),
            {device.handle, device.product_id, QString::fromUtf8(device.udid)});
}

int hexNumber(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt(nullptr, 16) : 0;
}
} // namespace

namespace MobileDevice
{
int subscribe(NotificationHandler handler)
{
    // The library waits for the usual socket's file to appear; another one it has to look for.
    if (qEnvironmentVariableIsSet(SocketVariable))
        libusbmuxd_set_use_inotify(0);
    usbmuxd_subscription_context_t context = nullptr;
    return usbmuxd_events_subscribe(&context, tell, new NotificationHandler(std::move(handler)));
}

int attachedIdentifiers(std::vector<QString>& identifiers)
{
    usbmuxd_device_info_t* devices = nullptr;
    const int count = usbmuxd_get_device_list(&devices);
    for (int i = 0; i < count; ++i) {
        if (devices[i].conn_type == CONNECTION_TYPE_USB)
            identifiers.push_back(QString::fromUtf8(devices[i].udid));
    }
    if (count >= 0)
        usbmuxd_device_list_free(&devices);
    return count < 0 ? count : 0;
}

bool isPhoneOnUsb(const QString& devicesFolder)
{
    const QDir folder(devicesFolder);
    for (const QString& name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const int product = hexNumber(folder.filePath(name + QStringLiteral("/idProduct")));
        if (hexNumber(folder.filePath(name + QStringLiteral("/idVendor"))) == PhoneVendor &&
            product >= FirstPhoneProduct && product <= LastPhoneProduct)
            return true;
    }
    return false;
}
} // namespace MobileDevice
