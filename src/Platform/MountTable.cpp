#include "Platform/MountTable.h"

#include <QFile>
#include <QHash>
#include <QSet>

#include <fcntl.h>
#include <libmount/libmount.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <memory>
#include <tuple>

namespace
{
struct Unreference {
    void operator()(libmnt_table* table) const noexcept { mnt_unref_table(table); }
    void operator()(libmnt_iter* iterator) const noexcept { mnt_free_iter(iterator); }
};
using Table = std::unique_ptr<libmnt_table, Unreference>;
using Iterator = std::unique_ptr<libmnt_iter, Unreference>;

QString text(const char* bytes)
{
    return QFile::decodeName(bytes ? bytes : "");
}

MountEntry entryOf(libmnt_fs* fileSystem)
{
    MountEntry entry;
    entry.id = mnt_fs_get_id(fileSystem);
    entry.path = text(mnt_fs_get_target(fileSystem));
    entry.type = text(mnt_fs_get_fstype(fileSystem));
    entry.source = text(mnt_fs_get_srcpath(fileSystem));
    entry.root = text(mnt_fs_get_root(fileSystem));
    entry.major = major(mnt_fs_get_devno(fileSystem));
    return entry;
}

/// The id that the kernel gives to no other mount until it is started anew; 0 where it knows of
/// no such thing.
quint64 uniqueMountId(const QString& path)
{
    constexpr unsigned UniqueMountId = 0x4000; // STATX_MNT_ID_UNIQUE, newer than the C library
    struct statx status = {};
    const int result = statx(AT_FDCWD, QFile::encodeName(path).constData(),
                             AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC, UniqueMountId, &status);
    return result == 0 && (status.stx_mask & UniqueMountId) != 0 ? status.stx_mnt_id : 0;
}

/// File systems without a block device whose files are this computer's own all the same.
bool isLocalWithoutDevice(const QString& type)
{
    static const QSet<QString> types = {
        QStringLiteral("tmpfs"),    QStringLiteral("ramfs"), QStringLiteral("overlay"),
        QStringLiteral("btrfs"),    QStringLiteral("zfs"),   QStringLiteral("bcachefs"),
        QStringLiteral("ecryptfs"), QStringLiteral("aufs"),  QStringLiteral("ubifs"),
    };
    return types.contains(type);
}

/// File systems of the network that carry the path of a local device node, or may seem to.
bool isNetwork(const QString& type)
{
    static const QSet<QString> types = {
        QStringLiteral("nfs"),   QStringLiteral("nfs4"),   QStringLiteral("cifs"),
        QStringLiteral("smb3"),  QStringLiteral("smbfs"),  QStringLiteral("9p"),
        QStringLiteral("ceph"),  QStringLiteral("lustre"), QStringLiteral("afs"),
        QStringLiteral("davfs"), QStringLiteral("coda"),   QStringLiteral("ncpfs"),
    };
    return types.contains(type);
}
} // namespace

MountTable::MountTable(std::vector<MountEntry> entries)
    : _entries(std::move(entries))
{
}

MountTable MountTable::read()
{
    MountTable result;
    const Table table(mnt_new_table());
    const Iterator iterator(mnt_new_iter(MNT_ITER_FORWARD));
    if (!table || !iterator || mnt_table_parse_file(table.get(), "/proc/self/mountinfo") != 0)
        return result;
    libmnt_fs* fileSystem = nullptr;
    while (mnt_table_next_fs(table.get(), iterator.get(), &fileSystem) == 0)
        result._entries.push_back(entryOf(fileSystem));
    return result;
}

bool MountTable::isLocalVolume(const MountEntry& entry)
{
    if (isNetwork(entry.type) || entry.type == u"devtmpfs")
        return false;
    // A block device: a disk, a stick, a loop device, a mapped volume.
    if (entry.major != 0)
        return true;
    // No device number, but mounted from a device: btrfs, and drivers that run as a process.
    if (entry.source.startsWith(u"/dev/") && entry.source != u"/dev/fuse")
        return true;
    return isLocalWithoutDevice(entry.type);
}

MountTable MountTable::localVolumes() const
{
    // A later mount at the same path hides an earlier one, whatever it is.
    QHash<QString, int> visible;
    for (const MountEntry& entry : _entries)
        visible[entry.path] = entry.id;
    MountTable local;
    for (const MountEntry& entry : _entries) {
        if (visible.value(entry.path) != entry.id || !isLocalVolume(entry))
            continue;
        local._entries.push_back(entry);
        local._entries.back().uniqueId = uniqueMountId(entry.path);
    }
    return local;
}

MountTable::Changes MountTable::changesTo(const MountTable& later) const
{
    const auto missingFrom = [](const MountTable& table) {
        QHash<int, MountEntry> known;
        for (const MountEntry& entry : table._entries)
            known.insert(entry.id, entry);
        return [known](const MountEntry& entry) {
            const MountEntry other = known.value(entry.id);
            return std::tie(other.path, other.source, other.root, other.uniqueId) !=
                   std::tie(entry.path, entry.source, entry.root, entry.uniqueId);
        };
    };
    Changes changes;
    std::copy_if(_entries.begin(), _entries.end(), std::back_inserter(changes.unmounted),
                 missingFrom(later));
    std::copy_if(later._entries.begin(), later._entries.end(), std::back_inserter(changes.mounted),
                 missingFrom(*this));
    return changes;
}
