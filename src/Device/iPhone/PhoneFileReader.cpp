#include "Device/iPhone/PhoneFileReader.h"

#include "Device/iPhone/PhoneFiles.h"
#include "Platform/PhonePacket.h"

#include <algorithm>
#include <utility>

namespace
{
/// A phone may claim any size and then fail every read of it.
constexpr int MostFailuresInARow = 10'000;
/// The one that is waited for, one that the phone reads meanwhile, and one more, so that it need
/// not wait for whoever takes up what it has read.
constexpr std::size_t MostAhead = 3;
} // namespace

PhoneFileReader::PhoneFileReader(const PhoneFiles& files, const QString& path, quint64 handle,
                                 const Stretch& stretch)
    : _files(files)
    , _path(path)
    , _handle(handle)
    , _stretch(stretch)
    , _position(stretch.first)
{
    if (_position != 0)
        goTo(_position);
}

PhoneFileReader::~PhoneFileReader()
{
    _files.service().askToClose(_handle); // whose answer tells nothing new
}

void PhoneFileReader::goTo(qint64 position)
{
    _ahead.clear(); // their answers are from the wrong place
    _asked = 0;
    _position = position;
    _seek = _files.service().askToSeek(_handle, position);
}

/// Reads follow each other on the phone, so the next one goes on where the one before it ends,
/// however much that gave. Only how many bytes are missing has to be reckoned.
void PhoneFileReader::ask()
{
    while (_ahead.size() < MostAhead) {
        const qint64 left = _stretch.end - _position - _asked;
        if (left < 0 || (left == 0 && !_stretch.isWholeFile))
            return;
        // One byte more than there should be shows where the file ends.
        const auto size = quint32(left == 0 ? 1 : std::min<qint64>(left, _stretch.pieceSize));
        // The piece before has been used by now, and its memory is used again.
        _ahead.push_back(
            {_files.service().askToRead(_handle, size, std::exchange(_bytes, {})), size});
        _asked += size;
        if (left == 0)
            _sizeAgain = _files.service().askForInfo(_path);
    }
}

bool PhoneFileReader::next(const PhoneFileService::GoOn& goOn)
{
    if (_hasEnded)
        return false;
    ask();
    if (_ahead.empty() || !isInPlace(goOn))
        return end(goOn);
    const Read read = _ahead.front();
    _ahead.pop_front();
    _asked -= read.size;
    PhoneAnswer answer = _files.service().wait(read.asked, goOn);
    bool goesOn = false;
    if (answer.isGood() || answer.status == PhonePacket::EndOfData)
        goesOn = take(std::move(answer.data));
    else if (answer.end == PhoneAnswer::End::Answered)
        goesOn = leaveOut(answer, read.size);
    else
        _problem = _files.failure(answer, {}, {});
    return goesOn || end(goOn);
}

bool PhoneFileReader::isInPlace(const PhoneFileService::GoOn& goOn)
{
    if (!_seek)
        return true;
    const PhoneAnswer answer = _files.service().wait(std::exchange(_seek, nullptr), goOn);
    if (answer.isGood())
        return true;
    _problem = _files.failure(answer, tr("Part of the file could not be read"),
                              QStringLiteral("AFCFileRefSeek"));
    return false;
}

bool PhoneFileReader::take(QByteArray bytes)
{
    _failures = 0;
    _bytes = std::move(bytes);
    if (_bytes.isEmpty()) {
        if (_position < _stretch.end && _stretch.isWholeFile)
            note(tr("The file ended before its size was reached"));
        return false;
    }
    _position += _bytes.size();
    if (_position <= _stretch.end)
        return true;
    _bytes.chop(_position - _stretch.end);
    _position = _stretch.end;
    note(tr("The file is longer than the device reported"));
    return false;
}

bool PhoneFileReader::leaveOut(const PhoneAnswer& answer, quint32 size)
{
    const qint64 left = _stretch.end - _position;
    if (left <= 0) // what lies behind the end need not be readable
        return false;
    if (!_problem)
        _problem =
            _files.failure(answer, tr("Part of the file could not be read"), QStringLiteral("ret"));
    _bytes = {};
    goTo(_position + std::min<qint64>(left, size));
    return ++_failures < MostFailuresInARow;
}

bool PhoneFileReader::end(const PhoneFileService::GoOn& goOn)
{
    _hasEnded = true;
    _bytes = {};
    const bool isAnswered = !_problem || (_problem->kind != Failure::Kind::Lost &&
                                          _problem->kind != Failure::Kind::Stopped);
    if (_stretch.isWholeFile && isAnswered)
        checkSize(goOn);
    return false;
}

void PhoneFileReader::checkSize(const PhoneFileService::GoOn& goOn)
{
    if (!_sizeAgain)
        _sizeAgain = _files.service().askForInfo(_path);
    const Expected<FileInfo> now = _files.infoFrom(_sizeAgain, goOn);
    if (now.failedAs(Failure::Kind::Lost) || now.failedAs(Failure::Kind::Stopped)) {
        _problem = now.failure();
    } else if (!now) {
        if (!_problem)
            _problem = Failure{Failure::Kind::Unreadable,
                               tr("Whether the file changed meanwhile could not be asked"),
                               now.failure().text()};
    } else if (now->size != _stretch.end && _failures == 0) {
        note(tr("The file changed while it was read"));
    }
}

void PhoneFileReader::note(const QString& words)
{
    _problem = Failure{Failure::Kind::Unreadable, words, {}};
}
