#pragma once

#include "Device/CategoryIndex.h"
#include "Device/PathsWithNul.h"
#include "Device/Problem.h"
#include "Device/Track.h"

#include <QString>

#include <deque>
#include <memory>
#include <vector>

class Device;
class PropertyList;

/// A device's book catalogue: two property lists in its book folder, of books that were synced
/// and of those bought on the device. Where it has a book, its books replace those of the media
/// library. It reads the device once and lives as long as its device.
class BookDb
{
public:
    /// Null when the device has neither list. Leaves a copy of one in the log folder for
    /// diagnosis.
    static std::unique_ptr<BookDb> create(Device& device);
    /// The catalogue of a device, if it has one with a book in it; else null.
    static BookDb* filledCatalogue(Device& device);

    ~BookDb();
    BookDb(const BookDb&) = delete;
    BookDb& operator=(const BookDb&) = delete;

    /// All books, the synced ones first.
    const std::vector<Track*>& bookList();
    /// What could not be read, as far as it has been read by now.
    [[nodiscard]] const ProblemList& problems() const { return _problems; }
    /// Their index.
    const CategoryIndex& books();

private:
    explicit BookDb(Device& device);

    void load();
    void parse(const QString& listPath, const QString& folder);
    /// Takes the books of a list, until their paths need more room than that.
    void add(const PropertyList& list, const QString& folder, qint64 roomForPaths);
    const Track& add(const PropertyList& record, const QString& folder);

    Device& _device;
    bool _loaded = false;
    ProblemList _problems;
    bool _filled = false;
    PathsWithNul _pathsWithNul;
    std::deque<Track> _ownedBooks;
    std::vector<Track*> _bookList;
    CategoryIndex _books;
    QString _purchasesFolder;
    QString _pListPath;
    QString _purchasePListPath;
};
