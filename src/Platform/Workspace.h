#pragma once

#include <QStringList>

#include <functional>
#include <memory>

/// The desktop shell: which local volumes are mounted, and word of those that come and go.
/// Lives on the window's thread; handlers are called there, from the event loop.
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

    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

private:
    Workspace();
    ~Workspace();

    class Monitor;
    std::unique_ptr<Monitor> _monitor;
};
