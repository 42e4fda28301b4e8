#include "Device/Device.h"

#include "Device/BookDb.h"
#include "Device/CameraRollDb.h"
#include "Device/DeviceDelegate.h"
#include "Device/Formats.h"
#include "Device/PhotoDb.h"
#include "Device/TrackDb.h"
#include "Device/VoiceMemoDb.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <atomic>

namespace
{
// A worker asks for it while it copies.
std::atomic<DeviceDelegate*> theDelegate = nullptr;

Failure nothingThere()
{
    return {Failure::Kind::Missing,
            QCoreApplication::translate("Device", "There is no such file on the device"),
            {}};
}

/// The problems of a reader that there is.
template <typename Reader>
void collect(std::vector<ReaderProblem>& all, const char* name, const Reader& reader)
{
    if (!reader)
        return;
    for (const Problem& problem : reader->problems())
        all.push_back({QString::fromLatin1(name), problem});
}
} // namespace

void DeviceDelegate::deviceConnected(const std::shared_ptr<Device>& /*device*/) {}

void DeviceDelegate::deviceDisconnected(const std::shared_ptr<Device>& /*device*/) {}

void DeviceDelegate::deviceFailed(const QString& /*words*/, const QString& /*exactText*/) {}

bool DeviceDelegate::exported(double /*progress*/)
{
    return true;
}

bool DeviceDelegate::waited(double progress)
{
    return exported(progress);
}

void Device::setDelegate(DeviceDelegate* delegate)
{
    theDelegate = delegate;
}

DeviceDelegate* Device::delegate()
{
    return theDelegate;
}

Device::Devices Device::init()
{
    Devices devices;
    for (const DeviceFamily& family : Formats::families())
        addFamily(devices, family.start());
    return devices;
}

void Device::uninit()
{
    for (const DeviceFamily& family : Formats::families())
        family.stop();
}

void Device::addFamily(Devices& devices, const Devices& family)
{
    for (const auto& [key, device] : family)
        devices[key] = device;
}

Device::Device() = default;

Device::~Device() = default;

QString Device::description()
{
    TrackDb* library = trackDb();
    return library ? library->name() : QString();
}

QString Device::key() const
{
    return {};
}

QString Device::localRoot() const
{
    return {};
}

Expected<FileInfo> Device::info(const QString& /*path*/)
{
    return nothingThere();
}

Expected<QStringList> Device::list(const QString& /*folder*/, Entries /*entries*/)
{
    return nothingThere();
}

Expected<QByteArray> Device::readFile(const QString& /*path*/)
{
    return nothingThere();
}

Expected<QByteArray> Device::readPart(const QString& /*path*/, quint64 /*offset*/,
                                      quint64 /*length*/)
{
    return nothingThere();
}

std::optional<Failure> Device::whyGone() const
{
    return std::nullopt;
}

bool Device::fileExists(const QString& path)
{
    return bool(info(path));
}

bool Device::isFile(const QString& path)
{
    const Expected<FileInfo> found = info(path);
    return found && found->kind == FileInfo::Kind::File;
}

bool Device::isDirectory(const QString& path)
{
    const Expected<FileInfo> found = info(path);
    return found && found->kind == FileInfo::Kind::Folder;
}

QStringList Device::getFiles(const QString& folder)
{
    return list(folder, Entries::Files).valueOr({});
}

QStringList Device::getDirs(const QString& folder)
{
    return list(folder, Entries::Folders).valueOr({});
}

QByteArray Device::read(const QString& path)
{
    return readFile(path).valueOr({});
}

QByteArray Device::read(const QString& path, quint64 offset, quint64 length)
{
    return readPart(path, offset, length).valueOr({});
}

std::optional<qint64> Device::getFileSize(const QString& path)
{
    const Expected<FileInfo> found = info(path);
    return found ? found->size : std::nullopt;
}

CopyResult Device::copyOut(const QString& /*from*/, const QString& /*to*/,
                           std::optional<int> /*progress*/)
{
    return {};
}

CopyResult Device::copyOutNew(const QString& from, const QString& to, std::optional<int> progress)
{
    const QFileInfo there(to);
    if (there.exists() || there.isSymLink())
        return {CopyResult::End::Taken, {}};
    return copyOut(from, to, progress);
}

bool Device::copyOutSqlite(const QString& from, const QString& to, std::optional<int> progress)
{
    copyOut(from, to, progress);
    for (const QLatin1String suffix : {QLatin1String("-shm"), QLatin1String("-wal")}) {
        if (fileExists(from + suffix))
            copyOut(from + suffix, to + suffix, progress);
    }
    return true;
}

TrackDb* Device::trackDb()
{
    if (_trackDb)
        return _trackDb.get();
    _trackDb = TrackDb::create(*this);
    if (!_trackDb && !_problemsWithoutTrackDb)
        _problemsWithoutTrackDb = TrackDb::problemsWithout(*this);
    return _trackDb.get();
}

PhotoDb* Device::photoDb()
{
    if (!_photoDb)
        _photoDb = PhotoDb::create(*this);
    return _photoDb.get();
}

VoiceMemoDb* Device::voiceMemoDb()
{
    if (!_voiceMemoDb)
        _voiceMemoDb = VoiceMemoDb::create(*this);
    return _voiceMemoDb.get();
}

BookDb* Device::bookDb()
{
    if (!_bookDb)
        _bookDb = BookDb::create(*this);
    return _bookDb.get();
}

CameraRollDb* Device::cameraRollDb()
{
    return nullptr;
}

CameraRollDb* Device::createdCameraRollDb()
{
    if (!_cameraRollDb)
        _cameraRollDb = CameraRollDb::create(*this);
    return _cameraRollDb.get();
}

std::vector<ReaderProblem> Device::problems() const
{
    std::vector<ReaderProblem> all;
    collect(all, "trackDb", _trackDb);
    if (!_trackDb && _problemsWithoutTrackDb) {
        for (const Problem& problem : *_problemsWithoutTrackDb)
            all.push_back({QStringLiteral("trackDb"), problem});
    }
    collect(all, "photoDb", _photoDb);
    collect(all, "cameraRollDb", _cameraRollDb);
    collect(all, "voiceMemoDb", _voiceMemoDb);
    collect(all, "bookDb", _bookDb);
    return all;
}

void Device::stopPreviews()
{
    if (_photoDb)
        _photoDb->stopPreviews();
    if (_cameraRollDb)
        _cameraRollDb->stopPreviews();
}

void Device::endPreviews()
{
    stopPreviews();
    if (_photoDb)
        _photoDb->waitForPreviews();
    if (_cameraRollDb)
        _cameraRollDb->waitForPreviews();
}

void Device::releaseReaders()
{
    _cameraRollDb.reset();
    _photoDb.reset();
    _bookDb.reset();
    _voiceMemoDb.reset();
    _trackDb.reset();
}
