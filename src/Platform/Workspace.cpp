#include "Platform/Workspace.h"

#include "Platform/MountTable.h"

#include <QMetaObject>
#include <QSocketNotifier>

#include <libmount/libmount.h>

/// The kernel's word of mounts, and the volumes known so far. The kernel only says that
/// something changed, and says it once for many changes, so tables are compared.
class Workspace::Monitor : public QObject
{
public:
    Monitor();
    ~Monitor() override;

    QStringList volumes();
    void observe(VolumeHandler didMount, VolumeHandler didUnmount);
    void stop();

private:
    void start();
    void drain();
    void compare();

    libmnt_monitor* _monitor = nullptr;
    std::unique_ptr<QSocketNotifier> _notifier;
    MountTable _known;
    VolumeHandler _didMount;
    VolumeHandler _didUnmount;
};

Workspace::Monitor::Monitor()
    : _known(MountTable::read().localVolumes())
{
}

Workspace::Monitor::~Monitor()
{
    stop();
}

QStringList Workspace::Monitor::volumes()
{
    const MountTable now = MountTable::read().localVolumes();
    // While observed, the table known moves on only together with the word about it.
    if (!_didMount)
        _known = now;
    QStringList paths;
    for (const MountEntry& entry : now.entries())
        paths.append(entry.path);
    return paths;
}

void Workspace::Monitor::observe(VolumeHandler didMount, VolumeHandler didUnmount)
{
    stop();
    _didMount = std::move(didMount);
    _didUnmount = std::move(didUnmount);
    start();
    // What came between the last listing and now.
    QMetaObject::invokeMethod(
        this, [this] { compare(); }, Qt::QueuedConnection);
}

void Workspace::Monitor::start()
{
    _monitor = mnt_new_monitor();
    if (!_monitor || mnt_monitor_enable_kernel(_monitor, 1) != 0)
        return;
    const int descriptor = mnt_monitor_get_fd(_monitor);
    if (descriptor < 0)
        return;
    _notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(_notifier.get(), &QSocketNotifier::activated, this, [this] {
        drain();
        compare();
    });
}

void Workspace::Monitor::stop()
{
    _didMount = {};
    _didUnmount = {};
    // A handler may call this: the notifier is then in the middle of its signal.
    if (QSocketNotifier* notifier = _notifier.release()) {
        notifier->setEnabled(false);
        notifier->deleteLater();
    }
    mnt_unref_monitor(_monitor);
    _monitor = nullptr;
}

void Workspace::Monitor::drain()
{
    const char* file = nullptr;
    int type = 0;
    while (mnt_monitor_next_change(_monitor, &file, &type) == 0) {
    }
}

void Workspace::Monitor::compare()
{
    if (!_didMount)
        return;
    const MountTable now = MountTable::read().localVolumes();
    const MountTable::Changes changes = _known.changesTo(now);
    _known = now;
    // A handler may end the observing, and a copy lives on when it does.
    for (const MountEntry& entry : changes.unmounted) {
        if (const VolumeHandler didUnmount = _didUnmount)
            didUnmount(entry.path);
    }
    for (const MountEntry& entry : changes.mounted) {
        if (const VolumeHandler didMount = _didMount)
            didMount(entry.path);
    }
}

Workspace& Workspace::shared()
{
    static Workspace workspace;
    return workspace;
}

Workspace::Workspace()
    : _monitor(std::make_unique<Monitor>())
{
}

Workspace::~Workspace() = default;

QStringList Workspace::mountedLocalVolumePaths()
{
    return _monitor->volumes();
}

void Workspace::observeVolumes(VolumeHandler didMount, VolumeHandler didUnmount)
{
    _monitor->observe(std::move(didMount), std::move(didUnmount));
}

void Workspace::stopObservingVolumes()
{
    _monitor->stop();
}
