#pragma once

#include "support/phone/SimulatedPhone.h"

#include <QString>

#include <list>
#include <memory>
#include <thread>
#include <vector>

class PhonePlist;

/// The service between programs and the phones on the USB, on a socket of its own, with
/// simulated phones to plug in. A program finds it when USBMUXD_SOCKET_ADDRESS says where it is.
class SimulatedUsb
{
public:
    /// Listens at `socketPath`; throws std::system_error.
    explicit SimulatedUsb(const QString& socketPath);
    ~SimulatedUsb();
    SimulatedUsb(const SimulatedUsb&) = delete;
    SimulatedUsb& operator=(const SimulatedUsb&) = delete;

    /// What the variable must say.
    [[nodiscard]] QByteArray address() const;

    /// Plugs a phone in, once more if it is in already; it gets a new number.
    void attach(const std::shared_ptr<SimulatedPhone>& phone);
    /// Pulls it out: its connections end at once.
    void detach(const std::shared_ptr<SimulatedPhone>& phone);
    /// Cuts the phone's connections, which stays plugged in.
    void cutConnections(const std::shared_ptr<SimulatedPhone>& phone);
    /// Tells everybody that a phone and the computer have paired.
    void tellPaired(const std::shared_ptr<SimulatedPhone>& phone);
    /// Pairing records that programs wanted to store.
    [[nodiscard]] int savedRecords() const;

private:
    struct Attached {
        quint32 number = 0;
        std::shared_ptr<SimulatedPhone> phone;
    };
    struct Connection {
        std::unique_ptr<PhoneStream> stream;
        std::thread thread;
        bool listens = false;
        std::weak_ptr<SimulatedPhone> phone; ///< of a tunnel
        bool ended = false;
    };

    void accept();
    void serve(Connection& connection);
    bool answer(Connection& connection, quint32 tag, const PhonePlist& request);
    void listen(Connection& connection, quint32 tag);
    bool tunnel(Connection& connection, quint32 tag, const PhonePlist& request);
    static bool send(PhoneStream& stream, quint32 tag, const PhonePlist& message);
    static bool sendResult(PhoneStream& stream, quint32 tag, quint64 number);
    static PhonePlist attachedMessage(const Attached& attached);
    void tellListeners(const PhonePlist& message);
    [[nodiscard]] std::shared_ptr<SimulatedPhone> phoneNamed(const QString& identifier) const;
    void reap();

    const QString _path;
    int _socket = -1;
    mutable std::mutex _mutex; ///< for all below, and for writing to listeners
    bool _ending = false;
    quint32 _nextNumber = 1;
    int _savedRecords = 0;
    std::vector<Attached> _attached;
    std::list<Connection> _connections;
    std::thread _acceptor;
};
