#include "Device/PhotoDb.h"

#include "Base/Utility.h"
#include "Device/iPod/iPodDevice.h"
#include "support/Files.h"
#include "support/MemoryDevice.h"
#include "support/PhotoDatabaseWriter.h"
#include "support/PhotosSqliteWriter.h"
#include "support/RecordingDelegate.h"
#include "support/SamplePhotos.h"

#include <gtest/gtest.h>

#include <semaphore>

namespace
{
class PhotoLibrary : public testing::Test
{
protected:
    [[nodiscard]] QString path(const QString& name) const { return _folder.filePath(name); }

private:
    QTemporaryDir _folder;
};

/// A device whose previews wait until they may go on.
class SlowDevice final : public Device
{
public:
    explicit SlowDevice(QByteArray database)
        : _database(std::move(database))
    {
        _prefix = QStringLiteral("/");
    }
    ~SlowDevice() override { releaseReaders(); }

    Expected<FileInfo> info(const QString& path) override
    {
        if (!path.endsWith(u"Photo Database"))
            return Device::info(path);
        return FileInfo{FileInfo::Kind::File, _database.size()};
    }
    Expected<QByteArray> readFile(const QString&) override { return _database; }
    Expected<QByteArray> readPart(const QString& path, quint64 offset, quint64 length) override
    {
        ++reads;
        begun.release();
        goOn.acquire();
        return Device::readPart(path, offset, length);
    }

    std::counting_semaphore<> begun{0};
    std::counting_semaphore<> goOn{0};
    std::atomic<int> reads = 0;

private:
    QByteArray _database;
};

QByteArray databaseOf(int count)
{
    TestPhotoLibrary library;
    library.kinds = {1023};
    for (int i = 1; i <= count; ++i) {
        TestPhoto photo;
        photo.id = quint32(i);
        photo.thumbnails = {{1023, ":F.ithmb", 0, 16, 0, 0, 2, 4}};
        library.photos.push_back(photo);
    }
    return PhotoDatabaseWriter::write(library);
}
} // namespace

TEST_F(PhotoLibrary, IsReadFromThePhotoDatabaseWhereADeviceHasBoth)
{
    Files::write(path("Photos/Photo Database"), PhotoDatabaseWriter::write({}));
    ASSERT_TRUE(QDir().mkpath(path("PhotoData")));
    ASSERT_EQ(PhotosSqliteWriter::write(path("PhotoData/Photos.sqlite"), {}), "");
    iPodDevice device(path(""));
    EXPECT_EQ(device.photoDb()->format(), "Photo Database");
    ASSERT_TRUE(QFile::remove(path("Photos/Photo Database")));
    iPodDevice phone(path(""));
    EXPECT_EQ(phone.photoDb()->format(), "Photos.sqlite");
    ASSERT_TRUE(QFile::remove(path("PhotoData/Photos.sqlite")));
    iPodDevice nothing(path(""));
    EXPECT_EQ(nothing.photoDb(), nullptr);
}

TEST_F(PhotoLibrary, IsLookedForAgainUntilThereIsOne)
{
    iPodDevice device(path(""));
    EXPECT_EQ(device.photoDb(), nullptr);
    Files::write(path("Photos/Photo Database"), PhotoDatabaseWriter::write({}));
    PhotoDb* db = device.photoDb();
    ASSERT_NE(db, nullptr);
    EXPECT_EQ(device.photoDb(), db);
}

TEST_F(PhotoLibrary, LeavesACopyForDiagnosis)
{
    Files::write(path("Photos/Photo Database"), "whatever");
    iPodDevice device(path(""));
    (void)device.photoDb();
    EXPECT_EQ(Files::read(Utility::logFolder() + "/Photo Database"), "whatever");
}

TEST_F(PhotoLibrary, KnowsThirteenKindsOfRendition)
{
    EXPECT_EQ(PhotoDb::smallCorrelations().size(), 6U);
    EXPECT_EQ(PhotoDb::largeCorrelations().size(), 7U);
    for (const int kind : {1023, 1024, 1064, 3009, 3141, 4040})
        EXPECT_TRUE(PhotoDb::smallCorrelations().contains(kind));
    for (const int kind : {1019, 1067, 1081, 3008, 4005, 4006, 4035})
        EXPECT_TRUE(PhotoDb::largeCorrelations().contains(kind));
}

TEST(PhotoPreviews, EndAtOnceWithTheirDevice)
{
    auto device = std::make_unique<SlowDevice>(databaseOf(1000));
    ASSERT_EQ(device->photoDb()->photos().size(), 1000U);
    device->begun.acquire();
    device->stopPreviews();
    device->goOn.release();
    device->photoDb()->previews().wait();
    EXPECT_EQ(device->reads, 1);
    EXPECT_TRUE(device->photoDb()->previews().finished());
    device.reset();
}

TEST(PhotoPreviews, EndWhenTheVolumeIsUnmounted)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir("iPod_Control"));
    ASSERT_EQ(SamplePhotos::write(folder.path()), "");
    RecordingDelegate delegate;
    iPodDevice::handleMountNotification(folder.path());
    const std::shared_ptr<Device> device = delegate.last;
    ASSERT_NE(device, nullptr);
    PreviewPass& previews = device->photoDb()->previews();
    iPodDevice::handleUnmountNotification(folder.path());
    previews.wait();
    EXPECT_TRUE(previews.finished());
}

TEST(PhotoPreviews, OfAReaderThatIsDroppedAtOnceDoNoHarm)
{
    for (int round = 0; round < 50; ++round) {
        MemoryDevice device;
        device.put("/Volumes/P/Photos/Photo Database", databaseOf(200));
        device.put("/Volumes/P/Photos/F.ithmb", Files::content(16));
        (void)device.photoDb()->photos();
    }
}
