#include "Device/VoiceMemoDb.h"

#include "SqlFixture.h"

#include <QLocale>
#include <QTimeZone>

namespace
{
class VoiceMemoDbTest : public SqlFixture
{
protected:
    VoiceMemoDb& read(const std::vector<SqliteLibraries::Recording>& recordings)
    {
        SqliteLibraries::writeRecordings(path("Recordings.db"), recordings);
        put("Recordings.db", OnDevice);
        return *device.voiceMemoDb();
    }
    static QString shortText(const QDateTime& time)
    {
        return QLocale::system().toString(time.toLocalTime(), QLocale::ShortFormat);
    }

    const QString OnDevice = "/Volumes/P/Recordings/Recordings.db";
    const QDateTime reference{QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc()};
};
} // namespace

TEST_F(VoiceMemoDbTest, ListsTheRecordingsInRowOrder)
{
    VoiceMemoDb& db =
        read({{12.5, 400000000, "a.m4a"}, {7, 300000000.25, "b.m4a"}, {0, 1, "c.m4a"}});
    ASSERT_EQ(db.memos().size(), 3U);
    const QStringList files = {"a.m4a", "b.m4a", "c.m4a"};
    for (std::size_t i = 0; i < 3; ++i) {
        const Track& memo = *db.memos()[i];
        EXPECT_EQ(memo.type, VoiceMemoTrack);
        EXPECT_TRUE(memo.album.isNull());
        EXPECT_TRUE(memo.artist.isNull());
        EXPECT_TRUE(memo.genre.isNull());
        EXPECT_FALSE(memo.isPodcast);
        EXPECT_EQ(memo.path, "/Volumes/P/Recordings/" + files[qsizetype(i)]);
    }
    EXPECT_EQ(db.memos()[0]->duration, 12.5);
    EXPECT_EQ(db.memos()[1]->title, shortText(reference.addSecs(300000000)));
}

TEST_F(VoiceMemoDbTest, NamesARecordingByItsLocalTime)
{
    VoiceMemoDb& db = read({{1, 0, "a.m4a"}, {1, QVariant(), "b.m4a"}});
    EXPECT_EQ(db.memos().at(0)->title, shortText(reference));
    EXPECT_EQ(db.memos().at(1)->title, shortText(reference)) << "NULL is the reference date";
}

TEST_F(VoiceMemoDbTest, FindsEachFileInTheRecordingsFolderWhateverThePathSays)
{
    VoiceMemoDb& db = read({{1, 0, "/var/mobile/Media/Recordings/20100701 101010.m4a"},
                            {1, 0, "file.m4a"},
                            {1, 0, QVariant()},
                            {1, 0, "../../escape.m4a"}});
    EXPECT_EQ(db.memos().at(0)->path, "/Volumes/P/Recordings/20100701 101010.m4a");
    EXPECT_EQ(db.memos().at(1)->path, "/Volumes/P/Recordings/file.m4a");
    EXPECT_EQ(db.memos().at(2)->path, "/Volumes/P/Recordings");
    EXPECT_EQ(db.memos().at(3)->path, "/Volumes/P/Recordings/escape.m4a");
}

TEST_F(VoiceMemoDbTest, IsNotThereWithoutADatabase)
{
    EXPECT_EQ(device.voiceMemoDb(), nullptr);
    VoiceMemoDb& db = read({});
    EXPECT_EQ(device.voiceMemoDb(), &db);
    EXPECT_TRUE(db.memos().empty());
}

TEST_F(VoiceMemoDbTest, IsEmptyForWhatIsNoSuchDatabase)
{
    SqliteWriter(path("other.db")).run("create table OTHER (a)");
    SqliteWriter(path("narrow.db"))
        .run("create table ZRECORDING (a, b); insert into ZRECORDING values (1, 2)");
    for (const QByteArray& bytes : {QByteArray(""), Files::content(100), Files::content(10000),
                                    Files::read(path("other.db"))}) {
        MemoryDevice other;
        other.put(OnDevice, bytes);
        EXPECT_TRUE(other.voiceMemoDb()->memos().empty());
    }
    MemoryDevice narrow;
    narrow.put(OnDevice, Files::read(path("narrow.db")));
    EXPECT_EQ(narrow.voiceMemoDb()->memos().at(0)->path, "/Volumes/P/Recordings");
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(VoiceMemoDbTest, ReadsTheMainFileOfADatabaseInWriteAheadMode)
{
    SqliteWriter file(path("Recordings.db"));
    SqliteLibraries::createRecordings(file);
    file.run("insert into ZRECORDING (ZDURATION, ZDATE, ZPATH) values (3, 0, 'a.m4a')");
    file.keepRowsInLog();
    file.run("insert into ZRECORDING (ZDURATION, ZDATE, ZPATH) values (4, 0, 'b.m4a')");
    put("Recordings.db", OnDevice);
    EXPECT_EQ(device.voiceMemoDb()->memos().size(), 1U) << "its log is not taken along";
}
