#include "support/ConsoleRun.h"
#include "support/ITunesDbWriter.h"
#include "support/LargeLibrary.h"
#include "support/SamplePhotos.h"
#include "support/SamplePlayer.h"

#include <QImage>

#include <gtest/gtest.h>

namespace
{
class DumpCommand : public testing::Test
{
protected:
    QJsonObject dump(const TestLibrary& library)
    {
        Files::write(_folder.filePath("iPod_Control/iTunes/iTunesDB"),
                     ITunesDbWriter::write(library));
        return dump();
    }
    QJsonObject dump()
    {
        const ConsoleRun run({"dump", "--device", _folder.path()});
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.errors, "");
        return run.json();
    }

    QTemporaryDir _folder;
};

QJsonValue textOrNull(const QString& text)
{
    return text.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(text);
}

QJsonArray numbers(std::initializer_list<int> list)
{
    QJsonArray array;
    for (const int number : list)
        array.append(number);
    return array;
}
} // namespace

TEST_F(DumpCommand, DescribesTheDevice)
{
    const QJsonObject document = dump(SamplePlayer::library());
    const QJsonObject device = document["device"].toObject();
    EXPECT_EQ(device["key"].toString(), _folder.path());
    EXPECT_EQ(device["prefix"].toString(), _folder.path());
    EXPECT_EQ(device["family"].toString(), "volume");
    EXPECT_EQ(device["controlPath"].toString(), _folder.path() + "/iPod_Control");
    EXPECT_TRUE(device["bookPath"].isNull());
    EXPECT_EQ(device["description"].toString(), "Mira's Player");
    for (const char* reader : {"bookDb", "voiceMemoDb", "photoDb", "cameraRollDb"}) {
        EXPECT_TRUE(document.contains(QLatin1String(reader)));
        EXPECT_TRUE(document[QLatin1String(reader)].isNull());
    }
}

TEST_F(DumpCommand, HasEveryTrackAndPlaylist)
{
    const TestLibrary library = SamplePlayer::library();
    const QJsonObject db = dump(library)["trackDb"].toObject();
    EXPECT_EQ(db["format"].toString(), "iTunesDB");
    EXPECT_EQ(db["name"].toString(), library.name);
    const QJsonArray items = db["items"].toArray();
    const QJsonArray tracks = db["tracks"].toArray();
    ASSERT_EQ(items.size(), qsizetype(library.tracks.size()));
    ASSERT_EQ(tracks.size(), items.size());
    for (qsizetype i = 0; i < items.size(); ++i) {
        const TestTrack& track = library.tracks[std::size_t(i)];
        const QJsonObject item = items[i].toObject();
        EXPECT_EQ(tracks[i].toInt(), i);
        EXPECT_EQ(item["title"], textOrNull(track.title));
        EXPECT_EQ(item["artist"], textOrNull(track.artist));
        EXPECT_EQ(item["album"], textOrNull(track.album));
        EXPECT_EQ(item["genre"], textOrNull(track.genre));
        EXPECT_EQ(item["path"].toString(),
                  _folder.path() + QString(track.location).replace(u':', u'/'));
        EXPECT_EQ(item["duration"].toDouble(), track.milliseconds / 1000.0);
        EXPECT_EQ(item["isPodcast"].toBool(), track.podcast);
    }
    const QJsonArray playlists = db["playlists"].toArray();
    ASSERT_EQ(playlists.size(), 6);
    EXPECT_EQ(playlists[4].toObject()["name"].toString(), "Twice the Fun");
    EXPECT_EQ(playlists[4].toObject()["tracks"].toArray(), numbers({5, 9, 5}));
    EXPECT_EQ(playlists[5].toObject()["tracks"].toArray(), QJsonArray());
    EXPECT_EQ(items[5].toObject()["playlists"].toArray(), numbers({4, 4}));
}

TEST_F(DumpCommand, HasTheIndexAndTheAlbumTree)
{
    TestTrack track;
    track.id = 1;
    track.title = "One";
    track.genre = "Rock";
    track.artist = "A";
    track.album = "B";
    TestTrack ringtone = track;
    ringtone.id = 2;
    ringtone.mediaKind = 16384;
    const QJsonObject db = dump({"Player", {track, ringtone}, {}})["trackDb"].toObject();
    const QJsonObject index = db["index"].toObject();
    EXPECT_EQ(index.keys(), QStringList({"audiobooks", "books", "movies", "music", "podcasts",
                                         "ringtones", "tvShows"}));
    EXPECT_EQ(index["music"].toObject().keys(),
              QStringList({"*|*|*", "*|*|B", "*|A|*", "*|A|B", "Rock|*|*", "Rock|*|B", "Rock|A|*",
                           "Rock|A|B"}));
    EXPECT_EQ(index["music"].toObject()["Rock|A|B"].toArray(), numbers({0}));
    EXPECT_EQ(index["ringtones"].toObject(), (QJsonObject{{"*|*|*", numbers({1})}}));
    EXPECT_EQ(index["movies"].toObject(), (QJsonObject{{"*|*|*", QJsonArray()}}));
    const QJsonObject albums = db["albums"].toObject();
    EXPECT_FALSE(albums.contains("ringtones"));
    const QJsonObject artists = {{"*", QJsonArray({"*", "B"})}, {"A", QJsonArray({"*", "B"})}};
    EXPECT_EQ(albums["music"].toObject(), (QJsonObject{{"*", artists}, {"Rock", artists}}));
}

TEST_F(DumpCommand, TellsNullFromEmptyAndPrintsPlainNumbers)
{
    TestTrack nothing;
    nothing.id = 1;
    TestTrack empty = nothing;
    empty.id = 2;
    empty.title = "";
    empty.milliseconds = 250000;
    const QJsonArray items =
        dump({QString(), {nothing, empty}, {}})["trackDb"].toObject()["items"].toArray();
    EXPECT_TRUE(items[0].toObject()["title"].isNull());
    EXPECT_TRUE(items[0].toObject()["path"].isNull());
    EXPECT_EQ(items[1].toObject()["title"], QJsonValue(""));
    const ConsoleRun run({"dump", "--device", _folder.path()});
    EXPECT_TRUE(run.output.contains("\"duration\":250,"));
}

TEST_F(DumpCommand, StaysValidWithTextsThatAreNoText)
{
    TestTrack odd;
    odd.id = 1;
    const QString shown = QString("a") + QChar(0xD800) + "b\"\\\n";
    odd.title = shown + QChar(QChar::Null) + "c"; // where texts end
    odd.genre = "G|H";
    const QJsonArray items = dump({"Player", {odd}, {}})["trackDb"].toObject()["items"].toArray();
    EXPECT_EQ(items[0].toObject()["title"].toString(), shown);
    EXPECT_EQ(items[0].toObject()["genre"].toString(), odd.genre);
    const ConsoleRun run({"dump", "--device", _folder.path()});
    EXPECT_TRUE(run.output.contains("a\\ud800b\\\""));
}

TEST_F(DumpCommand, EndsQuietlyWhenItsReaderLeaves)
{
    // More than a pipe holds, so the program is still writing when its reader has gone.
    Files::write(_folder.filePath("iPod_Control/iTunes/iTunesDB"), largeITunesDb(1000));
    QProcess shell;
    shell.start("/bin/sh", {"-c", "\"$0\" dump --device \"$1\" | head -c 20", ConsoleRun::program(),
                            _folder.path()});
    ASSERT_TRUE(shell.waitForFinished(30000));
    EXPECT_EQ(shell.readAllStandardOutput().size(), 20);
    EXPECT_EQ(shell.readAllStandardError(), QByteArray());
}

TEST_F(DumpCommand, GivesWhatADamagedDatabaseStillHolds)
{
    const QByteArray whole = ITunesDbWriter::write(SamplePlayer::library());
    Files::write(_folder.filePath("iPod_Control/iTunes/iTunesDB"), whole.first(whole.size() / 2));
    const QJsonObject db = dump()["trackDb"].toObject();
    EXPECT_GT(db["items"].toArray().size(), 50);
    EXPECT_TRUE(db["name"].isNull());
}

TEST_F(DumpCommand, HasNoLibraryForADeviceWithoutOne)
{
    ASSERT_TRUE(QDir(_folder.path()).mkdir("iTunes_Control"));
    EXPECT_TRUE(dump()["trackDb"].isNull());
}

TEST_F(DumpCommand, HasThePhotosAndAlbums)
{
    ASSERT_TRUE(QDir(_folder.path()).mkdir("iPod_Control"));
    ASSERT_EQ(SamplePhotos::write(_folder.path()), "");
    const QJsonObject db = dump()["photoDb"].toObject();
    EXPECT_EQ(db["format"].toString(), "Photo Database");
    EXPECT_EQ(db["smallCorrelationId"].toInt(), 1023);
    EXPECT_EQ(db["largeCorrelationId"].toInt(), 1019);
    const QJsonArray photos = db["photos"].toArray();
    ASSERT_EQ(photos.size(), SamplePhotos::PhotoCount);
    const QJsonObject first = photos[0].toObject();
    EXPECT_EQ(first["photoId"].toInt(), 1001);
    EXPECT_EQ(first["album"].toInt(-1), 0);
    EXPECT_TRUE(first["title"].isNull());
    EXPECT_EQ(first["thumbnailIndex"].toInt(-1), 0);
    EXPECT_EQ(first["fullSizeFile"].toString(),
              _folder.path() + "/Photos/Full Resolution/2009/07/IMG_0.jpg");
    EXPECT_TRUE(photos[1].toObject()["fullSizeFile"].isNull());
    EXPECT_TRUE(photos[11].toObject()["album"].isNull());
    const QJsonObject rendition = first["thumbnails"].toArray()[1].toObject();
    EXPECT_EQ(
        rendition.keys(),
        QStringList({"correlationId", "filename", "height", "horizontalPadding", "imageHeight",
                     "imageSize", "imageWidth", "thumbnailOffset", "verticalPadding", "width"}));
    EXPECT_EQ(rendition["correlationId"].toInt(), 3141);
    EXPECT_EQ(rendition["imageSize"].toInt(), 48000);
    const QJsonArray albums = db["albums"].toArray();
    ASSERT_EQ(albums.size(), 4);
    EXPECT_EQ(albums[2].toObject()["photos"].toArray(), numbers({6, 7, 8, 9}));
    EXPECT_EQ(albums[3].toObject()["name"].toString(), "Still Empty");
    EXPECT_EQ(albums[3].toObject()["albumId"].toInt(-1), 0);
}

TEST_F(DumpCommand, WritesPreviewsAndRenditions)
{
    ASSERT_TRUE(QDir(_folder.path()).mkdir("iPod_Control"));
    ASSERT_EQ(SamplePhotos::write(_folder.path()), "");
    // The previews of all but the first three photos are lost.
    QFile small(_folder.filePath("Photos/Thumbs/F1023_1.ithmb"));
    ASSERT_TRUE(small.resize(3 * 46464));
    const QTemporaryDir elsewhere; // nothing is written to the player
    const QString previews = elsewhere.filePath("previews");
    const ConsoleRun run({"dump", "--device", _folder.path(), "--previews", previews});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(QDir(previews + "/photos").entryList(QDir::Files),
              QStringList({"0.png", "1.png", "2.png"}));
    EXPECT_EQ(QImage(previews + "/photos/2.png").size(), QSize(176, 132));
    EXPECT_EQ(QDir(previews + "/thumbnails").entryList(QDir::Files).size(),
              SamplePhotos::PhotoCount * 3 + 3);
    EXPECT_EQ(QImage(previews + "/thumbnails/11-0.png").size(), QSize(720, 480));
    EXPECT_FALSE(QFileInfo::exists(previews + "/thumbnails/11-3.png"));
}

TEST_F(DumpCommand, WritesNoPreviewsOfAPhotoThatKeepsThePlaceholder)
{
    ASSERT_TRUE(QDir(_folder.path()).mkdir("iPod_Control"));
    TestPhotoLibrary library;
    library.photos = {{1, {}, {}}};
    library.kinds = {1023};
    Files::write(_folder.filePath("Photos/Photo Database"), PhotoDatabaseWriter::write(library));
    const QTemporaryDir elsewhere; // nothing is written to the player
    const QString previews = elsewhere.filePath("previews");
    const ConsoleRun run({"dump", "--device", _folder.path(), "--previews", previews});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(QDir(previews + "/photos").isEmpty());
}
