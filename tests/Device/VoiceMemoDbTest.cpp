#include "Device/VoiceMemoDb.h"

#include "Device/iPod/iPodDevice.h"
#include "SqlFixture.h"

#include <QLocale>
#include <QTimeZone>

#include <algorithm>

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

TEST_F(VoiceMemoDbTest, ReadsTheNewestRecordingsOutOfTheLog)
{
    SqliteWriter file(path("Recordings.db"));
    SqliteLibraries::createRecordings(file);
    file.run("insert into ZRECORDING (ZDURATION, ZDATE, ZPATH) values (3, 0, 'a.m4a')");
    file.keepRowsInLog();
    file.run("insert into ZRECORDING (ZDURATION, ZDATE, ZPATH) values (4, 0, 'b.m4a')");
    put("Recordings.db", OnDevice);
    EXPECT_EQ(device.voiceMemoDb()->memos().size(), 2U);
    EXPECT_TRUE(device.voiceMemoDb()->problems().empty());
}

TEST_F(VoiceMemoDbTest, ReadsAVolumeLikeAPhone)
{
    QDir().mkpath(path("player/iPod_Control"));
    SqliteLibraries::writeRecordings(path("player/Recordings/Recordings.db"),
                                     {{5, 0, "/var/mobile/Media/Recordings/a.m4a"}});
    iPodDevice player(path("player"));
    ASSERT_NE(player.voiceMemoDb(), nullptr);
    ASSERT_EQ(player.voiceMemoDb()->memos().size(), 1U);
    EXPECT_EQ(player.voiceMemoDb()->memos()[0]->path, path("player/Recordings/a.m4a"));
}

TEST_F(VoiceMemoDbTest, ReadsTheDeviceOnceAndLeavesACopyForDiagnosis)
{
    VoiceMemoDb& db = read({{1, 0, "a.m4a"}});
    EXPECT_EQ(db.memos().size(), 1U);
    EXPECT_EQ(Files::read(Utility::logFolder() + "/Recordings.db"),
              Files::read(path("Recordings.db")));
    read({{1, 0, "a.m4a"}, {2, 0, "b.m4a"}});
    EXPECT_EQ(device.voiceMemoDb(), &db);
    EXPECT_EQ(db.memos().size(), 1U);
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(VoiceMemoDbTest, ReadsColumnsOfOtherTypes)
{
    SqliteWriter file(path("Recordings.db"));
    file.run("create table ZRECORDING (a, b, c, d, e, f, g);"
             "insert into ZRECORDING default values;"
             "insert into ZRECORDING values (0, 0, 0, 0, '12.5', '60', 17);"
             "insert into ZRECORDING values (0, 0, 0, 0, 'long', x'ff', x'612e6d3461');"
             "insert into ZRECORDING values (0, 0, 0, 0, 1e999, 1e999, cast(x'ff41' as text));"
             "insert into ZRECORDING values (0, 0, 0, 0, -1, -9223372036854775808, 'b/')");
    put("Recordings.db", OnDevice);
    const std::vector<Track*>& memos = device.voiceMemoDb()->memos();
    ASSERT_EQ(memos.size(), 5U);
    EXPECT_EQ(memos[0]->duration, 0.0);
    EXPECT_EQ(memos[0]->title, shortText(reference));
    EXPECT_EQ(memos[0]->path, "/Volumes/P/Recordings");
    EXPECT_EQ(memos[1]->duration, 12.5);
    EXPECT_EQ(memos[1]->title, shortText(reference.addSecs(60)));
    EXPECT_EQ(memos[1]->path, "/Volumes/P/Recordings/17");
    EXPECT_EQ(memos[2]->title, shortText(reference));
    EXPECT_EQ(memos[2]->path, "/Volumes/P/Recordings/a.m4a");
    EXPECT_EQ(memos[3]->title, shortText(reference)) << "no such time exists";
    EXPECT_EQ(memos[3]->path, "/Volumes/P/Recordings") << "a file that cannot be named is none";
    EXPECT_EQ(memos[4]->title, shortText(reference));
}

TEST_F(VoiceMemoDbTest, KeepsWhatItReadBeforeAndBehindTheDamage)
{
    std::vector<SqliteLibraries::Recording> recordings;
    for (int i = 0; i < 500; ++i)
        recordings.push_back({i, i, QString("%1.m4a").arg(i)});
    SqliteLibraries::writeRecordings(path("Recordings.db"), recordings);
    const QByteArray whole = Files::read(path("Recordings.db"));
    const auto lengthsOf = [this](const QByteArray& bytes) {
        MemoryDevice other;
        other.put(OnDevice, bytes);
        std::vector<double> lengths;
        if (VoiceMemoDb* db = other.voiceMemoDb()) {
            for (const Track* memo : db->memos())
                lengths.push_back(memo->duration);
        }
        return lengths;
    };
    ASSERT_EQ(lengthsOf(whole).size(), 500U);
    for (qsizetype cut = 0; cut < whole.size(); cut += cut < 200 ? 1 : 509)
        EXPECT_LE(lengthsOf(whole.first(cut)).size(), 500U) << "cut at " << cut;
    for (qsizetype i = 0; i < whole.size(); i += i < 200 ? 1 : 307) {
        QByteArray bytes = whole;
        bytes[i] = char(~bytes[i]);
        (void)lengthsOf(bytes);
    }

    constexpr int PageSize = 4096;
    QByteArray torn = whole;
    const qsizetype page = whole.indexOf("400.m4a") / PageSize * PageSize; // a page in the middle
    torn.replace(page, PageSize, QByteArray(PageSize, '\xff'));
    const std::vector<double> kept = lengthsOf(torn);
    EXPECT_GT(kept.size(), 0U);
    EXPECT_LT(kept.size(), 500U);
    EXPECT_EQ(kept.front(), 0);
    EXPECT_EQ(kept.back(), 499);
    EXPECT_TRUE(std::is_sorted(kept.begin(), kept.end()));
    EXPECT_EQ(std::count(kept.begin(), kept.end(), 400), 0);
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(VoiceMemoDbTest, ReadsNoViewForItsTable)
{
    SqliteWriter(path("Recordings.db"))
        .run("create view ZRECORDING as with recursive n(i) as (select 1 union all select i + 1 "
             "from n) select i, i, i, i, i, i, i from n");
    put("Recordings.db", OnDevice);
    EXPECT_TRUE(device.voiceMemoDb()->memos().empty());
}
