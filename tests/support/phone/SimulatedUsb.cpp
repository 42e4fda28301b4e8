#include "support/phone/SimulatedUsb.h"

#include "support/phone/PhoneKeys.h"
#include "support/phone/PhonePlist.h"
#include "support/phone/PhoneStream.h"

#include <QFile>
#include <QtEndian>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <system_error>

namespace
{
constexpr quint16 LockdownPort = 62078;
constexpr quint32 PlistMessage = 8;
constexpr quint32 LongestMessage = 1 << 20;
constexpr quint64 PhoneProduct = 0x12a8;

enum Result : quint64 { Done = 0, BadCommand = 1, BadDevice = 2, Refused = 3 };

int listenAt(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (std::size_t(name.size()) >= sizeof address.sun_path)
        throw std::system_error(ENAMETOOLONG, std::generic_category(), "socket");
    std::memcpy(address.sun_path, name.constData(), std::size_t(name.size()));
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    unlink(name.constData());
    if (bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(descriptor, 64) != 0)
        throw std::system_error(errno, std::generic_category(), "socket");
    return descriptor;
}

void blockPipeSignal()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}
} // namespace

SimulatedUsb::SimulatedUsb(const QString& socketPath)
    : _path(socketPath)
    , _socket(listenAt(socketPath))
    , _acceptor([this] { accept(); })
{
    (void)PhoneKeys::shared(); // takes a moment, which no connection should wait for
}

SimulatedUsb::~SimulatedUsb()
{
    {
        const std::lock_guard lock(_mutex);
        _ending = true;
        for (Connection& connection : _connections)
            connection.stream->cut();
        for (const Attached& attached : _attached)
            attached.phone->release();
    }
    shutdown(_socket, SHUT_RDWR);
    _acceptor.join();
    for (Connection& connection : _connections)
        connection.thread.join();
    close(_socket);
    unlink(QFile::encodeName(_path).constData());
}

QByteArray SimulatedUsb::address() const
{
    return "UNIX:" + QFile::encodeName(_path);
}

void SimulatedUsb::attach(const std::shared_ptr<SimulatedPhone>& phone)
{
    const std::lock_guard lock(_mutex);
    _attached.push_back({_nextNumber++, phone});
    tellListeners(attachedMessage(_attached.back()));
}

void SimulatedUsb::detach(const std::shared_ptr<SimulatedPhone>& phone)
{
    cutConnections(phone);
    const std::lock_guard lock(_mutex);
    for (const Attached& attached : _attached) {
        if (attached.phone == phone)
            tellListeners(PhonePlist()
                              .set("MessageType", QStringLiteral("Detached"))
                              .set("DeviceID", quint64(attached.number)));
    }
    std::erase_if(_attached, [&](const Attached& one) { return one.phone == phone; });
}

void SimulatedUsb::cutConnections(const std::shared_ptr<SimulatedPhone>& phone)
{
    {
        const std::lock_guard lock(_mutex);
        for (Connection& connection : _connections) {
            if (!connection.ended && connection.phone.lock() == phone)
                connection.stream->cut();
        }
    }
    phone->release();
}

void SimulatedUsb::tellPaired(const std::shared_ptr<SimulatedPhone>& phone)
{
    const std::lock_guard lock(_mutex);
    for (const Attached& attached : _attached) {
        if (attached.phone == phone)
            tellListeners(PhonePlist()
                              .set("MessageType", QStringLiteral("Paired"))
                              .set("DeviceID", quint64(attached.number)));
    }
}

int SimulatedUsb::savedRecords() const
{
    const std::lock_guard lock(_mutex);
    return _savedRecords;
}

void SimulatedUsb::accept()
{
    blockPipeSignal();
    for (;;) {
        const int descriptor = ::accept4(_socket, nullptr, nullptr, SOCK_CLOEXEC);
        const std::lock_guard lock(_mutex);
        if (_ending || descriptor < 0) {
            if (descriptor >= 0)
                close(descriptor);
            return;
        }
        reap();
        Connection& connection = _connections.emplace_back();
        connection.stream = std::make_unique<PhoneStream>(descriptor);
        connection.thread = std::thread([this, &connection] { serve(connection); });
    }
}

void SimulatedUsb::reap()
{
    for (auto one = _connections.begin(); one != _connections.end();) {
        if (one->ended) {
            one->thread.join();
            one = _connections.erase(one);
        } else {
            ++one;
        }
    }
}

void SimulatedUsb::serve(Connection& connection)
{
    for (;;) {
        std::array<quint32, 4> header{};
        if (!connection.stream->read(header.data(), sizeof header))
            break;
        const quint32 length = qFromLittleEndian(header[0]);
        if (length < sizeof header || length > LongestMessage)
            break;
        const QByteArray bytes = connection.stream->read(length - sizeof header);
        if (bytes.isNull())
            break;
        if (!answer(connection, qFromLittleEndian(header[3]), PhonePlist(bytes)))
            break;
    }
    connection.stream->cut();
    const std::lock_guard lock(_mutex);
    connection.ended = true;
}

/// False when the connection has served its purpose.
bool SimulatedUsb::answer(Connection& connection, quint32 tag, const PhonePlist& request)
{
    PhoneStream& stream = *connection.stream;
    const QString type = request.text("MessageType");
    if (type == u"Connect")
        return tunnel(connection, tag, request);
    if (type == u"Listen") {
        listen(connection, tag);
        return true;
    }
    if (type == u"ListDevices") {
        std::vector<PhonePlist> devices;
        {
            const std::lock_guard lock(_mutex);
            for (const Attached& attached : _attached)
                devices.push_back(attachedMessage(attached));
        }
        return send(stream, tag, PhonePlist().set("DeviceList", devices));
    }
    if (type == u"ReadBUID")
        return send(stream, tag,
                    PhonePlist().set(
                        "BUID", PhonePlist(PhoneKeys::shared().pairRecord()).text("SystemBUID")));
    if (type == u"ReadPairRecord") {
        const auto phone = phoneNamed(request.text("PairRecordID"));
        if (!phone || !phone->faults().hasRecord)
            return sendResult(stream, tag, BadDevice);
        return send(stream, tag,
                    PhonePlist().setData("PairRecordData", PhoneKeys::shared().pairRecord()));
    }
    if (type == u"SavePairRecord") {
        const std::lock_guard lock(_mutex);
        ++_savedRecords;
        return sendResult(stream, tag, Done);
    }
    return sendResult(stream, tag, BadCommand);
}

void SimulatedUsb::listen(Connection& connection, quint32 tag)
{
    const std::lock_guard lock(_mutex);
    sendResult(*connection.stream, tag, Done);
    connection.listens = true;
    for (const Attached& attached : _attached)
        send(*connection.stream, 0, attachedMessage(attached));
}

bool SimulatedUsb::tunnel(Connection& connection, quint32 tag, const PhonePlist& request)
{
    const auto swapped = quint16(request.number("PortNumber"));
    const quint16 port = qbswap(swapped);
    std::shared_ptr<SimulatedPhone> phone;
    {
        const std::lock_guard lock(_mutex);
        for (const Attached& attached : _attached) {
            if (attached.number == request.number("DeviceID"))
                phone = attached.phone;
        }
        connection.phone = phone;
    }
    if (!phone)
        return sendResult(*connection.stream, tag, BadDevice);
    if (port != LockdownPort && phone->faults().refusesConnection)
        return sendResult(*connection.stream, tag, Refused);
    if (!sendResult(*connection.stream, tag, Done))
        return false;
    if (port == LockdownPort)
        phone->serveLockdown(*connection.stream);
    else
        phone->serve(port, *connection.stream);
    return false;
}

bool SimulatedUsb::send(PhoneStream& stream, quint32 tag, const PhonePlist& message)
{
    const QByteArray xml = message.xml();
    std::array<quint32, 4> header = {quint32(sizeof(quint32) * 4 + std::size_t(xml.size())), 1,
                                     PlistMessage, tag};
    for (quint32& field : header)
        field = qToLittleEndian(field);
    return stream.write(QByteArray(reinterpret_cast<const char*>(header.data()), sizeof header) +
                        xml);
}

bool SimulatedUsb::sendResult(PhoneStream& stream, quint32 tag, quint64 number)
{
    return send(stream, tag,
                PhonePlist().set("MessageType", QStringLiteral("Result")).set("Number", number));
}

PhonePlist SimulatedUsb::attachedMessage(const Attached& attached)
{
    return PhonePlist()
        .set("MessageType", QStringLiteral("Attached"))
        .set("DeviceID", quint64(attached.number))
        .set("Properties", PhonePlist()
                               .set("ConnectionType", QStringLiteral("USB"))
                               .set("DeviceID", quint64(attached.number))
                               .set("ProductID", PhoneProduct)
                               .set("LocationID", quint64(attached.number))
                               .set("SerialNumber", attached.phone->identity().identifier)
                               .set("ConnectionSpeed", quint64(480'000'000)));
}

void SimulatedUsb::tellListeners(const PhonePlist& message)
{
    for (Connection& connection : _connections) {
        if (connection.listens && !connection.ended)
            send(*connection.stream, 0, message);
    }
}

std::shared_ptr<SimulatedPhone> SimulatedUsb::phoneNamed(const QString& identifier) const
{
    const auto plain = [](QString text) { return text.remove(u'-'); };
    const std::lock_guard lock(_mutex);
    for (const Attached& attached : _attached) {
        if (plain(attached.phone->identity().identifier) == plain(identifier))
            return attached.phone;
    }
    return nullptr;
}
