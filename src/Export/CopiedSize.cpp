#include "Export/CopiedSize.h"

#include "Base/PathName.h"
#include "Device/Device.h"

#include <QDirIterator>
#include <QFileInfo>

CopiedSize::CopiedSize(Device& device, const QString& from)
    : _device(device)
    , _from(from)
    , _reportedBefore(reported(device, from))
{
}

QString CopiedSize::difference(const QString& to) const
{
    const QFileInfo copy(to);
    if (!copy.isDir()) {
        const QString before = compared(copy.size(), _reportedBefore);
        if (!before.isEmpty())
            return before;
    }
    return differenceNow(_device, _from, to);
}

Expected<qint64> CopiedSize::reported(Device& device, const QString& from)
{
    const Expected<FileInfo> info = device.info(from);
    if (!info)
        return info.failure();
    if (!info->size)
        return Failure{Failure::Kind::Unreadable, tr("The device reports no size"), {}};
    return *info->size;
}

QString CopiedSize::compared(qint64 copied, const Expected<qint64>& reported)
{
    if (!reported)
        return tr("Nothing tells whether the copy is whole: %1").arg(reported.failure().text());
    if (copied != *reported)
        return tr("%1 of %2 bytes were copied").arg(copied).arg(*reported);
    return {};
}

QString CopiedSize::differenceNow(Device& device, const QString& from, const QString& to)
{
    if (!QFileInfo(to).isDir())
        return compared(QFileInfo(to).size(), reported(device, from));
    // The copy is finite and has no links, so following it keeps the walk finite as well,
    // whatever the device claims to hold.
    QStringList names;
    for (const Device::Entries entries : {Device::Entries::Files, Device::Entries::Folders}) {
        const Expected<QStringList> listed = device.list(from, entries);
        if (!listed)
            return tr("Nothing tells whether the copy is whole: %1").arg(listed.failure().text());
        names += *listed;
    }
    for (const QString& name : names) {
        const QString copy = PathName::join(to, name);
        const QString problem = QFileInfo::exists(copy)
                                    ? differenceNow(device, PathName::join(from, name), copy)
                                    : tr("It was not copied");
        if (!problem.isEmpty())
            return name + QStringLiteral(": ") + problem;
    }
    return {};
}

qint64 CopiedSize::onComputer(const QString& path)
{
    const QFileInfo info(path);
    if (info.isSymLink()) // one that stood there before; nothing was written to what it leads to
        return 0;
    if (!info.isDir())
        return info.size();
    qint64 bytes = 0;
    QDirIterator files(path, QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        bytes += QFileInfo(files.next()).size();
    return bytes;
}
