#include "Device/iPhone/AFCDevice.h"

#include "Base/PathName.h"
#include "Device/iPhone/AFCDeviceRef.h"
#include "Device/iPhone/AFCFactory.h"
#include "Device/iPhone/AFCFailure.h"
#include "Device/iPhone/AFCFileReader.h"
#include "Device/iPhone/AFCInterface.h"
#include "Platform/AFCConnection.h"
#include "Platform/Host.h"

#include <algorithm>
#include <limits>

namespace
{
using Step = AFCFailure::Step;

const QString FileService = QStringLiteral("com.apple.afc");
constexpr quint64 PieceSize = 256 * 1024;
constexpr qint32 ReadMode = 2;
constexpr qint32 CreateMode = 3;

/// Throws what a call that should give 0 has failed with.
void check(Step step, const char* call, int error)
{
    if (error != 0)
        throw AFCFailure(
            step, error,
            QStringLiteral("%1 failed with error %2").arg(QString::fromLatin1(call)).arg(error));
}

/// A name that stands for an entry of its folder and leads nowhere else.
bool isBareName(const QString& name)
{
    return !name.isEmpty() && name != u"." && name != u".." && !name.contains(u'/');
}

/// Whether so much more fits into memory; asked for now and then, as a file grows.
bool fitsIntoMemory(qsizetype size)
{
    constexpr qsizetype MiB = 1024 * 1024;
    constexpr qsizetype Unasked = 64 * MiB;
    // A buffer that is full is moved into one of twice its size.
    return size < Unasked || size % Unasked >= qsizetype(PieceSize) ||
           double(2 * size) / double(MiB) < Host::availableMemory();
}

bool isFile(const std::optional<AFCInterface::Attributes>& attributes)
{
    return attributes && AFCInterface::typeIn(*attributes) == u"S_IFREG";
}

} // namespace

std::shared_ptr<AFCDevice> AFCDevice::initWithRef(const std::shared_ptr<AFCDeviceRef>& ref)
{
    if (!ref)
        return nullptr;
    auto device = std::make_shared<AFCDevice>();
    device->setDeviceRef(ref);
    AFCFactory::factory().observeDepartures(device);
    return device;
}

AFCDevice::~AFCDevice() = default;

void AFCDevice::setDeviceRef(const std::shared_ptr<AFCDeviceRef>& ref)
{
    initializeDevice(ref);
    if (auto connection = openDevice(ref, FileService))
        _deviceInterface = std::make_unique<AFCInterface>(std::move(connection));
}

bool AFCDevice::initializeDevice(const std::shared_ptr<AFCDeviceRef>& ref)
{
    MobileDevice::Handle& phone = ref->device();
    check(Step::Connect, "AMDeviceConnect", phone.connect());
    if (!phone.isPaired())
        throw AFCFailure(Step::IsPaired, 0, QStringLiteral("Device pairing failed"));
    check(Step::ValidatePairing, "AMDeviceValidatePairing", phone.validatePairing());
    check(Step::StartSession, "AMDeviceStartSession", phone.startSession());
    _device = ref;
    return true;
}

std::shared_ptr<AFCConnection> AFCDevice::openDevice(const std::shared_ptr<AFCDeviceRef>& ref,
                                                     const QString& service)
{
    if (!ref)
        return nullptr;
    MobileDevice::Service started;
    check(Step::StartService, "AMDeviceStartService", ref->device().startService(service, started));
    if (!started)
        throw AFCFailure(Step::StartService, 0,
                         QStringLiteral("AMDeviceStartService didn't initialise a connection"));
    int error = 0;
    auto connection = AFCConnection::open(ref->device(), started, error);
    check(Step::Open, "AFCConnectionOpen", error);
    return connection;
}

void AFCDevice::disconnected(quint32 deviceID)
{
    if (_device && _device->deviceID() == deviceID && _delegate)
        _delegate->deviceWasDisconnected(*this);
}

QStringList AFCDevice::listOfFoldersAtPath(const QString& path)
{
    QStringList names;
    for (const QString& name : _deviceInterface->listFilesInPath(path)) {
        if (isBareName(name) && _deviceInterface->isDirectoryAtPath(PathName::join(path, name)))
            names.append(name);
    }
    return names;
}

QStringList AFCDevice::listOfFilesAtPath(const QString& path)
{
    QStringList names;
    for (const QString& name : _deviceInterface->listFilesInPath(path)) {
        if (isBareName(name) && _deviceInterface->isFileAtPath(PathName::join(path, name)))
            names.append(name);
    }
    return names;
}

void AFCDevice::deleteFileAtPath(const QString& path)
{
    if (_deviceInterface->isFileAtPath(path))
        _deviceInterface->removePath(path);
}

void AFCDevice::createFileAtPath(const QString& path, const QByteArray& data)
{
    if (!_deviceInterface->isDirectoryAtPath(PathName::parent(path)))
        return;
    const quint64 handle = _deviceInterface->openFileAtPath(path, CreateMode);
    if (handle == 0)
        return;
    for (qsizetype offset = 0; offset < data.size(); offset += qsizetype(PieceSize))
        _deviceInterface->writeToFile(handle, data.mid(offset, qsizetype(PieceSize)),
                                      quint64(offset));
    _deviceInterface->closeFile(handle);
}

QByteArray AFCDevice::chunkOfFileAtPath(const QString& path, quint64 location, quint64 length)
{
    const auto attributes = _deviceInterface->getAttributesAtPath(path);
    if (!isFile(attributes))
        return {};
    const quint64 handle = _deviceInterface->openFileAtPath(path, ReadMode);
    if (handle == 0)
        return QByteArray("", 0);
    QByteArray data("", 0);
    qsizetype beforeLast = 0;
    AFCFileReader reader(*_deviceInterface, handle, AFCInterface::sizeIn(*attributes));
    auto size = quint32(std::min(length, PieceSize));
    bool fits = true;
    while (fits && size != 0 && reader.read(location, size)) {
        beforeLast = data.size();
        data.append(reader.bytes());
        location += size;
        length -= std::min<quint64>(length, size);
        // A short read makes every later request as short.
        size = quint32(std::min<quint64>(length, size));
        fits = fitsIntoMemory(data.size());
    }
    _deviceInterface->closeFile(handle);
    if (_deviceInterface->connection().isLost())
        data.truncate(beforeLast); // what came last may be no bytes of the file
    return fits ? data : QByteArray();
}

QByteArray AFCDevice::contentsOfFileAtPath(const QString& path)
{
    return chunkOfFileAtPath(path, 0, std::numeric_limits<quint64>::max());
}
