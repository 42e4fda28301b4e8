#pragma once

#include "Device/Device.h"
#include "Device/iPhone/AFCDevice.h"
#include "Device/iPhone/AFCFactory.h"

#include <QSet>

#include <chrono>
#include <list>
#include <vector>

class Mailbox;
class Exception;

/// The phones that are present and those that arrive. On the thread of the event loop, except
/// for the opening of a phone's session, which waits for the phone.
class iPhoneFamily final : public AFCFactoryDelegate, public AFCDeviceDelegate
{
public:
    static iPhoneFamily& shared();

    Device::Devices start();
    void stop();
    [[nodiscard]] bool hasHeardOf(const std::vector<QString>& identifiers) const;

    void AFCDeviceWasConnected(const std::shared_ptr<AFCDeviceRef>& ref) override;
    void AFCDeviceWasPaired(const std::shared_ptr<AFCDeviceRef>& ref) override;
    void deviceWasDisconnected(AFCDevice& device) override;

private:
    struct Arrival;

    iPhoneFamily();

    enum class Purpose { Arrival, Reopening };

    void open(const std::shared_ptr<AFCDeviceRef>& ref, Purpose purpose);
    void finish(const std::shared_ptr<Arrival>& arrival);
    void noteLoss(const std::shared_ptr<AFCDeviceRef>& ref);
    void reopen(const std::shared_ptr<AFCDeviceRef>& ref);
    /// Calls `what` from the event loop after a while, unless the phone has left by then.
    void later(std::chrono::milliseconds pause, const std::shared_ptr<AFCDeviceRef>& ref,
               void (iPhoneFamily::*what)(const std::shared_ptr<AFCDeviceRef>&));
    void remove(const QString& identifier);
    void add(const std::shared_ptr<AFCDeviceRef>& ref, const std::shared_ptr<AFCDevice>& device);
    void fail(const Exception& exception);
    void sayIfNoService();

    Mailbox* _courier;
    bool _isStarted = false;
    Device::Devices _devices;
    std::list<std::shared_ptr<Arrival>> _arrivals;
    QSet<QString> _heardOf;
};
