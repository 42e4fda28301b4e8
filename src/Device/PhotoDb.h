#pragma once

#include "Device/Album.h"
#include "Device/Photo.h"
#include "Device/PreviewPass.h"
#include "Device/Problem.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <unordered_set>
#include <vector>

class Device;

/// A device's synced photos and their albums. One class derives from it for each on-device
/// format. It reads the device once, at the first call of `photos` or `albums`, owns what it
/// read and lives as long as its device. From then on a thread of its own makes the previews.
class PhotoDb
{
public:
    /// The first reader whose database the device holds; null when it holds none.
    static std::unique_ptr<PhotoDb> create(Device& device);

    /// The kinds of rendition that may serve as preview, and as the largest picture.
    static const std::unordered_set<std::int32_t>& smallCorrelations();
    static const std::unordered_set<std::int32_t>& largeCorrelations();

    virtual ~PhotoDb();
    PhotoDb(const PhotoDb&) = delete;
    PhotoDb& operator=(const PhotoDb&) = delete;

    /// The file name of the format, as in "Photo Database".
    [[nodiscard]] virtual QString format() const = 0;
    [[nodiscard]] Device& device() const { return _device; }
    const std::vector<Photo*>& photos();
    const std::vector<Album*>& albums();
    /// What could not be read, as far as it has been read by now.
    [[nodiscard]] const ProblemList& problems() const { return _problems; }
    /// How far the previews are.
    PreviewPass& previews();
    /// Asks that no further preview is made, without waiting. Nothing is loaded for that.
    void stopPreviews();
    /// Waits until no preview is being made. On the thread of the window only.
    void waitForPreviews();
    /// The kinds of rendition that serve as preview and as the largest picture; 0 if none does.
    [[nodiscard]] std::int32_t smallCorrelationId() const { return _smallCorrelationId; }
    [[nodiscard]] std::int32_t largeCorrelationId() const { return _largeCorrelationId; }

protected:
    explicit PhotoDb(Device& device);

    /// Where a reader puts what it could not read.
    ProblemList& foundProblems() { return _problems; }

    /// Reads the database; called once. May leave with an exception where the data ends it.
    virtual void parse() = 0;
    /// What makes one preview. It runs on the thread of the previews while the reader may be
    /// going already, so it holds by value all it needs of the reader; the device stays.
    [[nodiscard]] virtual PreviewPass::Step previewStep() const = 0;

    /// New records, owned by the reader and listed.
    Photo& newPhoto();
    Album& newAlbum(const QString& name);
    /// Takes the albums off the list for which `predicate` holds. Only albums without photos: a
    /// photo would still point to its album.
    template <typename Predicate>
    void removeAlbums(Predicate predicate)
    {
        std::erase_if(_albums, [&](const Album* album) { return predicate(*album); });
    }

    std::int32_t _smallCorrelationId = 0;
    std::int32_t _largeCorrelationId = 0;

private:
    void load();

    Device& _device;
    bool _loaded = false;
    ProblemList _problems;
    std::deque<Photo> _ownedPhotos;
    std::deque<Album> _ownedAlbums;
    std::vector<Photo*> _photos;
    std::vector<Album*> _albums;
    std::unique_ptr<PreviewPass> _previews; // last: it uses the photos
};
