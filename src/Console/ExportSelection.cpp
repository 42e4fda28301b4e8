#include "Console/ExportSelection.h"

#include "Console/Terminal.h"
#include "Device/Album.h"
#include "Device/Device.h"
#include "Device/PhotoDb.h"
#include "Device/Playlist.h"
#include "Device/TrackDb.h"

#include <algorithm>

ExportSelection::ExportSelection(Device& device)
    : _device(device)
    , _hasLibrary(device.trackDb() != nullptr)
{
    if (!_hasLibrary)
        Terminal::say(tr("The device holds no media library."));
}

Status ExportSelection::add(const Categories::Wish& wish)
{
    using Kind = Categories::Wish::Kind;
    switch (wish.kind) {
    case Kind::Everything:
        for (SectionItems& part : SectionItems::everything(_device))
            _parts.push_back(std::move(part));
        return {};
    case Kind::Media:
        _parts.push_back(SectionItems::media(_device));
        return {};
    case Kind::OneSection:
        addSection(wish.section);
        return {};
    case Kind::Playlist:
        return addPlaylists(wish.name);
    case Kind::Album:
        return addAlbums(wish.name);
    }
    return {};
}

Status ExportSelection::addPlaylists(const QString& name)
{
    SectionItems part;
    if (TrackDb* library = _device.trackDb())
        std::copy_if(library->playlists().begin(), library->playlists().end(),
                     std::back_inserter(part.playlists),
                     [&](const Playlist* playlist) { return playlist->name == name; });
    if (part.playlists.empty())
        return Failure{Failure::Kind::Missing, tr("There is no playlist named %1.").arg(name), {}};
    _parts.push_back(std::move(part));
    return {};
}

Status ExportSelection::addAlbums(const QString& name)
{
    PhotoDb* library = _device.photoDb();
    bool found = false;
    for (const Album* album : library ? library->albums() : std::vector<Album*>()) {
        if (album->name == name) {
            _parts.push_back({{}, {}, album->photos});
            found = true;
        }
    }
    if (!found)
        return Failure{
            Failure::Kind::Missing, tr("There is no photo album named %1.").arg(name), {}};
    return {};
}

void ExportSelection::addSection(Section section)
{
    if (std::optional<SectionItems> items = SectionItems::of(_device, section))
        _parts.push_back(std::move(*items));
    else if (_hasLibrary || section > Section::Playlists) // else that was said already
        Terminal::say(tr("The device has no %1.").arg(Sections::key(section)));
}
