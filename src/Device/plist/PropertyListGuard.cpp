#include "Device/plist/PropertyListGuard.h"

#include "Base/Exception.h"
#include "Base/Utility.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <optional>

namespace
{
/// Catalogues nest four levels deep.
constexpr int MostLevels = 64;
/// What a list may need in memory for each byte of its file, and in all.
constexpr quint64 MostGrowth = 64;
constexpr quint64 MostMemory = quint64(256) * 1024 * 1024;
/// What one value needs besides its content.
constexpr quint64 BytesPerNode = 128;

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
enum Kind : quint8 {
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

/// What an object means once every reference in it has become a copy.
struct Extent {
    int levels = 1;
    quint64 memory = BytesPerNode;
};

/// Walks a binary list once, object by object. Throws the exception of a field that is not
/// there, and answers nothing for any other harm.
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

    [[nodiscard]] bool isHarmless()
    {
        if (!hasSoundTable())
            return false;
        _seen.resize(_objectCount);
        const std::optional<Extent> root = visit(number(_trailer, Trailer::Root, 8), 1);
        return root && root->memory <= std::min(MostMemory, _file.size() * MostGrowth);
    }

private:
    enum class State { New, Open, Done };
    struct Object {
        State state = State::New;
        Extent extent;
    };

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

    std::optional<Extent> visit(quint64 index, int level)
    {
        if (index >= _objectCount)
            return std::nullopt;
        Object& object = _seen[index];
        if (object.state == State::Open || level > MostLevels)
            return std::nullopt; // holds itself, or nests too deeply
        if (object.state == State::New) {
            object.state = State::Open;
            const std::optional<Extent> extent = measure(index, level);
            if (!extent)
                return std::nullopt;
            object.extent = *extent;
            object.state = State::Done;
        }
        if (level + object.extent.levels - 1 > MostLevels)
            return std::nullopt;
        return object.extent;
    }

    std::optional<Extent> measure(quint64 index, int level)
    {
        std::size_t offset = number(_file, _offsetTable + index * _offsetSize, _offsetSize);
        const quint8 marker = Utility::readUCharFromData(_file, offset++);
        quint64 count = marker & 0x0FU;
        switch (marker >> 4U) {
        case Simple:
            return Extent{};
        case Integer:
        case Real:
            return content(offset, quint64(1) << count);
        case Date:
            return content(offset, 8);
        case Uid:
            return content(offset, count + 1);
        case Data:
        case Ascii:
            count = length(offset, count);
            return content(offset, count);
        case Utf16: // up to three bytes of UTF-8 come from two of these
            count = length(offset, count);
            return count <= _file.size() ? content(offset, 2 * count) : std::nullopt;
        case Array:
            return references(offset, length(offset, count), level);
        case Dictionary:
            count = length(offset, count);
            return count <= _file.size() ? references(offset, 2 * count, level) : std::nullopt;
        default:
            return std::nullopt;
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

    [[nodiscard]] std::optional<Extent> content(std::size_t offset, quint64 bytes) const
    {
        (void)Utility::bytesOfData(_file, offset, bytes);
        return Extent{1, BytesPerNode + 2 * bytes};
    }

    std::optional<Extent> references(std::size_t offset, quint64 count, int level)
    {
        // In a sound file no two lists of references share a byte.
        _references += std::min<quint64>(count, _file.size());
        if (count > _file.size() || _references > _file.size())
            return std::nullopt;
        Extent extent;
        for (quint64 i = 0; i < count; ++i) {
            const auto item =
                visit(number(_file, offset + i * _referenceSize, _referenceSize), level + 1);
            if (!item)
                return std::nullopt;
            extent.levels = std::max(extent.levels, item->levels + 1);
            extent.memory = std::min(extent.memory + item->memory, MostMemory + 1);
        }
        return extent;
    }

    ByteView _file;
    ByteView _trailer;
    std::size_t _offsetSize;
    std::size_t _referenceSize;
    quint64 _objectCount;
    quint64 _offsetTable;
    quint64 _references = 0;
    std::vector<Object> _seen;
};
} // namespace

bool PropertyListGuard::isBinary(const QByteArray& bytes)
{
    return bytes.startsWith("bplist0");
}

bool PropertyListGuard::isHarmlessBinary(const QByteArray& bytes)
{
    if (std::size_t(bytes.size()) < HeaderLength + TrailerLength)
        return false;
    try {
        return BinaryWalk(std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size()))))
            .isHarmless();
    } catch (const Exception&) {
        return false; // something lies outside the file
    }
}

QByteArray PropertyListGuard::plainXml(const QByteArray& bytes)
{
    QByteArray plain;
    QXmlStreamReader reader(bytes);
    QXmlStreamWriter writer(&plain);
    writer.writeStartDocument();
    int level = 0;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++level > MostLevels)
                return {};
            writer.writeStartElement(reader.name().toString());
            break;
        case QXmlStreamReader::EndElement:
            --level;
            writer.writeEndElement();
            break;
        case QXmlStreamReader::Characters:
            writer.writeCharacters(reader.text().toString());
            break;
        default:
            break;
        }
    }
    writer.writeEndDocument();
    return reader.hasError() ? QByteArray() : plain;
}
