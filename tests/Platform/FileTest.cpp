#include "Platform/File.h"

#include "support/Files.h"
#include "support/PrivateMounts.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <vector>

namespace
{
class FileTest : public testing::Test
{
protected:
    QString path(const char* name) const { return _folder.filePath(QString::fromUtf8(name)); }

    static std::vector<std::byte> bytes(const QByteArray& content)
    {
        const auto view = std::as_bytes(std::span(content.constData(), size_t(content.size())));
        return {view.begin(), view.end()};
    }

    QTemporaryDir _folder;
};
} // namespace

TEST_F(FileTest, OpensNothingThatCouldBlock)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    EXPECT_FALSE(File(path("pipe"), File::Mode::Read).isOpen());
    EXPECT_FALSE(File(path("pipe"), File::Mode::Create).isOpen());
    EXPECT_FALSE(File("/dev/zero", File::Mode::Read).isOpen());
    const File folder(path("."), File::Mode::Read);
    EXPECT_FALSE(folder.isOpen());
    EXPECT_EQ(folder.error(), "Is a directory");
}

TEST_F(FileTest, SaysInTheSystemsWordsWhyItCannotOpen)
{
    EXPECT_EQ(File(path("none"), File::Mode::Read).error(), "No such file or directory");
    EXPECT_EQ(File(path("no/folder"), File::Mode::Create).error(), "No such file or directory");
    EXPECT_EQ(File(path(".") + "/" + QString(300, u'n'), File::Mode::Create).error(),
              "File name too long");
}

TEST_F(FileTest, RefusesANameWithAZero)
{
    const QString name = path("so") + QChar(QChar::Null) + ".mp3";
    EXPECT_FALSE(File(name, File::Mode::Create).isOpen());
    EXPECT_FALSE(QFileInfo::exists(path("so")));
}

TEST_F(FileTest, ReadsAllAndRanges)
{
    const QByteArray content = Files::content(300000);
    Files::write(path("a"), content);
    File file(path("a"), File::Mode::Read);
    EXPECT_EQ(file.size(), 300000);
    EXPECT_EQ(file.readAll(), content);
    EXPECT_EQ(file.readRange(1000, 5), content.sliced(1000, 5));
    EXPECT_EQ(file.readRange(299999, 100), content.last(1));
    EXPECT_TRUE(file.readRange(300000, 100).isEmpty());
    EXPECT_TRUE(file.readRange(4000000000, 100).isEmpty());
}

TEST_F(FileTest, ReadsNoMoreThanTheFileReports)
{
    File file("/proc/self/status", File::Mode::Read); // reports nothing, and holds much
    EXPECT_EQ(file.size(), 0);
    EXPECT_TRUE(file.readAll().isEmpty());
}

TEST_F(FileTest, RefusesToReadMoreThanTheMemoryHolds)
{
    QFile holes(path("holes"));
    ASSERT_TRUE(holes.open(QIODevice::WriteOnly));
    ASSERT_TRUE(holes.resize(qint64(1) << 42));
    File file(path("holes"), File::Mode::Read);
    EXPECT_TRUE(file.readAll().isNull());
    EXPECT_EQ(file.error(), "Cannot allocate memory");
    EXPECT_EQ(file.readRange(qint64(1) << 41, 10), QByteArray(10, '\0'));
}

TEST_F(FileTest, MovesBytesWithinAFileSystem)
{
    const QByteArray content = Files::content(300000);
    Files::write(path("a"), content);
    File source(path("a"), File::Mode::Read);
    File destination(path("b"), File::Mode::Create);
    EXPECT_EQ(destination.append(source, 1000), 1000);
    EXPECT_EQ(destination.append(source, 1000000), 299000);
    EXPECT_EQ(destination.append(source, 1000), 0);
    EXPECT_TRUE(destination.close());
    EXPECT_EQ(destination.error() + source.error(), "");
    EXPECT_EQ(Files::read(path("b")), content);
}

TEST_F(FileTest, MovesBytesAcrossFileSystems)
{
    PrivateMounts::enter();
    const auto memory = PrivateMounts::Mount::memory(path("memory"), 1 << 20);
    const QByteArray content = Files::content(300000);
    Files::write(path("a"), content);
    File source(path("a"), File::Mode::Read);
    File destination(path("memory/b"), File::Mode::Create);
    EXPECT_EQ(destination.append(source, 400000), 300000);
    EXPECT_TRUE(destination.close());
    EXPECT_EQ(Files::read(path("memory/b")), content);
}

TEST_F(FileTest, TellsOfAFullFileSystem)
{
    PrivateMounts::enter();
    const auto memory = PrivateMounts::Mount::memory(path("memory"), 1 << 16);
    Files::write(path("a"), Files::content(300000));
    File source(path("a"), File::Mode::Read);
    File destination(path("memory/b"), File::Mode::Create);
    EXPECT_LT(destination.append(source, 300000), 300000);
    EXPECT_EQ(destination.error(), "No space left on device");
    EXPECT_EQ(source.error(), "");
}

TEST_F(FileTest, ReplacesWhatIsThere)
{
    Files::write(path("a"), "a long old content");
    {
        File file(path("a"), File::Mode::Create);
        EXPECT_TRUE(file.write(bytes("new")));
    }
    EXPECT_EQ(Files::read(path("a")), "new");
}

TEST_F(FileTest, MakesANewFileOnlyWhereNothingIs)
{
    Files::write(path("a"), "old");
    QFile::link(path("nowhere"), path("link"));
    for (const char* name : {"a", "link", "."}) {
        const File file(path(name), File::Mode::CreateNew);
        EXPECT_FALSE(file.isOpen()) << name;
        EXPECT_TRUE(file.wasTaken()) << name;
    }
    EXPECT_TRUE(File(path("new"), File::Mode::CreateNew).isOpen());
    EXPECT_EQ(Files::read(path("a")), "old");
    EXPECT_FALSE(QFileInfo::exists(path("nowhere")));
}

TEST_F(FileTest, ReplacesALinkAndNotWhatItLeadsTo)
{
    Files::write(path("a"), "precious");
    ASSERT_TRUE(QFile::link(path("a"), path("link")));
    ASSERT_TRUE(QFile::link(path("nowhere"), path("broken")));
    for (const char* name : {"link", "broken"}) {
        File file(path(name), File::Mode::Create);
        EXPECT_TRUE(file.write(bytes("new")));
        EXPECT_TRUE(file.close());
        EXPECT_FALSE(QFileInfo(path(name)).isSymLink());
        EXPECT_EQ(Files::read(path(name)), "new");
    }
    EXPECT_EQ(Files::read(path("a")), "precious");
    EXPECT_FALSE(QFileInfo::exists(path("nowhere")));
}

TEST_F(FileTest, DoesNotWriteIntoAFileThatSomethingElseHasOpen)
{
    File first(path("a"), File::Mode::Create);
    EXPECT_TRUE(first.write(bytes("first")));
    File second(path("a"), File::Mode::Create);
    EXPECT_TRUE(second.write(bytes("2")));
    EXPECT_TRUE(first.write(bytes(" goes on")));
    EXPECT_EQ(Files::read(path("a")), "2");
}
