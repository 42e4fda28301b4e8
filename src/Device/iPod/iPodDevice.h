#pragma once

#include "Device/Device.h"
#include "Platform/Folder.h"

#include <atomic>
#include <optional>

/// A player that the system mounts as a local volume. Its files are reached through the
/// computer's own file system below the mount point, and no link among them is followed.
///
/// The volume is opened for each call anew: an open folder would keep it from being unmounted.
class iPodDevice final : public Device
{
public:
    /// Whether "iPod_Control" or "iTunes_Control" stands directly below `prefix`: the whole test
    /// for whether a volume is a device.
    static bool isiPodAtPrefix(const QString& prefix);
    /// A new device for each mounted local volume that is one, under its mount path.
    static Devices getDevices();
    /// Finds the devices present and follows mounts and unmounts from now on.
    static Devices init();
    /// Follows no more and makes no more previews; the devices found stay known.
    static void uninit();

    static void handleMountNotification(const QString& path);
    static void handleUnmountNotification(const QString& path);

    /// A device whose files stand below `prefix`, which need not be a mount point.
    explicit iPodDevice(const QString& prefix);
    ~iPodDevice() override;

    /// The mount path.
    [[nodiscard]] QString key() const override;
    [[nodiscard]] QString localRoot() const override;
    Expected<FileInfo> info(const QString& path) override;
    Expected<QStringList> list(const QString& folder, Entries entries) override;
    Expected<QByteArray> readFile(const QString& path) override;
    Expected<QByteArray> readPart(const QString& path, quint64 offset, quint64 length) override;
    /// True for a folder as well; whoever needs a regular file asks `getFiles`.
    bool isFile(const QString& path) override;
    /// Copies single files only: a folder is not walked, and reported as failed.
    CopyResult copyOut(const QString& from, const QString& to,
                       std::optional<int> progress) override;
    CopyResult copyOutNew(const QString& from, const QString& to,
                          std::optional<int> progress) override;
    [[nodiscard]] std::optional<Failure> whyGone() const override;

private:
    static Devices devices;

    /// The folder of the volume and a path below it.
    struct Way {
        Folder root;
        QString below;
    };
    /// A path as seen from the volume's folder; null for one that leads out of it.
    [[nodiscard]] QString onDevice(const QString& path) const;
    [[nodiscard]] Expected<Way> wayTo(const QString& path);
    [[nodiscard]] Expected<Folder> root();
    [[nodiscard]] Expected<File> openFile(const QString& path);
    CopyResult copyFile(const QString& from, const QString& to, File::Mode mode,
                        std::optional<int> progress);
    /// A failure as it is to be told: whatever fails on a volume that has gone says that.
    Failure judged(const Failure& failure);
    [[nodiscard]] bool isThere();

    std::optional<Folder::Identity>
        _identity; ///< of the volume's own folder; none if there is none
    QString _disk; ///< where the system lists its disk; null if nowhere
    std::atomic<bool> _gone = false;
};
