#pragma once

#include "Device/Device.h"
#include "Platform/MobileDevice.h"

#include <QSet>

#include <chrono>
#include <functional>
#include <list>
#include <map>
#include <vector>

class Exception;
class Mailbox;
class PhoneDevice;
class PhoneSession;
class PluggedPhone;

/// The phones that are present and those that arrive: the one subscriber to the word of phones.
/// On the thread of the event loop, except for the opening of a phone's session, which waits for
/// the phone.
class PhoneFamily
{
public:
    using Phone = std::shared_ptr<PluggedPhone>;
    /// Subscribes a handler for the life of the process; gives 0 or a code.
    using Subscribe = std::function<int(MobileDevice::NotificationHandler)>;

    static PhoneFamily& shared();
    /// Lives until the process ends, and so does its subscription.
    static PhoneFamily& make(Subscribe subscribe);

    Device::Devices start();
    void stop();
    [[nodiscard]] bool hasHeardOf(const std::vector<QString>& identifiers) const;
    [[nodiscard]] bool isOpening() const;

    /// Word of a phone.
    void notify(MobileDevice::Message message, const MobileDevice::Attachment& attachment);
    /// A phone was plugged in: its session is opened beside the event loop, and what came of it is
    /// told to the devices' delegate from there.
    void arrived(const Phone& phone);

private:
    struct Arrival;
    enum class Purpose { Arrival, Reopening };

    explicit PhoneFamily(Subscribe subscribe);

    void subscribe();
    void departed(quint32 deviceID);
    void paired(quint32 deviceID);
    void open(const Phone& phone, Purpose purpose);
    void finish(const std::shared_ptr<Arrival>& arrival);
    void noteLoss(const Phone& phone);
    void reopen(const Phone& phone);
    /// Calls `what` from the event loop after a while, unless the phone has left by then.
    void later(std::chrono::milliseconds pause, const Phone& phone,
               void (PhoneFamily::*what)(const Phone&));
    void add(const std::shared_ptr<PhoneSession>& session);
    void remove(const QString& identifier);
    static void fail(const Exception& exception);
    void sayIfNoService();

    const Subscribe _subscribe;
    Mailbox* const _courier;
    bool _isSubscribed = false;
    bool _isStarted = false;
    std::map<quint32, Phone> _plugged;
    std::map<QString, std::shared_ptr<PhoneDevice>> _devices;
    std::list<std::shared_ptr<Arrival>> _arrivals;
    QSet<QString> _heardOf;
};
