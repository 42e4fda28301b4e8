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
/// The side files of a database in write-ahead mode.
constexpr QLatin1String Index("-shm");
constexpr QLatin1String Log("-wal");
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

/// Why a copy is not whole.
Failure failureOf(const Device& device, const CopyResult& result)
{
    using End = CopyResult::End;
    using Kind = Failure::Kind;
    if (std::optional<Failure> gone = device.whyGone()) {
        if (gone->exact.isEmpty())
            gone->exact = result.why;
        return *gone;
    }
    switch (result.end) {
    case End::Whole:
    case End::Incomplete:
        return {Kind::Unreadable, TemporaryCopy::tr("The file could not be read to its end"),
                result.why};
    case End::Missing:
        return {Kind::Missing, TemporaryCopy::tr("There is no such file on the device"),
                result.why};
    case End::Failed:
    case End::Taken:
        return {Kind::Unwritable, TemporaryCopy::tr("No private copy of the file could be made"),
                result.why};
    case End::Stopped:
        return {Kind::Stopped, TemporaryCopy::tr("The reading was stopped"), result.why};
    }
    return {};
}

/// What stands in the way of a copy before its first byte; else the size that is reported.
Expected<std::optional<qint64>> sizeToCopy(Device& device, const QString& from)
{
    const Expected<FileInfo> found = device.info(from);
    if (!found)
        return found.failure();
    if (found->kind == FileInfo::Kind::Link)
        return Failure{
            Failure::Kind::Unreadable,
            TemporaryCopy::tr("The file is a link, and links on a device are not followed"),
            {}};
    if (found->kind != FileInfo::Kind::File)
        return Failure{
            Failure::Kind::Unreadable, TemporaryCopy::tr("There is something that is no file"), {}};
    if (found->size.value_or(0) > MostBytes)
        return Failure{Failure::Kind::Refused,
                       TemporaryCopy::tr("The file is larger than any library"),
                       QStringLiteral("%1 B").arg(*found->size)};
    return found->size;
}

Status copyFile(Device& device, const QString& from, const QString& to, std::optional<int> progress)
{
    const Expected<std::optional<qint64>> size = sizeToCopy(device, from);
    if (!size)
        return size.failure();
    const CopyResult result = device.copyOut(from, to, progress);
    if (result.end != CopyResult::End::Whole)
        return failureOf(device, result);
    const qint64 copied = QFileInfo(to).size();
    if (copied < size->value_or(0)) // nobody noticed that it ended early
        return failureOf(device, {CopyResult::End::Incomplete,
                                  QStringLiteral("%1 B / %2 B").arg(copied).arg(**size)});
    return {};
}

TemporaryCopy::Ended copy(Device& device, const QString& from, const QString& to,
                          TemporaryCopy::SideFiles sideFiles, std::optional<int> progress)
{
    TemporaryCopy::Ended ended{copyFile(device, from, to, progress), {}};
    if (!ended.file || sideFiles == TemporaryCopy::SideFiles::Leave)
        return ended;
    // The index of the log is made anew from the log where it is missing.
    (void)copyFile(device, from + Index, to + Index, progress);
    ended.log = copyFile(device, from + Log, to + Log, progress);
    if (ended.log.failedAs(Failure::Kind::Missing))
        ended.log = {};
    return ended;
}

void makePrivate(const QString& file)
{
    chmod(QFile::encodeName(file).constData(), S_IRUSR | S_IWUSR);
}
} // namespace

TemporaryCopy::TemporaryCopy(Device& device, const QString& from, SideFiles sideFiles)
{
    _ended.file =
        Failure{Failure::Kind::Unwritable,
                TemporaryCopy::tr("There is no private folder for copies on this computer"),
                {}};
    for (const QString& folder : candidates()) {
        if (!claimPlace(folder))
            continue;
        _path = PathName::join(_folder, Utility::stringWithUUID());
        constexpr int WhatReadersPass = 0;
        _ended = copy(device, from, _path, sideFiles, WhatReadersPass);
        // Another file system may have the room, or the health, that this one lacks.
        if (!_ended.file.failedAs(Failure::Kind::Unwritable) &&
            !_ended.log.failedAs(Failure::Kind::Unwritable))
            break;
        if (folder != candidates().constLast())
            leavePlace();
    }
    for (const QFileInfo& file : QDir(_folder).entryInfoList(QDir::Files))
        makePrivate(file.filePath());
    if (!QFileInfo::exists(_path))
        _path = QString();
}

/// Makes a folder of its own in a folder of copies.
bool TemporaryCopy::claimPlace(const QString& folder)
{
    if (!claim(folder))
        return false;
    // Until the new folder is locked, nobody may take it for a leftover.
    const int parent = lockFolder(folder, LOCK_EX);
    const QString own = PathName::join(folder, Utility::stringWithUUID());
    const bool made = mkdir(QFile::encodeName(own).constData(), OwnerOnly) == 0;
    if (made) {
        _folder = own;
        _lock = lockFolder(own, LOCK_SH);
    }
    unlock(parent);
    return made;
}

void TemporaryCopy::leavePlace()
{
    if (!_folder.isNull())
        QDir(_folder).removeRecursively();
    unlock(_lock);
    _lock = -1;
    _folder = QString();
    _path = QString();
}

TemporaryCopy::~TemporaryCopy()
{
    leavePlace();
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
    const QString folder = Utility::logFolder();
    if (!claim(folder))
        return;
    const QString to = PathName::join(folder, PathName::lastComponent(from));
    // A log beside a database of another device would be taken for its own.
    for (const QLatin1String suffix : {QLatin1String(), Index, Log})
        QFile::remove(to + suffix);
    copy(device, from, to, sideFiles, std::nullopt);
    for (const QLatin1String suffix : {QLatin1String(), Index, Log})
        makePrivate(to + suffix);
}

void TemporaryCopy::removeLeftovers()
{
    for (const QString& folder : candidates()) {
        if (QFileInfo::exists(folder) && claim(folder))
            removeUnlocked(folder);
    }
}
