#include "Device/iPhone/AFCFileReader.h"

#include "Device/iPhone/AFCInterface.h"
#include "Platform/AFCConnection.h"

namespace
{
/// A phone may claim any size and then fail every read of it.
constexpr int MostFailuresInARow = 10'000;
} // namespace

AFCFileReader::AFCFileReader(AFCInterface& files, quint64 handle, double reportedSize)
    : _files(files)
    , _handle(handle)
    , _reportedSize(reportedSize)
{
}

bool AFCFileReader::read(quint64 offset, quint32& size)
{
    _bytes = _files.readFromFile(_handle, size, offset);
    if (!_bytes.isNull()) {
        _failures = 0;
        return size != 0;
    }
    // A connection that broke in the middle of an answer shows only now: the piece before may
    // have been whatever was in memory.
    const bool isLost = _files.connection().isLost();
    const bool isPastTheEnd = double(offset) >= _reportedSize;
    _hasGap = _hasGap || isLost || !isPastTheEnd;
    return !isLost && !isPastTheEnd && ++_failures < MostFailuresInARow;
}
