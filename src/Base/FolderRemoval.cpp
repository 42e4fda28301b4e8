#include "Base/FolderRemoval.h"

#include "Base/Descriptor.h"

#include <QCoreApplication>
#include <QFile>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <system_error>

namespace
{
struct CloseFolder {
    void operator()(DIR* folder) const noexcept { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

Status failed(int errorNumber)
{
    return Failure{errorNumber == ENOENT ? Failure::Kind::Missing : Failure::Kind::Unwritable,
                   QCoreApplication::translate("FolderRemoval", "The folder could not be removed"),
                   QString::fromStdString(std::generic_category().message(errorNumber))};
}

Status notOurs()
{
    return Failure{
        Failure::Kind::Refused,
        QCoreApplication::translate("FolderRemoval", "The folder is a link or somebody else's"),
        {}};
}

std::optional<struct stat> statusOf(int descriptor)
{
    struct stat status = {};
    return fstat(descriptor, &status) == 0 ? std::optional(status) : std::nullopt;
}

Descriptor openFolder(int parent, const char* name)
{
    constexpr int Flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    return Descriptor(openat(parent, name, Flags));
}

/// Removes all that a folder holds, as far as that is possible.
Status empty(Descriptor folder)
{
    const OpenFolder entries(fdopendir(folder.number()));
    if (!entries)
        return failed(errno);
    (void)folder.release(); // the listing closes it
    Status result;
    while (const dirent* entry = readdir(entries.get())) {
        const QByteArray name(entry->d_name);
        if (name == "." || name == "..")
            continue;
        if (Status one = FolderRemoval::remove(dirfd(entries.get()), name); !one)
            result = one;
    }
    return result;
}
} // namespace

Status FolderRemoval::remove(int folder, const QByteArray& name)
{
    // Anything but a folder goes at once; a link goes itself.
    if (unlinkat(folder, name.constData(), 0) == 0 || errno == ENOENT)
        return {};
    if (errno != EISDIR && errno != EPERM)
        return failed(errno);
    Descriptor inner = openFolder(folder, name.constData());
    if (!inner)
        return failed(errno);
    const auto outerStatus = statusOf(folder);
    const auto innerStatus = statusOf(inner.number());
    if (!outerStatus || !innerStatus || outerStatus->st_dev != innerStatus->st_dev)
        return failed(EBUSY); // something is mounted there
    if (Status emptied = empty(std::move(inner)); !emptied)
        return emptied;
    if (unlinkat(folder, name.constData(), AT_REMOVEDIR) != 0 && errno != ENOENT)
        return failed(errno);
    return {};
}

Status FolderRemoval::removeOwn(const QString& base, const QStringList& below)
{
    Descriptor parent(open(QFile::encodeName(base).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    for (qsizetype i = 0; parent && i < below.size(); ++i) {
        const QByteArray name = QFile::encodeName(below[i]);
        Descriptor folder = openFolder(parent.number(), name.constData());
        if (!folder)
            return errno == ENOENT ? Status() : notOurs();
        const auto status = statusOf(folder.number());
        if (!status || status->st_uid != geteuid())
            return notOurs();
        if (i + 1 == below.size())
            return remove(parent.number(), name);
        parent = std::move(folder);
    }
    return {};
}
