#include "Device/TemporaryCopy.h"

#include "SqlFixture.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
class TemporaryCopyTest : public SqlFixture
{
protected:
    TemporaryCopyTest() { device.put("/a", "content"); }

    static QString folder()
    {
        return QDir::tempPath() + QString("/zell-transfer-%1").arg(geteuid());
    }
    static int mode(const QString& path)
    {
        struct stat status = {};
        EXPECT_EQ(lstat(QFile::encodeName(path).constData(), &status), 0);
        return status.st_mode & 0777;
    }
};

constexpr auto Alone = TemporaryCopy::SideFiles::Leave;
} // namespace

TEST_F(TemporaryCopyTest, IsPrivateAndGoesAwayWithTheObject)
{
    QString file;
    {
        const TemporaryCopy copy(device, "/a", Alone);
        file = copy.path();
        EXPECT_EQ(Files::read(file), "content");
        EXPECT_EQ(copy.size(), 7);
        EXPECT_EQ(mode(file), 0600);
        EXPECT_EQ(mode(QFileInfo(file).path()), 0700);
        EXPECT_EQ(mode(folder()), 0700);
        EXPECT_TRUE(file.startsWith(folder() + "/"));
        Files::write(file + "-journal", "left by SQLite");
    }
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(file).path()));
}

TEST_F(TemporaryCopyTest, TakesSideFilesAlongWhenAsked)
{
    device.put("/a-wal", "log");
    const TemporaryCopy with(device, "/a", TemporaryCopy::SideFiles::Take);
    EXPECT_EQ(Files::read(with.path() + "-wal"), "log");
    EXPECT_EQ(mode(with.path() + "-wal"), 0600);
    const TemporaryCopy without(device, "/a", Alone);
    EXPECT_FALSE(QFile::exists(without.path() + "-wal"));
}

TEST_F(TemporaryCopyTest, LeavesWhatIsStillReadWhenLeftoversAreRemoved)
{
    const TemporaryCopy copy(device, "/a", Alone);
    Files::write(folder() + "/KILLED/KILLED", "left behind");
    Files::write(folder() + "/KILLED/KILLED-wal", "left behind");
    Files::write(folder() + "/stray", "left behind");
    QFile::link("/", folder() + "/link");
    TemporaryCopy::removeLeftovers();
    EXPECT_EQ(Files::read(copy.path()), "content");
    EXPECT_EQ(QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList(QFileInfo(QFileInfo(copy.path()).path()).fileName()));
    EXPECT_TRUE(QDir("/").exists("etc"));
}

TEST_F(TemporaryCopyTest, RemovesWhatAKilledProgramLeftBehind)
{
    pid_t child = fork();
    if (child == 0) {
        const TemporaryCopy copy(device, "/a", Alone);
        _exit(copy.path().isEmpty() ? 1 : 0); // as if killed: no destructor runs
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(temporaryFiles().size(), 1);
    TemporaryCopy::removeLeftovers();
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(TemporaryCopyTest, GoesElsewhereWhenTheNameInTheTemporaryFolderIsTaken)
{
    QDir(folder()).removeRecursively();
    Files::write(path("elsewhere/file"), "kept");
    ASSERT_TRUE(QFile::link(path("elsewhere"), folder()));
    const TemporaryCopy copy(device, "/a", Alone);
    EXPECT_TRUE(copy.path().startsWith(Utility::applicationSupportFolder()));
    EXPECT_EQ(Files::read(copy.path()), "content");
    TemporaryCopy::removeLeftovers();
    EXPECT_EQ(Files::read(path("elsewhere/file")), "kept");
    QFile::remove(folder());
}

TEST_F(TemporaryCopyTest, HoldsNothingForAFileThatIsMissingOrClaimsToBeEnormous)
{
    const TemporaryCopy missing(device, "/none", Alone);
    EXPECT_FALSE(QFile::exists(missing.path()));

    class Enormous final : public Device
    {
        Expected<FileInfo> info(const QString& /*path*/) override
        {
            return FileInfo{FileInfo::Kind::File, qint64(1) << 50};
        }
        CopyResult copyOut(const QString&, const QString&, std::optional<int>) override
        {
            ADD_FAILURE() << "would fill the disk";
            return {};
        }
    } enormous;
    const TemporaryCopy copy(enormous, "/a", Alone);
    EXPECT_TRUE(copy.path().isEmpty());
}

TEST_F(TemporaryCopyTest, CountsProgressForAReaderAndNotForDiagnosis)
{
    class Recorder final : public Device
    {
    public:
        Expected<FileInfo> info(const QString& path) override
        {
            if (path.endsWith("-shm"))
                return Device::info(path);
            return FileInfo{FileInfo::Kind::File, 1};
        }
        CopyResult copyOut(const QString& from, const QString& to,
                           std::optional<int> progress) override
        {
            copies.append(QString("%1 to %2 %3")
                              .arg(from,
                                   QFileInfo(to).path() == Utility::logFolder() ? "log" : "own",
                                   progress ? QString::number(*progress) : "none"));
            return {};
        }
        QStringList copies;
    } recorder;
    const TemporaryCopy with(recorder, "/a", TemporaryCopy::SideFiles::Take);
    TemporaryCopy::keepForDiagnosis(recorder, "/a", TemporaryCopy::SideFiles::Take);
    const TemporaryCopy without(recorder, "/a", Alone);
    TemporaryCopy::keepForDiagnosis(recorder, "/a", Alone);
    recorder.copies.removeIf([](const QString& copy) { return copy.startsWith("/a-wal"); });
    EXPECT_EQ(recorder.copies,
              QStringList({"/a to own 0", "/a to log none", "/a to own 0", "/a to log none"}));
}
