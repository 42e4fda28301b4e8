#include "Platform/File.h"

#include "Platform/Host.h"
#include "Platform/SystemFailure.h"

#include <QFile>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <utility>
#include <vector>

namespace
{
/// Makes the file anew, so that nothing is written through a link, nor into a file that
/// something else has open.
Descriptor create(const char* path, File::Mode mode)
{
    constexpr int Flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    constexpr mode_t Rights = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    Descriptor made(::open(path, Flags, Rights));
    if (made || errno != EEXIST || mode == File::Mode::CreateNew)
        return made;
    struct stat status = {};
    if (lstat(path, &status) != 0)
        return {};
    if (!S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode)) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return {};
    }
    if (unlink(path) != 0)
        return {};
    return Descriptor(::open(path, Flags, Rights));
}

Descriptor openDescriptor(const QString& path, File::Mode mode)
{
    // The system's calls end a path at its first zero and would open something else.
    if (path.contains(QChar::Null)) {
        errno = EINVAL;
        return {};
    }
    const QByteArray nativePath = QFile::encodeName(path);
    if (mode != File::Mode::Read)
        return create(nativePath.constData(), mode);
    return Descriptor(::open(nativePath.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

/// 0, or why a descriptor is none that this class works with.
int whyNotRegular(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0)
        return errno;
    if (S_ISREG(status.st_mode))
        return 0;
    return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
}

/// Asks for large pages below a large buffer that is about to be filled: with small ones, the
/// system spends longer on handing out the memory than on copying a database into it.
void useLargePages(char* buffer, qint64 size)
{
    constexpr std::uintptr_t PageSize = std::uintptr_t(2) * 1024 * 1024;
    const auto start = reinterpret_cast<std::uintptr_t>(buffer);
    const std::uintptr_t first = (start + PageSize - 1) / PageSize * PageSize;
    const std::uintptr_t last = (start + std::uintptr_t(size)) / PageSize * PageSize;
    if (first < last) // only advice: a system without them goes on as before
        (void)madvise(buffer + (first - start), last - first, MADV_HUGEPAGE);
}

/// Whether a buffer of that size can be had without the system ending programs for it. A file
/// with holes may claim any size.
bool fitsIntoMemory(qint64 size)
{
    constexpr qint64 MiB = 1024 * 1024;
    constexpr qint64 Unasked = 64 * MiB;
    return size <= Unasked || double(size) / double(MiB) < Host::availableMemory();
}

constexpr std::size_t BufferSize = std::size_t(64) * 1024;
} // namespace

File::File(const QString& path, Mode mode)
    : _descriptor(openDescriptor(path, mode))
{
    if (!isOpen())
        fail(errno);
    else
        keepOnlyRegular();
}

File::File(Descriptor descriptor)
    : _descriptor(std::move(descriptor))
{
    keepOnlyRegular();
}

void File::keepOnlyRegular()
{
    if (const int reason = whyNotRegular(_descriptor.number())) {
        _descriptor = {};
        fail(reason);
    }
}

Failure File::failure() const
{
    return SystemFailure::of(_errorNumber);
}

bool File::wasTaken() const
{
    return _errorNumber == EEXIST;
}

std::optional<qint64> File::size() const
{
    struct stat status = {};
    if (fstat(_descriptor.number(), &status) != 0)
        return std::nullopt;
    return qint64(status.st_size);
}

qint64 File::read(std::span<std::byte> buffer)
{
    for (;;) {
        const ssize_t count = ::read(_descriptor.number(), buffer.data(), buffer.size());
        if (count >= 0)
            return count;
        if (errno != EINTR) {
            fail(errno);
            return 0;
        }
    }
}

QByteArray File::readAll()
{
    // A file that never ends would take all memory, so what it reports is all that is read.
    QByteArray bytes = readRange(0, size().value_or(0));
    return bytes.isEmpty() && !error().isEmpty() ? QByteArray() : bytes;
}

QByteArray File::readRange(qint64 offset, qint64 length)
{
    if (offset < 0 || length < 0)
        return {};
    const qint64 wanted = std::clamp(size().value_or(0) - offset, qint64(0), length);
    if (!fitsIntoMemory(wanted)) {
        fail(ENOMEM);
        return {};
    }
    QByteArray bytes(wanted, Qt::Uninitialized);
    useLargePages(bytes.data(), wanted);
    lseek(_descriptor.number(), offset, SEEK_SET);
    qint64 done = 0;
    while (done < wanted) {
        const auto rest = std::as_writable_bytes(std::span(bytes.data(), std::size_t(wanted)));
        const qint64 count = read(rest.subspan(std::size_t(done)));
        if (count == 0)
            break;
        done += count;
    }
    bytes.truncate(done);
    return bytes;
}

bool File::write(std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(_descriptor.number(), bytes.data(), bytes.size());
        if (count >= 0) {
            bytes = bytes.subspan(std::size_t(count));
        } else if (errno != EINTR) {
            fail(errno);
            return false;
        }
    }
    return true;
}

qint64 File::append(File& source, qint64 length)
{
    qint64 moved = 0;
    while (_kernelCopies && moved < length) {
        const ssize_t count =
            copy_file_range(source._descriptor.number(), nullptr, _descriptor.number(), nullptr,
                            std::size_t(length - moved), 0);
        if (count > 0)
            moved += count;
        else if (count == 0)
            break; // the end, or a file system that answers so although it has more to read
        else if (errno != EINTR)
            _kernelCopies = false; // plain calls from here on: they tell which side failed
    }
    return moved + appendThroughBuffer(source, length - moved);
}

qint64 File::appendThroughBuffer(File& source, qint64 length)
{
    qint64 moved = 0;
    if (length == 0)
        return moved;
    std::vector<std::byte> buffer(std::min(BufferSize, std::size_t(length)));
    while (moved < length) {
        const auto wanted = std::min(buffer.size(), std::size_t(length - moved));
        const qint64 count = source.read(std::span(buffer).first(wanted));
        if (count == 0 || !write(std::span(buffer).first(std::size_t(count))))
            break;
        moved += count;
    }
    return moved;
}

bool File::close()
{
    if (!isOpen() || ::close(_descriptor.release()) == 0 || errno == EINTR)
        return true;
    fail(errno);
    return false;
}

void File::fail(int errorNumber)
{
    _errorNumber = errorNumber;
    _error = SystemFailure::text(errorNumber);
}
