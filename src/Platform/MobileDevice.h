#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <vector>

struct idevice_private;
struct lockdownd_client_private;
struct lockdownd_service_descriptor;

/// Phones on the USB: word of those that come and go, and the way to a phone's services. Every
/// number that a call gives is 0 for success, else the error code of the library or the phone.
namespace MobileDevice
{
/// A phone that is plugged in.
struct Attachment {
    quint32 deviceID = 0; ///< new with every plugging in
    quint32 productID = 0;
    QString identifier; ///< the phone's own, always the same
};

enum class Message : quint32 {
    Connected = 1,
    Disconnected = 2,
    Paired = 3 ///< the phone and this computer have come to trust each other
};

using NotificationHandler = std::function<void(Message message, const Attachment& attachment)>;

/// From now on, until the process ends, `handler` hears of every phone; those plugged in already
/// come first. It is called on the library's thread, and on the calling one.
int subscribe(NotificationHandler handler);

/// The identifiers of the phones plugged in now; a negative code when the service that knows
/// them cannot be asked.
int attachedIdentifiers(std::vector<QString>& identifiers);

/// Whether a phone hangs on this computer's USB, as the kernel sees it, below `devicesFolder`.
bool isPhoneOnUsb(const QString& devicesFolder = QStringLiteral("/sys/bus/usb/devices"));

/// A service that the phone has started for one connection.
class Service
{
public:
    Service() = default;
    explicit Service(lockdownd_service_descriptor* descriptor);
    /// False when the phone answered without starting anything.
    [[nodiscard]] explicit operator bool() const;
    [[nodiscard]] lockdownd_service_descriptor* descriptor() const { return _descriptor.get(); }

private:
    std::shared_ptr<lockdownd_service_descriptor> _descriptor;
};

/// One plugged-in phone and the session with it. Its calls wait for the phone, up to the
/// library's limits of half a minute each, and come from one thread at a time. The session ends
/// with the object.
class Handle
{
public:
    explicit Handle(Attachment attachment);
    ~Handle();
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    [[nodiscard]] const Attachment& attachment() const { return _attachment; }

    /// Once more ends what was before.
    int connect();
    /// Whether this computer has a pairing record of the phone. Never pairs.
    bool isPaired();
    /// Whether the phone still knows this computer.
    int validatePairing();
    int startSession();
    int startService(const QString& name, Service& service);

    [[nodiscard]] idevice_private* device() const { return _device; }

private:
    void end();
    [[nodiscard]] int productMajorVersion();

    Attachment _attachment;
    idevice_private* _device = nullptr;
    lockdownd_client_private* _client = nullptr;
};
} // namespace MobileDevice
