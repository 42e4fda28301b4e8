#include "Device/CameraRollDb.h"

#include "Device/iPod/iPodDevice.h"
#include "support/Files.h"
#include "support/FolderDevice.h"
#include "support/SamplePicture.h"

#include <gtest/gtest.h>

namespace
{
class CameraRoll : public testing::Test
{
protected:
    [[nodiscard]] QString path(const QString& name) const { return _folder.filePath(name); }
    void put(const QString& name, const QByteArray& content = "x") const
    {
        Files::write(path(name), content);
    }
    void putPicture(const QString& name, const QSize& size = {300, 200},
                    const char* format = "jpeg") const
    {
        put(name, SamplePicture::encoded(SamplePicture::draw(1, size), format));
    }
    CameraRollDb& roll()
    {
        device = std::make_unique<FolderDevice>(_folder.path());
        return *device->cameraRollDb();
    }
    [[nodiscard]] QStringList files()
    {
        QStringList result;
        for (const Photo* photo : roll().photos())
            result.append(photo->fullSizeFile);
        return result;
    }
    /// The preview of the only photo.
    QImage preview()
    {
        CameraRollDb& db = roll();
        db.previews().wait();
        EXPECT_EQ(db.photos().size(), 1U);
        return db.photos().empty() ? QImage() : db.photos()[0]->smallImage();
    }

    std::unique_ptr<FolderDevice> device;

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(CameraRoll, ListsPicturesAndVideosOfEachFolder)
{
    put("DCIM/100APPLE/IMG_0001.JPG");
    put("DCIM/100APPLE/IMG_0002.png");
    put("DCIM/101APPLE/IMG_0003.MOV");
    EXPECT_EQ(files(), QStringList({"/DCIM/100APPLE/IMG_0001.JPG", "/DCIM/100APPLE/IMG_0002.png",
                                    "/DCIM/101APPLE/IMG_0003.MOV"}));
    const Photo& photo = *device->cameraRollDb()->photos()[0];
    EXPECT_EQ(photo.photoId, 0);
    EXPECT_TRUE(photo.title.isNull());
    EXPECT_EQ(photo.album, nullptr);
    EXPECT_TRUE(photo.thumbnails.empty());
}

TEST_F(CameraRoll, KeepsTheOrderInWhichTheDeviceLists)
{
    put("DCIM/100APPLE/IMG_0001.JPG");
    put("DCIM/100APPLE/IMG_0002.JPG");
    put("DCIM/101APPLE/IMG_0003.JPG");
    device = std::make_unique<FolderDevice>(path(""));
    device->order = QDir::Name | QDir::Reversed;
    QStringList listed;
    for (const Photo* photo : device->cameraRollDb()->photos())
        listed.append(photo->fullSizeFile);
    EXPECT_EQ(listed, QStringList({"/DCIM/101APPLE/IMG_0003.JPG", "/DCIM/100APPLE/IMG_0002.JPG",
                                   "/DCIM/100APPLE/IMG_0001.JPG"}));
}

TEST_F(CameraRoll, LeavesOutEverythingElse)
{
    put("DCIM/IMG_0000.JPG");
    put("DCIM/100APPLE/IMG_0002.JPEG");
    put("DCIM/100APPLE/IMG_0002.AAE");
    put("DCIM/100APPLE/IMG_0002");
    put("DCIM/100APPLE/.JPG");
    put("DCIM/100APPLE/deeper/IMG_0004.JPG");
    EXPECT_EQ(files(), QStringList());
}

TEST_F(CameraRoll, LeavesOutTheMiscFolderInAnyCase)
{
    for (const char* folder : {".misc", ".MISC", ".Misc", "MISC"})
        put(QString("DCIM/%1/IMG_0001.JPG").arg(folder));
    EXPECT_EQ(files(), QStringList("/DCIM/MISC/IMG_0001.JPG"));
}

TEST_F(CameraRoll, IsEmptyWithoutItsFolder)
{
    CameraRollDb& db = roll();
    EXPECT_TRUE(db.photos().empty());
    EXPECT_TRUE(db.previews().finished());
}

TEST_F(CameraRoll, IsThereOnPhonesOnly)
{
    put("DCIM/100APPLE/IMG_0001.JPG");
    iPodDevice player(path(""));
    EXPECT_EQ(player.cameraRollDb(), nullptr);
}

TEST_F(CameraRoll, FitsPreviewsIntoABoxOf100)
{
    putPicture("DCIM/100APPLE/IMG_0001.JPG", {3000, 2000});
    EXPECT_EQ(preview().size(), QSize(100, 67)); // 66.67, in whole pixels
}

TEST_F(CameraRoll, HasPreviewsOfPngFiles)
{
    putPicture("DCIM/100APPLE/IMG_0001.PNG", {320, 480}, "png");
    EXPECT_EQ(preview().size(), QSize(67, 100));
}

TEST_F(CameraRoll, HasNoPreviewOfWhatIsNoPicture)
{
    put("DCIM/100APPLE/IMG_0001.JPG", "not a picture");
    EXPECT_TRUE(preview().isNull());
}

TEST_F(CameraRoll, ShowsAVideoByTheStillBesideIt)
{
    put("DCIM/100APPLE/IMG_0001.MOV");
    putPicture("DCIM/100APPLE/.MISC/IMG_0001.JPG", {200, 100});
    putPicture("PhotoData/100APPLE/IMG_0001.JPG", {100, 200});
    EXPECT_EQ(preview().size(), QSize(100, 50));
}

TEST_F(CameraRoll, ShowsAVideoByTheStillAmongThePhotoData)
{
    put("DCIM/100APPLE/IMG_0001.mov");
    putPicture("PhotoData/100APPLE/IMG_0001.JPG", {100, 200});
    putPicture("PhotoData/101APPLE/IMG_0001.JPG", {200, 100});
    EXPECT_EQ(preview().size(), QSize(50, 100));
}

TEST_F(CameraRoll, KeepsThePlaceholderOfAVideoWithoutAStill)
{
    put("DCIM/100APPLE/IMG_0001.MOV");
    EXPECT_EQ(preview(), Photo::placeHolder());
}

TEST_F(CameraRoll, KeepsThePlaceholderOfAPictureThatIsGone)
{
    putPicture("DCIM/100APPLE/IMG_0001.JPG");
    device = std::make_unique<FolderDevice>(path(""));
    device->hideFiles = true;
    CameraRollDb& db = *device->cameraRollDb();
    db.previews().wait();
    ASSERT_EQ(db.photos().size(), 1U);
    EXPECT_EQ(db.photos()[0]->smallImage(), Photo::placeHolder());
    EXPECT_EQ(db.previews().done(), 1U);
}
