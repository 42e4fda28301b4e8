#include "Device/iPhone/iPhoneDevice.h"

#include "Base/Exception.h"
#include "Base/PathName.h"
#include "Device/iPhone/AFCDevice.h"
#include "Device/iPhone/AFCDeviceRef.h"
#include "Device/iPhone/AFCInterface.h"
#include "Device/iPhone/PhoneCopy.h"
#include "Device/iPhone/iPhoneFamily.h"

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

bool iPhoneDevice::fileExists(const QString& path)
{
    return isFile(path) || isDirectory(path);
}

bool iPhoneDevice::isFile(const QString& path)
{
    return _afcDevice->deviceInterface().isFileAtPath(path);
}

bool iPhoneDevice::isDirectory(const QString& path)
{
    return _afcDevice->deviceInterface().isDirectoryAtPath(path);
}

QStringList iPhoneDevice::getFiles(const QString& folder)
{
    try {
        return _afcDevice->listOfFilesAtPath(folder);
    } catch (const Exception&) {
        return {}; // a folder that cannot be opened; a phone pulled out must not end a job
    }
}

QStringList iPhoneDevice::getDirs(const QString& folder)
{
    try {
        return _afcDevice->listOfFoldersAtPath(folder);
    } catch (const Exception&) {
        return {};
    }
}

QByteArray iPhoneDevice::read(const QString& path)
{
    return _afcDevice->contentsOfFileAtPath(path);
}

QByteArray iPhoneDevice::read(const QString& path, quint32 offset, quint32 length)
{
    return _afcDevice->chunkOfFileAtPath(path, offset, length);
}

double iPhoneDevice::getFileSize(const QString& path)
{
    const auto attributes = _afcDevice->deviceInterface().getAttributesAtPath(path);
    return attributes ? AFCInterface::sizeIn(*attributes) : 0.0;
}

CopyResult iPhoneDevice::copyOut(const QString& from, const QString& to,
                                 std::optional<int> progress)
{
    return PhoneCopy(*_afcDevice, progress).copy(from, to);
}

CameraRollDb* iPhoneDevice::cameraRollDb()
{
    return createdCameraRollDb();
}
