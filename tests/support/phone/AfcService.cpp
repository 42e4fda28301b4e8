#include "support/phone/AfcService.h"

#include "support/phone/PhoneStream.h"
#include "support/phone/SimulatedPhone.h"

#include <QFile>
#include <QtEndian>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <thread>

namespace
{
enum Operation : quint64 {
    Status = 0x01,
    Data = 0x02,
    ReadDirectory = 0x03,
    RemovePath = 0x08,
    MakeDirectory = 0x09,
    GetFileInfo = 0x0A,
    GetDeviceInfo = 0x0B,
    FileOpen = 0x0D,
    FileOpenResult = 0x0E,
    FileRead = 0x0F,
    FileWrite = 0x10,
    FileSeek = 0x11,
    FileTell = 0x12,
    FileTellResult = 0x13,
    FileClose = 0x14,
    FileSetSize = 0x15,
    RenamePath = 0x18
};

enum Code : quint64 {
    Success = 0,
    BadArgument = 7,
    NotFound = 8,
    IsFolder = 9,
    NotPermitted = 10,
    NotSupported = 15,
    InputOutput = 20
};

constexpr qsizetype HeaderSize = 40;
constexpr quint64 LongestRequest = 64 << 20;
constexpr quint64 ReadOnly = 1;

QByteArray littleEndian(quint64 value)
{
    value = qToLittleEndian(value);
    return QByteArray(reinterpret_cast<const char*>(&value), sizeof value);
}

quint64 fieldAt(const QByteArray& bytes, qsizetype offset)
{
    return offset + 8 <= bytes.size() ? qFromLittleEndian<quint64>(bytes.constData() + offset) : 0;
}

quint64 codeOf(int errorNumber)
{
    switch (errorNumber) {
    case ENOENT:
    case ENOTDIR:
        return NotFound;
    case EISDIR:
        return IsFolder;
    case EACCES:
    case EPERM:
        return NotPermitted;
    default:
        return InputOutput;
    }
}

/// Whether an operation is known to leave everything as it is; one of which nothing is known may
/// write.
bool onlyReads(quint64 operation)
{
    switch (operation) {
    case ReadDirectory:
    case GetFileInfo:
    case GetDeviceInfo:
    case FileOpen: // in one of its modes
    case FileRead:
    case FileSeek:
    case FileTell:
    case FileClose:
        return true;
    default:
        return false;
    }
}

QByteArray pair(const char* key, const QByteArray& value)
{
    return QByteArray(key) + '\0' + value + '\0';
}

const char* typeName(mode_t mode)
{
    return S_ISDIR(mode)   ? "S_IFDIR"
           : S_ISLNK(mode) ? "S_IFLNK"
           : S_ISREG(mode) ? "S_IFREG"
                           : "S_IFIFO";
}

QByteArray nanoseconds(const timespec& time)
{
    return QByteArray::number(qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec);
}
} // namespace

quint64 AfcService::Request::value(qsizetype index) const
{
    return fieldAt(body, index * 8);
}

QByteArray AfcService::Request::path(qsizetype offset) const
{
    const QByteArray rest = body.mid(offset);
    return rest.first(qsizetype(strnlen(rest.constData(), std::size_t(rest.size()))));
}

AfcService::AfcService(SimulatedPhone& phone, PhoneStream& stream)
    : _phone(phone)
    , _stream(stream)
{
}

AfcService::~AfcService()
{
    for (const auto& [handle, file] : _files)
        ::close(file.descriptor);
}

void AfcService::serve()
{
    Request request;
    while (receive(request)) {
        const bool opensToWrite = request.operation == FileOpen && request.value(0) != ReadOnly;
        _phone.record(request.operation);
        if (!onlyReads(request.operation) || opensToWrite)
            _phone.recordWrite(QStringLiteral("operation 0x%1 of the file service")
                                   .arg(request.operation, 2, 16, QChar(u'0')));
        if (!misbehave() || !answer(request))
            return;
    }
}

bool AfcService::receive(Request& request)
{
    const QByteArray header = _stream.read(HeaderSize);
    if (header.isNull())
        return false;
    const quint64 entire = fieldAt(header, 8);
    const quint64 fixed = fieldAt(header, 16);
    request.number = fieldAt(header, 24);
    request.operation = fieldAt(header, 32);
    if (entire < HeaderSize || entire > LongestRequest || fixed > entire || fixed < HeaderSize)
        return false;
    request.fixedPart = qsizetype(fixed) - HeaderSize;
    request.body = _stream.read(entire - HeaderSize);
    return !request.body.isNull() || entire == HeaderSize;
}

/// False when the connection ends here.
bool AfcService::misbehave()
{
    const PhoneFaults faults = _phone.faults();
    if (faults.slowMilliseconds > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(faults.slowMilliseconds));
    const qint64 operations = _phone.operations();
    if (faults.hangAfterOperations >= 0 && operations > faults.hangAfterOperations) {
        _phone.hang(_stream);
        return true;
    }
    if (faults.garbageAfterOperations >= 0 && operations > faults.garbageAfterOperations) {
        QByteArray garbage(512, Qt::Uninitialized);
        for (qsizetype i = 0; i < garbage.size(); ++i)
            garbage[i] = char((i * 167 + operations * 31) & 0xff);
        return _stream.write(garbage);
    }
    return true;
}

bool AfcService::answer(const Request& request)
{
    switch (request.operation) {
    case ReadDirectory:
        return readDirectory(request);
    case GetFileInfo:
        return getFileInfo(request);
    case GetDeviceInfo:
        return sendData(request, pair("Model", "Sample1,1") + pair("FSTotalBytes", "64000000000") +
                                     pair("FSFreeBytes", "32000000000") +
                                     pair("FSBlockSize", "4096"));
    case FileOpen:
        return openFile(request);
    case FileRead:
        return readFile(request);
    case FileSeek:
    case FileTell:
        return seekFile(request);
    case FileClose: {
        const auto file = _files.find(request.value(0));
        if (file == _files.end())
            return sendStatus(request, BadArgument);
        close(file->second.descriptor);
        _files.erase(file);
        return sendStatus(request, Success);
    }
    case FileWrite:
    case FileSetSize:
    case RemovePath:
    case RenamePath:
    case MakeDirectory:
        return sendStatus(request, NotPermitted); // nobody has any business to change a phone
    default:
        return sendStatus(request, NotSupported);
    }
}

QByteArray AfcService::local(const QByteArray& path) const
{
    return QFile::encodeName(_phone.identity().root) + '/' + path;
}

bool AfcService::readDirectory(const Request& request)
{
    if (const quint64 refusal = refusalOf(request.path()))
        return sendStatus(request, refusal);
    DIR* folder = opendir(local(request.path()).constData());
    if (!folder)
        return sendErrno(request, false);
    QByteArray names;
    while (const dirent* entry = readdir(folder))
        names += QByteArray(entry->d_name) + '\0';
    closedir(folder);
    for (const QByteArray& name :
         _phone.faults().extraNames.value(QString::fromUtf8(request.path())))
        names += name + '\0';
    return sendData(request, names);
}

bool AfcService::getFileInfo(const Request& request)
{
    const QByteArray path = local(request.path());
    if (const quint64 refusal = refusalOf(request.path()))
        return sendStatus(request, refusal);
    struct stat info = {};
    if (lstat(path.constData(), &info) != 0)
        return sendErrno(request, false);
    const QByteArray claimed = claimedSize(QString::fromUtf8(request.path()));
    QByteArray data =
        pair("st_size", claimed.isNull() ? QByteArray::number(info.st_size) : claimed);
    data += pair("st_blocks", QByteArray::number(info.st_blocks));
    data += pair("st_nlink", QByteArray::number(quint64(info.st_nlink)));
    data += pair("st_ifmt", _phone.faults().types.value(QString::fromUtf8(request.path()),
                                                        typeName(info.st_mode)));
    if (S_ISLNK(info.st_mode))
        data += pair("LinkTarget", QFile::symLinkTarget(QFile::decodeName(path)).toUtf8());
    data += pair("st_mtime", nanoseconds(info.st_mtim));
    data += pair("st_birthtime", nanoseconds(info.st_ctim));
    return sendData(request, data);
}

QByteArray AfcService::claimedSize(const QString& path) const
{
    const PhoneFaults faults = _phone.faults();
    const bool wasOpened = faults.sizesOnceOpen.contains(path) && _phone.opens().contains(path);
    return wasOpened ? faults.sizesOnceOpen.value(path) : faults.sizes.value(path);
}

bool AfcService::openFile(const Request& request)
{
    if (request.value(0) != ReadOnly)
        return sendStatus(request, NotPermitted);
    const QByteArray path = request.path(8);
    if (const quint64 refusal = refusalOf(path))
        return sendStatus(request, refusal);
    const QString unopenable = _phone.faults().unopenable;
    if (!unopenable.isEmpty() && QString::fromUtf8(path).endsWith(unopenable))
        return sendStatus(request, NotPermitted);
    struct stat info = {};
    if (stat(local(path).constData(), &info) == 0 && S_ISDIR(info.st_mode))
        return sendStatus(request, IsFolder);
    const int descriptor = open(local(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return sendErrno(request, false);
    _files[_nextHandle] = {descriptor, QString::fromUtf8(path)};
    _phone.recordOpen(QString::fromUtf8(path));
    return send(request, FileOpenResult, littleEndian(_nextHandle++), {});
}

bool AfcService::readFile(const Request& request)
{
    _phone.recordRead(request.value(1));
    const auto file = _files.find(request.value(0));
    if (file == _files.end())
        return sendStatus(request, BadArgument);
    const PhoneFaults faults = _phone.faults();
    const int descriptor = file->second.descriptor;
    const quint64 most = std::min({request.value(1), faults.longestRead, LongestRequest});
    if (const auto& bad = faults.badRange; bad && file->second.path.endsWith(bad->file)) {
        const off_t position = lseek(descriptor, 0, SEEK_CUR);
        if (position < bad->end && position + off_t(most) > bad->first)
            return sendStatus(request, bad->status);
    }
    QByteArray data(qsizetype(most), Qt::Uninitialized);
    if (!faults.foreverFull) {
        const ssize_t count = ::read(descriptor, data.data(), most);
        if (count < 0)
            return sendErrno(request, false);
        data.truncate(count);
    }
    return sendData(request, data);
}

bool AfcService::seekFile(const Request& request)
{
    const auto file = _files.find(request.value(0));
    if (file == _files.end())
        return sendStatus(request, BadArgument);
    const int descriptor = file->second.descriptor;
    if (request.operation == FileTell)
        return send(request, FileTellResult, littleEndian(quint64(lseek(descriptor, 0, SEEK_CUR))),
                    {});
    return sendErrno(request,
                     lseek(descriptor, off_t(request.value(2)), int(request.value(1))) >= 0);
}

bool AfcService::sendErrno(const Request& request, bool succeeded)
{
    return sendStatus(request, succeeded ? quint64(Success) : codeOf(errno));
}

bool AfcService::sendStatus(const Request& request, quint64 status)
{
    return send(request, Status, littleEndian(status), {});
}

bool AfcService::sendData(const Request& request, const QByteArray& data)
{
    return send(request, Data, {}, data);
}

bool AfcService::send(const Request& request, quint64 operation, const QByteArray& fixed,
                      const QByteArray& data)
{
    const quint64 thisLength = quint64(HeaderSize + fixed.size());
    QByteArray answer = QByteArray("CFA6LPAA") + littleEndian(thisLength + quint64(data.size())) +
                        littleEndian(thisLength) + littleEndian(request.number) +
                        littleEndian(operation) + fixed + data;
    if (const auto distort = _phone.faults().distort)
        distort(request.operation, answer);
    const qint64 allowed = _phone.takeBytes(answer.size());
    const bool isCut = allowed < answer.size(); // the connection ends in the middle of the answer
    answer.truncate(allowed);
    const qint64 atOnce = _phone.takeBytesBeforeStall(answer.size());
    _stream.setPace(_phone.faults().bytesAtATime);
    _stream.setLimit(_phone.faults().linkStallsAfter);
    if (!_stream.write(answer.first(atOnce)))
        return false;
    if (atOnce < answer.size()) {
        _phone.hang(_stream);
        return !_stream.isCut() && _stream.write(answer.sliced(atOnce));
    }
    return !isCut;
}

/// What a path is refused with on purpose; 0 for nothing.
quint64 AfcService::refusalOf(const QByteArray& path) const
{
    return _phone.faults().statuses.value(QString::fromUtf8(path), Success);
}
