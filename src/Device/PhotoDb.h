#pragma once

#include "Device/Album.h"
#include "Device/Photo.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

class Device;

/// A device's synced photos and their albums. One class derives from it for each on-device
/// format. It reads the device once, at the first call of `photos` or `albums`, owns what it
/// read and lives as long as its device.
class PhotoDb
{
public:
    /// The first reader whose database the device holds; null when it holds none.
    static std::unique_ptr<PhotoDb> create(Device& device);

    virtual ~PhotoDb();
    PhotoDb(const PhotoDb&) = delete;
    PhotoDb& operator=(const PhotoDb&) = delete;

    [[nodiscard]] Device& device() const { return _device; }
    const std::vector<Photo*>& photos();
    const std::vector<Album*>& albums();
    /// The kinds of rendition that serve as preview and as the largest picture; 0 if none does.
    [[nodiscard]] std::int32_t smallCorrelationId() const { return _smallCorrelationId; }
    [[nodiscard]] std::int32_t largeCorrelationId() const { return _largeCorrelationId; }

protected:
    explicit PhotoDb(Device& device);

    /// Reads the database; called once. May leave with an exception where the data ends it.
    virtual void parse() = 0;

    /// New records, owned by the reader and listed.
    Photo& newPhoto();
    Album& newAlbum(const QString& name);

    std::int32_t _smallCorrelationId = 0;
    std::int32_t _largeCorrelationId = 0;

private:
    void load();

    Device& _device;
    bool _loaded = false;
    std::deque<Photo> _ownedPhotos;
    std::deque<Album> _ownedAlbums;
    std::vector<Photo*> _photos;
    std::vector<Album*> _albums;
};
