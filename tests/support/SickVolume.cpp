#include "support/SickVolume.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <linux/fuse.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace
{
constexpr std::size_t RequestSize = std::size_t(256) * 1024;
constexpr std::uint32_t MinorVersion = 31; ///< of the protocol, long before the kernels that ask

template <typename Record>
Record recordOf(const QByteArray& bytes, qsizetype offset = sizeof(fuse_in_header))
{
    Record record = {};
    std::memcpy(&record, bytes.constData() + offset, sizeof record);
    return record;
}

template <typename Record>
QByteArray bytesOf(const Record& record)
{
    return QByteArray(reinterpret_cast<const char*>(&record), sizeof record);
}

[[noreturn]] void fail(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

fuse_attr attributesOf(const struct stat& status)
{
    fuse_attr attributes = {};
    attributes.ino = status.st_ino;
    attributes.size = std::uint64_t(status.st_size);
    attributes.blocks = std::uint64_t(status.st_blocks);
    attributes.mode = status.st_mode;
    attributes.nlink = 1;
    attributes.uid = status.st_uid;
    attributes.gid = status.st_gid;
    attributes.blksize = 4096;
    return attributes;
}
} // namespace

SickVolume::SickVolume(const QString& folder, const QString& path)
    : _folder(folder)
    , _mountPath(path)
    , _names({QString()})
{
    QDir().mkpath(path);
    _connection = open("/dev/fuse", O_RDWR | O_CLOEXEC);
    _stop = eventfd(0, EFD_CLOEXEC);
    if (_connection < 0 || _stop < 0)
        fail("/dev/fuse");
    const QByteArray options = "fd=" + QByteArray::number(_connection) +
                               ",rootmode=40000,user_id=" + QByteArray::number(geteuid()) +
                               ",group_id=" + QByteArray::number(getegid());
    if (mount("sick", QFile::encodeName(path).constData(), "fuse", MS_NOSUID | MS_NODEV,
              options.constData()) != 0)
        fail("mount");
    _server = std::thread([this] { serve(); });
}

SickVolume::~SickVolume()
{
    umount2(QFile::encodeName(_mountPath).constData(), MNT_DETACH);
    die();
    close(_stop);
}

void SickVolume::failReads(const QString& name, int errorNumber, qint64 offset)
{
    const std::lock_guard lock(_mutex);
    _readFaults[name] = {errorNumber, offset};
}

void SickVolume::failLookUps(const QString& name, int errorNumber)
{
    const std::lock_guard lock(_mutex);
    _lookUpFaults[name] = {errorNumber, 0};
}

void SickVolume::failAfter(int questions, int errorNumber)
{
    const std::lock_guard lock(_mutex);
    _questionsAllowed = _questions + questions;
    _errorOfAll = errorNumber;
}

int SickVolume::questions()
{
    const std::lock_guard lock(_mutex);
    return _questions;
}

int SickVolume::errorOfNext()
{
    const std::lock_guard lock(_mutex);
    const bool allowed = _questionsAllowed < 0 || _questions < _questionsAllowed;
    ++_questions;
    return allowed ? 0 : _errorOfAll;
}

void SickVolume::die()
{
    if (_connection < 0)
        return;
    const std::uint64_t one = 1;
    (void)!write(_stop, &one, sizeof one);
    _server.join();
    close(_connection);
    _connection = -1;
}

void SickVolume::serve()
{
    QByteArray request(RequestSize, Qt::Uninitialized);
    for (;;) {
        pollfd waiting[] = {{_connection, POLLIN, 0}, {_stop, POLLIN, 0}};
        if (poll(waiting, 2, -1) < 0 && errno != EINTR)
            return;
        if (waiting[1].revents != 0)
            return;
        const ssize_t size = read(_connection, request.data(), RequestSize);
        if (size < 0 && errno == ENODEV) // unmounted
            return;
        if (size > 0)
            answer(request.first(size));
    }
}

void SickVolume::answer(const QByteArray& request)
{
    const auto header = recordOf<fuse_in_header>(request, 0);
    if (header.opcode == FUSE_FORGET || header.opcode == FUSE_BATCH_FORGET ||
        header.opcode == FUSE_INTERRUPT)
        return; // nobody waits for an answer
    _name = header.nodeid >= 1 && header.nodeid <= _names.size() ? _names[header.nodeid - 1]
                                                                 : QString();
    int error = 0;
    QByteArray sent = body(header.opcode, request, error);
    if (error != 0)
        sent.clear();
    fuse_out_header reply = {};
    reply.unique = header.unique;
    reply.error = -error;
    reply.len = std::uint32_t(sizeof reply + std::size_t(sent.size()));
    sent.prepend(bytesOf(reply));
    (void)!write(_connection, sent.constData(), std::size_t(sent.size()));
}

QByteArray SickVolume::body(quint32 opcode, const QByteArray& request, int& error)
{
    switch (opcode) {
    case FUSE_INIT: {
        fuse_init_out start = {};
        start.major = FUSE_KERNEL_VERSION;
        start.minor = MinorVersion;
        start.max_write = 4096;
        return bytesOf(start);
    }
    case FUSE_RELEASE:
    case FUSE_RELEASEDIR:
    case FUSE_FLUSH:
        return {};
    default:
        break;
    }
    error = errorOfNext();
    if (error != 0)
        return {};
    switch (opcode) {
    case FUSE_LOOKUP:
        return lookUp(request.sliced(sizeof(fuse_in_header)), error);
    case FUSE_GETATTR:
        return attributes(error);
    case FUSE_OPEN:
    case FUSE_OPENDIR: {
        fuse_open_out opened = {};
        opened.open_flags = opcode == FUSE_OPEN ? FOPEN_DIRECT_IO : 0;
        return bytesOf(opened);
    }
    case FUSE_READ:
        return bytes(request, error);
    case FUSE_READDIR:
        return entries(request);
    default:
        error = ENOSYS;
        return {};
    }
}

QByteArray SickVolume::lookUp(const QByteArray& name, int& error)
{
    const QString entry = QFile::decodeName(name.constData()); // up to its zero
    const QString path = _name.isEmpty() ? entry : _name + u'/' + entry;
    struct stat status = {};
    error = faultOf(_lookUpFaults, path).errorNumber;
    if (error == 0 && lstat(QFile::encodeName(pathOf(path)).constData(), &status) != 0)
        error = errno;
    fuse_entry_out found = {};
    found.nodeid = error == 0 ? nodeOf(path) : 0;
    found.attr = attributesOf(status);
    return bytesOf(found);
}

QByteArray SickVolume::attributes(int& error)
{
    struct stat status = {};
    if (lstat(QFile::encodeName(pathOf(_name)).constData(), &status) != 0)
        error = errno;
    fuse_attr_out found = {};
    found.attr = attributesOf(status);
    return bytesOf(found);
}

QByteArray SickVolume::entries(const QByteArray& request)
{
    const auto asked = recordOf<fuse_read_in>(request);
    const QStringList names =
        QDir(pathOf(_name))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    QByteArray listing;
    for (auto i = qsizetype(asked.offset); i < names.size(); ++i) {
        const QByteArray name = QFile::encodeName(names[i]);
        fuse_dirent entry = {};
        entry.ino = std::uint64_t(i) + 2;
        entry.off = std::uint64_t(i) + 1;
        entry.namelen = std::uint32_t(name.size());
        QByteArray record = bytesOf(entry).first(FUSE_NAME_OFFSET) + name;
        record.append(qsizetype(FUSE_DIRENT_ALIGN(std::size_t(record.size()))) - record.size(), 0);
        if (listing.size() + record.size() > qsizetype(asked.size))
            break;
        listing += record;
    }
    return listing;
}

QByteArray SickVolume::bytes(const QByteArray& request, int& error)
{
    const auto asked = recordOf<fuse_read_in>(request);
    const Fault fault = faultOf(_readFaults, _name);
    qint64 size = asked.size;
    if (fault.errorNumber != 0) {
        if (qint64(asked.offset) >= fault.offset)
            error = fault.errorNumber;
        size = std::min(size, fault.offset - qint64(asked.offset));
    }
    QFile file(pathOf(_name));
    if (error != 0 || !file.open(QIODevice::ReadOnly) || !file.seek(qint64(asked.offset)))
        return {};
    return file.read(size);
}

quint64 SickVolume::nodeOf(const QString& name)
{
    const auto found = std::find(_names.begin(), _names.end(), name);
    if (found == _names.end()) {
        _names.push_back(name);
        return _names.size();
    }
    return quint64(found - _names.begin()) + 1;
}

QString SickVolume::pathOf(const QString& name) const
{
    return name.isEmpty() ? _folder : _folder + u'/' + name;
}

SickVolume::Fault SickVolume::faultOf(const QHash<QString, Fault>& faults, const QString& name)
{
    const std::lock_guard lock(_mutex);
    return faults.value(name);
}
