#include "Device/iPod/iPodDevice.h"

#include "Base/PathName.h"
#include "Device/DeviceDelegate.h"
#include "Platform/SystemFailure.h"
#include "Platform/Workspace.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <sys/sysmacros.h>

#include <algorithm>
#include <limits>

namespace
{
const QString ControlFolders[] = {QStringLiteral("iPod_Control"), QStringLiteral("iTunes_Control")};
constexpr qint64 ChunkSize = 1024 * 1024;

Failure leadsOut()
{
    return {Failure::Kind::Refused,
            QCoreApplication::translate("iPodDevice", "The path leads out of the device"),
            {}};
}

Failure isLink()
{
    return {Failure::Kind::Refused,
            QCoreApplication::translate("iPodDevice",
                                        "This is a link, and links on a device are not followed"),
            {}};
}

Failure disconnected()
{
    return {Failure::Kind::Lost,
            QCoreApplication::translate("iPodDevice", "The device was disconnected"),
            {}};
}

Failure changedMeanwhile()
{
    return {Failure::Kind::Unreadable,
            QCoreApplication::translate("iPodDevice", "The file changed while it was read"),
            {}};
}

/// What a failure is called where it is told without its kind.
QString said(const Failure& failure)
{
    return failure.exact.isEmpty() ? failure.words : failure.exact;
}

FileInfo infoOf(const Folder::Entry& entry)
{
    switch (entry.kind) {
    case Folder::Kind::File:
        return {FileInfo::Kind::File, entry.size};
    case Folder::Kind::Folder:
        return {FileInfo::Kind::Folder, entry.size};
    case Folder::Kind::Link:
        return {FileInfo::Kind::Link, entry.size};
    case Folder::Kind::Other:
        break;
    }
    return {FileInfo::Kind::Other, entry.size};
}

/// Where the system lists the disk that a file system lies on, for as long as the disk is there;
/// null for one that lies on none.
QString diskOf(const Folder::Identity& identity)
{
    const QString listed = QStringLiteral("/sys/dev/block/%1:%2")
                               .arg(major(dev_t(identity.device)))
                               .arg(minor(dev_t(identity.device)));
    return QFileInfo::exists(listed) ? listed : QString();
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

/// Whether a file holds more than it reported: nothing of that is copied.
bool hasMore(File& source)
{
    std::byte next{};
    return source.read(std::span(&next, 1)) > 0;
}

/// The chunks of one copy, each announced before it is written, as far as the reported size goes.
CopyResult copyChunks(File& source, File& destination, std::optional<int> progress)
{
    using End = CopyResult::End;
    const qint64 total = source.size().value_or(0);
    qint64 done = 0;
    while (done < total) {
        const qint64 chunk = std::min(ChunkSize, total - done);
        if (!announce(done + chunk, total, progress))
            return ended(End::Stopped);
        const qint64 moved = destination.append(source, chunk);
        done += moved;
        if (moved < chunk)
            break;
    }
    const bool more = source.error().isEmpty() && done == total && hasMore(source);
    if (!destination.close() || !destination.error().isEmpty())
        return ended(End::Failed, destination.error());
    if (!source.error().isEmpty())
        return ended(End::Incomplete, source.error());
    if (done < total)
        return ended(End::Incomplete,
                     QCoreApplication::translate("iPodDevice", "%1 of %2 bytes were copied")
                         .arg(done)
                         .arg(total));
    if (more || source.size() != total)
        return ended(End::Incomplete, changedMeanwhile().words);
    return {};
}
} // namespace

Device::Devices iPodDevice::devices;

bool iPodDevice::isiPodAtPrefix(const QString& prefix)
{
    const Expected<Folder> volume = Folder::open(prefix);
    return volume && std::any_of(std::begin(ControlFolders), std::end(ControlFolders),
                                 [&](const QString& name) { return bool(volume->entry(name)); });
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
    static_cast<iPodDevice&>(*device)._gone = true; // a family's devices are all of its kind
    device->stopPreviews(); // whoever still holds the device must not keep them going
    if (DeviceDelegate* listener = delegate())
        listener->deviceDisconnected(device);
}

iPodDevice::iPodDevice(const QString& prefix)
{
    _prefix = prefix;
    const Expected<Folder> volume = Folder::open(prefix);
    const bool hasFirst = volume && volume->entry(ControlFolders[0]);
    _controlPath = PathName::join(prefix, ControlFolders[hasFirst ? 0 : 1]);
    if (volume) {
        _identity = volume->identity();
        _disk = diskOf(*_identity);
    }
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

std::optional<Failure> iPodDevice::whyGone() const
{
    return _gone ? std::optional(disconnected()) : std::nullopt;
}

Expected<Folder> iPodDevice::root()
{
    Expected<Folder> root = Folder::open(_prefix);
    if (!_identity || (root && root->identity() == *_identity))
        return root;
    // Another folder, or none, stands in its place. That this program has no descriptor left,
    // say, tells nothing about the volume.
    if (root || root.failedAs(Failure::Kind::Missing) || root.failedAs(Failure::Kind::Lost))
        _gone = true;
    return _gone ? Expected<Folder>(disconnected()) : std::move(root);
}

bool iPodDevice::isThere()
{
    // The system keeps a file system whose disk was pulled out until somebody unmounts it.
    return !_gone && (_disk.isNull() || QFileInfo::exists(_disk)) && root();
}

Failure iPodDevice::judged(const Failure& failure)
{
    if (_identity && (failure.kind == Failure::Kind::Lost || !isThere()))
        _gone = true;
    if (_gone)
        return disconnected();
    return SystemFailure::isLink(failure) ? isLink() : failure;
}

QString iPodDevice::onDevice(const QString& path) const
{
    const QString full = path.startsWith(_prefix) ? path : QDir::cleanPath(path);
    if (full != _prefix && !PathName::isInside(full, _prefix))
        return {};
    QString below = full.mid(_prefix.size());
    while (below.startsWith(u'/'))
        below.remove(0, 1);
    return below.isEmpty() ? QStringLiteral(".") : below;
}

Expected<iPodDevice::Way> iPodDevice::wayTo(const QString& path)
{
    const QString below = onDevice(path);
    if (below.isNull()) // a library may name any path
        return leadsOut();
    Expected<Folder> volume = root();
    if (!volume)
        return volume.failure();
    return Way{std::move(*volume), below};
}

Expected<FileInfo> iPodDevice::info(const QString& path)
{
    const Expected<Way> way = wayTo(path);
    if (!way)
        return way.failure();
    const Expected<Folder::Entry> found = way->root.entry(way->below);
    if (!found)
        return judged(found.failure());
    return infoOf(*found);
}

Expected<QStringList> iPodDevice::list(const QString& folder, Entries wanted)
{
    const Expected<Way> way = wayTo(folder);
    if (!way)
        return way.failure();
    Expected<QStringList> names = way->root.list(
        way->below, wanted == Entries::Folders ? Folder::Which::Folders : Folder::Which::NoFolders);
    return names ? std::move(names) : judged(names.failure());
}

Expected<File> iPodDevice::openFile(const QString& path)
{
    const Expected<Way> way = wayTo(path);
    if (!way)
        return way.failure();
    Expected<File> file = way->root.openFile(way->below);
    return file ? std::move(file) : judged(file.failure());
}

Expected<QByteArray> iPodDevice::readFile(const QString& path)
{
    Expected<File> file = openFile(path);
    if (!file)
        return file.failure();
    const QByteArray bytes = file->readAll();
    if (bytes.isNull() || !file->error().isEmpty())
        return judged(file->failure());
    if (file->size() != bytes.size())
        return judged(changedMeanwhile());
    return bytes;
}

Expected<QByteArray> iPodDevice::readPart(const QString& path, quint64 offset, quint64 length)
{
    Expected<File> file = openFile(path);
    if (!file)
        return file.failure();
    constexpr auto Most = quint64(std::numeric_limits<qint64>::max());
    const QByteArray bytes =
        file->readRange(qint64(std::min(offset, Most)), qint64(std::min(length, Most)));
    if (!file->error().isEmpty())
        return judged(file->failure());
    return bytes;
}

bool iPodDevice::isFile(const QString& path)
{
    return fileExists(path);
}

CopyResult iPodDevice::copyOut(const QString& from, const QString& to, std::optional<int> progress)
{
    return copyFile(from, to, File::Mode::Create, progress);
}

CopyResult iPodDevice::copyOutNew(const QString& from, const QString& to,
                                  std::optional<int> progress)
{
    return copyFile(from, to, File::Mode::CreateNew, progress);
}

CopyResult iPodDevice::copyFile(const QString& from, const QString& to, File::Mode mode,
                                std::optional<int> progress)
{
    using End = CopyResult::End;
    Expected<File> source = openFile(from);
    if (!source) {
        const bool isMissing = source.failedAs(Failure::Kind::Missing) || onDevice(from).isNull();
        return ended(isMissing ? End::Missing : End::Failed, said(source.failure()));
    }
    File destination(to, mode);
    if (!destination.isOpen())
        return ended(destination.wasTaken() ? End::Taken : End::Failed, destination.error());
    CopyResult result = copyChunks(*source, destination, progress);
    if (!source->error().isEmpty())
        result.why = said(judged(source->failure()));
    return result;
}
