// The photos of a phone, through the real libraries for phones and the real console program.

#include "support/ConsoleRun.h"
#include "support/PrivateMounts.h"
#include "support/SamplePhone.h"
#include "support/SamplePicture.h"
#include "support/SamplePlayer.h"
#include "support/SoundFile.h"
#include "support/phone/PhoneFixture.h"

#include <QImage>

#include <gtest/gtest.h>

namespace
{
class PhonePhotos : private PrivateMounts::Place, public PhoneFixture
{
protected:
    PhonePhotos()
    {
        EXPECT_EQ(SamplePhone::writePhotos(path("phone")), "");
        phone = newPhone("phone-1");
        usb.attach(phone);
    }

    /// Exports and gives the exit code; the files stand below `out`.
    int exportPhotos(const QString& what)
    {
        const ConsoleRun run({"export", what, "--device", "phone-1", "--to", path("out"),
                              "--report", path("report"), "--quiet"});
        return run.exitCode;
    }
    QByteArray exported(const QString& file) { return Files::read(path("out/" + file)); }

    std::shared_ptr<SimulatedPhone> phone;
};

bool isVideo(const SamplePhone::Shot& shot)
{
    return QString(shot.file).endsWith(".MOV");
}

/// How much the pixels of two pictures of one size differ, on average.
double difference(const QImage& one, const QImage& other)
{
    if (one.isNull() || one.size() != other.size())
        return 255;
    double sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
                   std::abs(qBlue(a) - qBlue(b));
        }
    }
    return sum / (3.0 * one.width() * one.height());
}

/// Quantizing, scaling and JPEG cost a few steps of 256; another picture is dozens away.
constexpr double SamePicture = 8;

QImage scaled(const QImage& picture, const QSize& size)
{
    return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}
} // namespace

TEST_F(PhonePhotos, AreListed)
{
    QString expected;
    for (const SamplePhone::Shot& shot : SamplePhone::Shots)
        expected += QString("/DCIM/%1\n").arg(shot.file);
    QStringList roll = ConsoleRun({"list", "cameraRoll"}).text().split('\n', Qt::SkipEmptyParts);
    roll.sort(); // the phone lists them as its folder does
    EXPECT_EQ(roll.join('\n') + '\n', expected);

    const QString photos = ConsoleRun({"list", "photos"}).text();
    EXPECT_EQ(photos.count('\n'), 1 + SamplePhone::PhotoCount);
    EXPECT_TRUE(photos.contains("Coast Walk"));
    EXPECT_TRUE(photos.contains("/PhotoData/Sync/100SYNCD/IMG_0010.JPG"));
}

TEST_F(PhonePhotos, AreDumpedWithTheirAlbums)
{
    const QJsonObject db = ConsoleRun({"dump"}).json()["photoDb"].toObject();
    EXPECT_EQ(db["format"].toString(), "Photos.sqlite");
    const QJsonArray photos = db["photos"].toArray();
    ASSERT_EQ(photos.size(), SamplePhone::PhotoCount);
    for (int id = 1; id <= SamplePhone::PhotoCount; ++id) {
        const QJsonObject photo = photos[id - 1].toObject();
        EXPECT_EQ(photo["photoId"].toInt(), id);
        EXPECT_EQ(photo["thumbnailIndex"].toInt(), SamplePhone::PhotoCount - id);
        EXPECT_EQ(photo["fullSizeFile"].toString(), '/' + SamplePhone::fileOf(id));
    }
    const QJsonArray albums = db["albums"].toArray();
    ASSERT_EQ(albums.size(), 3);
    EXPECT_EQ(albums[0].toObject()["name"].toString(), "Coast Walk");
    EXPECT_EQ(albums[0].toObject()["photos"].toArray(), QJsonArray({6, 7, 8}));
    EXPECT_EQ(albums[2].toObject()["name"].toString(), "Still Empty");
    EXPECT_EQ(photos[8].toObject()["album"].toInt(), 1) << "the last album that lists it";
    EXPECT_TRUE(photos[0].toObject()["album"].isNull());
}

TEST_F(PhonePhotos, HaveThePreviewsOfThePhone)
{
    const QString previews = path("previews");
    const ConsoleRun run({"dump", "--previews", previews});
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    for (int id = 1; id <= SamplePhone::PhotoCount; ++id) {
        const QImage preview(QString("%1/photos/%2.png").arg(previews).arg(id - 1));
        const QSize square(SamplePhone::PreviewSize, SamplePhone::PreviewSize);
        EXPECT_EQ(preview.size(), square);
        EXPECT_LT(difference(preview, scaled(SamplePhone::pictureOf(id), square)), SamePicture)
            << id;
    }
}

TEST_F(PhonePhotos, HavePreviewsOfTheCameraRollAndOfTheStillsOfVideos)
{
    const QString previews = path("previews");
    const ConsoleRun run({"dump", "--previews", previews});
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    const QJsonArray roll = run.json()["cameraRollDb"].toObject()["photos"].toArray();
    ASSERT_EQ(roll.size(), qsizetype(std::size(SamplePhone::Shots)));
    for (const SamplePhone::Shot& shot : SamplePhone::Shots) {
        const QJsonObject entry{{"fullSizeFile", QString("/DCIM/%1").arg(shot.file)}};
        qsizetype place = 0;
        while (place < roll.size() && roll[place] != entry)
            ++place;
        const QImage preview(QString("%1/cameraRoll/%2.png").arg(previews).arg(place));
        if (isVideo(shot) && !shot.still) {
            EXPECT_TRUE(preview.isNull()) << shot.file;
            continue;
        }
        EXPECT_EQ(preview.size(), QSizeF(shot.size).scaled(100, 100, Qt::KeepAspectRatio).toSize())
            << shot.file;
        const QImage picture = SamplePicture::draw(shot.picture, shot.size);
        EXPECT_LT(difference(preview, scaled(picture, preview.size())), SamePicture) << shot.file;
    }
}

TEST_F(PhonePhotos, AreExportedFromTheCameraRollByteForByte)
{
    EXPECT_EQ(exportPhotos("cameraRoll"), 0);
    for (const SamplePhone::Shot& shot : SamplePhone::Shots) {
        const QString name = QFileInfo(shot.file).fileName();
        const QByteArray copy = exported("Camera Roll/" + name);
        EXPECT_EQ(copy, Files::read(onPhone(QString("/DCIM/%1").arg(shot.file)))) << shot.file;
        if (isVideo(shot)) {
            EXPECT_EQ(copy, SoundFile::movie(shot.picture));
        }
    }
    EXPECT_EQ(readReport(path("report")).size(), std::size(SamplePhone::Shots));
}

TEST_F(PhonePhotos, AreExportedByAlbumAndNumber)
{
    EXPECT_EQ(exportPhotos("album=Coast Walk"), 0);
    EXPECT_EQ(QDir(path("out/Photos/Coast Walk")).entryList(QDir::Files),
              QStringList({"7.JPG", "8.JPG"}));
    // It is in two albums, and the later one names its folder.
    EXPECT_EQ(exported(QString::fromUtf8("Photos/Сад весной/9.JPG")),
              Files::read(onPhone("/" + SamplePhone::fileOf(9))));
}

TEST_F(PhonePhotos, AreReportedWhereThePhoneHasOnlyThePreview)
{
    EXPECT_NE(exportPhotos("photos"), 0);
    const auto report = readReport(path("report"));
    ASSERT_EQ(report.size(), std::size_t(SamplePhone::PhotoCount));
    for (const QJsonObject& item : report) {
        const bool isLast =
            item["from"].toString() == '/' + SamplePhone::fileOf(SamplePhone::PhotoCount);
        EXPECT_EQ(item["result"].toString(), isLast ? "missing" : "copied");
    }
    EXPECT_FALSE(QFile::exists(path(QString::fromUtf8("out/Photos/Сад весной/10.JPG"))));
    EXPECT_EQ(QDir(path("out/Photos")).entryList(QDir::Files).size(), 6)
        << "those in no album, numbered";
}

TEST_F(PhonePhotos, StandBesideEverythingElseOfAWholePhone)
{
    usb.detach(phone);
    ASSERT_TRUE(QDir(path("phone")).removeRecursively());
    ASSERT_EQ(SamplePhone::write(path("phone")), "");
    usb.attach(phone);
    exportPhotos("all");
    const std::size_t shots = std::size(SamplePhone::Shots);
    EXPECT_EQ(readReport(path("report")).size(),
              SamplePlayer::library().tracks.size() + SamplePlayer::BookCount +
                  SamplePlayer::VoiceMemoCount + SamplePhone::PhotoCount + shots);
    for (const QJsonObject& item : readReport(path("report"))) {
        const bool isMissing =
            item["from"].toString() == '/' + SamplePhone::fileOf(SamplePhone::PhotoCount);
        EXPECT_EQ(item["result"].toString(), isMissing ? "missing" : "copied")
            << item["from"].toString().toStdString();
    }
}
