#include "Device/Section.h"

#include <algorithm>

const std::array<SectionFacts, Sections::Count>& Sections::all()
{
    using View = SectionFacts::View;
    static constexpr std::array<SectionFacts, Count> table = {{
        // clang-format off
        {Section::Music, "music", "Music", "Music", "music", "MusicDir", View::Browser, true},
        {Section::Movies, "movies", "Movies", "Movies", "movies", "MoviesDir", View::Browser, true},
        {Section::TVShows, "tvShows", "TV Shows", "TV Shows", "tvshows", "TVShowsDir", View::Browser, true},
        {Section::Podcasts, "podcasts", "Podcasts", "Podcasts", "podcasts", "PodcastsDir", View::Browser, true},
        {Section::Audiobooks, "audiobooks", "Audiobooks", "Audiobooks", "audiobooks", "AudiobooksDir", View::Browser, true},
        {Section::Ringtones, "ringtones", "Ringtones", "Ringtones", "ringtones", "RingtonesDir", View::Tracks, true},
        {Section::Books, "books", "Books", "Books", "books", "BooksDir", View::Browser, true},
        {Section::Playlists, "playlists", "Playlists", "Playlists", "playlists", "PlaylistsDir", View::Tracks, false},
        {Section::VoiceMemos, "voiceMemos", "Voice Memos", "Voice Memos", "voicememos", "VoiceMemosDir", View::Tracks, false},
        {Section::CameraRoll, "cameraRoll", "Camera Roll", "Camera Roll", "cameraroll", "CameraRollDir", View::Photos, false},
        {Section::Photos, "photos", "Photos", "Photo", "photos", "PhotosDir", View::Photos, false},
        // clang-format on
    }};
    return table;
}

const SectionFacts& Sections::facts(Section section)
{
    return all().at(std::size_t(section));
}

std::optional<Section> Sections::withKey(const QString& key)
{
    const auto found = std::find_if(all().begin(), all().end(), [&](const SectionFacts& one) {
        return key == QLatin1String(one.key);
    });
    return found == all().end() ? std::nullopt : std::optional(found->section);
}

QString Sections::key(Section section)
{
    return QString::fromLatin1(facts(section).key);
}

QString Sections::folderName(Section section)
{
    return QString::fromLatin1(facts(section).folder);
}

QString Sections::rowName(Section section)
{
    return QString::fromLatin1(facts(section).row);
}

QString Sections::icon(Section section)
{
    return QString::fromLatin1(facts(section).icon);
}
