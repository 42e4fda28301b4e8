#include "Device/LibraryProblems.h"

#include "Device/BookDb.h"
#include "Device/CameraRollDb.h"
#include "Device/PhotoDb.h"
#include "Device/VoiceMemoDb.h"
#include "SqlFixture.h"
#include "support/BookCatalogue.h"
#include "support/FaultyDevice.h"
#include "support/PhotosSqliteWriter.h"

#include <functional>

namespace
{
using Kind = Problem::Kind;

/// A library in a file, and how it is read.
struct LibraryFile {
    const char* name;
    const char* reader;
    QString path;
    std::function<const ProblemList*(Device&)> read; ///< null where there is no reader
};
void PrintTo(const LibraryFile& library, std::ostream* out)
{
    *out << library.name;
}

const ProblemList* readTracks(Device& device)
{
    TrackDb* db = device.trackDb();
    if (!db)
        return nullptr;
    (void)db->tracks();
    return &db->problems();
}

const ProblemList* readPhotos(Device& device)
{
    PhotoDb* db = device.photoDb();
    if (!db)
        return nullptr;
    (void)db->photos();
    return &db->problems();
}

const ProblemList* readMemos(Device& device)
{
    VoiceMemoDb* db = device.voiceMemoDb();
    if (!db)
        return nullptr;
    (void)db->memos();
    return &db->problems();
}

const ProblemList* readBooks(Device& device)
{
    BookDb* db = device.bookDb();
    if (!db)
        return nullptr;
    (void)db->bookList();
    return &db->problems();
}

QList<Kind> kinds(const ProblemList* problems)
{
    QList<Kind> list;
    for (const Problem& problem : *problems)
        list.append(problem.kind);
    return list;
}

class LibraryFileProblems : public SqlFixture, public testing::WithParamInterface<LibraryFile>
{
protected:
    [[nodiscard]] const ProblemList* read() { return GetParam().read(faulty); }

    FaultyDevice faulty;
};

const QString Itdb = "/Volumes/P/iPod_Control/iTunes/iTunes Library.itlp/Library.itdb";
const QString LocationsItdb = "/Volumes/P/iPod_Control/iTunes/iTunes Library.itlp/Locations.itdb";
const QString MediaLibrary = "/Volumes/P/iPod_Control/iTunes/MediaLibrary.sqlitedb";
const QString Photos = "/Volumes/P/PhotoData/Photos.sqlite";
const QString Recordings = "/Volumes/P/Recordings/Recordings.db";
const QString Books = "/Books/Books.plist";
} // namespace

INSTANTIATE_TEST_SUITE_P(
    , LibraryFileProblems,
    testing::Values(LibraryFile{"MediaLibrary", "trackDb", MediaLibrary, readTracks},
                    LibraryFile{"LibraryItdb", "trackDb", Itdb, readTracks},
                    LibraryFile{"PhotosSqlite", "photoDb", Photos, readPhotos},
                    LibraryFile{"Recordings", "voiceMemoDb", Recordings, readMemos},
                    LibraryFile{"Books", "bookDb", Books, readBooks}),
    [](const auto& c) { return std::string(c.param.name); });

TEST_P(LibraryFileProblems, AreNoneWithoutTheFile)
{
    EXPECT_EQ(read(), nullptr);
    EXPECT_TRUE(faulty.problems().empty());
}

TEST_P(LibraryFileProblems, SayThatARubbishFileIsDamaged)
{
    for (const QByteArray& rubbish : {Files::content(40), Files::content(50000)}) {
        FaultyDevice other;
        other.put(GetParam().path, rubbish);
        const ProblemList* problems = GetParam().read(other);
        ASSERT_NE(problems, nullptr);
        EXPECT_EQ(kinds(problems).value(0), Kind::Damaged);
        ASSERT_FALSE(other.problems().empty());
        EXPECT_EQ(other.problems()[0].reader, GetParam().reader);
    }
}

TEST_P(LibraryFileProblems, SayThatAnEmptyFileIsDamaged)
{
    faulty.put(GetParam().path, "");
    const ProblemList* problems = read();
    ASSERT_NE(problems, nullptr);
    EXPECT_EQ(kinds(problems).value(0), Kind::Damaged);
    EXPECT_FALSE(problems->begin()->words.isEmpty());
}

TEST_P(LibraryFileProblems, SayWhenNobodyCanTellWhetherThereIsOne)
{
    for (const auto& [failure, kind] : {std::pair(Failure::Kind::Unreadable, Kind::Unreadable),
                                        std::pair(Failure::Kind::Lost, Kind::Lost)}) {
        FaultyDevice other;
        other.failures[GetParam().path] = Failure{failure, "no", "exact"};
        const ProblemList* problems = GetParam().read(other);
        ASSERT_NE(problems, nullptr);
        EXPECT_EQ(kinds(problems), QList{kind});
        EXPECT_TRUE(problems->begin()->exact.contains("exact"));
    }
}

TEST_P(LibraryFileProblems, SayThatACopyEndedEarly)
{
    faulty.put(GetParam().path, Files::content(50000));
    faulty.cuts[GetParam().path] = 20000;
    const ProblemList* problems = read();
    ASSERT_NE(problems, nullptr);
    EXPECT_EQ(kinds(problems).value(0), Kind::Unreadable);
    EXPECT_TRUE(problems->begin()->exact.contains("Input/output error"));
}

TEST_P(LibraryFileProblems, SayThatTheDeviceWentAwayMeanwhile)
{
    faulty.put(GetParam().path, Files::content(50000));
    faulty.cuts[GetParam().path] = 0;
    faulty.gone = Failure{Failure::Kind::Lost, "The device was disconnected", {}};
    const ProblemList* problems = read();
    ASSERT_NE(problems, nullptr);
    EXPECT_EQ(kinds(problems).value(0), Kind::Lost);
    EXPECT_TRUE(problems->begin()->exact.contains("The device was disconnected"));
}

TEST_P(LibraryFileProblems, SayThatAnotherDatabaseIsNotUnderstood)
{
    SqliteWriter(path("other")).run("create table OTHER (a)");
    faulty.put(GetParam().path, GetParam().path == Books ? BookCatalogue::xml("<array/>")
                                                         : Files::read(path("other")));
    const ProblemList* problems = read();
    ASSERT_NE(problems, nullptr);
    EXPECT_EQ(kinds(problems).value(0), Kind::NotUnderstood);
}

namespace
{
/// Libraries that are whole but for what a test does to them.
class LibraryProblemsTest : public SqlFixture
{
protected:
    /// A library of so many tracks, whose ids have nothing to do with each other.
    QByteArray mediaLibrary(quint32 count)
    {
        std::vector<TestTrack> tracks;
        for (quint32 i = 1; i <= count; ++i)
            tracks.push_back(track(i, QString("Title %1").arg(i)));
        SqliteLibraries::writeMediaLibrary(path("MediaLibrary.sqlitedb"),
                                           {"Player", tracks, {{"Mix", {1, 2, 3}}}});
        return Files::read(path("MediaLibrary.sqlitedb"));
    }
};

constexpr qsizetype PageSize = 4096;

/// A database with rubbish in place of the pages with a text.
QByteArray withoutPagesThatHold(const QByteArray& text, QByteArray database)
{
    for (qsizetype at = database.indexOf(text, PageSize); at >= 0; at = database.indexOf(text))
        database.replace(at / PageSize * PageSize, PageSize, QByteArray(PageSize, '\xff'));
    return database;
}
} // namespace

TEST_F(LibraryProblemsTest, AreNoneOfWholeLibrariesThatAreEmpty)
{
    FaultyDevice other;
    {
        SqliteWriter media(path("MediaLibrary.sqlitedb"));
        SqliteLibraries::createMediaLibrary(media);
    }
    SqliteLibraries::writeRecordings(path("Recordings.db"), {});
    ASSERT_EQ(PhotosSqliteWriter::write(path("Photos.sqlite"), {}), "");
    other.put(MediaLibrary, Files::read(path("MediaLibrary.sqlitedb")));
    other.put(Recordings, Files::read(path("Recordings.db")));
    other.put(Photos, Files::read(path("Photos.sqlite")));
    other.put(Books, BookCatalogue::write({}));
    EXPECT_TRUE(readTracks(other)->empty());
    EXPECT_TRUE(readMemos(other)->empty());
    EXPECT_TRUE(readPhotos(other)->empty());
    EXPECT_TRUE(readBooks(other)->empty());
    EXPECT_TRUE(other.problems().empty());
}

TEST_F(LibraryProblemsTest, AreNoneOfAWholePair)
{
    SqliteLibraries::writeLibrary(path(""), {"Player", {track(1, "One")}, {{"Mix", {1}}}});
    put("Library.itdb", Itdb);
    put("Locations.itdb", LocationsItdb);
    EXPECT_TRUE(readTracks(device)->empty());
}

TEST_F(LibraryProblemsTest, SayThatAnyCutLibraryIsDamaged)
{
    const QByteArray whole = mediaLibrary(50);
    for (qsizetype cut = 0; cut < whole.size(); cut += cut < 200 ? 7 : 1009) {
        FaultyDevice other;
        other.put(MediaLibrary, whole.first(cut));
        const ProblemList* problems = readTracks(other);
        ASSERT_FALSE(problems->empty()) << cut;
        EXPECT_EQ(kinds(problems)[0], Kind::Damaged) << cut;
    }
}

TEST_F(LibraryProblemsTest, KeepWhatAHalfLibraryHolds)
{
    const QByteArray whole = mediaLibrary(2000);
    FaultyDevice other;
    other.put(MediaLibrary, whole.first(whole.size() * 2 / 3));
    EXPECT_FALSE(readTracks(other)->empty());
    EXPECT_GT(other.trackDb()->tracks().size(), 200U);
}

TEST_F(LibraryProblemsTest, SayWhatAnyDamagedPageTookAway)
{
    const QByteArray whole = mediaLibrary(1500);
    FaultyDevice sound;
    sound.put(MediaLibrary, whole);
    ASSERT_TRUE(readTracks(sound)->empty());
    const QStringList all = titles(sound.trackDb()->tracks());
    ASSERT_EQ(all.size(), 1500);
    const QSet<QString> known(all.begin(), all.end());
    qsizetype most = 0;
    for (qsizetype page = 0; page < whole.size(); page += PageSize) {
        QByteArray damaged = whole;
        damaged.replace(page, PageSize, QByteArray(PageSize, '\xff'));
        FaultyDevice other;
        other.put(MediaLibrary, damaged);
        const ProblemList* problems = readTracks(other);
        const QStringList read = titles(other.trackDb()->tracks());
        const QSet<QString> unique(read.begin(), read.end());
        EXPECT_EQ(read.size(), unique.size()) << "a track was read twice, page " << page / PageSize;
        EXPECT_TRUE(known.contains(unique)) << page / PageSize;
        EXPECT_TRUE(read.size() == all.size() || !problems->empty()) << page / PageSize;
        most = std::max(most, all.size() - read.size());
        // Only the first page and the roots of the tables of items lead to all others.
        EXPECT_TRUE(read.isEmpty() || read.size() > 1300) << page / PageSize << ": " << read.size();
    }
    EXPECT_GT(most, 0) << "no page was one of items";
}

TEST_F(LibraryProblemsTest, SayHowManyTracksAreMissing)
{
    FaultyDevice other;
    other.put(MediaLibrary, withoutPagesThatHold("Title 700", mediaLibrary(1500)));
    EXPECT_EQ(kinds(readTracks(other)), QList{Kind::Damaged});
    const QString words = readTracks(other)->begin()->words;
    EXPECT_TRUE(words.contains("1500")) << qPrintable(words);
    EXPECT_TRUE(words.contains(QString::number(other.trackDb()->tracks().size())));
}

TEST_F(LibraryProblemsTest, LeaveATrackItsPlaceWhereOnlyItsGenreIsLost)
{
    device.put(MediaLibrary, withoutPagesThatHold("Genre", mediaLibrary(300)));
    const ProblemList* problems = readTracks(device);
    ASSERT_EQ(device.trackDb()->tracks().size(), 300U);
    EXPECT_EQ(kinds(problems), QList{Kind::Damaged});
    EXPECT_EQ(device.trackDb()->tracks()[0]->genre, "");
    EXPECT_EQ(names(device.trackDb()->playlists()), QStringList("Mix"));
}

TEST_F(LibraryProblemsTest, SayThatTheNewestChangesAreMissing)
{
    SqliteWriter file(path("Recordings.db"));
    SqliteLibraries::createRecordings(file);
    file.run("insert into ZRECORDING (ZDURATION, ZDATE, ZPATH) values (3, 0, 'a.m4a')");
    file.keepRowsInLog();
    file.run("insert into ZRECORDING (ZDURATION, ZDATE, ZPATH) values (4, 0, 'b.m4a')");
    FaultyDevice other;
    other.put(Recordings, Files::read(path("Recordings.db")));
    other.put(Recordings + "-wal", Files::read(path("Recordings.db-wal")));
    other.cuts[Recordings + "-wal"] = 0;
    EXPECT_EQ(kinds(readMemos(other)), QList{Kind::Unreadable});
    EXPECT_EQ(other.voiceMemoDb()->memos().size(), 1U);

    FaultyDevice unknown;
    unknown.put(Recordings, Files::read(path("Recordings.db")));
    unknown.failures[Recordings + "-wal"] = Failure{Failure::Kind::Lost, "gone", {}};
    EXPECT_EQ(kinds(readMemos(unknown)), QList{Kind::Lost});
}

TEST_F(LibraryProblemsTest, SayThatItemsAreInNoList)
{
    SqliteLibraries::writeLibrary(path(""), {"Player", {track(1, "One")}, {}});
    SqliteWriter(path("Library.itdb"), SqliteWriter::Existing).run("delete from item_to_container");
    put("Library.itdb", Itdb);
    put("Locations.itdb", LocationsItdb);
    EXPECT_EQ(kinds(readTracks(device)), QList{Kind::NotUnderstood});
}

TEST_F(LibraryProblemsTest, SayThatTheLocationsAreMissing)
{
    SqliteLibraries::writeLibrary(path(""), {"Player", {track(1, "One")}, {}});
    put("Library.itdb", Itdb);
    EXPECT_EQ(kinds(readTracks(device)), QList{Kind::Damaged});
    EXPECT_EQ(titles(device.trackDb()->tracks()), QStringList("One"));
}

TEST_F(LibraryProblemsTest, SayThatAPairIsReadWithItsLogs)
{
    SqliteWriter library(path("Library.itdb"));
    SqliteWriter locations(path("Locations.itdb"));
    SqliteLibraries::createLibrary(library);
    SqliteLibraries::createLocations(locations);
    library.keepRowsInLog();
    locations.keepRowsInLog();
    library.run("insert into db_info (pid, primary_container_pid) values (1, 100);"
                "insert into container (pid, name) values (100, 'Player');"
                "insert into item (pid, title) values (1, 'One');"
                "insert into item_to_container values (1, 100, 0, 0)");
    locations.run("insert into location (item_pid, location) values (1, 'A.mp3')");
    put("Library.itdb", Itdb);
    put("Locations.itdb", LocationsItdb);
    EXPECT_TRUE(readTracks(device)->empty());
    ASSERT_EQ(titles(device.trackDb()->tracks()), QStringList("One"));
    EXPECT_EQ(device.trackDb()->tracks()[0]->path, "/Volumes/P/A.mp3");
}

TEST_F(LibraryProblemsTest, SayThatAlbumsKeepTheirPhotosInAnUnknownTable)
{
    SqliteWriter(path("Photos.sqlite"))
        .run("create table ZGENERICALBUM (Z_PK, ZTITLE); create table ZGENERICASSET (Z_PK, "
             "ZTHUMBNAILINDEX, ZDIRECTORY, ZFILENAME, ZTITLE);"
             "insert into ZGENERICALBUM values (1, 'Trip'); create table Z_26ASSETS (a, b)");
    put("Photos.sqlite", Photos);
    EXPECT_EQ(kinds(readPhotos(device)), QList{Kind::NotUnderstood});
    EXPECT_EQ(device.photoDb()->problems().begin()->exact, "Z_26ASSETS");
}

TEST_F(LibraryProblemsTest, SayThatThereIsMusicWithoutALibrary)
{
    FaultyDevice other;
    const QString music = "/Volumes/P/iPod_Control/Music";
    other.folders[music] = QStringList({"F00", "F01"});
    EXPECT_EQ(other.trackDb(), nullptr);
    EXPECT_TRUE(other.problems().empty()) << "folders alone are no music";

    FaultyDevice full;
    full.folders[music] = QStringList({"F00", "F01"});
    full.files[music + "/F01"] = QStringList("ABCD.mp3");
    EXPECT_TRUE(full.problems().empty()) << "nobody has asked yet";
    EXPECT_EQ(full.trackDb(), nullptr);
    ASSERT_EQ(full.problems().size(), 1U);
    EXPECT_EQ(full.problems()[0].reader, "trackDb");
    EXPECT_EQ(full.problems()[0].problem.kind, Kind::NotUnderstood);

    full.put(MediaLibrary, mediaLibrary(1));
    EXPECT_NE(full.trackDb(), nullptr);
    EXPECT_TRUE(full.problems().empty());
}

TEST_F(LibraryProblemsTest, SayWhichFoldersOfTheCameraRollCannotBeListed)
{
    FaultyDevice phone;
    phone.folders["/Volumes/P/DCIM"] = QStringList({"100APPLE", "101APPLE"});
    phone.files["/Volumes/P/DCIM/101APPLE"] = QStringList("IMG_0001.JPG");
    phone.failures["/Volumes/P/DCIM/100APPLE"] = Failure{Failure::Kind::Unreadable, "no", {}};
    CameraRollDb& roll = *phone.cameraRollDb();
    ASSERT_EQ(roll.photos().size(), 1U);
    EXPECT_EQ(kinds(&roll.problems()), QList{Kind::Unreadable});
    EXPECT_TRUE(roll.problems().begin()->exact.contains("100APPLE"));

    FaultyDevice gone;
    gone.failures["/Volumes/P/DCIM"] = Failure{Failure::Kind::Lost, "gone", {}};
    EXPECT_TRUE(gone.cameraRollDb()->photos().empty());
    EXPECT_EQ(kinds(&gone.cameraRollDb()->problems()), QList{Kind::Lost});

    FaultyDevice none;
    EXPECT_TRUE(none.cameraRollDb()->photos().empty());
    EXPECT_TRUE(none.cameraRollDb()->problems().empty());
}
