#include "Export/Destinations.h"

#include "Base/PathName.h"
#include "Platform/SystemFailure.h"

#include <QDir>

namespace
{
Destinations::FolderPointer shared(Expected<Folder>& folder)
{
    return std::make_shared<const Folder>(std::move(*folder));
}
} // namespace

Destinations::Destinations(const Config& config, const QString& deviceRoot)
    : _config(config)
{
    const Expected<Folder> root =
        deviceRoot.isNull() ? SystemFailure::of(ENOENT) : Folder::open(deviceRoot);
    if (!root)
        return;
    // A player in a folder of the home's own file system shares that with all other folders.
    const Expected<Folder> above = root->parent();
    const Expected<Folder> home = Folder::open(QDir::homePath());
    const quint64 fileSystem = root->identity().device;
    const bool isMounted = above && above->identity().device != fileSystem;
    const bool isHomes = home && home->identity().device == fileSystem;
    _device = {root->identity(), isMounted && !isHomes};
}

Failure Destinations::onDevice()
{
    return {Failure::Kind::Refused,
            tr("The destination folder is on the device itself, and nothing is written there"),
            {}};
}

Expected<Destinations::FolderPointer> Destinations::folder(Section category, const QString& below)
{
    const QStringList names = below.split(u'/', Qt::SkipEmptyParts);
    const Expected<FolderPointer> start = this->category(category);
    if (!start)
        return start.failure();
    Expected<FolderPointer> made = make(*start, names);
    if (!made.failedAs(Failure::Kind::Missing))
        return made;
    // The person may have removed the category's folder meanwhile.
    _categories.erase(category);
    const Expected<FolderPointer> again = this->category(category);
    return again ? make(*again, names) : again.failure();
}

Expected<Destinations::FolderPointer> Destinations::category(Section category)
{
    const auto found = _categories.find(category);
    if (found != _categories.end())
        return found->second;
    Expected<FolderPointer> opened = open(_config.folderPath(category));
    if (opened)
        _categories[category] = *opened;
    return opened;
}

Expected<Destinations::FolderPointer> Destinations::open(const QString& path) const
{
    if (path.isEmpty())
        return Failure{Failure::Kind::Unwritable, tr("There is no destination folder"), {}};
    // The part that is there, and the names of what is missing below it.
    QString there = QDir::cleanPath(QDir(path).absolutePath());
    QStringList missing;
    Expected<Folder> folder = Folder::open(there);
    while (folder.failedAs(Failure::Kind::Missing) && there != u"/") {
        missing.prepend(PathName::lastComponent(there));
        there = PathName::parent(there);
        folder = Folder::open(there);
    }
    if (!folder)
        return folder.failure();
    if (isOnDevice(*folder))
        return onDevice();
    return make(shared(folder), missing);
}

Expected<Destinations::FolderPointer> Destinations::make(FolderPointer folder,
                                                         const QStringList& names) const
{
    for (const QString& name : names) {
        if (name == u".")
            continue;
        Expected<Folder> next = folder->makeFolder(name);
        if (!next)
            return next.failure();
        if (isDevice(*next)) // something is mounted in the person's own folder
            return onDevice();
        folder = shared(next);
    }
    return folder;
}

bool Destinations::isDevice(const Folder& folder) const
{
    if (!_device)
        return false;
    return folder.identity() == _device->root ||
           (_device->hasOwnFileSystem && folder.identity().device == _device->root.device);
}

bool Destinations::isOnDevice(const Folder& folder) const
{
    if (!_device || isDevice(folder))
        return bool(_device);
    Expected<Folder> inner = folder.parent();
    Folder::Identity below = folder.identity();
    while (inner && inner->identity() != below) {
        if (isDevice(*inner))
            return true;
        below = inner->identity();
        inner = inner->parent();
    }
    return false;
}
