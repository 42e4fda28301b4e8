#include "Device/iPhone/AFCFactory.h"

#include "Base/Exception.h"
#include "Base/Mailbox.h"
#include "Device/iPhone/AFCDevice.h"
#include "Device/iPhone/AFCDeviceRef.h"

AFCFactory& AFCFactory::factory()
{
    // Never destroyed: the library's thread may speak up until the process has ended.
    static auto* const theFactory = new AFCFactory;
    return *theFactory;
}

AFCFactory::AFCFactory()
    : _courier(new Mailbox)
{
    const auto pass = [this](MobileDevice::Message message,
                             const MobileDevice::Attachment& attachment) {
        _courier->post([this, message, attachment] { notify(message, attachment); });
    };
    if (const int error = MobileDevice::subscribe(pass); error != 0)
        throw Exception(
            QStringLiteral("AFCFactory"),
            QStringLiteral("AMDeviceNotificationSubscribe failed with error %1").arg(error));
}

std::shared_ptr<AFCDeviceRef> AFCFactory::renew(const AFCDeviceRef& ref)
{
    const auto found = _attached.find(ref.deviceID());
    if (found == _attached.end())
        return nullptr;
    found->second = std::make_shared<AFCDeviceRef>(
        MobileDevice::Attachment{ref.deviceID(), ref.productID(), ref.serialNumber()});
    return found->second;
}

void AFCFactory::observeDepartures(const std::weak_ptr<AFCDevice>& device)
{
    const std::lock_guard lock(_mutex);
    std::erase_if(_observers, [](const auto& one) { return one.expired(); });
    _observers.push_back(device);
}

void AFCFactory::notify(MobileDevice::Message message, const MobileDevice::Attachment& attachment)
{
    switch (message) {
    case MobileDevice::Message::Connected:
        arrived(attachment);
        break;
    case MobileDevice::Message::Disconnected:
        departed(attachment.deviceID);
        break;
    case MobileDevice::Message::Paired:
        if (const auto found = _attached.find(attachment.deviceID);
            found != _attached.end() && _delegate)
            _delegate->AFCDeviceWasPaired(found->second);
        break;
    }
}

void AFCFactory::arrived(const MobileDevice::Attachment& attachment)
{
    const auto ref = std::make_shared<AFCDeviceRef>(attachment);
    _attached[attachment.deviceID] = ref;
    if (_delegate)
        _delegate->AFCDeviceWasConnected(ref);
}

void AFCFactory::departed(quint32 deviceID)
{
    if (const auto found = _attached.find(deviceID); found != _attached.end()) {
        found->second->leave();
        _attached.erase(found);
    }
    std::vector<std::weak_ptr<AFCDevice>> observers;
    {
        const std::lock_guard lock(_mutex);
        observers = _observers;
    }
    for (const std::weak_ptr<AFCDevice>& observer : observers) {
        if (const std::shared_ptr<AFCDevice> device = observer.lock())
            device->disconnected(deviceID);
    }
}
