#include "Device/PhotoDb.h"

#include "Base/Exception.h"
#include "Device/Formats.h"
#include "Device/LibraryProblems.h"

std::unique_ptr<PhotoDb> PhotoDb::create(Device& device)
{
    for (const auto probe : Formats::photoLibraries()) {
        if (auto reader = probe(device))
            return reader;
    }
    return nullptr;
}

const std::unordered_set<std::int32_t>& PhotoDb::smallCorrelations()
{
    static const std::unordered_set<std::int32_t> kinds = {1023, 1024, 1064, 3009, 3141, 4040};
    return kinds;
}

const std::unordered_set<std::int32_t>& PhotoDb::largeCorrelations()
{
    static const std::unordered_set<std::int32_t> kinds = {1019, 1067, 1081, 3008,
                                                           4005, 4006, 4035};
    return kinds;
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

PreviewPass& PhotoDb::previews()
{
    load();
    return *_previews;
}

void PhotoDb::stopPreviews()
{
    if (_previews)
        _previews->stop();
}

void PhotoDb::waitForPreviews()
{
    if (_previews)
        _previews->wait();
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
    } catch (const Exception& exception) {
        // Damaged data ends the reading; what was listed until then stays.
        LibraryProblems(LibraryProblems::Library::Photos, _problems).isDamaged(exception.reason());
    }
    _previews = std::make_unique<PreviewPass>(_photos, previewStep());
}
