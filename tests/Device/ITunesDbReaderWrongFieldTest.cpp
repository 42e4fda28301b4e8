#include "Device/TrackDb.h"
#include "support/ITunesDbWriter.h"
#include "support/MemoryDevice.h"
#include "support/WrongFields.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>

namespace
{
using WrongFields::Cost;

const std::vector<WrongFields::Layout> Layouts = {
    {"mhbd", {{4, Cost::Nothing}, {8, Cost::Nothing}, {20, Cost::Items}}},
    {"mhsd", {{4, Cost::Nothing}, {8, Cost::Nothing}}},
    {"mhlt", {{4, Cost::Nothing}, {8, Cost::Items}}},
    {"mhlp", {{4, Cost::Nothing}, {8, Cost::Items}}},
    {"mhit", {{4, Cost::Nothing}, {8, Cost::Nothing}, {12, Cost::Part}}, true},
    {"mhyp", {{4, Cost::Nothing}, {8, Cost::Nothing}, {12, Cost::Part}, {16, Cost::Part}}, true},
    {"mhip", {{4, Cost::Nothing}, {8, Cost::Nothing}, {24, Cost::Value}}},
    {"mhod", {{4, Cost::Nothing}, {8, Cost::Nothing}, {12, Cost::Value}, {28, Cost::Value}}}};

QString words(QRandomGenerator& random)
{
    static const QStringList Some = {"One",         "Rivers", QString::fromUtf8("Été"),       "",
                                     "A long name", "Under",  QString::fromUtf8("夜の喫茶店")};
    QString text;
    for (int i = random.bounded(4); i >= 0; --i)
        text += Some[random.bounded(int(Some.size()))] + u' ';
    return text;
}

TestLibrary randomLibrary(QRandomGenerator& random)
{
    TestLibrary library;
    library.name = "Library";
    const int count = random.bounded(1, 9);
    for (int i = 0; i < count; ++i) {
        TestTrack track;
        track.id = quint32(i * 7 + 52);
        track.title = QString("%1 %2").arg(i).arg(words(random));
        track.artist = random.bounded(4) ? words(random) : QString();
        track.album = words(random);
        track.genre = random.bounded(3) ? words(random) : QString();
        track.location = QString(":iPod_Control:Music:F%1:A.mp3").arg(i, 2, 10, QChar('0'));
        track.milliseconds = random.bounded(1000000U);
        library.tracks.push_back(track);
    }
    for (int i = random.bounded(4); i > 0; --i) {
        TestPlaylist playlist{QString("List %1 %2").arg(i).arg(words(random)), {}};
        for (int k = random.bounded(6); k > 0; --k)
            playlist.trackIds.push_back(library.tracks[std::size_t(random.bounded(count))].id);
        library.playlists.push_back(playlist);
    }
    return library;
}

struct Reading {
    explicit Reading(const QByteArray& database)
    {
        MemoryDevice device;
        device.put("/Volumes/P/iPod_Control/iTunes/iTunesDB", database);
        TrackDb& db = *device.trackDb();
        for (const Track* track : db.tracks())
            tracks.append(QStringList({track->title, track->artist, track->album, track->genre,
                                       track->path, QString::number(track->duration)})
                              .join(u'|'));
        for (const Playlist* playlist : db.playlists()) {
            QString text = playlist->name + u':';
            for (const Track* track : playlist->tracks)
                text += track->path.section(u'/', -2, -2);
            playlists.append(text);
        }
        name = db.name();
        hasProblem = !db.problems().empty();
    }

    [[nodiscard]] QStringList everything() const { return tracks + playlists + QStringList(name); }

    QStringList tracks;
    QStringList playlists;
    QString name;
    bool hasProblem = false;
};

/// How many of the first are not among the second, each counted as often as it stands there.
int missing(const QStringList& first, QStringList second)
{
    int count = 0;
    for (const QString& one : first)
        count += second.removeOne(one) ? 0 : 1;
    return count;
}

/// What the wrong field costs, looked at from outside: all but the record hit is there.
void expectNoMoreLost(const Reading& all, const Reading& part, const WrongFields::Field& field,
                      bool isInTrack)
{
    EXPECT_LE(part.tracks.size(), all.tracks.size()) << "duplicates";
    EXPECT_LE(part.playlists.size(), all.playlists.size()) << "duplicates";
    switch (field.cost) {
    case Cost::Nothing:
        EXPECT_EQ(part.everything(), all.everything());
        break;
    case Cost::Part:
        EXPECT_TRUE(part.hasProblem || part.everything() == all.everything());
        [[fallthrough]];
    case Cost::Value:
        EXPECT_EQ(part.tracks.size(), all.tracks.size());
        EXPECT_EQ(part.playlists.size(), all.playlists.size());
        EXPECT_LE(missing(all.tracks, part.tracks), isInTrack ? 1 : 0);
        // A track without its path stands in its playlists all the same.
        if (!isInTrack) {
            EXPECT_LE(missing(all.playlists, part.playlists) + (part.name != all.name), 1);
        }
        break;
    case Cost::Items:
        EXPECT_EQ(part.tracks, all.tracks.first(part.tracks.size()));
        EXPECT_TRUE(part.hasProblem || part.everything() == all.everything());
        break;
    }
}

void tryField(const QByteArray& whole, const Reading& all, const WrongFields::Field& field,
              quint32 value)
{
    SCOPED_TRACE(QString("%1 at %2 in the record at %3")
                     .arg(value)
                     .arg(field.at)
                     .arg(field.record)
                     .toStdString());
    const Reading part(WrongFields::with(whole, field.at, value));
    expectNoMoreLost(all, part, field, whole.mid(field.record, 4) == "mhit");
}
} // namespace

TEST(WrongFieldOfITunesDb, CostsOneRecordInEveryField)
{
    QRandomGenerator random(11);
    for (int round = 0; round < 3; ++round) {
        const QByteArray whole = ITunesDbWriter::write(randomLibrary(random));
        const Reading all(whole);
        ASSERT_FALSE(all.hasProblem);
        for (const WrongFields::Field& field : WrongFields::in(whole, Layouts)) {
            for (const quint32 value :
                 WrongFields::valuesFor(WrongFields::at(whole, field.at), random))
                tryField(whole, all, field, value);
            if (HasFailure())
                return;
        }
    }
}

TEST(WrongFieldOfITunesDb, CostsOneRecordInManyLibraries)
{
    QRandomGenerator random(12);
    for (int round = 0; round < 260; ++round) {
        const QByteArray whole = ITunesDbWriter::write(randomLibrary(random));
        const Reading all(whole);
        const std::vector<WrongFields::Field> fields = WrongFields::in(whole, Layouts);
        for (int i = 0; i < 20; ++i) {
            const auto& field = fields[std::size_t(random.bounded(int(fields.size())))];
            const auto values = WrongFields::valuesFor(WrongFields::at(whole, field.at), random);
            tryField(whole, all, field, values[std::size_t(random.bounded(int(values.size())))]);
        }
        if (HasFailure())
            return;
    }
}
