#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

class AFCConnection;
class AFCDevice;
class AFCDeviceRef;
class AFCInterface;

/// Who hears that a connected phone leaves, on the thread that owns the event loop.
class AFCDeviceDelegate
{
public:
    AFCDeviceDelegate() = default;
    virtual ~AFCDeviceDelegate() = default;
    AFCDeviceDelegate(const AFCDeviceDelegate&) = delete;
    AFCDeviceDelegate& operator=(const AFCDeviceDelegate&) = delete;

    virtual void deviceWasDisconnected(AFCDevice& device) = 0;
};

/// One phone with an open session and an open connection to its file service, and operations on
/// whole files.
class AFCDevice
{
public:
    /// Opens session and service, which waits for the phone. Null without a ref; throws the
    /// Exception "AFCDevice" that says which step failed, and why. A device from here hears of
    /// its own departure.
    static std::shared_ptr<AFCDevice> initWithRef(const std::shared_ptr<AFCDeviceRef>& ref);
    AFCDevice() = default;
    ~AFCDevice();
    AFCDevice(const AFCDevice&) = delete;
    AFCDevice& operator=(const AFCDevice&) = delete;

    /// The same once more with another ref, keeping the old connection when that fails.
    void setDeviceRef(const std::shared_ptr<AFCDeviceRef>& ref);
    /// Connect, pairing, session. Throws as `initWithRef` does.
    bool initializeDevice(const std::shared_ptr<AFCDeviceRef>& ref);
    /// The connection to a service of the phone; null without a ref. Throws as `initWithRef`.
    static std::shared_ptr<AFCConnection> openDevice(const std::shared_ptr<AFCDeviceRef>& ref,
                                                     const QString& service);
    /// The phone of that number was pulled out; only its own matters to a device.
    void disconnected(quint32 deviceID);

    [[nodiscard]] AFCInterface& deviceInterface() { return *_deviceInterface; }
    [[nodiscard]] const std::shared_ptr<AFCDeviceRef>& device() const { return _device; }
    [[nodiscard]] AFCDeviceDelegate* delegate() const { return _delegate; }
    void setDelegate(AFCDeviceDelegate* delegate) { _delegate = delegate; }

    /// The names of folders, or of regular files, in a folder, in the phone's order; never "."
    /// and "..", nor a name that is a path. Both throw when the folder cannot be opened.
    QStringList listOfFoldersAtPath(const QString& path);
    QStringList listOfFilesAtPath(const QString& path);
    /// Deletes a file; folders are left alone.
    void deleteFileAtPath(const QString& path);
    /// Writes a whole file into a folder that exists.
    void createFileAtPath(const QString& path, const QByteArray& data);
    /// Part of a file; null when there is no such file, empty when it cannot be opened.
    QByteArray chunkOfFileAtPath(const QString& path, quint64 location, quint64 length);
    /// A whole file, likewise.
    QByteArray contentsOfFileAtPath(const QString& path);

private:
    std::shared_ptr<AFCDeviceRef> _device;
    std::unique_ptr<AFCInterface> _deviceInterface;
    AFCDeviceDelegate* _delegate = nullptr;
};
