#include "Device/iPod/iPodDevice.h"

#include "Base/PathName.h"
#include "Device/DeviceDelegate.h"
#include "Platform/File.h"
#include "Platform/Workspace.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <vector>

namespace
{
const QString ControlFolders[] = {QStringLiteral("iPod_Control"), QStringLiteral("iTunes_Control")};
constexpr qint64 ChunkSize = 1024 * 1024;

bool exists(const QString& path)
{
    return QFileInfo::exists(path);
}

/// The entries of a folder that are, or are not, folders themselves, in the system's order.
QStringList entries(const QString& folder, bool folders)
{
    namespace fs = std::filesystem;
    QStringList names;
    std::error_code error;
    const fs::path nativeFolder(QFile::encodeName(folder).toStdString());
    for (fs::directory_iterator entry(nativeFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code statusError;
        const fs::file_status status = entry->status(statusError);
        if (fs::exists(status) && fs::is_directory(status) == folders)
            names.append(QFile::decodeName(entry->path().filename().c_str()));
    }
    return names;
}

Failure leadsOut()
{
    return {Failure::Kind::Refused, QStringLiteral("The path leads out of the device"), {}};
}

Failure nothingThere()
{
    return {Failure::Kind::Missing, QStringLiteral("There is no such file on the device"), {}};
}

Failure unreadable(const QString& error)
{
    return {Failure::Kind::Unreadable, QStringLiteral("The file could not be read"), error};
}

/// Tells the delegate how far a copy is; false when it asks to stop.
bool announce(qint64 done, qint64 total, std::optional<int> progress)
{
    DeviceDelegate* delegate = Device::delegate();
    return !delegate || delegate->exported(double(done) / double(total) + progress.value_or(0));
}

CopyResult ended(CopyResult::End end, const QString& why = {})
{
    return {end, why};
}

/// The chunks of one copy, each announced before it is written.
CopyResult copyChunks(File& source, File& destination, std::optional<int> progress)
{
    using End = CopyResult::End;
    const qint64 total = source.size();
    qint64 done = 0;
    // As far as the reported size goes, the kernel moves the bytes without showing them to us.
    while (done < total) {
        const qint64 chunk = std::min(ChunkSize, total - done);
        if (!announce(done + chunk, total, progress))
            return ended(End::Stopped);
        const qint64 moved = destination.append(source, chunk);
        done += moved;
        if (moved < chunk)
            break;
    }
    // What has grown meanwhile, or never reported a size, is read to its end.
    std::vector<std::byte> buffer;
    while (source.error().isEmpty() && destination.error().isEmpty() && done >= total) {
        buffer.resize(ChunkSize);
        const qint64 chunk = source.read(buffer);
        if (chunk == 0)
            break;
        done += chunk;
        if (!announce(done, total, progress))
            return ended(End::Stopped);
        destination.write(std::span(buffer).first(std::size_t(chunk)));
    }
    if (!destination.close() || !destination.error().isEmpty())
        return ended(End::Failed, destination.error());
    if (!source.error().isEmpty())
        return ended(End::Incomplete, source.error());
    return {};
}
} // namespace

Device::Devices iPodDevice::devices;

bool iPodDevice::isiPodAtPrefix(const QString& prefix)
{
    return std::any_of(std::begin(ControlFolders), std::end(ControlFolders),
                       [&](const QString& name) { return exists(PathName::join(prefix, name)); });
}

Device::Devices iPodDevice::getDevices()
{
    Devices found;
    for (const QString& path : Workspace::shared().mountedLocalVolumePaths()) {
        if (isiPodAtPrefix(path))
            found[path] = std::make_shared<iPodDevice>(path);
    }
    return found;
}

Device::Devices iPodDevice::init()
{
    devices = getDevices();
    Workspace::shared().observeVolumes(handleMountNotification, handleUnmountNotification);
    return devices;
}

void iPodDevice::uninit()
{
    Workspace::shared().stopObservingVolumes();
    for (const auto& [path, device] : devices) // the program may be about to end
        device->endPreviews();
}

void iPodDevice::handleMountNotification(const QString& path)
{
    if (!isiPodAtPrefix(path))
        return;
    const auto device = std::make_shared<iPodDevice>(path);
    devices[path] = device;
    if (DeviceDelegate* listener = delegate())
        listener->deviceConnected(device);
}

void iPodDevice::handleUnmountNotification(const QString& path)
{
    const auto found = devices.find(path);
    if (found == devices.end())
        return;
    const std::shared_ptr<Device> device = found->second;
    devices.erase(found);
    device->stopPreviews(); // whoever still holds the device must not keep them going
    if (DeviceDelegate* listener = delegate())
        listener->deviceDisconnected(device);
}

iPodDevice::iPodDevice(const QString& prefix)
{
    _prefix = prefix;
    const QString first = PathName::join(prefix, ControlFolders[0]);
    _controlPath = exists(first) ? first : PathName::join(prefix, ControlFolders[1]);
}

iPodDevice::~iPodDevice()
{
    releaseReaders();
}

QString iPodDevice::key() const
{
    return _prefix;
}

QString iPodDevice::localRoot() const
{
    return _prefix;
}

bool iPodDevice::isOnDevice(const QString& path) const
{
    // A library may name any path; one that climbs out of the volume could even block for ever.
    return PathName::isInside(path, _prefix) || path == _prefix;
}

Expected<FileInfo> iPodDevice::info(const QString& path)
{
    if (!isOnDevice(path))
        return leadsOut();
    const QFileInfo found(path);
    if (!found.exists())
        return nothingThere();
    FileInfo info;
    info.kind = found.isDir()    ? FileInfo::Kind::Folder
                : found.isFile() ? FileInfo::Kind::File
                                 : FileInfo::Kind::Other;
    info.size = found.size();
    return info;
}

Expected<QStringList> iPodDevice::list(const QString& folder, Entries wanted)
{
    if (!isOnDevice(folder))
        return leadsOut();
    return entries(folder, wanted == Entries::Folders);
}

Expected<QByteArray> iPodDevice::readFile(const QString& path)
{
    if (!isOnDevice(path))
        return leadsOut();
    File file(path, File::Mode::Read);
    const QByteArray bytes = file.isOpen() ? file.readAll() : QByteArray();
    if (bytes.isNull() || !file.error().isEmpty())
        return unreadable(file.error());
    return bytes;
}

Expected<QByteArray> iPodDevice::readPart(const QString& path, quint64 offset, quint64 length)
{
    if (!isOnDevice(path))
        return leadsOut();
    File file(path, File::Mode::Read);
    if (!file.isOpen())
        return unreadable(file.error());
    return file.readRange(qint64(offset), qint64(length));
}

bool iPodDevice::isFile(const QString& path)
{
    return fileExists(path);
}

CopyResult iPodDevice::copyOut(const QString& from, const QString& to, std::optional<int> progress)
{
    using End = CopyResult::End;
    if (!isOnDevice(from))
        return ended(End::Missing, QStringLiteral("The path leads out of the device"));
    File source(from, File::Mode::Read);
    if (!source.isOpen())
        return ended(exists(from) ? End::Failed : End::Missing, source.error());
    File destination(to, File::Mode::Create);
    if (!destination.isOpen())
        return ended(End::Failed, destination.error());
    return copyChunks(source, destination, progress);
}
