#include "Platform/MountTable.h"

#include "support/Files.h"

#include <gtest/gtest.h>

namespace
{
struct VolumeCase {
    const char* name;
    const char* type;
    const char* source;
    unsigned major;
    bool local;
};
void PrintTo(const VolumeCase& c, std::ostream* out)
{
    *out << c.name;
}

MountEntry mounted(int id, const char* path, const char* type = "ext4", unsigned major = 8)
{
    return {id, QString::fromLatin1(path), QString::fromLatin1(type), "/dev/sda1", "/", major, 0};
}

QStringList paths(const std::vector<MountEntry>& entries)
{
    QStringList all;
    for (const MountEntry& entry : entries)
        all.append(entry.path);
    return all;
}
} // namespace

class LocalVolume : public testing::TestWithParam<VolumeCase>
{
};

TEST_P(LocalVolume, IsToldByWhatBacksIt)
{
    const VolumeCase& c = GetParam();
    const MountEntry entry = {
        1, "/media/x", QString::fromLatin1(c.type), QString::fromLatin1(c.source), "/", c.major, 0};
    EXPECT_EQ(MountTable::isLocalVolume(entry), c.local);
}

INSTANTIATE_TEST_SUITE_P(
    , LocalVolume,
    testing::Values(VolumeCase{"Stick", "vfat", "/dev/sdb1", 8, true},
                    VolumeCase{"MacFormatted", "hfsplus", "/dev/sdb3", 8, true},
                    VolumeCase{"LoopImage", "ext4", "/dev/loop3", 7, true},
                    VolumeCase{"Btrfs", "btrfs", "/dev/sda2", 0, true},
                    VolumeCase{"Memory", "tmpfs", "tmpfs", 0, true},
                    VolumeCase{"Container", "overlay", "overlay", 0, true},
                    VolumeCase{"NtfsByProcess", "fuseblk", "/dev/sdb1", 8, true},
                    VolumeCase{"FatByProcess", "fuse.fusefat", "/dev/sdb1", 0, true},
                    VolumeCase{"Nfs", "nfs4", "server:/export", 0, false},
                    VolumeCase{"NfsOfADevicePath", "nfs", "/dev/nas", 0, false},
                    VolumeCase{"Cifs", "cifs", "//server/share", 0, false},
                    VolumeCase{"Ceph", "ceph", "10.0.0.1:/", 0, false},
                    VolumeCase{"Davfs", "davfs", "https://server/dav", 0, false},
                    VolumeCase{"Lustre", "lustre", "10.0.0.1@tcp:/fs", 0, false},
                    VolumeCase{"Plan9", "9p", "hostshare", 0, false},
                    VolumeCase{"Sshfs", "fuse.sshfs", "me@server:", 0, false},
                    VolumeCase{"Rclone", "fuse.rclone", "cloud:", 0, false},
                    VolumeCase{"Gluster", "fuse.glusterfs", "server:/vol", 0, false},
                    VolumeCase{"DesktopNetwork", "fuse.gvfsd-fuse", "gvfsd-fuse", 0, false},
                    VolumeCase{"Portal", "fuse.portal", "portal", 0, false},
                    VolumeCase{"BareFuse", "fuse", "/dev/fuse", 0, false},
                    VolumeCase{"Automounter", "autofs", "systemd-1", 0, false},
                    VolumeCase{"Processes", "proc", "proc", 0, false},
                    VolumeCase{"Devices", "devtmpfs", "udev", 0, false},
                    VolumeCase{"Groups", "cgroup2", "cgroup2", 0, false}),
    [](const auto& c) { return std::string(c.param.name); });

TEST(MountTableTest, SeesOnlyTheLastOfSeveralMountsAtOnePath)
{
    const MountTable table({mounted(1, "/media/a"), mounted(2, "/media/b"),
                            mounted(3, "/media/a", "nfs4", 0), mounted(4, "/media/b")});
    const MountTable local = table.localVolumes();
    ASSERT_EQ(local.entries().size(), 1U);
    EXPECT_EQ(local.entries()[0].id, 4);
}

TEST(MountTableTest, FindsWhatCameAndWent)
{
    const MountTable before({mounted(1, "/a"), mounted(2, "/b")});
    const MountTable after({mounted(2, "/b"), mounted(3, "/c")});
    const MountTable::Changes changes = before.changesTo(after);
    EXPECT_EQ(paths(changes.unmounted), QStringList("/a"));
    EXPECT_EQ(paths(changes.mounted), QStringList("/c"));
}

TEST(MountTableTest, TellsANewMountAtTheSamePathByItsId)
{
    const MountTable before({mounted(1, "/a")});
    const MountTable after({mounted(2, "/a")});
    const MountTable::Changes changes = before.changesTo(after);
    EXPECT_EQ(paths(changes.unmounted), QStringList("/a"));
    EXPECT_EQ(paths(changes.mounted), QStringList("/a"));
}

TEST(MountTableTest, TellsAReusedIdByItsPath)
{
    const MountTable before({mounted(1, "/a")});
    const MountTable after({mounted(1, "/b")});
    const MountTable::Changes changes = before.changesTo(after);
    EXPECT_EQ(paths(changes.unmounted), QStringList("/a"));
    EXPECT_EQ(paths(changes.mounted), QStringList("/b"));
}

TEST(MountTableTest, TellsAReusedIdAtTheSamePathByTheUniqueId)
{
    MountEntry first = mounted(1, "/a");
    first.uniqueId = 70;
    MountEntry second = mounted(1, "/a");
    second.uniqueId = 71;
    EXPECT_EQ(MountTable({first}).changesTo(MountTable({second})).mounted.size(), 1U);
    EXPECT_EQ(MountTable({first}).changesTo(MountTable({first})).mounted.size(), 0U);
}

TEST(MountTableTest, ReadsTheKernelsTable)
{
    const MountTable table = MountTable::read();
    EXPECT_TRUE(paths(table.entries()).contains("/"));
    EXPECT_TRUE(paths(table.entries()).contains("/proc"));
    EXPECT_FALSE(paths(table.localVolumes().entries()).contains("/proc"));
}
