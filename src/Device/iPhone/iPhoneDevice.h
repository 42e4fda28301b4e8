#pragma once

#include "Device/Device.h"

#include <vector>

class AFCDevice;
class AFCDeviceRef;

/// A phone or tablet, whose files are reached over its file service. Paths are rooted at "/".
class iPhoneDevice final : public Device
{
public:
    /// Begins to follow phones; those plugged in already arrive like later ones, from the event
    /// loop. Gives the table of phones, still empty.
    static Devices init();
    /// Follows no more; the phones found stay known.
    static void uninit();
    /// Whether each of these phones has been announced, or has failed, since `init`.
    static bool hasHeardOf(const std::vector<QString>& identifiers);

    /// A phone was plugged in: its session is opened beside the window's thread, and what came of
    /// it is told to the delegate from the event loop.
    static void AFCDeviceWasConnected(const std::shared_ptr<AFCDeviceRef>& ref);
    /// A phone was pulled out.
    static void deviceWasDisconnected(AFCDevice& device);

    explicit iPhoneDevice(std::shared_ptr<AFCDevice> afcDevice);
    ~iPhoneDevice() override;

    /// The phone's own identifier.
    [[nodiscard]] QString key() const override;
    [[nodiscard]] QString serialNumber() const;
    Expected<FileInfo> info(const QString& path) override;
    Expected<QStringList> list(const QString& folder, Entries entries) override;
    Expected<QByteArray> readFile(const QString& path) override;
    Expected<QByteArray> readPart(const QString& path, quint64 offset, quint64 length) override;
    /// Folders and symbolic links, whatever they point to.
    bool isDirectory(const QString& path) override;
    /// Copies files and whole folders. A stop inside a folder ends only the file it is asked in.
    CopyResult copyOut(const QString& from, const QString& to,
                       std::optional<int> progress) override;
    CopyResult copyOutNew(const QString& from, const QString& to,
                          std::optional<int> progress) override;
    CameraRollDb* cameraRollDb() override;

private:
    std::shared_ptr<AFCDevice> _afcDevice;
};
