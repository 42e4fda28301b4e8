#pragma once

#include <QStringList>

#include <functional>
#include <memory>

class QUrl;

/// The desktop shell: which local volumes are mounted, word of those that come and go, and what
/// it opens for a person. Lives on the window's thread; handlers are called there, from the event
/// loop.
class Workspace
{
public:
    /// Called with a mount path.
    using VolumeHandler = std::function<void(const QString& path)>;

    static Workspace& shared();

    /// The mount paths of all volumes that this computer's own storage backs, in the kernel's
    /// order. Pseudo file systems and network mounts are left out without being touched: a look
    /// at a dead network mount would never return.
    QStringList mountedLocalVolumePaths();

    /// From now on `didMount` and `didUnmount` hear of every local volume that comes or goes;
    /// changes since the last `mountedLocalVolumePaths()` are told as well. Replaces earlier
    /// handlers.
    void observeVolumes(VolumeHandler didMount, VolumeHandler didUnmount);
    void stopObservingVolumes();

    /// Opens a file with the program that the person opens such files with. False when there is
    /// no such file, or the desktop cannot be asked.
    static bool openFile(const QString& path);
    /// Shows a file, selected in its folder, or what a folder holds. Where no file manager
    /// answers in time the folder is opened like a file. False as above.
    static bool revealInFileManager(const QString& path);
    /// Opens a web or mail address; false for any other.
    static bool openAddress(const QUrl& address);

    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

private:
    Workspace();
    ~Workspace();

    class Monitor;
    std::unique_ptr<Monitor> _monitor;
};
