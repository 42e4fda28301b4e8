#include "Device/CameraRollDb.h"
#include "Device/PhotoDb.h"
#include "Device/iPod/iPodDevice.h"
#include "Export/ExportJob.h"
#include "support/ExportFixture.h"
#include "support/FolderDevice.h"
#include "support/IthmbWriter.h"
#include "support/PhotoDatabaseWriter.h"
#include "support/PrivateMounts.h"
#include "support/SamplePicture.h"
#include "support/SickVolume.h"

namespace
{
class PhotoJob : public ExportFixture
{
protected:
    PhotoJob() { library.kinds = {1023, 3008}; }

    void put(const QString& name, const QByteArray& content) const
    {
        Files::write(path("player/" + name), content);
    }

    TestPhoto& add(quint32 id)
    {
        library.photos.push_back({id, {}, {}});
        return library.photos.back();
    }
    TestPhoto& addFullSize(quint32 id, const QString& name, const QByteArray& content)
    {
        put("Photos/" + name, content);
        TestPhoto& photo = add(id);
        photo.fullSizeFile = ":" + name;
        return photo;
    }
    /// A large rendition of 4 x 2 pixels, all alike.
    static TestThumbnail rendition(quint32 kind, const char* file, int offset = 0)
    {
        return {kind, QString::fromLatin1(file), quint32(offset), 16, 0, 0, 2, 4};
    }

    void connect()
    {
        put("Photos/Photo Database", PhotoDatabaseWriter::write(library));
        put("iPod_Control/Device/SysInfo", "");
        device = std::make_shared<iPodDevice>(path("player"));
        (void)device->photoDb()->photos();
        host.chunks.clear();
    }
    void exportPhotos()
    {
        connect();
        exportPhotos(device->photoDb()->photos());
    }
    void exportPhotos(const std::vector<Photo*>& photos)
    {
        ExportJob(device, config, host, report, host.toStop).exportPhotos(photos);
    }
    void exportCameraRoll()
    {
        device = std::make_shared<FolderDevice>(path("player"));
        exportPhotos(device->cameraRollDb()->photos());
    }

    TestPhotoLibrary library;
    std::shared_ptr<Device> device;
};

class PhotoPath : public testing::Test
{
protected:
    using Source = ExportPath::PhotoSource;

    PhotoPath()
    {
        config.setFolderPath(Section::Photos, _folder.filePath("P"));
        config.setFolderPath(Section::CameraRoll, _folder.filePath("C"));
    }
    /// Below the temporary folder; "refused" when it is.
    QString destination(Source source = Source::FullSize)
    {
        const ExportPath result = ExportPath::photoPath(photo, source, config);
        if (!result.refusal.isEmpty())
            return "refused";
        return result.path.sliced(_folder.path().size() + 1);
    }

    Config config;
    Photo photo;
    Album trip = Album::albumWithName("Trip");

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(PhotoPath, IsTheNumberInTheFolderOfTheAlbum)
{
    photo.photoId = 57;
    photo.album = &trip;
    EXPECT_EQ(destination(Source::Rendition), "P/Trip/57.jpg");
    photo.photoId = -3;
    EXPECT_EQ(destination(Source::Rendition), "P/Trip/-3.jpg");
}

TEST_F(PhotoPath, HasTheExtensionOfTheFullSizeFile)
{
    photo.photoId = 57;
    photo.album = &trip;
    photo.fullSizeFile = "/Full/A.TIF";
    EXPECT_EQ(destination(), "P/Trip/57.TIF");
    EXPECT_EQ(destination(Source::Rendition), "P/Trip/57.jpg");
    photo.fullSizeFile = "/Full/A";
    EXPECT_EQ(destination(), "P/Trip/57.");
}

TEST_F(PhotoPath, IsInThePhotosFolderWithoutANamedAlbum)
{
    photo.photoId = 57;
    EXPECT_EQ(destination(Source::Rendition), "P/57.jpg");
    Album unnamed;
    photo.album = &unnamed;
    EXPECT_EQ(destination(Source::Rendition), "P/57.jpg");
    Album empty = Album::albumWithName("");
    photo.album = &empty;
    EXPECT_EQ(destination(Source::Rendition), "P/57.jpg");
}

TEST_F(PhotoPath, KeepsTheNameOfACameraRollPhoto)
{
    photo.fullSizeFile = "/DCIM/100APPLE/IMG_0001.JPG";
    EXPECT_EQ(destination(), "C/IMG_0001.JPG");
}

TEST_F(PhotoPath, NeverLeadsOutOfItsFolder)
{
    photo.photoId = 57;
    Album climbing = Album::albumWithName("../../x");
    photo.album = &climbing;
    EXPECT_EQ(destination(), "refused");
    photo.photoId = 0;
    photo.fullSizeFile = "/DCIM/..";
    EXPECT_EQ(destination(), "refused");
    photo.fullSizeFile = QString();
    EXPECT_EQ(destination(), "refused");
}

TEST_F(PhotoJob, CopiesFullSizeFiles)
{
    addFullSize(57, "A.tif", "the first");
    addFullSize(58, "B.jpg", "the second");
    library.albums = {{"Trip", {57, 58}}, {"Town", {58}}};
    exportPhotos();
    EXPECT_EQ(Files::read(out("Photos/Trip/57.tif")), "the first");
    EXPECT_EQ(Files::read(out("Photos/Town/58.jpg")), "the second");
    EXPECT_EQ(host.told,
              QStringList({"begin 2", "Export 57... at 0", "Export 58... at 1", "finished!"}));
    EXPECT_EQ(host.exportModeQuestions, 0);
    EXPECT_EQ(host.chunks, (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(results(), QStringList({"copied", "copied"}));
    EXPECT_EQ(item(0).kind, ExportItem::Kind::Photo);
    EXPECT_EQ(item(0).from, path("player/Photos/A.tif"));
    EXPECT_EQ(item(0).to, out("Photos/Trip/57.tif"));
    EXPECT_EQ(item(0).bytes, 9);
    EXPECT_TRUE(item(0).title.isNull());
}

TEST_F(PhotoJob, DoesNothingForNoPhotos)
{
    connect();
    exportPhotos(std::vector<Photo*>());
    EXPECT_TRUE(host.told.isEmpty());
}

TEST_F(PhotoJob, WritesTheLargeRenditionWithoutAFullSizeFile)
{
    put("Photos/Thumbs/F3008.ithmb",
        IthmbWriter::rendition(3008, SamplePicture::draw(1, {640, 480})));
    add(57).thumbnails = {rendition(1023, ":none.ithmb"),
                          {3008, ":Thumbs:F3008.ithmb", 0, 614400, 0, 0, 480, 640}};
    exportPhotos();
    ASSERT_EQ(results(), QStringList("copied"));
    const QImage image(out("Photos/57.jpg"));
    EXPECT_EQ(image.size(), QSize(640, 480));
    const QImage drawn = SamplePicture::draw(1, {640, 480});
    for (const QPoint& point : {QPoint(20, 20), QPoint(320, 100), QPoint(100, 470)})
        EXPECT_NEAR(qGreen(image.pixel(point)), qGreen(drawn.pixel(point)), 12);
    EXPECT_TRUE(Files::read(out("Photos/57.jpg")).startsWith("\xff\xd8"));
    EXPECT_EQ(item(0).from, path("player/Photos/Thumbs/F3008.ithmb"));
    EXPECT_EQ(item(0).bytes, QFileInfo(out("Photos/57.jpg")).size());
}

TEST_F(PhotoJob, WritesTheLastLargeRenditionThatDecodes)
{
    put("Photos/F.ithmb", QByteArray(16, '\0') + QByteArray(16, '\xff'));
    add(57).thumbnails = {rendition(3008, ":F.ithmb", 0), rendition(3008, ":F.ithmb", 16),
                          rendition(3008, ":F.ithmb", 999), rendition(1019, ":F.ithmb", 0)};
    exportPhotos();
    EXPECT_EQ(results(), QStringList("copied"));
    EXPECT_EQ(QImage(out("Photos/57.jpg")).pixel(1, 1), qRgb(255, 255, 255));
}

TEST_F(PhotoJob, UsesARenditionWhenTheFullSizeFileIsGone)
{
    put("Photos/F.ithmb", QByteArray(16, '\xff'));
    TestPhoto& photo = add(57);
    photo.fullSizeFile = ":gone.tif";
    photo.thumbnails = {rendition(3008, ":F.ithmb")};
    exportPhotos();
    EXPECT_EQ(results(), QStringList("copied"));
    EXPECT_FALSE(QImage(out("Photos/57.jpg"), "jpeg").isNull());
    EXPECT_EQ(item(0).to, out("Photos/57.jpg")) << "a name that says what it is";
    EXPECT_EQ(item(0).why, "Only a screen copy of 4 x 2 is on the device");
    EXPECT_EQ(QDir(out("Photos")).entryList(QDir::Files), QStringList("57.jpg"));
}

TEST_F(PhotoJob, WritesNoFileForAPhotoWithNeither)
{
    add(57).thumbnails = {rendition(1023, ":F.ithmb"), rendition(3008, ":gone.ithmb")};
    add(58);
    add(59).fullSizeFile = ":gone.jpg";
    exportPhotos();
    EXPECT_EQ(results(), QStringList({"missing", "missing", "missing"}));
    EXPECT_EQ(host.told.last(), "finished!");
    EXPECT_TRUE(QDir(out("Photos")).isEmpty());
    EXPECT_FALSE(item(0).why.isEmpty());
}

TEST_F(PhotoJob, WritesNoFileForARenditionThatIsNotTheLargeKind)
{
    put("Photos/F.ithmb", QByteArray(16, '\xff'));
    library.kinds = {1023, 7777};
    add(57).thumbnails = {rendition(7777, ":F.ithmb"), rendition(3008, ":F.ithmb"),
                          rendition(0, ":F.ithmb")};
    exportPhotos(); // the library names no large kind
    library.kinds = {1019, 3008, 7777, 1067};
    exportPhotos(); // the last of several counts, and the photo has none of that
    EXPECT_EQ(results(), QStringList({"missing", "missing"}));
    EXPECT_TRUE(QDir(out("Photos")).isEmpty());
}

TEST_F(PhotoJob, NeverCopiesTheFolderOfAPhotoThatNamesNoFile)
{
    add(57).fullSizeFile = "";
    add(58).fullSizeFile = ":";
    put("Photos/Full/A.jpg", "x");
    add(59).fullSizeFile = ":Full";
    exportPhotos();
    EXPECT_EQ(results(), QStringList({"missing", "missing", "missing"}));
    EXPECT_TRUE(QDir(out("Photos")).isEmpty());
}

TEST_F(PhotoJob, CopiesTheCameraRollUnderItsOwnNames)
{
    put("DCIM/100APPLE/IMG_0001.JPG", "one");
    put("DCIM/101APPLE/IMG_0001.JPG", "another");
    put("DCIM/101APPLE/IMG_0002.MOV", "video");
    exportCameraRoll();
    EXPECT_EQ(results(), QStringList({"copied", "copied", "copied"}));
    EXPECT_EQ(Files::read(out("Camera Roll/IMG_0001.JPG")), "one");
    EXPECT_EQ(Files::read(out("Camera Roll/IMG_00011.JPG")), "another");
    EXPECT_EQ(Files::read(out("Camera Roll/IMG_0002.MOV")), "video");
    EXPECT_EQ(host.told.at(1), "Export IMG_0001.JPG... at 0");
}

TEST_F(PhotoJob, ReportsACameraRollPhotoWithoutAFile)
{
    device = std::make_shared<FolderDevice>(path("player"));
    Photo nothing;
    Photo gone;
    gone.fullSizeFile = "/DCIM/100APPLE/IMG_0009.JPG";
    exportPhotos({&nothing, &gone});
    EXPECT_EQ(results(), QStringList({"missing", "missing"}));
    EXPECT_TRUE(QDir(out("Camera Roll")).isEmpty());
}

TEST_F(PhotoJob, SkipsNumbersOrOverwritesAsTheRuleSays)
{
    addFullSize(57, "A.jpg", "new");
    for (const int rule : {SkipRule, KeepBothRule, OverwriteRule}) {
        Files::write(out("Photos/57.jpg"), "old");
        config.setCopyRule(rule);
        exportPhotos();
        EXPECT_EQ(Files::read(out("Photos/57.jpg")), rule == OverwriteRule ? "new" : "old");
    }
    EXPECT_EQ(results(), QStringList({"skipped", "copied", "copied"}));
    EXPECT_EQ(Files::read(out("Photos/571.jpg")), "new");
}

TEST_F(PhotoJob, CountsASkippedPhotoInTheProgress)
{
    addFullSize(57, "A.jpg", "new");
    addFullSize(58, "B.jpg", "new");
    Files::write(out("Photos/57.jpg"), "old");
    config.setCopyRule(SkipRule);
    exportPhotos();
    EXPECT_EQ(host.told.at(2), "Export 58... at 1");
    EXPECT_EQ(results(), QStringList({"skipped", "copied"}));
}

TEST_F(PhotoJob, EndsWhenTheClashQuestionIsGivenUp)
{
    addFullSize(57, "A.jpg", "new");
    add(58);
    Files::write(out("Photos/57.jpg"), "old");
    config.setCopyRule(AskRule);
    host.clashAnswer = std::nullopt;
    exportPhotos();
    EXPECT_EQ(host.told.last(), "canceled!");
    EXPECT_EQ(results(), QStringList({"stopped", "stopped"}));
}

TEST_F(PhotoJob, StopsAtAChunkAndBeforeTheNextPhoto)
{
    addFullSize(57, "A.jpg", Files::content(3 * 1024 * 1024));
    addFullSize(58, "B.jpg", "b");
    host.stopAtChunk = 2;
    exportPhotos();
    EXPECT_EQ(results(), QStringList({"stopped", "stopped"}));
    EXPECT_EQ(host.told.last(), "canceled!");
    EXPECT_EQ(QFileInfo(out("Photos/57.jpg")).size(), 1024 * 1024);
    EXPECT_FALSE(QFileInfo::exists(out("Photos/58.jpg")));
}

TEST_F(PhotoJob, SaysWhyARenditionCouldNotBeWritten)
{
    put("Photos/F.ithmb", QByteArray(16, '\xff'));
    add(57).thumbnails = {rendition(3008, ":F.ithmb")};
    ASSERT_TRUE(QDir().mkpath(out("Photos/57.jpg"))); // a folder is in the way
    config.setCopyRule(OverwriteRule);
    exportPhotos();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_FALSE(item(0).why.isEmpty());
}

TEST_F(PhotoJob, WritesNothingOntoTheDevice)
{
    addFullSize(57, "A.jpg", "new");
    config.setFolderPath(Section::Photos, path("player/Photos/out"));
    exportPhotos();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_FALSE(QFileInfo::exists(path("player/Photos/out")));
}

TEST_F(PhotoJob, SaysThatOnlyAScreenCopyIsThere)
{
    put("Photos/F.ithmb", QByteArray(16, '\xff'));
    addFullSize(56, "A.jpg", "whole");
    add(57).thumbnails = {rendition(3008, ":F.ithmb")};
    exportPhotos();
    EXPECT_EQ(results(), QStringList({"copied", "copied"}));
    EXPECT_TRUE(item(0).why.isNull());
    EXPECT_EQ(item(1).why, "Only a screen copy of 4 x 2 is on the device");
}

TEST_F(PhotoJob, SaysThatAScreenCopyCannotBeRead)
{
    put("Photos/F.ithmb", QByteArray(3, '\xff'));
    add(57).thumbnails = {rendition(3008, ":F.ithmb")};
    exportPhotos();
    EXPECT_EQ(results(), QStringList("failed"));
}

TEST_F(PhotoJob, FollowsNoLinkToAFullSizeFile)
{
    addFullSize(57, "A.jpg", "x").thumbnails = {rendition(3008, ":F.ithmb")};
    put("Photos/F.ithmb", QByteArray(16, '\xff'));
    Files::write(path("private"), "not on the device");
    ASSERT_TRUE(QFile::remove(path("player/Photos/A.jpg")));
    ASSERT_TRUE(QFile::link(path("private"), path("player/Photos/A.jpg")));
    exportPhotos();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_TRUE(item(0).why.contains("is a link"));
}

TEST_F(PhotoJob, PutsNoRenditionInPlaceOfAFileThatNobodyCanLookAt)
{
    PrivateMounts::enter();
    put("Photos/F.ithmb", QByteArray(16, '\xff'));
    addFullSize(57, "A.MOV", "film").thumbnails = {rendition(3008, ":F.ithmb")};
    addFullSize(58, "B.MOV", "film");
    connect();
    SickVolume sick(path("player"), path("mount"));
    sick.failLookUps("Photos/A.MOV", EIO);
    device = std::make_shared<iPodDevice>(path("mount"));
    exportPhotos(device->photoDb()->photos());
    EXPECT_EQ(results(), QStringList({"failed", "copied"}));
    EXPECT_TRUE(item(0).why.contains("Input/output error"));
    EXPECT_EQ(QDir(out("Photos")).entryList(QDir::Files), QStringList("58.MOV"));
}

TEST_F(PhotoJob, EndsWhenTheDeviceHasGone)
{
    PrivateMounts::enter();
    addFullSize(57, "A.jpg", "a");
    addFullSize(58, "B.jpg", "b");
    add(59);
    connect();
    const auto mount = PrivateMounts::Mount::bind(path("player"), path("mount"));
    device = std::make_shared<iPodDevice>(path("mount"));
    const std::vector<Photo*> photos = device->photoDb()->photos();
    host.onItem = [&](int index) {
        if (index == 1)
            mount->unmount();
    };
    exportPhotos(photos);
    EXPECT_EQ(results(), QStringList({"copied", "failed", "failed"}));
    EXPECT_EQ(item(1).why, "The device was disconnected");
    EXPECT_EQ(item(2).why, "The device was disconnected");
}

TEST_F(PhotoJob, WritesARenditionThroughNoLink)
{
    put("Photos/F.ithmb", QByteArray(16, '\xff'));
    add(57).thumbnails = {rendition(3008, ":F.ithmb")};
    Files::write(path("precious"), "mine");
    QDir().mkpath(out("Photos"));
    ASSERT_TRUE(QFile::link(path("precious"), out("Photos/57.jpg")));
    config.setCopyRule(OverwriteRule);
    exportPhotos();
    EXPECT_EQ(results(), QStringList("copied"));
    EXPECT_EQ(Files::read(path("precious")), "mine");
    EXPECT_FALSE(QFileInfo(out("Photos/57.jpg")).isSymLink());
}
