#pragma once

#include "Platform/MobileDevice.h"

#include <map>
#include <memory>
#include <mutex>
#include <vector>

class AFCDevice;
class AFCDeviceRef;
class Mailbox;

/// Who hears of phones that are plugged in, on the thread that owns the event loop.
class AFCFactoryDelegate
{
public:
    AFCFactoryDelegate() = default;
    virtual ~AFCFactoryDelegate() = default;
    AFCFactoryDelegate(const AFCFactoryDelegate&) = delete;
    AFCFactoryDelegate& operator=(const AFCFactoryDelegate&) = delete;

    virtual void AFCDeviceWasConnected(const std::shared_ptr<AFCDeviceRef>& ref) = 0;
    /// The phone and this computer have come to trust each other since it was plugged in.
    virtual void AFCDeviceWasPaired(const std::shared_ptr<AFCDeviceRef>& ref) = 0;
};

/// The one subscriber to the word of phones. It lives, once made, until the process ends, and so
/// does the subscription; what is told comes from the event loop of the thread that made it.
class AFCFactory
{
public:
    /// Throws the Exception "AFCFactory" when there is no subscribing.
    static AFCFactory& factory();

    void setDelegate(AFCFactoryDelegate* delegate) { _delegate = delegate; }
    [[nodiscard]] AFCFactoryDelegate* delegate() const { return _delegate; }

    /// The same phone to be opened once more; null when it has been pulled out. On the thread of
    /// the event loop.
    std::shared_ptr<AFCDeviceRef> renew(const AFCDeviceRef& ref);

    /// From now on `device` hears of departures, for as long as it lives. On any thread.
    void observeDepartures(const std::weak_ptr<AFCDevice>& device);

    void notify(MobileDevice::Message message, const MobileDevice::Attachment& attachment);

private:
    AFCFactory();

    void arrived(const MobileDevice::Attachment& attachment);
    void departed(quint32 deviceID);

    Mailbox* _courier = nullptr;
    AFCFactoryDelegate* _delegate = nullptr;
    std::map<quint32, std::shared_ptr<AFCDeviceRef>> _attached;
    std::mutex _mutex; ///< for the observers
    std::vector<std::weak_ptr<AFCDevice>> _observers;
};
