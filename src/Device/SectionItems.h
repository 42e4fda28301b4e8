#pragma once

#include "Device/Section.h"

#include <optional>
#include <vector>

class Device;
struct Playlist;

/// What a device holds of one section, in the order of its export.
struct SectionItems {
    std::vector<Track*> tracks;       ///< of a section that lists tracks
    std::vector<Playlist*> playlists; ///< of the playlists
    std::vector<Photo*> photos;       ///< of a section that lists photos

    /// What stands in the section; empty where the library has nothing of it. None when the
    /// device has no place for such things at all: no recordings, no camera roll, no photo
    /// library, no media library. May read the device.
    static std::optional<SectionItems> of(Device& device, Section section);
    /// Every track of the media library, books and all.
    static SectionItems media(Device& device);
    /// All that a device holds, once: the media, the books of a catalogue, voice memos, camera
    /// roll, photos.
    static std::vector<SectionItems> everything(Device& device);

    /// What it counts: tracks, playlists or photos.
    [[nodiscard]] std::size_t count() const
    {
        return tracks.size() + playlists.size() + photos.size();
    }
};
