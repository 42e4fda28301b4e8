#include "Device/PhotoDb.h"

#include "Base/Exception.h"

std::unique_ptr<PhotoDb> PhotoDb::create(Device& /*device*/)
{
    return nullptr; // no format is read yet
}

PhotoDb::PhotoDb(Device& device)
    : _device(device)
{
}

PhotoDb::~PhotoDb() = default;

const std::vector<Photo*>& PhotoDb::photos()
{
    load();
    return _photos;
}

const std::vector<Album*>& PhotoDb::albums()
{
    load();
    return _albums;
}

Photo& PhotoDb::newPhoto()
{
    Photo& photo = _ownedPhotos.emplace_back();
    _photos.push_back(&photo);
    return photo;
}

Album& PhotoDb::newAlbum(const QString& name)
{
    Album& album = _ownedAlbums.emplace_back(Album::albumWithName(name));
    _albums.push_back(&album);
    return album;
}

void PhotoDb::load()
{
    if (_loaded)
        return;
    _loaded = true;
    try {
        parse();
    } catch (const Exception&) {
        // Damaged data ends the reading; what was listed until then stays.
    }
}
