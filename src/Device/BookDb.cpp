#include "Device/BookDb.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/TemporaryCopy.h"
#include "Device/plist/PropertyList.h"

namespace
{
constexpr auto NoSideFiles = TemporaryCopy::SideFiles::Leave;
} // namespace

std::unique_ptr<BookDb> BookDb::create(Device& device)
{
    if (device.bookPath().isNull()) // a family without books
        return nullptr;
    std::unique_ptr<BookDb> reader(new BookDb(device));
    for (const QString& list : {reader->_pListPath, reader->_purchasePListPath}) {
        if (device.fileExists(list)) {
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
    const qint64 size = _device.getFileSize(listPath).value_or(0);
    if (size <= 0 || size > qint64(PropertyList::MostBytes))
        return;
    const TemporaryCopy copy(_device, listPath, NoSideFiles);
    const PropertyList list = PropertyList::fromFile(copy.path());
    // Whatever its keys are called, each value is a list of records.
    for (const PropertyList& records : list.dictionaryValues()) {
        for (const PropertyList& record : records.arrayItems()) {
            if (record.isDictionary())
                add(record, folder);
        }
    }
}

void BookDb::add(const PropertyList& record, const QString& folder)
{
    const auto text = [&record](const char* key) {
        const QString value = record.text(key);
        return value.isNull() ? QString(QLatin1String("")) : value;
    };
    Track& book = _ownedBooks.emplace_back();
    book.type = BookTrack;
    book.title = text("Name");
    book.artist = text("Artist");
    book.album = text("Album");
    book.genre = text("Genre");
    const QString path = record.text("Path");
    book.path = path.isNull() ? QString(QLatin1String("")) : PathName::join(folder, path);
    _bookList.push_back(&book);
}
