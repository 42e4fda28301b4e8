#pragma once

#include "Base/Utility.h"

#include <QtGlobal>

#include <array>

/// A record of a player's binary database, with the bytes that are its own.
struct Record {
    ByteView bytes;     ///< from its tag to the next record's, or to where its parent ends
    bool isCut = false; ///< it goes on beyond the end of the file
};

namespace ItdbRecord
{
constexpr std::size_t HeaderLength = 4; ///< where each record has the length of its header
constexpr std::size_t TotalLength = 8;  ///< where each has its length with all that it holds
constexpr std::size_t ItemCount = 8;    ///< where a list has the number of its items
constexpr std::size_t SmallestRecord = 12;

inline quint32 field(ByteView record, std::size_t offset)
{
    return Utility::readUIntFromData(record, offset);
}

/// The four characters that open a record, as a field.
constexpr quint32 tag(const char (&text)[5])
{
    return quint32(text[0]) | quint32(text[1]) << 8U | quint32(text[2]) << 16U |
           quint32(text[3]) << 24U;
}

/// Where a record with one of the tags opens at `from` or behind it; the size where none does.
std::size_t nextRecord(ByteView bytes, std::size_t from, std::array<quint32, 2> tags);

/// The record that stands alone within another, right behind its header. One that is not there is
/// looked for by its tag, and `contradictions` counts it. Empty where there is none.
Record nested(const Record& outer, quint32 tag, quint64& contradictions);
} // namespace ItdbRecord

/// Walks the records that follow one another within a record, as their lengths say: tags are not
/// looked at as long as each length leads to a tag, or all of them together to the parent's end.
/// Where they do not, the walk goes on at the next tag, so a wrong length costs one record and
/// not those behind it.
///
/// Each byte of the parent belongs to one of the records at most, whatever the file claims: the
/// work is bounded by its size, and nothing is read twice.
class RecordWalk
{
public:
    /// The tags of the records that are walked; twice the same where there is one.
    using Tags = std::array<quint32, 2>;

    /// Starts behind the header of `parent`, which states `count` records. What contradicts what
    /// stands there is counted. Records that hold one with the tag `nested` may hold the walk's
    /// own tags within that one.
    RecordWalk(const Record& parent, quint64 count, Tags tags, quint64& contradictions,
               quint32 nested = 0)
        : _parent(parent)
        , _bytes(parent.bytes)
        , _count(count)
        , _tags(tags)
        , _nested(nested)
        , _contradictions(contradictions)
    {
        start();
    }

    /// The next record; null behind the last. Those beyond the count, too, as long as they have
    /// one of the tags: the count is an upper bound of what is read, not of what stands there.
    const Record* next()
    {
        const std::size_t begin = _next;
        if (begin > _bytes.size() || _bytes.size() - begin < ItdbRecord::SmallestRecord)
            return nullptr;
        _tag = ItdbRecord::field(_bytes, begin);
        if (_walked >= _count && !isOurs(_tag))
            return nullptr;
        ++_walked;
        const std::size_t length = ItdbRecord::field(_bytes, begin + ItdbRecord::TotalLength);
        if (fits(begin, length) && leadsOn(begin + length))
            take(begin, begin + length);
        else
            repair(begin, length);
        return &_record;
    }

    /// The number of the record given last, counted from 0.
    [[nodiscard]] quint64 index() const { return _walked - 1; }
    /// What the record given last opens with.
    [[nodiscard]] quint32 tag() const { return _tag; }
    [[nodiscard]] bool isBeyondCount() const { return _walked > _count; }
    /// Once walked: whether more or fewer records stand there than the parent states.
    [[nodiscard]] bool disagreesWithCount() const { return _walked != _count; }

private:
    void start();
    void repair(std::size_t begin, std::size_t length);
    [[nodiscard]] std::size_t searchFrom(std::size_t begin) const;
    [[nodiscard]] bool lengthsLeadToTheEnd(std::size_t at, quint64 count) const;

    [[nodiscard]] bool isOurs(quint32 tag) const { return tag == _tags[0] || tag == _tags[1]; }
    [[nodiscard]] bool fits(std::size_t begin, std::size_t length) const
    {
        return length >= ItdbRecord::SmallestRecord && length <= _bytes.size() - begin;
    }
    [[nodiscard]] bool leadsOn(std::size_t end) const
    {
        return end == _bytes.size() || _areLengthsTrue ||
               (_bytes.size() - end >= sizeof(quint32) && isOurs(ItdbRecord::field(_bytes, end)));
    }
    void take(std::size_t begin, std::size_t end)
    {
        _record.bytes = _bytes.subspan(begin, end - begin);
        _next = end;
    }

    Record _parent;
    ByteView _bytes;
    quint64 _count;
    Tags _tags;
    quint32 _nested;
    quint64& _contradictions;
    Record _record;
    quint32 _tag = 0;
    quint64 _walked = 0;
    std::size_t _next = 0;
    bool _areLengthsTrue = false; ///< they lead to the end of the parent, whatever the tags are
    bool _areLengthsFalse = false;
    bool _hasMoreTags = true;
};
