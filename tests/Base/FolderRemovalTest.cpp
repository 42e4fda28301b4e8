#include "Base/FolderRemoval.h"

#include "support/Files.h"
#include "support/PrivateMounts.h"

#include <gtest/gtest.h>

namespace
{
class FolderRemovalTest : public testing::Test
{
protected:
    FolderRemovalTest() { Files::write(path("person/precious"), "mine"); }

    QString path(const QString& name) const { return _folder.filePath(name); }
    bool personIsUnharmed() const { return Files::read(path("person/precious")) == "mine"; }

    QTemporaryDir _folder;
};
} // namespace

TEST_F(FolderRemovalTest, TakesAllThatTheFolderHolds)
{
    Files::write(path("base/Zell/log/deep/deeper/file"), "x");
    Files::write(path("base/Zell/log/.hidden"), "x");
    Files::write(path("base/Zell/other"), "x");
    EXPECT_TRUE(FolderRemoval::removeOwn(path("base"), {"Zell", "log"}));
    EXPECT_FALSE(QFileInfo::exists(path("base/Zell/log")));
    EXPECT_TRUE(QFileInfo::exists(path("base/Zell/other")));
    EXPECT_TRUE(FolderRemoval::removeOwn(path("base"), {"Zell", "log"}));
    EXPECT_TRUE(FolderRemoval::removeOwn(path("none"), {"Zell", "log"}));
}

TEST_F(FolderRemovalTest, LeavesAloneWhatALinkLeadsTo)
{
    Files::write(path("base/Zell/log/file"), "x");
    ASSERT_TRUE(QFile::link(path("person"), path("base/Zell/log/folder")));
    ASSERT_TRUE(QFile::link(path("person/precious"), path("base/Zell/log/link")));
    EXPECT_TRUE(FolderRemoval::removeOwn(path("base"), {"Zell", "log"}));
    EXPECT_FALSE(QFileInfo::exists(path("base/Zell/log")));
    EXPECT_TRUE(personIsUnharmed());
}

TEST_F(FolderRemovalTest, TouchesNothingThroughALinkOnTheWay)
{
    Files::write(path("person/log/precious"), "mine");
    QDir().mkpath(path("base"));
    ASSERT_TRUE(QFile::link(path("person"), path("base/Zell")));
    EXPECT_FALSE(FolderRemoval::removeOwn(path("base"), {"Zell", "log"}));
    EXPECT_EQ(Files::read(path("person/log/precious")), "mine");
    QDir().mkpath(path("second/Zell"));
    ASSERT_TRUE(QFile::link(path("person"), path("second/Zell/log")));
    EXPECT_FALSE(FolderRemoval::removeOwn(path("second"), {"Zell", "log"}));
    EXPECT_TRUE(personIsUnharmed());
}

TEST_F(FolderRemovalTest, FollowsALinkToTheBase)
{
    Files::write(path("disk/Zell/log/file"), "x");
    ASSERT_TRUE(QFile::link(path("disk"), path("base")));
    EXPECT_TRUE(FolderRemoval::removeOwn(path("base"), {"Zell", "log"}));
    EXPECT_FALSE(QFileInfo::exists(path("disk/Zell/log")));
}

TEST_F(FolderRemovalTest, EntersNoOtherFileSystem)
{
    PrivateMounts::enter();
    const auto disk = PrivateMounts::Mount::memory(path("base/Zell/log/disk"), 1 << 20);
    Files::write(path("base/Zell/log/disk/precious"), "mine");
    Files::write(path("base/Zell/log/file"), "x");
    EXPECT_FALSE(FolderRemoval::removeOwn(path("base"), {"Zell", "log"}));
    EXPECT_EQ(Files::read(path("base/Zell/log/disk/precious")), "mine");
    EXPECT_FALSE(QFileInfo::exists(path("base/Zell/log/file")));
}
