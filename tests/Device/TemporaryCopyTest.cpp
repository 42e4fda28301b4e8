#include "Device/TemporaryCopy.h"

#include "SqlFixture.h"

#include <QHash>

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

/// A device whose copies end as a test says.
class EndingDevice final : public Device
{
public:
    Expected<FileInfo> info(const QString& path) override
    {
        if (!sizes.contains(path))
            return Device::info(path);
        return FileInfo{FileInfo::Kind::File, sizes[path]};
    }
    CopyResult copyOut(const QString& from, const QString& to, std::optional<int>) override
    {
        copies.append(from);
        for (const auto& [beginning, end] : ends) {
            if (from == beginning || to.startsWith(beginning))
                return {end, "because"};
        }
        Files::write(to, QByteArray(qsizetype(sizes[from]), 'x'));
        return {};
    }
    [[nodiscard]] std::optional<Failure> whyGone() const override { return gone; }

    QHash<QString, qint64> sizes;
    std::vector<std::pair<QString, CopyResult::End>> ends;
    std::optional<Failure> gone;
    QStringList copies;
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

TEST_F(TemporaryCopyTest, TakesTheIndexOfTheLogBeforeTheLog)
{
    EndingDevice full;
    full.sizes = {{"/a", 1}, {"/a-shm", 2}, {"/a-wal", 3}};
    const TemporaryCopy copy(full, "/a", TemporaryCopy::SideFiles::Take);
    EXPECT_EQ(full.copies, QStringList({"/a", "/a-shm", "/a-wal"}));
    EXPECT_TRUE(copy.status());
    EXPECT_TRUE(copy.logStatus());
    EXPECT_EQ(copy.size(), 6);
}

TEST_F(TemporaryCopyTest, GoesElsewhereWhenThereIsNoRoom)
{
    EndingDevice full;
    full.sizes = {{"/a", 7}};
    full.ends = {{QDir::tempPath(), CopyResult::End::Failed}};
    const TemporaryCopy copy(full, "/a", Alone);
    EXPECT_TRUE(copy.path().startsWith(Utility::applicationSupportFolder()));
    EXPECT_TRUE(copy.status());
    EXPECT_EQ(copy.size(), 7);
}

TEST_F(TemporaryCopyTest, SaysWhenThereIsRoomNowhere)
{
    EndingDevice full;
    full.sizes = {{"/a", 7}};
    full.ends = {{"/a", CopyResult::End::Failed}};
    const TemporaryCopy copy(full, "/a", Alone);
    EXPECT_TRUE(copy.status().failedAs(Failure::Kind::Unwritable));
    EXPECT_EQ(copy.status().failure().exact, "because");
    EXPECT_EQ(full.copies.size(), 2);
}

TEST_F(TemporaryCopyTest, SaysWhyItIsNotWhole)
{
    using End = CopyResult::End;
    const std::vector<std::pair<End, Failure::Kind>> cases = {
        {End::Incomplete, Failure::Kind::Unreadable},
        {End::Missing, Failure::Kind::Missing},
        {End::Stopped, Failure::Kind::Stopped}};
    for (const auto& [end, kind] : cases) {
        EndingDevice ending;
        ending.sizes = {{"/a", 7}};
        ending.ends = {{"/a", end}};
        EXPECT_TRUE(TemporaryCopy(ending, "/a", Alone).status().failedAs(kind));
        ending.gone = Failure{Failure::Kind::Lost, "gone", {}};
        EXPECT_TRUE(TemporaryCopy(ending, "/a", Alone).status().failedAs(Failure::Kind::Lost));
    }
}

TEST_F(TemporaryCopyTest, IsNotWholeWithoutALogThatThereIs)
{
    EndingDevice cut;
    cut.sizes = {{"/a", 1}, {"/a-wal", 3}};
    cut.ends = {{"/a-wal", CopyResult::End::Incomplete}};
    const TemporaryCopy copy(cut, "/a", TemporaryCopy::SideFiles::Take);
    EXPECT_TRUE(copy.status());
    EXPECT_TRUE(copy.logStatus().failedAs(Failure::Kind::Unreadable));
}

TEST_F(TemporaryCopyTest, NoticesThatItIsShorterThanItShouldBe)
{
    class Short final : public Device
    {
        Expected<FileInfo> info(const QString& path) override
        {
            return path == "/a" ? Expected<FileInfo>(FileInfo{FileInfo::Kind::File, 100})
                                : Device::info(path);
        }
        CopyResult copyOut(const QString&, const QString& to, std::optional<int>) override
        {
            Files::write(to, "short");
            return {};
        }
    } shortDevice;
    EXPECT_TRUE(
        TemporaryCopy(shortDevice, "/a", Alone).status().failedAs(Failure::Kind::Unreadable));
}

TEST_F(TemporaryCopyTest, IsMadeOfFilesOnly)
{
    for (const FileInfo::Kind kind :
         {FileInfo::Kind::Folder, FileInfo::Kind::Link, FileInfo::Kind::Other}) {
        class Odd final : public Device
        {
        public:
            explicit Odd(FileInfo::Kind kind)
                : _kind(kind)
            {
            }
            Expected<FileInfo> info(const QString&) override { return FileInfo{_kind, 3}; }
            CopyResult copyOut(const QString&, const QString&, std::optional<int>) override
            {
                ADD_FAILURE() << "would follow or copy what is no file";
                return {};
            }

        private:
            FileInfo::Kind _kind;
        } odd(kind);
        EXPECT_TRUE(TemporaryCopy(odd, "/a", Alone).status().failedAs(Failure::Kind::Unreadable));
        TemporaryCopy::keepForDiagnosis(odd, "/a", Alone);
    }
}

TEST_F(TemporaryCopyTest, OfADiagnosisIsForThisUserAlone)
{
    const QString log = Utility::logFolder();
    QFile::setPermissions(log, QFile::Permissions(0x7755));
    device.put("/a-wal", "log");
    TemporaryCopy::keepForDiagnosis(device, "/a", TemporaryCopy::SideFiles::Take);
    EXPECT_EQ(mode(log), 0700);
    EXPECT_EQ(mode(log + "/a"), 0600);
    EXPECT_EQ(mode(log + "/a-wal"), 0600);
}

TEST_F(TemporaryCopyTest, OfADiagnosisHasNoLogOfAnotherDevice)
{
    const QString log = Utility::logFolder();
    Files::write(log + "/a-wal", "of another device");
    Files::write(log + "/a-shm", "of another device");
    TemporaryCopy::keepForDiagnosis(device, "/a", TemporaryCopy::SideFiles::Take);
    EXPECT_EQ(Files::read(log + "/a"), "content");
    EXPECT_FALSE(QFile::exists(log + "/a-wal"));
    EXPECT_FALSE(QFile::exists(log + "/a-shm"));
}

TEST_F(TemporaryCopyTest, OfADiagnosisIsNotWrittenThroughALink)
{
    Files::write(path("precious"), "kept");
    const QString log = Utility::logFolder();
    QFile::remove(log + "/a");
    ASSERT_TRUE(QFile::link(path("precious"), log + "/a"));
    TemporaryCopy::keepForDiagnosis(device, "/a", Alone);
    EXPECT_EQ(Files::read(path("precious")), "kept");
    EXPECT_EQ(Files::read(log + "/a"), "content");
}
