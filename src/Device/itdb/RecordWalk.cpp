#include "Device/itdb/RecordWalk.h"

#include <algorithm>
#include <cstring>

namespace
{
/// No header of any record comes near it.
constexpr quint32 LongestHeader = 4096;

bool opensRecord(ByteView bytes, std::size_t at, RecordWalk::Tags tags)
{
    const quint32 found = ItdbRecord::field(bytes, at);
    if (found != tags[0] && found != tags[1])
        return false;
    // A text may spell a tag. It hardly goes on as a record does.
    const quint32 header = ItdbRecord::field(bytes, at + ItdbRecord::HeaderLength);
    return header >= ItdbRecord::SmallestRecord && header <= LongestHeader;
}
} // namespace

std::size_t ItdbRecord::nextRecord(ByteView bytes, std::size_t from, std::array<quint32, 2> tags)
{
    constexpr int FirstLetter = 'm'; // of every tag
    while (from < bytes.size() && bytes.size() - from >= SmallestRecord) {
        const std::size_t candidates = bytes.size() - from - (SmallestRecord - 1);
        const void* letter = std::memchr(bytes.data() + from, FirstLetter, candidates);
        if (!letter)
            break;
        const auto at = std::size_t(static_cast<const std::byte*>(letter) - bytes.data());
        if (opensRecord(bytes, at, tags))
            return at;
        from = at + 1;
    }
    return bytes.size();
}

Record ItdbRecord::nested(const Record& outer, quint32 tag, quint64& contradictions)
{
    const ByteView bytes = outer.bytes;
    if (bytes.size() < SmallestRecord) {
        ++contradictions;
        return {};
    }
    std::size_t start = field(bytes, HeaderLength);
    const bool isInside =
        start >= SmallestRecord && start <= bytes.size() && bytes.size() - start >= SmallestRecord;
    if (!isInside || field(bytes, start) != tag) {
        const std::size_t found = nextRecord(bytes, SmallestRecord, {tag, tag});
        if (found < bytes.size() || !isInside)
            ++contradictions;
        start = found < bytes.size() || !isInside ? found : start;
    }
    return {bytes.subspan(start), outer.isCut};
}

void RecordWalk::start()
{
    _next = _bytes.size();
    if (_bytes.size() < ItdbRecord::SmallestRecord)
        return;
    const std::size_t first = ItdbRecord::field(_bytes, ItdbRecord::HeaderLength);
    // Shorter than its own fields no header can be.
    const bool isInside = first >= ItdbRecord::SmallestRecord && first < _bytes.size();
    if (_count == 0 || (isInside && leadsOn(first))) {
        _next = first;
        return;
    }
    _areLengthsTrue = isInside && lengthsLeadToTheEnd(first, _count);
    if (!_areLengthsTrue) {
        _areLengthsFalse = true;
        const std::size_t found = ItdbRecord::nextRecord(_bytes, ItdbRecord::SmallestRecord, _tags);
        _hasMoreTags = found < _bytes.size();
        if (_hasMoreTags) {
            ++_contradictions;
            _next = found;
            return;
        }
    }
    if (isInside)
        _next = first;
}

/// The record at `begin` does not lead to the next one.
void RecordWalk::repair(std::size_t begin, std::size_t length)
{
    const std::size_t rest = _bytes.size() - begin;
    const bool isLast = _walked >= _count;
    const bool isTrueSoFar = fits(begin, length);
    const std::size_t end = isTrueSoFar ? begin + length : 0;
    if (isTrueSoFar && _parent.isCut && rest - length < sizeof(quint32))
        return take(begin, end); // the file ends within the next one's tag
    if (isLast && isTrueSoFar)   // nothing is known of the bytes behind it; they are harmless
        return take(begin, _bytes.size());
    if (isTrueSoFar && !_areLengthsFalse && lengthsLeadToTheEnd(end, _count - _walked)) {
        _areLengthsTrue = true;
        return take(begin, end);
    }
    _areLengthsFalse = true;
    if (!isLast && _hasMoreTags) {
        const std::size_t found = ItdbRecord::nextRecord(_bytes, searchFrom(begin), _tags);
        _hasMoreTags = found < _bytes.size();
        if (_hasMoreTags) {
            ++_contradictions;
            return take(begin, found);
        }
    }
    if (isTrueSoFar)
        return take(begin, end);
    _record.isCut = _parent.isCut && length > rest;
    if (!_record.isCut)
        ++_contradictions;
    take(begin, _bytes.size());
}

/// Where the next record may open at the earliest, if the length of this one says nothing.
std::size_t RecordWalk::searchFrom(std::size_t begin) const
{
    const ByteView record = _bytes.subspan(begin);
    const std::size_t header = ItdbRecord::field(record, ItdbRecord::HeaderLength);
    const bool isInside =
        header <= record.size() && record.size() - header >= ItdbRecord::SmallestRecord;
    if (_nested != 0 && isInside && ItdbRecord::field(record, header) == _nested) {
        const std::size_t inner = ItdbRecord::field(record, header + ItdbRecord::TotalLength);
        if (inner <= record.size() - header)
            return begin + header + std::max(inner, ItdbRecord::SmallestRecord);
    }
    return begin + ItdbRecord::SmallestRecord;
}

bool RecordWalk::lengthsLeadToTheEnd(std::size_t at, quint64 count) const
{
    for (; count > 0 && at < _bytes.size(); --count) {
        if (_bytes.size() - at < ItdbRecord::SmallestRecord)
            return false;
        const std::size_t length = ItdbRecord::field(_bytes, at + ItdbRecord::TotalLength);
        if (!fits(at, length))
            return false;
        at += length;
    }
    return at == _bytes.size();
}
