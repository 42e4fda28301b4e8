#include "Device/iPhone/iPhoneDevice.h"

#include "Base/Exception.h"
#include "Base/PathName.h"
#include "Device/iPhone/AFCDevice.h"
#include "Device/iPhone/AFCDeviceRef.h"
#include "Device/iPhone/AFCInterface.h"
#include "Device/iPhone/PhoneCopy.h"
#include "Device/iPhone/iPhoneFamily.h"

namespace
{
Failure nothingThere()
{
    return {Failure::Kind::Missing, QStringLiteral("There is no such file on the device"), {}};
}
} // namespace

Device::Devices iPhoneDevice::init()
{
    return iPhoneFamily::shared().start();
}

void iPhoneDevice::uninit()
{
    iPhoneFamily::shared().stop();
}

bool iPhoneDevice::hasHeardOf(const std::vector<QString>& identifiers)
{
    return iPhoneFamily::shared().hasHeardOf(identifiers);
}

void iPhoneDevice::AFCDeviceWasConnected(const std::shared_ptr<AFCDeviceRef>& ref)
{
    iPhoneFamily::shared().AFCDeviceWasConnected(ref);
}

void iPhoneDevice::deviceWasDisconnected(AFCDevice& device)
{
    iPhoneFamily::shared().deviceWasDisconnected(device);
}

iPhoneDevice::iPhoneDevice(std::shared_ptr<AFCDevice> afcDevice)
    : _afcDevice(std::move(afcDevice))
{
    _prefix = QStringLiteral("/");
    _controlPath = PathName::join(_prefix, u"iTunes_Control");
    _bookPath = PathName::join(_prefix, u"Books");
}

iPhoneDevice::~iPhoneDevice()
{
    releaseReaders();
}

QString iPhoneDevice::key() const
{
    return serialNumber();
}

QString iPhoneDevice::serialNumber() const
{
    return _afcDevice->device()->serialNumber();
}

Expected<FileInfo> iPhoneDevice::info(const QString& path)
{
    const auto attributes = _afcDevice->deviceInterface().getAttributesAtPath(path);
    if (!attributes)
        return nothingThere();
    const QString type = AFCInterface::typeIn(*attributes);
    FileInfo info;
    info.kind = type == u"S_IFREG"   ? FileInfo::Kind::File
                : type == u"S_IFDIR" ? FileInfo::Kind::Folder
                : type == u"S_IFLNK" ? FileInfo::Kind::Link
                                     : FileInfo::Kind::Other;
    info.size = qint64(AFCInterface::sizeIn(*attributes));
    return info;
}

Expected<QStringList> iPhoneDevice::list(const QString& folder, Entries entries)
{
    try {
        return entries == Entries::Files ? _afcDevice->listOfFilesAtPath(folder)
                                         : _afcDevice->listOfFoldersAtPath(folder);
    } catch (const Exception&) {
        return nothingThere(); // a phone pulled out must not end a job
    }
}

Expected<QByteArray> iPhoneDevice::readFile(const QString& path)
{
    const QByteArray bytes = _afcDevice->contentsOfFileAtPath(path);
    if (bytes.isNull())
        return nothingThere();
    return bytes;
}

Expected<QByteArray> iPhoneDevice::readPart(const QString& path, quint64 offset, quint64 length)
{
    const QByteArray bytes = _afcDevice->chunkOfFileAtPath(path, offset, length);
    if (bytes.isNull())
        return nothingThere();
    return bytes;
}

bool iPhoneDevice::isDirectory(const QString& path)
{
    return _afcDevice->deviceInterface().isDirectoryAtPath(path);
}

CopyResult iPhoneDevice::copyOut(const QString& from, const QString& to,
                                 std::optional<int> progress)
{
    return PhoneCopy(*_afcDevice, progress, File::Mode::Create).copy(from, to);
}

CopyResult iPhoneDevice::copyOutNew(const QString& from, const QString& to,
                                    std::optional<int> progress)
{
    return PhoneCopy(*_afcDevice, progress, File::Mode::CreateNew).copy(from, to);
}

CameraRollDb* iPhoneDevice::cameraRollDb()
{
    return createdCameraRollDb();
}
