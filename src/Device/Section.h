#pragma once

#include <QString>

#include <array>
#include <optional>

struct Photo;
struct Track;

/// What media are shown and exported under, in the order of the lists that people see. A track
/// belongs to one of the first seven or to the voice memos; a photo to one of the last two.
enum class Section {
    Music,
    Movies,
    TVShows,
    Podcasts,
    Audiobooks,
    Ringtones,
    Books,
    Playlists,
    VoiceMemos,
    CameraRoll,
    Photos
};

/// All that the program knows of a section: the one table that every list of them is made from.
struct SectionFacts {
    enum class View {
        Browser, ///< tracks, narrowed by genre, artist and album
        Tracks,  ///< a plain list of tracks
        Photos   ///< the grid
    };

    Section section;
    const char* key;         ///< in the console, in JSON: "tvShows"
    const char* folder;      ///< of its folder below a common one, and in the preferences
    const char* row;         ///< in the source list
    const char* icon;        ///< of the picture in the resources
    const char* settingsKey; ///< of the folder that a person chose for it
    View view;
    bool inLibraryIndex; ///< a TrackDb keeps an index of it
};

namespace Sections
{
constexpr std::size_t Count = std::size_t(Section::Photos) + 1;

/// In the order of the enumeration.
const std::array<SectionFacts, Count>& all();
const SectionFacts& facts(Section section);
/// By its key; none for any other text.
std::optional<Section> withKey(const QString& key);

[[nodiscard]] QString key(Section section);
[[nodiscard]] QString folderName(Section section);
[[nodiscard]] QString rowName(Section section);
[[nodiscard]] QString icon(Section section);
} // namespace Sections
