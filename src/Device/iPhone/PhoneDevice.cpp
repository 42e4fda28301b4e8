#include "Device/iPhone/PhoneDevice.h"

#include "Base/PathName.h"
#include "Device/iPhone/PhoneCopy.h"
#include "Device/iPhone/PhoneFamily.h"
#include "Device/iPhone/PhoneSession.h"
#include "Device/iPhone/PluggedPhone.h"

Device::Devices PhoneDevice::init()
{
    return PhoneFamily::shared().start();
}

void PhoneDevice::uninit()
{
    PhoneFamily::shared().stop();
}

bool PhoneDevice::hasHeardOf(const std::vector<QString>& identifiers)
{
    return PhoneFamily::shared().hasHeardOf(identifiers);
}

bool PhoneDevice::isOpening()
{
    return PhoneFamily::shared().isOpening();
}

void PhoneDevice::setInterrupt(const std::atomic<bool>& requested)
{
    PhoneFileService::setInterrupt(&requested);
}

PhoneDevice::PhoneDevice(std::shared_ptr<PhoneSession> session)
    : _session(std::move(session))
{
    _prefix = QStringLiteral("/");
    _controlPath = PathName::join(_prefix, u"iTunes_Control");
    _bookPath = PathName::join(_prefix, u"Books");
}

PhoneDevice::~PhoneDevice()
{
    releaseReaders();
}

QString PhoneDevice::key() const
{
    return _session->phone().identifier();
}

Expected<FileInfo> PhoneDevice::info(const QString& path)
{
    return _session->files().info(path);
}

Expected<QStringList> PhoneDevice::list(const QString& folder, Entries entries)
{
    const auto all = _session->files().entries(folder);
    if (!all)
        return all.failure();
    QStringList names;
    for (const PhoneFiles::Entry& entry : *all) {
        if (entries == Entries::Files ? entry.isFile() : entry.isFolder())
            names.append(entry.name);
    }
    return names;
}

Expected<QByteArray> PhoneDevice::readFile(const QString& path)
{
    return _session->files().read(path);
}

Expected<QByteArray> PhoneDevice::readPart(const QString& path, quint64 offset, quint64 length)
{
    return _session->files().readPart(path, offset, length);
}

std::optional<Failure> PhoneDevice::whyGone() const
{
    return _session->whyGone();
}

bool PhoneDevice::isDirectory(const QString& path)
{
    const Expected<FileInfo> found = info(path);
    return found && (found->kind == FileInfo::Kind::Folder || found->kind == FileInfo::Kind::Link);
}

CopyResult PhoneDevice::copyOut(const QString& from, const QString& to, std::optional<int> progress)
{
    return PhoneCopy(_session->files(), progress, File::Mode::Create).copy(from, to);
}

CopyResult PhoneDevice::copyOutNew(const QString& from, const QString& to,
                                   std::optional<int> progress)
{
    return PhoneCopy(_session->files(), progress, File::Mode::CreateNew).copy(from, to);
}

CameraRollDb* PhoneDevice::cameraRollDb()
{
    return createdCameraRollDb();
}
