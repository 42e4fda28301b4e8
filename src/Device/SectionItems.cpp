#include "Device/SectionItems.h"

#include "Device/BookDb.h"
#include "Device/CameraRollDb.h"
#include "Device/Device.h"
#include "Device/PhotoDb.h"
#include "Device/TrackDb.h"
#include "Device/VoiceMemoDb.h"

namespace
{
std::optional<SectionItems> ofLibrary(Device& device, Section section)
{
    TrackDb* library = device.trackDb();
    if (!library)
        return std::nullopt;
    if (section == Section::Playlists)
        return SectionItems{{}, library->playlists(), {}};
    return SectionItems{library->category(section).tracks(CategoryIndex::AllKey), {}, {}};
}
} // namespace

std::optional<SectionItems> SectionItems::of(Device& device, Section section)
{
    switch (section) {
    case Section::Music:
    case Section::Movies:
    case Section::TVShows:
    case Section::Podcasts:
    case Section::Audiobooks:
    case Section::Ringtones:
    case Section::Books:
    case Section::Playlists:
        return ofLibrary(device, section);
    case Section::VoiceMemos:
        if (VoiceMemoDb* recordings = device.voiceMemoDb())
            return SectionItems{recordings->memos(), {}, {}};
        return std::nullopt;
    case Section::CameraRoll:
        if (CameraRollDb* roll = device.cameraRollDb())
            return SectionItems{{}, {}, roll->photos()};
        return std::nullopt;
    case Section::Photos:
        if (PhotoDb* library = device.photoDb())
            return SectionItems{{}, {}, library->photos()};
        return std::nullopt;
    }
    return std::nullopt;
}

SectionItems SectionItems::media(Device& device)
{
    TrackDb* library = device.trackDb();
    return library ? SectionItems{library->tracks(), {}, {}} : SectionItems{};
}

std::vector<SectionItems> SectionItems::everything(Device& device)
{
    std::vector<SectionItems> parts = {media(device)};
    // Where the books are the library's own, they are among the media.
    if (BookDb* catalogue = BookDb::filledCatalogue(device))
        parts.push_back({catalogue->bookList(), {}, {}});
    for (const Section section : {Section::VoiceMemos, Section::CameraRoll, Section::Photos}) {
        if (std::optional<SectionItems> items = of(device, section))
            parts.push_back(std::move(*items));
    }
    return parts;
}
