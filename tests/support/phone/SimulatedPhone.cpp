#include "support/phone/SimulatedPhone.h"

#include "support/phone/AfcService.h"
#include "support/phone/LockdownService.h"
#include "support/phone/PhoneKeys.h"
#include "support/phone/PhoneStream.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace
{
std::mutex unexpectedMutex;
QStringList unexpectedWrites;

/// How many of `bytes` are left, where that is limited.
qint64 take(qint64& left, qint64 bytes)
{
    if (left < 0)
        return bytes;
    const qint64 taken = std::min(bytes, left);
    left -= taken;
    return taken;
}
} // namespace

SimulatedPhone::SimulatedPhone(Identity identity)
    : _identity(std::move(identity))
{
}

void SimulatedPhone::setFaults(const PhoneFaults& faults)
{
    const std::lock_guard lock(_mutex);
    _faults = faults;
    ++_releases;
    _released.notify_all();
}

void SimulatedPhone::changeFaults(const std::function<void(PhoneFaults&)>& change)
{
    PhoneFaults changed = faults();
    change(changed);
    setFaults(changed);
}

PhoneFaults SimulatedPhone::faults() const
{
    const std::lock_guard lock(_mutex);
    return _faults;
}

void SimulatedPhone::release()
{
    const std::lock_guard lock(_mutex);
    ++_releases;
    _released.notify_all();
}

void SimulatedPhone::hang(const PhoneStream& stream)
{
    std::unique_lock lock(_mutex);
    const quint64 before = _releases;
    while (_releases == before && !stream.isCut())
        _released.wait_for(lock, std::chrono::milliseconds(20));
}

void SimulatedPhone::serveLockdown(PhoneStream& stream)
{
    LockdownService(*this, stream).serve();
}

void SimulatedPhone::serve(quint16 /*port*/, PhoneStream& stream)
{
    if (_identity.tls && !stream.startTls(PhoneKeys::shared().tls()))
        return;
    AfcService(*this, stream).serve();
}

qint64 SimulatedPhone::operations() const
{
    const std::lock_guard lock(_mutex);
    return _operations;
}

qint64 SimulatedPhone::operations(quint64 code) const
{
    const std::lock_guard lock(_mutex);
    return _byCode.value(code);
}

qint64 SimulatedPhone::writes() const
{
    const std::lock_guard lock(_mutex);
    return _writes;
}

QHash<QString, int> SimulatedPhone::opens() const
{
    const std::lock_guard lock(_mutex);
    return _opens;
}

std::vector<quint64> SimulatedPhone::readRequests() const
{
    const std::lock_guard lock(_mutex);
    return _readRequests;
}

QStringList SimulatedPhone::requests() const
{
    const std::lock_guard lock(_mutex);
    // A list of its own: two that share one buffer look like a race to a thread checker.
    return {_requests.begin(), _requests.end()};
}

void SimulatedPhone::forget()
{
    const std::lock_guard lock(_mutex);
    _operations = 0;
    _writes = 0;
    _byCode.clear();
    _opens.clear();
    _readRequests.clear();
    _requests.clear();
}

void SimulatedPhone::expectWrites()
{
    const std::lock_guard lock(_mutex);
    _expectsWrites = true;
}

QStringList SimulatedPhone::takeUnexpectedWrites()
{
    const std::lock_guard lock(unexpectedMutex);
    return std::exchange(unexpectedWrites, {});
}

void SimulatedPhone::record(quint64 operation)
{
    const std::lock_guard lock(_mutex);
    ++_operations;
    ++_byCode[operation];
}

void SimulatedPhone::recordWrite(const QString& what)
{
    const std::lock_guard lock(_mutex);
    ++_writes;
    if (_expectsWrites)
        return;
    const std::lock_guard unexpectedLock(unexpectedMutex);
    unexpectedWrites.append(_identity.identifier + QStringLiteral(": ") + what);
}

void SimulatedPhone::recordOpen(const QString& path)
{
    const std::lock_guard lock(_mutex);
    ++_opens[path];
}

void SimulatedPhone::recordRead(quint64 size)
{
    constexpr std::size_t MostKept = 100'000;
    const std::lock_guard lock(_mutex);
    if (_readRequests.size() < MostKept)
        _readRequests.push_back(size);
}

void SimulatedPhone::recordRequest(const QString& request)
{
    const std::lock_guard lock(_mutex);
    _requests.append(request);
}

quint16 SimulatedPhone::newPort()
{
    const std::lock_guard lock(_mutex);
    return _nextPort++;
}

qint64 SimulatedPhone::takeBytes(qint64 bytes)
{
    const std::lock_guard lock(_mutex);
    return take(_faults.cutAfterBytes, bytes);
}

qint64 SimulatedPhone::takeBytesBeforeStall(qint64 bytes)
{
    const std::lock_guard lock(_mutex);
    return take(_faults.stallAfterBytes, bytes);
}
