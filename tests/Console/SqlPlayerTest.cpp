#include "Console/LibraryJson.h"
#include "support/ConsoleRun.h"
#include "support/FolderDevice.h"
#include "support/SamplePlayer.h"

#include <QDirIterator>

#include <gtest/gtest.h>

namespace
{
using Format = SamplePlayer::Format;

/// The sample player, its library in each of the formats.
class SqlPlayer : public testing::TestWithParam<Format>
{
protected:
    SqlPlayer() { EXPECT_EQ(SamplePlayer::write(path("player"), GetParam()), ""); }

    QString path(const QString& name) const { return _folder.filePath(name); }
    ConsoleRun run(const QString& command, const QStringList& arguments = {}) const
    {
        return ConsoleRun(QStringList({command, "--device", path("player")}) + arguments);
    }
    static QString formatName()
    {
        return GetParam() == Format::Library ? "Library.itdb" : "MediaLibrary.sqlitedb";
    }
    static QJsonObject dumpOf(Device& device)
    {
        QByteArray document;
        LibraryJson::write(device, [&](const QByteArray& piece) { document += piece; });
        QJsonParseError error;
        const QJsonObject object = QJsonDocument::fromJson(document, &error).object();
        EXPECT_EQ(error.error, QJsonParseError::NoError);
        return object;
    }

private:
    QTemporaryDir _folder;
};

/// What the SQLite formats say of a text that a library leaves out.
QString textOrEmpty(const QString& text)
{
    return text.isNull() ? QString("") : text;
}
} // namespace

TEST_P(SqlPlayer, IsDumpedWhole)
{
    const TestLibrary library = SamplePlayer::library();
    const ConsoleRun dump = run("dump");
    EXPECT_EQ(dump.exitCode, 0);
    EXPECT_EQ(dump.errors, "");
    const QJsonObject document = dump.json();
    const QJsonObject db = document["trackDb"].toObject();
    EXPECT_EQ(db["format"].toString(), formatName());
    EXPECT_EQ(db["name"].toString(), library.name);
    QHash<QString, QJsonObject> items; // by path: the two formats differ in their order
    for (const QJsonValue& item : db["items"].toArray())
        items[item["path"].toString()] = item.toObject();
    ASSERT_EQ(db["tracks"].toArray().size(), qsizetype(library.tracks.size()));
    for (const TestTrack& track : library.tracks) {
        const QJsonObject item =
            items[path("player") + QString(track.location).replace(u':', u'/')];
        EXPECT_EQ(item["title"].toString(), track.title);
        EXPECT_EQ(item["artist"], QJsonValue(textOrEmpty(track.artist)));
        EXPECT_EQ(item["album"], QJsonValue(textOrEmpty(track.album)));
        EXPECT_EQ(item["genre"], QJsonValue(textOrEmpty(track.genre)));
        EXPECT_EQ(item["isPodcast"].toBool(), track.podcast);
    }
    EXPECT_EQ(db["playlists"].toArray().size(), 5) << "the empty one is not shown";
    EXPECT_TRUE(document["bookDb"].isNull());
    const QJsonArray memos = document["voiceMemoDb"]["memos"].toArray();
    ASSERT_EQ(memos.size(), SamplePlayer::VoiceMemoCount);
    EXPECT_TRUE(memos[0]["album"].isNull());
    EXPECT_EQ(memos[0]["type"].toInt(), 10);
    EXPECT_EQ(memos[0]["path"].toString(), path("player/Recordings/20100705 082000.wav"));
}

TEST_P(SqlPlayer, IsListed)
{
    EXPECT_EQ(run("list").text().simplified(),
              "music 169 movies 6 tvShows 10 podcasts 25 audiobooks 16 ringtones 8 books 5 "
              "playlists 5 voiceMemos 4 photos 12");
    EXPECT_EQ(run("list", {"voiceMemos"}).text().count('\n'), 1 + SamplePlayer::VoiceMemoCount);
    EXPECT_EQ(run("list", {"books"}).text().count('\n'), 1 + 5);
}

TEST_P(SqlPlayer, IsExportedByteForByte)
{
    const ConsoleRun exported = run("export", {"all", "--to", path("out"), "--clash", "number",
                                               "--report", path("report"), "--quiet"});
    EXPECT_EQ(exported.exitCode, 0) << exported.errors.toStdString();
    const std::vector<QJsonObject> report = readReport(path("report"));
    std::size_t tracks = 0;
    QString lastTrack;
    for (const QJsonObject& item : report) {
        EXPECT_EQ(item["result"].toString(), "copied");
        if (item["kind"].toString() != u"track")
            continue; // a photo may be a rendition that was decoded
        ++tracks;
        lastTrack = item["to"].toString();
        EXPECT_EQ(Files::read(lastTrack), Files::read(item["from"].toString()));
    }
    EXPECT_EQ(tracks,
              SamplePlayer::library().tracks.size() + std::size_t(SamplePlayer::VoiceMemoCount));
    EXPECT_TRUE(lastTrack.startsWith(path("out/Voice Memos/")));
}

TEST_P(SqlPlayer, LeavesNoCopyOfItsDatabases)
{
    qputenv("TMPDIR", QFile::encodeName(path("tmp")));
    QDir().mkpath(path("tmp"));
    EXPECT_EQ(run("dump").exitCode, 0);
    QDirIterator left(path("tmp"), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    EXPECT_FALSE(left.hasNext());
}

TEST_P(SqlPlayer, RemovesAtItsStartWhatAKilledRunLeft)
{
    qputenv("TMPDIR", QFile::encodeName(path("tmp")));
    QDir().mkpath(path("tmp"));
    EXPECT_EQ(run("list").exitCode, 0); // makes the folder of the copies
    const QStringList folders = QDir(path("tmp")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    ASSERT_EQ(folders.size(), 1);
    Files::write(path("tmp/" + folders[0] + "/KILLED/KILLED-wal"), "left behind");
    EXPECT_EQ(run("list").exitCode, 0);
    EXPECT_FALSE(QFileInfo::exists(path("tmp/" + folders[0] + "/KILLED")));
}

TEST_P(SqlPlayer, ShowsItsBookCatalogueOnAPhone)
{
    FolderDevice phone(path("player"));
    phone.useControlFolder("/iPod_Control");
    const QJsonObject document = dumpOf(phone);
    const QJsonObject db = document["trackDb"].toObject();
    EXPECT_EQ(document["bookDb"]["bookList"].toArray().size(), SamplePlayer::BookCount);
    const QJsonArray items = db["items"].toArray();
    EXPECT_EQ(items.size(), db["tracks"].toArray().size() + SamplePlayer::BookCount);
    const QJsonArray books = db["index"]["books"]["*|*|*"].toArray();
    ASSERT_EQ(books.size(), SamplePlayer::BookCount);
    EXPECT_EQ(books[0].toInt(), items.size() - SamplePlayer::BookCount);
    EXPECT_EQ(items[books[0].toInt()]["path"].toString(), "/Books/Hills.pdf");
    EXPECT_EQ(items[books[2].toInt()]["path"].toString(), "/Books/Purchases/Coast.pdf");
    EXPECT_EQ(db["albums"]["books"]["Nature"]["R. Alder"].toArray(), QJsonArray({"*", "Walks"}));
}

INSTANTIATE_TEST_SUITE_P(, SqlPlayer, testing::Values(Format::Library, Format::MediaLibrary),
                         [](const auto& c) {
                             return std::string(c.param == Format::Library ? "Library"
                                                                           : "MediaLibrary");
                         });

TEST(PlayerOfSeveralFormats, ShowsTheNewest)
{
    const QTemporaryDir folder;
    const QString path = folder.path();
    TestLibrary library;
    for (const auto& [name, format] :
         {std::pair{"iTunesDB", Format::ITunesDb}, std::pair{"Library.itdb", Format::Library},
          std::pair{"MediaLibrary.sqlitedb", Format::MediaLibrary}}) {
        library.name = name;
        ASSERT_EQ(SamplePlayer::writeLibrary(path, library, format), "");
        const QJsonObject db = ConsoleRun({"dump", "--device", path}).json()["trackDb"].toObject();
        EXPECT_EQ(db["format"].toString(), name);
        EXPECT_EQ(db["name"].toString(), name);
    }
}
