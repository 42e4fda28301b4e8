#include "Platform/Folder.h"

#include "Base/FolderRemoval.h"
#include "Platform/OpenBelow.h"
#include "Platform/SystemFailure.h"

#include <QFile>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>

namespace
{
constexpr int LookOnly = O_PATH | O_NOFOLLOW;

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

/// Opens for reading without leaving a trace where the owner may ask for that.
Descriptor openToRead(int folder, const QByteArray& path, int flags)
{
    flags |= O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    Descriptor opened = openBelow(folder, path, flags | O_NOATIME);
    return !opened && errno == EPERM ? openBelow(folder, path, flags) : std::move(opened);
}

Folder::Kind kindOf(const struct stat& status)
{
    if (S_ISREG(status.st_mode))
        return Folder::Kind::File;
    if (S_ISDIR(status.st_mode))
        return Folder::Kind::Folder;
    return S_ISLNK(status.st_mode) ? Folder::Kind::Link : Folder::Kind::Other;
}

Folder::Identity identityOf(const struct stat& status)
{
    return {quint64(status.st_dev), quint64(status.st_ino)};
}

/// Looks at what stands below a folder, without opening it.
Expected<Folder::Entry> entryBelow(int folder, const QByteArray& path)
{
    const Descriptor found = openBelow(folder, path, LookOnly);
    struct stat status = {};
    if (!found || fstat(found.number(), &status) != 0)
        return SystemFailure::of(errno);
    return Folder::Entry{kindOf(status), qint64(status.st_size), identityOf(status)};
}

bool isFolder(int folder, const dirent& entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status = {};
    return fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(status.st_mode);
}

/// A folder that is opened without looking into it fails with its whole file system.
Failure failureOfFolder(int errorNumber)
{
    Failure failure = SystemFailure::of(errorNumber);
    if (errorNumber == EIO)
        failure.kind = Failure::Kind::Lost;
    return failure;
}

/// The system's calls end a path at its first zero and would open something else.
bool hasZero(const QString& path)
{
    return path.contains(QChar::Null);
}
} // namespace

Folder::Folder(Descriptor descriptor, const Identity& identity)
    : _descriptor(std::move(descriptor))
    , _identity(identity)
{
}

Expected<Folder> Folder::open(const QString& path)
{
    if (hasZero(path))
        return SystemFailure::of(EINVAL);
    Descriptor opened(
        ::open(QFile::encodeName(path).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    struct stat status = {};
    if (!opened || fstat(opened.number(), &status) != 0)
        return failureOfFolder(errno);
    return Folder(std::move(opened), identityOf(status));
}

Expected<Folder> Folder::parent() const
{
    Descriptor opened(openat(_descriptor.number(), "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
    struct stat status = {};
    if (!opened || fstat(opened.number(), &status) != 0)
        return failureOfFolder(errno);
    return Folder(std::move(opened), identityOf(status));
}

Expected<Folder::Entry> Folder::entry(const QString& path) const
{
    if (hasZero(path))
        return SystemFailure::of(EINVAL);
    return entryBelow(_descriptor.number(), QFile::encodeName(path));
}

Expected<QStringList> Folder::list(const QString& path, Which which) const
{
    if (hasZero(path))
        return SystemFailure::of(EINVAL);
    Descriptor opened =
        openToRead(_descriptor.number(), QFile::encodeName(path), O_RDONLY | O_DIRECTORY);
    if (!opened)
        return SystemFailure::of(errno);
    const OpenFolder folder(fdopendir(opened.number()));
    if (!folder)
        return SystemFailure::of(errno);
    (void)opened.release(); // the listing closes it
    QStringList names;
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(folder.get());
        if (!entry)
            break;
        const QString name = QFile::decodeName(entry->d_name);
        if (name != u"." && name != u".." &&
            isFolder(dirfd(folder.get()), *entry) == (which == Which::Folders))
            names.append(name);
    }
    if (errno != 0)
        return SystemFailure::of(errno);
    return names;
}

Expected<File> Folder::openFile(const QString& path) const
{
    if (hasZero(path))
        return SystemFailure::of(EINVAL);
    const QByteArray nativePath = QFile::encodeName(path);
    // To open a pipe or a device node may already do something, so look first.
    const Expected<Entry> found = entryBelow(_descriptor.number(), nativePath);
    if (!found)
        return found.failure();
    if (found->kind == Kind::Link)
        return SystemFailure::of(ELOOP);
    if (found->kind != Kind::File)
        return SystemFailure::of(found->kind == Kind::Folder ? EISDIR : EINVAL);
    Descriptor opened = openToRead(_descriptor.number(), nativePath, 0);
    if (!opened)
        return SystemFailure::of(errno);
    File file(std::move(opened));
    if (!file.isOpen())
        return file.failure();
    return file;
}

Expected<Folder> Folder::makeFolder(const QString& name) const
{
    if (hasZero(name))
        return SystemFailure::of(EINVAL);
    const QByteArray nativeName = QFile::encodeName(name);
    constexpr mode_t AllThatTheUserAllows = 0777;
    if (mkdirat(_descriptor.number(), nativeName.constData(), AllThatTheUserAllows) != 0 &&
        errno != EEXIST) {
        // Where nothing can be made, what is there already is as good.
        const int why = errno;
        if (!entryBelow(_descriptor.number(), nativeName))
            return SystemFailure::of(why);
    }
    Descriptor opened = openBelow(_descriptor.number(), nativeName, LookOnly);
    struct stat status = {};
    if (!opened || fstat(opened.number(), &status) != 0)
        return SystemFailure::of(errno);
    if (kindOf(status) != Kind::Folder)
        return SystemFailure::of(kindOf(status) == Kind::Link ? ELOOP : ENOTDIR);
    return Folder(std::move(opened), identityOf(status));
}

Status Folder::remove(const QString& name) const
{
    return FolderRemoval::remove(_descriptor.number(), QFile::encodeName(name));
}

QString Folder::pathTo(const QString& name) const
{
    return QStringLiteral("/proc/self/fd/%1/%2").arg(QString::number(_descriptor.number()), name);
}
