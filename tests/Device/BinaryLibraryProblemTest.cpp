#include "Device/Device.h"
#include "Device/PhotoDb.h"
#include "Device/TrackDb.h"
#include "support/Files.h"
#include "support/ITunesDbWriter.h"
#include "support/PhotoDatabaseWriter.h"
#include "support/WrongFields.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace
{
const QString MusicPath = "/P/iPod_Control/iTunes/iTunesDB";
const QString PhotosPath = "/P/Photos/Photo Database";

/// A device of one file, which may refuse each question, and may claim any size.
class OneFileDevice final : public Device
{
public:
    OneFileDevice(QString path, QByteArray content)
        : _path(std::move(path))
        , _content(std::move(content))
    {
        _prefix = "/P";
        _controlPath = "/P/iPod_Control";
    }
    ~OneFileDevice() override { releaseReaders(); }

    std::optional<Failure> infoFailure;
    std::optional<Failure> readFailure;
    std::optional<qint64> size;
    quint64 bytesAskedFor = 0;

    Expected<FileInfo> info(const QString& path) override
    {
        if (path != _path)
            return Failure{Failure::Kind::Missing, "missing", {}};
        if (infoFailure)
            return *infoFailure;
        return FileInfo{FileInfo::Kind::File, size.value_or(_content.size())};
    }
    Expected<QByteArray> readFile(const QString& path) override
    {
        return readPart(path, 0, quint64(size.value_or(_content.size())));
    }
    Expected<QByteArray> readPart(const QString& path, quint64 offset, quint64 length) override
    {
        if (path != _path || readFailure)
            return readFailure.value_or(Failure{Failure::Kind::Missing, "missing", {}});
        bytesAskedFor += length;
        return _content.mid(qsizetype(offset), qsizetype(length));
    }

private:
    QString _path;
    QByteArray _content;
};

/// What both readers do alike is tried on each.
struct LibraryCase {
    const char* name;
    QString path;
    QByteArray whole;
    const char* library; ///< what the words call it

    std::vector<Problem> problems(Device& device) const
    {
        return path == MusicPath ? tracks(device) : photos(device);
    }

private:
    static std::vector<Problem> tracks(Device& device)
    {
        TrackDb* reader = device.trackDb();
        (void)reader->tracks();
        return reader->problems().all();
    }
    static std::vector<Problem> photos(Device& device)
    {
        PhotoDb* reader = device.photoDb();
        (void)reader->photos();
        return reader->problems().all();
    }
};

void PrintTo(const LibraryCase& library, std::ostream* out)
{
    *out << library.name;
}

QByteArray musicOf(int count)
{
    TestLibrary library;
    library.name = "Library";
    for (int i = 1; i <= count; ++i) {
        TestTrack track;
        track.id = quint32(i);
        track.title = QString("Title %1").arg(i);
        library.tracks.push_back(track);
    }
    if (count > 0)
        library.playlists = {{"Mix", {1}}};
    return ITunesDbWriter::write(library);
}

QByteArray photosOf(int count)
{
    TestPhotoLibrary library;
    for (int i = 1; i <= count; ++i) {
        TestPhoto photo;
        photo.id = quint32(i);
        photo.fullSizeFile = ":Full:A.jpg";
        library.photos.push_back(photo);
    }
    if (count > 0)
        library.albums = {{"Trip", {1}}};
    return PhotoDatabaseWriter::write(library);
}

class BinaryLibrary : public testing::TestWithParam<LibraryCase>
{
protected:
    std::vector<Problem> problemsOf(const QByteArray& content)
    {
        OneFileDevice device(GetParam().path, content);
        return GetParam().problems(device);
    }
    void expectOne(const std::vector<Problem>& problems, Problem::Kind kind)
    {
        ASSERT_EQ(problems.size(), 1U);
        EXPECT_EQ(problems[0].kind, kind) << problems[0].text().toStdString();
        EXPECT_TRUE(problems[0].words.contains(GetParam().library))
            << problems[0].text().toStdString();
    }
    QByteArray damaged(const char* tag, int offset, quint32 value)
    {
        const QByteArray& whole = GetParam().whole;
        return WrongFields::with(whole, whole.indexOf(tag) + offset, value);
    }
};
} // namespace

TEST_P(BinaryLibrary, HasNoProblemWhenItIsWhole)
{
    EXPECT_TRUE(problemsOf(GetParam().whole).empty());
}

TEST_P(BinaryLibrary, IsDamagedWhenItsFileIsEmpty)
{
    expectOne(problemsOf({}), Problem::Kind::Damaged);
}

TEST_P(BinaryLibrary, IsNotUnderstoodWhenItIsSomethingElse)
{
    QRandomGenerator random(5);
    for (const int size : {1, 5, 24, 500, 20000}) {
        QByteArray bytes(size, Qt::Uninitialized);
        for (char& byte : bytes)
            byte = char(random.bounded(256));
        expectOne(problemsOf(bytes), Problem::Kind::NotUnderstood);
        expectOne(problemsOf(QByteArray(size, '\0')), Problem::Kind::NotUnderstood);
    }
    expectOne(problemsOf("SQLite format 3" + QByteArray(4000, '\1')), Problem::Kind::NotUnderstood);
}

TEST_P(BinaryLibrary, IsNotUnderstoodWhenAllBehindItsHeaderIsCompressed)
{
    const QByteArray& whole = GetParam().whole;
    const auto header = qsizetype(WrongFields::at(whole, 4));
    const QByteArray packed = whole.first(header) + qCompress(whole.sliced(header)).sliced(4);
    expectOne(problemsOf(WrongFields::with(packed, 8, quint32(packed.size()))),
              Problem::Kind::NotUnderstood);
}

TEST_P(BinaryLibrary, SaysThatItIsCutAtEveryByte)
{
    const QByteArray& whole = GetParam().whole;
    for (qsizetype cut = 4; cut < whole.size(); cut += cut < 400 ? 1 : 37) {
        const std::vector<Problem> problems = problemsOf(whole.first(cut));
        ASSERT_FALSE(problems.empty()) << cut;
        for (const Problem& problem : problems)
            EXPECT_EQ(problem.kind, Problem::Kind::Damaged) << cut;
    }
}

TEST_P(BinaryLibrary, IsUnreadableWhenTheDeviceRefusesIt)
{
    for (const bool isProbeRefused : {false, true}) {
        OneFileDevice device(GetParam().path, GetParam().whole);
        device.readFailure = Failure{Failure::Kind::Unreadable, "no right", "Permission denied"};
        if (isProbeRefused)
            device.infoFailure = device.readFailure;
        const std::vector<Problem> problems = GetParam().problems(device);
        expectOne(problems, Problem::Kind::Unreadable);
        EXPECT_TRUE(problems[0].exact.contains("Permission denied"));
    }
}

TEST_P(BinaryLibrary, IsLostWhenTheDeviceIsGone)
{
    OneFileDevice device(GetParam().path, GetParam().whole);
    device.infoFailure = Failure{Failure::Kind::Lost, "disconnected", {}};
    expectOne(GetParam().problems(device), Problem::Kind::Lost);
}

TEST_P(BinaryLibrary, IsReadOnlyAsFarAsItsRecordsReach)
{
    OneFileDevice device(GetParam().path, GetParam().whole);
    device.size = qint64(1) << 32;
    EXPECT_TRUE(GetParam().problems(device).empty());
    EXPECT_LT(device.bytesAskedFor, quint64(65) << 20);
}

TEST_P(BinaryLibrary, IsCutOffWhenItIsLargerThanAnyPlayerHasIt)
{
    OneFileDevice device(GetParam().path, WrongFields::with(GetParam().whole, 8, 0xffffffff));
    device.size = qint64(1) << 32;
    expectOne(GetParam().problems(device), Problem::Kind::CutOff);
    EXPECT_LT(device.bytesAskedFor, quint64(513) << 20);
}

TEST_P(BinaryLibrary, SaysHowManyItemsAreMissing)
{
    const bool isMusic = GetParam().path == MusicPath;
    const char* list = isMusic ? "mhlt" : "mhli";
    const QString items = isMusic ? "tracks" : "photos";
    const auto more = problemsOf(damaged(list, 8, 9));
    expectOne(more, Problem::Kind::Damaged);
    EXPECT_TRUE(more[0].words.contains("7 of 9 " + items)) << more[0].words.toStdString();
    const auto fewer = problemsOf(damaged(list, 8, 5));
    expectOne(fewer, Problem::Kind::Damaged);
    EXPECT_TRUE(fewer[0].words.contains("2 " + items)) << fewer[0].words.toStdString();
    const auto nonsense = problemsOf(damaged(list, 8, 0xfffffff0));
    expectOne(nonsense, Problem::Kind::Damaged);
    EXPECT_TRUE(nonsense[0].words.contains("7 could")) << nonsense[0].words.toStdString();
}

TEST_P(BinaryLibrary, SaysHowManyItemsOfACutFileCouldBeRead)
{
    const bool isMusic = GetParam().path == MusicPath;
    const QByteArray& whole = GetParam().whole;
    const qsizetype list = whole.indexOf(isMusic ? "mhlt" : "mhli");
    const char* item = isMusic ? "mhit" : "mhii";
    qsizetype third = list;
    for (int i = 0; i < 3; ++i)
        third = whole.indexOf(item, third + 1);
    const std::vector<Problem> problems = problemsOf(whole.first(third + 20));
    ASSERT_EQ(problems.size(), 2U);
    EXPECT_TRUE(problems[1].words.contains("2 of 7")) << problems[1].words.toStdString();
}

INSTANTIATE_TEST_SUITE_P(, BinaryLibrary,
                         testing::Values(LibraryCase{"Music", MusicPath, musicOf(7), "music"},
                                         LibraryCase{"Photos", PhotosPath, photosOf(7), "photo"}),
                         [](const auto& c) { return std::string(c.param.name); });

TEST(EmptyBinaryLibrary, HasNoProblemWhenItIsWhole)
{
    OneFileDevice player(MusicPath, musicOf(0));
    EXPECT_TRUE(player.trackDb()->tracks().empty());
    EXPECT_TRUE(player.trackDb()->problems().empty());
    OneFileDevice frame(PhotosPath, photosOf(0));
    EXPECT_TRUE(frame.photoDb()->photos().empty());
    EXPECT_TRUE(frame.photoDb()->problems().empty());
}

TEST(EmptyBinaryLibrary, IsNoneWhereThereIsNoFile)
{
    OneFileDevice device("/P/other", {});
    EXPECT_EQ(device.trackDb(), nullptr);
    EXPECT_EQ(device.photoDb(), nullptr);
}
