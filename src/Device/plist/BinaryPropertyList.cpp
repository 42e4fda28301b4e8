#include "Device/plist/BinaryPropertyList.h"

#include "Base/Exception.h"
#include "Base/Utf8.h"
#include "Base/Utility.h"
#include "Device/plist/XmlPropertyList.h"

#include <QStringDecoder>

#include <algorithm>
#include <optional>

namespace
{
using Document = PropertyListDocument;
using Kind = Document::Kind;

constexpr std::size_t HeaderLength = 8;
constexpr std::size_t TrailerLength = 32;

/// Places in the trailer, in bytes.
namespace Trailer
{
constexpr std::size_t OffsetSize = 6;
constexpr std::size_t ReferenceSize = 7;
constexpr std::size_t ObjectCount = 8;
constexpr std::size_t Root = 16;
constexpr std::size_t OffsetTable = 24;
} // namespace Trailer

/// The kinds of objects: the upper half of their first byte.
enum Marker : quint8 {
    Simple = 0x0,
    Integer = 0x1,
    Real = 0x2,
    Date = 0x3,
    Data = 0x4,
    Ascii = 0x5,
    Utf16 = 0x6,
    Uid = 0x8,
    Array = 0xA,
    Dictionary = 0xD
};

/// Goes through the objects level by level, from the root on, and makes a value of each once.
class BinaryWalk
{
public:
    explicit BinaryWalk(ByteView file)
        : _file(file)
        , _trailer(Utility::bytesOfData(file, file.size() - std::min(file.size(), TrailerLength),
                                        TrailerLength))
        , _offsetSize(Utility::readUCharFromData(_trailer, Trailer::OffsetSize))
        , _referenceSize(Utility::readUCharFromData(_trailer, Trailer::ReferenceSize))
        , _objectCount(number(_trailer, Trailer::ObjectCount, 8))
        , _offsetTable(number(_trailer, Trailer::OffsetTable, 8))
    {
    }

    Document parse()
    {
        const quint64 root = number(_trailer, Trailer::Root, 8);
        if (!hasSoundTable() || root >= _objectCount)
            return {};
        _valueOf.assign(_objectCount, NoValue);
        _document.root = valueOf(root);
        int levels = 0;
        for (std::size_t next = 0; next < _objects.size(); ++levels) {
            if (levels >= XmlPropertyList::MostLevels)
                return {};
            for (const std::size_t end = _objects.size(); next < end; ++next)
                read(next);
            if (_sharesContainers)
                return {};
        }
        _document.isList = true;
        return std::move(_document);
    }

private:
    static constexpr std::uint32_t NoValue = 0xFFFFFFFF;

    /// A big-endian number of one to eight bytes.
    static quint64 number(ByteView data, std::size_t offset, std::size_t size)
    {
        quint64 value = 0;
        for (const std::byte byte : Utility::bytesOfData(data, offset, size))
            value = value << 8U | quint64(byte);
        return value;
    }

    [[nodiscard]] bool hasSoundTable() const
    {
        const auto isSize = [](std::size_t size) { return size >= 1 && size <= 8; };
        const std::size_t room = _file.size() - TrailerLength;
        return isSize(_offsetSize) && isSize(_referenceSize) && _offsetTable <= room &&
               _objectCount <= (room - _offsetTable) / _offsetSize;
    }

    /// The place of an object's value, which is read in its turn.
    std::uint32_t valueOf(quint64 object)
    {
        if (object >= _objectCount)
            return brokenValue();
        std::uint32_t& value = _valueOf[object];
        if (value == NoValue) {
            value = std::uint32_t(_document.values.size());
            _document.values.emplace_back();
            _objects.push_back({object, value});
        } else {
            // Texts and numbers stand once in a file and are shared. Whoever writes lists never
            // shares what has values of its own: shared, they would multiply, or hold themselves.
            _sharesContainers |= isContainer(object);
        }
        return value;
    }

    std::uint32_t brokenValue()
    {
        _document.hasBroken = true;
        _document.values.push_back({Kind::Broken, 0, 0});
        return std::uint32_t(_document.values.size() - 1);
    }

    [[nodiscard]] quint64 placeOf(quint64 object) const
    {
        return number(_file, _offsetTable + object * _offsetSize, _offsetSize);
    }

    [[nodiscard]] bool isContainer(quint64 object) const
    {
        const quint64 place = placeOf(object);
        if (place >= _file.size())
            return false;
        const quint8 marker = Utility::readUCharFromData(_file, place) >> 4U;
        return marker == Array || marker == Dictionary;
    }

    void read(std::size_t next)
    {
        const auto [object, value] = _objects[next];
        try {
            if (fill(value, placeOf(object)))
                return;
        } catch (const Exception&) {
            // Some of it lies outside the file.
        }
        _document.hasBroken = true;
        _document.values[value] = {Kind::Broken, 0, 0};
    }

    /// False for an object of no known kind.
    bool fill(std::uint32_t value, std::size_t offset)
    {
        const quint8 marker = Utility::readUCharFromData(_file, offset++);
        const quint64 nibble = marker & 0x0FU;
        switch (marker >> 4U) {
        case Simple:
        case Integer:
        case Real:
        case Date:
        case Data:
        case Uid:
            return true;
        case Ascii:
            return fillText(value, Utf8::whole(bytesOf(offset, length(offset, nibble))));
        case Utf16:
            return fillText(value, utf16(offset, length(offset, nibble)));
        case Array:
            return fillReferences(value, Kind::Array, offset, length(offset, nibble), 1);
        case Dictionary:
            return fillReferences(value, Kind::Dictionary, offset, length(offset, nibble), 2);
        default:
            return false;
        }
    }

    /// The length of an object; moves `offset` to what follows it.
    quint64 length(std::size_t& offset, quint64 nibble) const
    {
        constexpr quint64 IntegerFollows = 0x0F;
        if (nibble != IntegerFollows)
            return nibble;
        const quint8 marker = Utility::readUCharFromData(_file, offset++);
        const std::size_t size = std::size_t(1) << std::min(marker & 0x0FU, 3U);
        const quint64 value = number(_file, offset, size);
        offset += size;
        return value;
    }

    [[nodiscard]] QByteArrayView bytesOf(const std::size_t& offset, quint64 count) const
    {
        // By reference: the length that was read before has moved it.
        const ByteView bytes = Utility::bytesOfData(_file, offset, count);
        return {reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())};
    }

    [[nodiscard]] QString utf16(const std::size_t& offset, quint64 count) const
    {
        if (count > _file.size())
            (void)Utility::bytesOfData(_file, offset, count); // throws
        QStringDecoder decoder(QStringDecoder::Utf16BE,
                               QStringDecoder::Flag::Stateless |
                                   QStringDecoder::Flag::ConvertInitialBom);
        QString text = decoder.decode(bytesOf(offset, 2 * count));
        return decoder.hasError() ? QString() : text;
    }

    bool fillText(std::uint32_t value, QString text)
    {
        if (text.isNull())
            text = QLatin1String("");
        _textUnits += text.size();
        if (_textUnits > qsizetype(_file.size()))
            return false; // texts that overlap each other
        _document.addText(_document.values[value], std::move(text));
        return true;
    }

    bool fillReferences(std::uint32_t value, Kind kind, const std::size_t& offset, quint64 count,
                        quint64 lists)
    {
        // In a sound file no two lists of references share a byte.
        const quint64 room = _file.size() - _references;
        if (count > room / lists)
            return false;
        const std::size_t all = lists * count;
        (void)Utility::bytesOfData(_file, offset, all * _referenceSize);
        _references += all;
        const auto first = std::uint32_t(_document.references.size());
        for (std::size_t i = 0; i < all; ++i)
            _document.references.push_back(
                valueOf(number(_file, offset + i * _referenceSize, _referenceSize)));
        _document.values[value] = {kind, first, std::uint32_t(count)};
        return true;
    }

    struct Object {
        quint64 object;
        std::uint32_t value;
    };

    ByteView _file;
    ByteView _trailer;
    std::size_t _offsetSize;
    std::size_t _referenceSize;
    quint64 _objectCount;
    quint64 _offsetTable;
    Document _document;
    std::vector<std::uint32_t> _valueOf;
    std::vector<Object> _objects; ///< in the order of reading
    quint64 _references = 0;
    qsizetype _textUnits = 0;
    bool _sharesContainers = false;
};
} // namespace

bool BinaryPropertyList::isBinary(const QByteArray& bytes)
{
    return bytes.startsWith("bplist0");
}

PropertyListDocument BinaryPropertyList::parse(const QByteArray& bytes)
{
    if (std::size_t(bytes.size()) < HeaderLength + TrailerLength)
        return {};
    try {
        return BinaryWalk(std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size()))))
            .parse();
    } catch (const Exception&) {
        return {}; // the table of its objects lies outside the file
    }
}
