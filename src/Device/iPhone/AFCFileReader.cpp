#include "Device/iPhone/AFCFileReader.h"

#include "Device/iPhone/AFCInterface.h"
#include "Platform/AFCConnection.h"

#include <utility>

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

void AFCFileReader::readAhead(quint64 offset, quint32 size)
{
    if (_ahead.empty())
        _ahead.push_back(_files.startReading(_handle, size, offset, takeSpare()));
    // One more, so that the phone need not wait for whoever takes up what it has read.
    if (_ahead.size() == 1 && _ahead.front())
        _ahead.push_back(_files.readOn(_handle, _ahead.front(), takeSpare()));
}

bool AFCFileReader::read(quint64 offset, quint32& size)
{
    if (!_bytes.isNull())
        _spares.push_back(std::exchange(_bytes, {}));
    std::optional<QByteArray> bytes;
    if (!_ahead.empty())
        bytes = _files.finishReading(std::exchange(_ahead.front(), nullptr), size);
    if (bytes) {
        _ahead.pop_front();
    } else { // nothing was asked, or not after a read that failed
        _ahead.clear();
        bytes = _files.readFromFile(_handle, size, offset);
    }
    _bytes = std::move(*bytes);
    return goesOn(offset, size);
}

bool AFCFileReader::goesOn(quint64 offset, quint32 size)
{
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

QByteArray AFCFileReader::takeSpare()
{
    if (_spares.empty())
        return {};
    QByteArray spare = std::move(_spares.back());
    _spares.pop_back();
    return spare;
}
