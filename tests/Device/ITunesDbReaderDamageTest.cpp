#include "Base/Utility.h"
#include "Device/TrackDb.h"
#include "Device/iPod/iPodDevice.h"
#include "support/Files.h"
#include "support/ITunesDbWriter.h"
#include "support/MemoryDevice.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
TestLibrary smallLibrary()
{
    TestLibrary library;
    library.name = "Library";
    for (quint32 i = 1; i <= 3; ++i) {
        TestTrack track;
        track.id = i;
        track.title = QString("Title %1").arg(i);
        track.artist = "Artist";
        track.album = "Album";
        track.genre = "Genre";
        track.location = QString(":iPod_Control:Music:F00:%1.mp3").arg(i);
        library.tracks.push_back(track);
    }
    library.playlists = {{"First", {1, 2, 3}}, {"Second", {3, 3}}};
    return library;
}

/// What was read of a database, with every link followed.
struct Reading {
    explicit Reading(const QByteArray& database)
    {
        MemoryDevice device;
        device.put("/Volumes/P/iPod_Control/iTunes/iTunesDB", database);
        TrackDb& db = *device.trackDb();
        for (const Track* track : db.tracks()) {
            titles.append(track->title);
            for (const Playlist* playlist : track->playlists) {
                EXPECT_NE(std::find(db.playlists().begin(), db.playlists().end(), playlist),
                          db.playlists().end())
                    << "a link to a playlist that is not listed";
            }
        }
        for (const Playlist* playlist : db.playlists()) {
            playlists.append(playlist->name);
            for (const Track* track : playlist->tracks)
                memberTitles.append(track->title);
        }
        (void)db.music().trackMap();
        problems = db.problems().all();
    }

    QStringList titles;
    QStringList playlists;
    QStringList memberTitles;
    std::vector<Problem> problems;
};

bool isPrefixOf(const QStringList& some, const QStringList& all)
{
    return some.size() <= all.size() && std::equal(some.begin(), some.end(), all.begin());
}

qsizetype endOf(const QByteArray& database, const char* tag, int occurrence)
{
    qsizetype at = -1;
    for (int i = 0; i < occurrence; ++i)
        at = database.indexOf(tag, at + 1);
    return at + qFromLittleEndian<quint32>(database.constData() + at + 8);
}

QByteArray with(QByteArray database, qsizetype offset, quint32 value)
{
    qToLittleEndian(value, database.data() + offset);
    return database;
}
} // namespace

TEST(DamagedITunesDb, HasNoProblemWhenItIsWhole)
{
    for (const int version : {11, 0x19}) {
        ITunesDbWriter::Options options;
        options.version = quint32(version);
        EXPECT_TRUE(Reading(ITunesDbWriter::write(smallLibrary(), options)).problems.empty());
        EXPECT_TRUE(Reading(ITunesDbWriter::write({}, options)).problems.empty());
    }
    EXPECT_TRUE(Reading(ITunesDbWriter::database(0x19, {})).problems.empty());
}

TEST(DamagedITunesDb, KeepsWhatWasReadBeforeACutAtAnyByte)
{
    const QByteArray whole = ITunesDbWriter::write(smallLibrary());
    const Reading all(whole);
    ASSERT_EQ(all.titles.size(), 3);
    ASSERT_EQ(all.playlists, QStringList({"First", "Second"}));
    for (qsizetype cut = 0; cut <= whole.size(); ++cut) {
        const Reading reading(whole.first(cut));
        EXPECT_TRUE(isPrefixOf(reading.titles, all.titles)) << "cut at " << cut;
        EXPECT_TRUE(isPrefixOf(reading.playlists, all.playlists)) << "cut at " << cut;
        EXPECT_TRUE(isPrefixOf(reading.memberTitles, all.memberTitles)) << "cut at " << cut;
    }
}

TEST(DamagedITunesDb, KeepsEveryTrackThatWasFinishedBeforeTheCut)
{
    const QByteArray whole = ITunesDbWriter::write(smallLibrary());
    for (int n = 1; n <= 3; ++n) {
        const qsizetype end = endOf(whole, "mhit", n);
        EXPECT_EQ(Reading(whole.first(end)).titles.size(), n);
        EXPECT_EQ(Reading(whole.first(end - 1)).titles.size(), n - 1);
    }
}

TEST(DamagedITunesDb, SurvivesEveryFieldReplaced)
{
    const QByteArray whole = ITunesDbWriter::write(smallLibrary());
    for (qsizetype offset = 0; offset + 4 <= whole.size(); ++offset) {
        for (const quint32 value : {0U, 1U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
            const Reading reading(with(whole, offset, value));
            EXPECT_LE(reading.titles.size(), whole.size() / 12) << offset << " is " << value;
        }
    }
}

TEST(DamagedITunesDb, GoesOnBehindARecordTooSmallToStepOver)
{
    const QByteArray whole = ITunesDbWriter::write(smallLibrary());
    const qsizetype second = whole.indexOf("mhit", whole.indexOf("mhit") + 1);
    for (const quint32 length : {0U, 1U, 11U}) {
        const Reading reading(with(whole, second + 8, length));
        EXPECT_EQ(reading.titles, QStringList({"Title 1", "Title 2", "Title 3"}));
        EXPECT_EQ(reading.playlists, QStringList({"First", "Second"}));
    }
}

TEST(DamagedITunesDb, BelievesNoCount)
{
    const QByteArray whole = ITunesDbWriter::write(smallLibrary());
    const qsizetype list = whole.indexOf("mhlt");
    const Reading reading(with(whole, list + 8, 0xFFFFFFFF));
    EXPECT_EQ(reading.titles.size(), 3);
}

TEST(DamagedITunesDb, ReadsNoTextPastItsRecord)
{
    const QByteArray whole = ITunesDbWriter::write(smallLibrary());
    const qsizetype object = whole.indexOf("mhod", endOf(whole, "mhit", 1));
    for (const quint32 length : {15U, 16U, 2000U, 0x80000000U, 0xffffffffU}) {
        const Reading reading(with(whole, object + 28, length));
        EXPECT_EQ(reading.titles, QStringList({"Title 1", "Title 2", "Title 3"}));
        EXPECT_EQ(reading.playlists, QStringList({"First", "Second"}));
        EXPECT_EQ(reading.problems.size(), 1U) << length;
    }
}

TEST(DamagedITunesDb, ReadsRecordsThatOverlapOnlyOnce)
{
    // Each data set claims the same long list behind it: read for each of them, the work would
    // grow with the square of the file.
    constexpr int Sets = 3000;
    QByteArray database = ITunesDbWriter::database(0x19, {});
    QByteArray sets;
    for (int i = 0; i < Sets; ++i) {
        QByteArray set(16, '\0');
        qToLittleEndian<quint32>(quint32((Sets - i) * 16), set.data() + 4);
        qToLittleEndian<quint32>(16, set.data() + 8);
        qToLittleEndian<quint32>(1, set.data() + 12);
        sets += set;
    }
    database = with(database, 20, Sets) + sets;
    QByteArray list(12, '\0');
    qToLittleEndian<quint32>(12, list.data() + 4);
    qToLittleEndian<quint32>(Sets, list.data() + 8);
    QByteArray tracks;
    for (int i = 0; i < Sets; ++i)
        tracks += ITunesDbWriter::track(smallLibrary().tracks[0], std::vector<QByteArray>());
    EXPECT_LE(Reading(database + list + tracks).titles.size(), Sets);
}

TEST(DamagedITunesDb, IsReadAsFarAsItsRecordsReachAndNotCopiedWhenItsFileIsLarger)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("iPod_Control/iTunes/iTunesDB");
    Files::write(path, ITunesDbWriter::write(smallLibrary()));
    for (const int bits : {32, 42}) {
        QFile::remove(Utility::logFolder() + "/iTunesDB");
        ASSERT_TRUE(QFile::resize(path, qint64(1) << bits));
        iPodDevice device(folder.path());
        EXPECT_EQ(device.trackDb()->tracks().size(), 3U);
        EXPECT_EQ(device.trackDb()->playlists().size(), 2U);
        EXPECT_TRUE(device.trackDb()->problems().empty())
            << device.trackDb()->problems().begin()->text().toStdString();
        EXPECT_FALSE(QFileInfo::exists(Utility::logFolder() + "/iTunesDB"));
    }
}

TEST(ITunesDbDiagnosis, LeavesACopyInTheLogFolder)
{
    const QTemporaryDir folder;
    const QByteArray database = ITunesDbWriter::write(smallLibrary());
    Files::write(folder.filePath("iPod_Control/iTunes/iTunesDB"), database);
    iPodDevice device(folder.path());
    EXPECT_NE(device.trackDb(), nullptr);
    EXPECT_EQ(Files::read(Utility::logFolder() + "/iTunesDB"), database);
}

TEST(DamagedITunesDb, GivesNothingForAnEmptyFile)
{
    const Reading reading{QByteArray()};
    EXPECT_TRUE(reading.titles.isEmpty());
    EXPECT_TRUE(reading.playlists.isEmpty());
}
