#include "support/SqliteLibraries.h"

#include "Base/PathName.h"

#include <QFile>
#include <QHash>
#include <QStringList>
#include <QTemporaryDir>
#include <QtEndian>

namespace
{
constexpr quint32 PrimaryContainer = 0x00F00001;
constexpr quint32 FirstPlaylist = 0x00F00100;
constexpr int BaseLocationParts = 2; // "iPod_Control/Music"

/// Numbers for texts, as the tables of genres, artists and albums have them. A null text has
/// none.
class TextIds
{
public:
    QVariant operator()(const QString& text)
    {
        if (text.isNull())
            return {};
        qint64& id = _ids[text];
        if (id == 0) {
            id = (qint64(0x51) << 40) + _ids.size();
            _texts.append(text);
        }
        return id;
    }
    [[nodiscard]] const QStringList& texts() const { return _texts; }
    [[nodiscard]] qint64 idOf(const QString& text) const { return _ids.value(text); }

private:
    QHash<QString, qint64> _ids;
    QStringList _texts;
};

QVariant orNull(const QString& text)
{
    return text.isNull() ? QVariant() : QVariant(text);
}

/// A location split after the folder that holds all media.
struct Location {
    explicit Location(QString stored)
    {
        const QStringList parts = stored.replace(u':', u'/').split(u'/', Qt::SkipEmptyParts);
        base = parts.mid(0, BaseLocationParts).join(u'/');
        rest = parts.mid(BaseLocationParts).join(u'/');
    }
    QString base;
    QString rest;
};

constexpr int FirstBaseLocation = 5;
} // namespace

qint64 SqliteLibraries::pid(quint32 number)
{
    // Any bits above bit 31, among them the sign.
    const quint64 high = quint64(number * 2654435761U) << 32U;
    return qint64(high | number);
}

qint64 SqliteLibraries::primaryContainerPid()
{
    return pid(PrimaryContainer);
}

qint64 SqliteLibraries::playlistPid(std::size_t place)
{
    return pid(FirstPlaylist + quint32(place));
}

QByteArray SqliteLibraries::packedPids(const std::vector<quint32>& numbers)
{
    QByteArray packed;
    for (const quint32 number : numbers) {
        const qint64 stored = qToLittleEndian(pid(number));
        packed.append(reinterpret_cast<const char*>(&stored), sizeof stored);
    }
    return packed;
}

void SqliteLibraries::createLibrary(SqliteWriter& file)
{
    file.run(R"(
create table version_info (id integer primary key, major integer, minor integer, platform integer);
insert into version_info values (1, 1, 83, 2);
create table db_info (pid integer not null, primary_container_pid integer, media_folder_url text,
    audio_language integer, subtitle_language integer, genius_cuid text, bib blob,
    primary key (pid));
create table item (pid integer not null, revision_level integer, media_kind integer default 0,
    is_song integer default 0, is_audio_book integer default 0, is_music_video integer default 0,
    is_movie integer default 0, is_tv_show integer default 0, is_ringtone integer default 0,
    is_podcast integer default 0, date_modified integer default 0, year integer default 0,
    content_rating integer default 0, is_user_disabled integer default 0,
    remember_bookmark integer default 0, exclude_from_shuffle integer default 0,
    artwork_status integer default 0, start_time_ms real default 0, stop_time_ms real default 0,
    total_time_ms real default 0, total_burn_time_ms real, track_number integer default 0,
    track_count integer default 0, disc_number integer default 0, bpm integer default 0,
    relative_volume integer, eq_preset text, genre_id integer default 0,
    album_pid integer default 0, artist_pid integer default 0, title text, artist text,
    album text, album_artist text, composer text, comment text, grouping text, description text,
    sort_title text, sort_artist text, sort_album text, title_order integer,
    artist_order integer, album_order integer, physical_order integer, primary key (pid));
create table genre_map (id integer not null, genre text not null unique, genre_order integer,
    primary key (id));
create table album (pid integer not null, kind integer, artwork_status integer, name text,
    artist text, sort_order integer, primary key (pid));
create table artist (pid integer not null, kind integer, name text, sort_order integer,
    primary key (pid));
create table composer (pid integer not null, name text, sort_order integer, primary key (pid));
create table container (pid integer not null, distinguished_kind integer, date_created integer,
    name text, name_order integer, parent_pid integer, media_kinds integer, is_hidden integer,
    smart_is_folder integer, smart_criteria blob, primary key (pid));
create table item_to_container (item_pid integer, container_pid integer, physical_order integer,
    shuffle_order integer);
create table container_seed (container_pid integer not null, item_pid integer, seed_order integer,
    primary key (container_pid, seed_order));
create index idx_item_genre on item (genre_id);
create index idx_item_title on item (title_order);
create index idx_member on item_to_container (container_pid, physical_order);
create trigger container_gone after delete on container for each row begin
    delete from item_to_container where container_pid = old.pid; end;
create view songs as select pid, title, artist from item where is_song = 1;
)");
}

void SqliteLibraries::createLocations(SqliteWriter& file)
{
    file.run(R"(
create table base_location (id integer not null, path text, kind integer, primary key (id));
create table location (item_pid integer not null, sub_id integer not null default 0,
    base_location_id integer default 0, location_type integer, location text,
    extension integer, kind_id integer default 0, date_created integer default 0,
    file_size integer default 0, file_creator integer, file_type integer,
    num_dir_levels_file integer, num_dir_levels_lib integer, primary key (item_pid, sub_id));
create index idx_location_file on location (location);
)");
}

void SqliteLibraries::createMediaLibrary(SqliteWriter& file)
{
    file.run(R"(
create table _database_settings (key text primary key, value text);
insert into _database_settings values ('UserVersion', '2120010'), ('Language', 'en');
create table db_info (db_pid integer primary key, primary_container_pid integer not null default 0,
    media_folder_url text, audio_language integer not null default -1, sync_anchor text);
create table item (item_pid integer primary key, media_type integer not null default 0,
    title_order integer not null default 0, title_order_section integer not null default 27,
    item_artist_pid integer not null default 0, item_artist_order integer not null default 0,
    series_name_order integer not null default 0, album_pid integer not null default 0,
    album_order integer not null default 0, album_artist_pid integer not null default 0,
    composer_pid integer not null default 0, genre_id integer not null default 0,
    genre_order integer not null default 0, disc_number integer not null default 0,
    track_number integer not null default 0, base_location_id integer not null default 0,
    remote_location_id integer not null default 0, exclude_from_shuffle integer default 0,
    keep_local integer not null default 0, in_my_library integer not null default 1,
    date_added integer not null default 0);
create table item_extra (item_pid integer primary key, title text, sort_title text,
    disc_count integer not null default 0, track_count integer not null default 0,
    total_time_ms real not null default 0, year integer not null default 0, location text,
    file_size integer not null default 0, integrity blob, is_podcast integer not null default 0,
    media_kind integer not null default 0, content_rating integer not null default 0,
    chapter_data blob, comment text, grouping text, description text, copyright text,
    version text);
create table item_stats (item_pid integer primary key, user_rating integer not null default 0,
    play_count_user integer not null default 0, date_played integer not null default 0,
    bookmark_time_ms real not null default 0, hidden integer not null default 0);
create table item_store (item_pid integer primary key, store_item_id integer not null default 0,
    purchase_history_id integer not null default 0, account_id integer not null default 0);
create table item_artist (item_artist_pid integer primary key, item_artist text,
    sort_item_artist text, series_name text, sync_id integer not null default 0);
create table album (album_pid integer primary key, album text, sort_album text,
    album_artist_pid integer not null default 0, feed_url text, season_number integer,
    album_year integer not null default 0, user_rating integer not null default 0);
create table genre (genre_id integer primary key, genre text, grouping_key blob);
create table base_location (base_location_id integer primary key, path text not null);
create table container (container_pid integer primary key,
    distinguished_kind integer not null default 0, name text, name_order integer,
    date_created integer not null default 0, parent_pid integer not null default 0,
    contained_media_type integer not null default 0, is_hidden integer not null default 0,
    smart_criteria blob, play_order integer not null default 0);
create table container_items (container_pid integer primary key, item_pid_data blob,
    shuffle_order_data blob, keep_local integer not null default 0);
create index item_by_album on item (album_pid, disc_number, track_number);
create index item_by_artist on item (item_artist_pid);
create index item_by_genre on item (genre_id);
create index extra_by_location on item_extra (location);
create trigger item_gone after delete on item for each row begin
    delete from item_extra where item_pid = old.item_pid; end;
create view playable as select item_pid from item where base_location_id > 0;
)");
}

void SqliteLibraries::createRecordings(SqliteWriter& file)
{
    file.run(R"(
create table Z_METADATA (Z_VERSION integer primary key, Z_UUID varchar(255), Z_PLIST blob);
create table Z_PRIMARYKEY (Z_ENT integer primary key, Z_NAME varchar, Z_SUPER integer,
    Z_MAX integer);
create table ZRECORDING (Z_PK integer primary key, Z_ENT integer, Z_OPT integer,
    ZITEMID integer, ZDURATION float, ZDATE timestamp, ZPATH varchar, ZLABELPRESET integer,
    ZCUSTOMLABEL varchar);
create index ZRECORDING_ZITEMID on ZRECORDING (ZITEMID);
)");
}

void SqliteLibraries::writeLibrary(const QString& folder, const TestLibrary& library)
{
    SqliteWriter items(PathName::join(folder, u"Library.itdb"));
    SqliteWriter files(PathName::join(folder, u"Locations.itdb"));
    createLibrary(items);
    createLocations(files);
    items.run("begin");
    files.run("begin");
    items.into("db_info (pid, primary_container_pid, media_folder_url)", 3)
        .add({pid(77), primaryContainerPid(), QString()});

    TextIds genres;
    TextIds folders;
    auto item = items.into("item (pid, title, is_podcast, media_kind, album, artist, genre_id, "
                           "total_time_ms, is_song, sort_title, physical_order, comment)",
                           12);
    auto member = items.into("item_to_container", 4);
    auto file = files.into("location (item_pid, base_location_id, location, file_size)", 4);
    for (std::size_t i = 0; i < library.tracks.size(); ++i) {
        const TestTrack& track = library.tracks[i];
        item.add({pid(track.id), orNull(track.title), track.podcast, track.mediaKind,
                  orNull(track.album), orNull(track.artist), genres(track.genre),
                  double(track.milliseconds), track.mediaKind == 1, orNull(track.title), qint64(i),
                  QStringLiteral("bought in a small shop")});
        member.add({pid(track.id), primaryContainerPid(), qint64(i), QVariant()});
        if (!track.location.isNull()) {
            const Location place(track.location);
            file.add({pid(track.id), folders(place.base), place.rest, 4096});
        }
    }
    for (const QString& genre : genres.texts())
        items.into("genre_map (id, genre)", 2).add({genres.idOf(genre), genre});
    for (const QString& folderPath : folders.texts())
        files.into("base_location (id, path)", 2).add({folders.idOf(folderPath), folderPath});

    auto container = items.into("container (pid, name, distinguished_kind)", 3);
    container.add({primaryContainerPid(), orNull(library.name), 0});
    for (std::size_t p = 0; p < library.playlists.size(); ++p) {
        container.add({playlistPid(p), orNull(library.playlists[p].name), 0});
        qint64 order = 0;
        for (const quint32 id : library.playlists[p].trackIds)
            member.add({pid(id), playlistPid(p), order++, QVariant()});
    }
    items.run("commit");
    files.run("commit");
}

namespace
{
void fillMediaLibrary(SqliteWriter& file, const TestLibrary& library)
{
    using namespace SqliteLibraries;
    file.run("begin");
    file.into("db_info (db_pid, primary_container_pid)", 2).add({pid(77), primaryContainerPid()});
    TextIds genres;
    TextIds artists;
    TextIds albums;
    QStringList folders;
    const auto idOr0 = [](const QVariant& id) { return id.isNull() ? QVariant(0) : id; };
    auto item = file.into("item (item_pid, media_type, genre_id, album_pid, item_artist_pid, "
                          "base_location_id, title_order)",
                          7);
    auto extra = file.into("item_extra (item_pid, title, sort_title, total_time_ms, location, "
                           "is_podcast, media_kind, file_size, integrity)",
                           9);
    auto stats = file.into("item_stats (item_pid)", 1);
    std::vector<quint32> all;
    for (std::size_t i = 0; i < library.tracks.size(); ++i) {
        const TestTrack& track = library.tracks[i];
        const Location place(track.location);
        if (!folders.contains(place.base))
            folders.append(place.base);
        const qint64 base =
            track.location.isNull() ? 0 : FirstBaseLocation + folders.indexOf(place.base);
        item.add({pid(track.id), 8, idOr0(genres(track.genre)), idOr0(albums(track.album)),
                  idOr0(artists(track.artist)), base, qint64(i)});
        extra.add({pid(track.id), orNull(track.title), orNull(track.title),
                   double(track.milliseconds), place.rest, track.podcast, track.mediaKind, 4096,
                   QByteArray(32, 'i')});
        stats.add({pid(track.id)});
        all.push_back(track.id);
    }
    for (const QString& text : genres.texts())
        file.into("genre (genre_id, genre)", 2).add({genres.idOf(text), text});
    for (const QString& text : artists.texts())
        file.into("item_artist (item_artist_pid, item_artist)", 2).add({artists.idOf(text), text});
    for (const QString& text : albums.texts())
        file.into("album (album_pid, album)", 2).add({albums.idOf(text), text});
    for (qsizetype i = 0; i < folders.size(); ++i)
        file.into("base_location", 2).add({FirstBaseLocation + i, folders[i]});

    auto container = file.into("container (container_pid, name, distinguished_kind)", 3);
    auto members = file.into("container_items (container_pid, item_pid_data)", 2);
    container.add({primaryContainerPid(), orNull(library.name), 0});
    members.add({primaryContainerPid(), packedPids(all)});
    for (std::size_t p = 0; p < library.playlists.size(); ++p) {
        container.add({playlistPid(p), orNull(library.playlists[p].name), 0});
        members.add({playlistPid(p), packedPids(library.playlists[p].trackIds)});
    }
    file.run("commit");
}
} // namespace

void SqliteLibraries::writeMediaLibrary(const QString& path, const TestLibrary& library, Rows rows)
{
    const QTemporaryDir workshop;
    SqliteWriter file(workshop.filePath(QStringLiteral("MediaLibrary.sqlitedb")));
    createMediaLibrary(file);
    if (rows == Rows::InLog)
        file.keepRowsInLog();
    fillMediaLibrary(file, library);
    file.copyTo(path);
}

void SqliteLibraries::writeRecordings(const QString& path, const std::vector<Recording>& recordings)
{
    SqliteWriter file(path);
    createRecordings(file);
    auto row = file.into("ZRECORDING (Z_ENT, Z_OPT, ZITEMID, ZDURATION, ZDATE, ZPATH)", 6);
    for (const Recording& recording : recordings)
        row.add({1, 1, 7, recording.seconds, recording.recorded, recording.path});
}
