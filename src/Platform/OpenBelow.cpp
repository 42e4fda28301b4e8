#include "Platform/OpenBelow.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <vector>

namespace
{
/// How often the kernel may find that something was renamed while it looked.
constexpr int MostTries = 20;

Descriptor failed(int errorNumber)
{
    errno = errorNumber;
    return {};
}

/// The kernel's own way; the C library has no name for it.
Descriptor openAtOnce(int folder, const QByteArray& path, int flags)
{
    open_how how = {};
    how.flags = quint64(flags);
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS | RESOLVE_NO_SYMLINKS;
    for (int tries = 0;; ++tries) {
        const long opened = syscall(SYS_openat2, folder, path.constData(), &how, sizeof how);
        if (opened >= 0 || (errno != EAGAIN && errno != EINTR) || tries == MostTries)
            return Descriptor(int(opened));
    }
}

/// One step of a walk. A link can be opened, but not walked through.
Descriptor openEntry(int folder, const QByteArray& name)
{
    return Descriptor(openat(folder, name.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
}

bool isLink(const Descriptor& entry)
{
    struct stat status = {};
    return fstat(entry.number(), &status) == 0 && S_ISLNK(status.st_mode);
}

/// The same, name by name, for kernels and sandboxes without it. The way down is kept, since
/// ".." of a folder that is moved meanwhile could lead anywhere.
Descriptor openByWalking(int folder, const QByteArray& path, int flags)
{
    std::vector<Descriptor> way;
    const auto here = [&] { return way.empty() ? folder : way.back().number(); };
    QByteArray last = ".";
    const auto stepDown = [&] {
        if (last == ".")
            return true;
        Descriptor next = openEntry(here(), last);
        if (!next)
            return false;
        if (isLink(next)) {
            errno = ELOOP;
            return false;
        }
        way.push_back(std::move(next));
        last = ".";
        return true;
    };
    for (const QByteArray& name : path.split('/')) {
        if (name.isEmpty() || name == ".")
            continue;
        if (!stepDown())
            return {};
        if (name != "..") {
            last = name;
        } else if (way.empty()) {
            return failed(EXDEV);
        } else {
            // What ".." leaves must have been a folder.
            if (const Descriptor folderLeft = openEntry(here(), "."); !folderLeft)
                return {};
            way.pop_back();
        }
    }
    return Descriptor(openat(here(), last.constData(), flags | O_NOFOLLOW));
}
} // namespace

Descriptor openBelow(int folder, const QByteArray& path, int flags)
{
    const QByteArray asked = path.isEmpty() ? QByteArray(".") : path;
    Descriptor opened = openAtOnce(folder, asked, flags | O_CLOEXEC);
    // A sandbox may say EPERM where an old kernel says ENOSYS.
    if (opened || (errno != ENOSYS && errno != EPERM))
        return opened;
    const int folderAtItsEnd = asked.endsWith('/') ? O_DIRECTORY : 0;
    return openByWalking(folder, asked, flags | O_CLOEXEC | folderAtItsEnd);
}
