#include "Device/TemporaryCopy.h"

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "Device/Device.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr mode_t OwnerOnly = S_IRWXU;
/// No library comes near it. A file with holes may claim any size, and copying one would only
/// fill the disk.
constexpr qint64 MostBytes = qint64(4) * 1024 * 1024 * 1024;

/// Opens and locks a folder; -1 when that fails, or would have to wait and `how` says not to.
int lockFolder(const QString& folder, int how)
{
    const int descriptor = open(QFile::encodeName(folder).constData(),
                                O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor >= 0 && flock(descriptor, how) != 0) {
        close(descriptor);
        return -1;
    }
    return descriptor;
}

void unlock(int descriptor)
{
    if (descriptor >= 0)
        close(descriptor);
}

/// Where copies may stand, in the order they are tried.
QStringList candidates()
{
    return {PathName::join(QDir::tempPath(),
                           QStringLiteral("zell-transfer-%1").arg(qulonglong(geteuid()))),
            PathName::join(Utility::applicationSupportFolder(), u"copies")};
}

/// Makes the folder this user's alone. False when it is somebody else's: the temporary folder is
/// open to all, and another user may have taken the name.
bool claim(const QString& folder)
{
    const QByteArray path = QFile::encodeName(folder);
    (void)mkdir(path.constData(), OwnerOnly);
    struct stat status = {};
    return lstat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == geteuid() && chmod(path.constData(), OwnerOnly) == 0;
}

void removeUnlocked(const QString& folder)
{
    const int parent = lockFolder(folder, LOCK_EX);
    if (parent < 0)
        return;
    constexpr QDir::Filters All =
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QFileInfo& entry : QDir(folder).entryInfoList(All)) {
        if (entry.isSymLink() || !entry.isDir()) {
            QFile::remove(entry.filePath());
            continue;
        }
        const int lock = lockFolder(entry.filePath(), LOCK_EX | LOCK_NB);
        if (lock >= 0)
            QDir(entry.filePath()).removeRecursively();
        unlock(lock);
    }
    unlock(parent);
}

bool isWorthCopying(Device& device, const QString& from, TemporaryCopy::SideFiles sideFiles)
{
    qint64 bytes = device.getFileSize(from).value_or(0);
    if (sideFiles == TemporaryCopy::SideFiles::Take) {
        bytes += device.getFileSize(from + QStringLiteral("-wal")).value_or(0);
    }
    return bytes <= MostBytes;
}

void copy(Device& device, const QString& from, const QString& to,
          TemporaryCopy::SideFiles sideFiles, std::optional<int> progress)
{
    if (sideFiles == TemporaryCopy::SideFiles::Take)
        device.copyOutSqlite(from, to, progress);
    else
        device.copyOut(from, to, progress);
}
} // namespace

TemporaryCopy::TemporaryCopy(Device& device, const QString& from, SideFiles sideFiles)
{
    for (const QString& folder : candidates()) {
        if (!claim(folder))
            continue;
        // Until the new folder is locked, nobody may take it for a leftover.
        const int parent = lockFolder(folder, LOCK_EX);
        const QString own = PathName::join(folder, Utility::stringWithUUID());
        if (mkdir(QFile::encodeName(own).constData(), OwnerOnly) == 0) {
            _folder = own;
            _lock = lockFolder(own, LOCK_SH);
        }
        unlock(parent);
        if (!_folder.isNull())
            break;
    }
    if (_folder.isNull() || !isWorthCopying(device, from, sideFiles))
        return;
    _path = PathName::join(_folder, Utility::stringWithUUID());
    constexpr int WhatReadersPass = 0;
    copy(device, from, _path, sideFiles, WhatReadersPass);
    for (const QFileInfo& file : QDir(_folder).entryInfoList(QDir::Files))
        QFile::setPermissions(file.filePath(), QFile::ReadOwner | QFile::WriteOwner);
}

TemporaryCopy::~TemporaryCopy()
{
    if (!_folder.isNull())
        QDir(_folder).removeRecursively();
    unlock(_lock);
}

qint64 TemporaryCopy::size() const
{
    qint64 bytes = 0;
    if (!_folder.isNull()) {
        for (const QFileInfo& file : QDir(_folder).entryInfoList(QDir::Files))
            bytes += file.size();
    }
    return bytes;
}

void TemporaryCopy::keepForDiagnosis(Device& device, const QString& from, SideFiles sideFiles)
{
    if (isWorthCopying(device, from, sideFiles))
        copy(device, from, PathName::join(Utility::logFolder(), PathName::lastComponent(from)),
             sideFiles, std::nullopt);
}

void TemporaryCopy::removeLeftovers()
{
    for (const QString& folder : candidates()) {
        if (QFileInfo::exists(folder) && claim(folder))
            removeUnlocked(folder);
    }
}
