#pragma once

#include "Base/Exception.h"
#include "Base/RecordCursor.h"
#include "Base/Utility.h"

#include <QString>

#include <algorithm>

/// What the records of the players' binary databases have in common.
namespace ItdbRecord
{
constexpr std::size_t HeaderLength = 4; ///< where each record has the length of its header
constexpr std::size_t ItemCount = 8;    ///< where a list has the number of its items

inline quint32 field(ByteView record, std::size_t offset)
{
    return Utility::readUIntFromData(record, offset);
}

/// What follows the header of a record, to the end of the bytes it stands in.
inline ByteView afterHeader(ByteView record)
{
    const std::size_t start = field(record, HeaderLength);
    return Utility::bytesOfData(record, start, record.size() - std::min(start, record.size()));
}

/// Calls `read` with each item of the list that a data set holds, and with its place, counted
/// from 0.
template <typename Read>
void eachItem(ByteView dataSet, Read read)
{
    const ByteView list = afterHeader(dataSet);
    const quint32 count = field(list, ItemCount);
    RecordCursor items(list, field(list, HeaderLength));
    for (quint32 i = 0; i < count; ++i)
        read(items.next(), i);
}

/// The text that `read` finds in an object, which is the name of something whatever the object
/// is. One of the wrong kind has numbers where a text would be: that must not cost what follows.
/// Only where the record itself is cut, by the end of the file or of its parent, does the reading
/// end.
template <typename Read>
QString textOrEmpty(ByteView object, Read read)
{
    try {
        return read(object);
    } catch (const Exception&) {
        if (field(object, RecordCursor::TotalLength) != object.size())
            throw;
        return QLatin1String("");
    }
}
} // namespace ItdbRecord
