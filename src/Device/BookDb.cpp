#include "Device/BookDb.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/LibraryProblems.h"
#include "Device/TemporaryCopy.h"
#include "Device/plist/PropertyList.h"

namespace
{
constexpr auto NoSideFiles = TemporaryCopy::SideFiles::Leave;
constexpr QStringView PathKey = u"Path";
/// A catalogue can share one long text among all of its books, and their paths grow out of it.
constexpr qint64 MostPathGrowth = 64;

/// Where a book lies; empty when the catalogue does not say. A book may be a folder, and its name
/// may end as those of folders do.
QString pathIn(const QString& folder, QStringView stored)
{
    while (stored.endsWith(u'/'))
        stored.chop(1);
    return stored.isEmpty() ? QString(QLatin1String("")) : PathName::join(folder, stored);
}
} // namespace

std::unique_ptr<BookDb> BookDb::create(Device& device)
{
    if (device.bookPath().isNull()) // a family without books
        return nullptr;
    std::unique_ptr<BookDb> reader(new BookDb(device));
    for (const QString& list : {reader->_pListPath, reader->_purchasePListPath}) {
        if (!device.info(list).failedAs(Failure::Kind::Missing)) {
            TemporaryCopy::keepForDiagnosis(device, list, NoSideFiles);
            return reader;
        }
    }
    return nullptr;
}

BookDb* BookDb::filledCatalogue(Device& device)
{
    BookDb* catalogue = device.bookDb();
    return catalogue && !catalogue->bookList().empty() ? catalogue : nullptr;
}

BookDb::BookDb(Device& device)
    : _device(device)
    , _purchasesFolder(PathName::join(device.bookPath(), u"Purchases"))
    , _pListPath(PathName::join(device.bookPath(), u"Books.plist"))
    , _purchasePListPath(PathName::join(_purchasesFolder, u"Purchases.plist"))
{
}

BookDb::~BookDb() = default;

const std::vector<Track*>& BookDb::bookList()
{
    load();
    return _bookList;
}

const CategoryIndex& BookDb::books()
{
    load();
    if (!_filled) {
        _filled = true;
        for (Track* book : _bookList)
            _books.add(book);
    }
    return _books;
}

void BookDb::load()
{
    if (_loaded)
        return;
    _loaded = true;
    parse(_pListPath, _device.bookPath());
    parse(_purchasePListPath, _purchasesFolder);
}

void BookDb::parse(const QString& listPath, const QString& folder)
{
    const LibraryProblems problems(LibraryProblems::Library::Books, _problems);
    const Expected<FileInfo> found = _device.info(listPath);
    if (found.failedAs(Failure::Kind::Missing))
        return; // most phones have one of the two
    if (!found)
        return problems.cannotBeRead(found.failure());
    const qint64 size = found->size.value_or(0);
    if (size <= 0)
        return problems.isEmpty();
    if (size > PropertyList::MostBytes)
        return problems.isCutOff(QStringLiteral("%1 B").arg(size));
    const TemporaryCopy copy(_device, listPath, NoSideFiles);
    if (!copy.status())
        return problems.cannotBeRead(copy.status().failure());
    add(PropertyList::fromFile(copy.path()), folder, copy.size() * MostPathGrowth);
}

void BookDb::add(const PropertyList& list, const QString& folder, qint64 roomForPaths)
{
    const LibraryProblems problems(LibraryProblems::Library::Books, _problems);
    if (!list.isValid())
        return problems.isDamaged({});
    if (!list.isDictionary())
        return problems.isNotUnderstood({});
    if (list.hasBrokenValues())
        problems.isDamaged({});
    // Whatever its keys are called, each value is a list of records.
    for (const PropertyList& records : list.dictionaryValues()) {
        for (const PropertyList& record : records.arrayItems()) {
            if (roomForPaths < 0)
                return problems.isCutOff({});
            if (record.isDictionary())
                roomForPaths -= add(record, folder).path.size();
        }
    }
}

const Track& BookDb::add(const PropertyList& record, const QString& folder)
{
    const auto text = [&record](QStringView key) {
        const QString value = record.text(key);
        return value.isNull() ? QString(QLatin1String("")) : value;
    };
    Track& book = _ownedBooks.emplace_back();
    book.type = BookTrack;
    book.title = text(u"Name");
    book.artist = text(u"Artist");
    book.album = text(u"Album");
    book.genre = text(u"Genre");
    book.path = _pathsWithNul.choose(_device, pathIn(folder, record.text(PathKey)),
                                     pathIn(folder, record.textAcrossNuls(PathKey)));
    _bookList.push_back(&book);
    return book;
}
