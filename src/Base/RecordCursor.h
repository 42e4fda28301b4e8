#pragma once

#include "Base/Utility.h"

/// Walks records that follow one another in a device's binary database. Each gives its total
/// length in the 32-bit field at byte 8. A record can never reach past the bytes it stands in,
/// and no record is read twice, so whatever the file claims, the work is bounded by its size.
class RecordCursor
{
public:
    static constexpr std::size_t TotalLength = 8; ///< where each record has its total length

    /// Starts at `offset` of `parent`, the bytes of the record that holds the others.
    RecordCursor(ByteView parent, std::size_t offset)
        : _parent(parent)
        , _offset(offset)
    {
    }

    /// The next record with all that it holds. Throws "NSRangeException" where there is none, or
    /// where the record before it claims a length too small to step over.
    ByteView next()
    {
        step();
        const ByteView rest = Utility::bytesOfData(
            _parent, _offset, _offset < _parent.size() ? _parent.size() - _offset : 1);
        _length = Utility::readUIntFromData(rest, TotalLength);
        // A length beyond the parent is cut to it: the record may still be read in part. One too
        // small to be true tells nothing; this record is then the last.
        return _length >= SmallestRecord && _length < rest.size() ? rest.first(_length) : rest;
    }

private:
    static constexpr std::size_t SmallestRecord = 12; // tag, header length, total length

    void step()
    {
        if (!_started) {
            _started = true;
            return;
        }
        if (_length < SmallestRecord)
            Utility::bytesOfData(_parent, _parent.size(), SmallestRecord); // throws
        _offset += _length;
    }

    ByteView _parent;
    std::size_t _offset;
    std::size_t _length = 0;
    bool _started = false;
};
