#include "Export/CopiedSize.h"

#include "Base/PathName.h"
#include "Device/Device.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFileInfo>

namespace
{
QString words(qint64 copied, qint64 reported)
{
    return QCoreApplication::translate("CopiedSize", "%1 of %2 bytes were copied")
        .arg(copied)
        .arg(reported);
}

/// What a file, or a folder with all it holds, has too little or too much of.
QString differenceNow(Device& device, const QString& from, const QString& to)
{
    if (!QFileInfo(to).isDir()) {
        const qint64 reported = device.getFileSize(from).value_or(0);
        const qint64 copied = QFileInfo(to).size();
        return reported == copied ? QString() : words(copied, reported);
    }
    // The copy is finite and has no links, so following it keeps the walk finite as well,
    // whatever the device claims to hold.
    const QStringList files = device.getFiles(from);
    const QStringList folders = device.getDirs(from);
    for (const QString& name : files + folders) {
        const QString copy = PathName::join(to, name);
        const QString problem =
            QFileInfo::exists(copy)
                ? differenceNow(device, PathName::join(from, name), copy)
                : QCoreApplication::translate("CopiedSize", "It was not copied");
        if (!problem.isEmpty())
            return name + QStringLiteral(": ") + problem;
    }
    return {};
}
} // namespace

CopiedSize::CopiedSize(Device& device, const QString& from)
    : _device(device)
    , _from(from)
    , _reportedBefore(device.getFileSize(from).value_or(0))
{
}

QString CopiedSize::difference(const QString& to) const
{
    const QFileInfo copy(to);
    if (!copy.isDir() && copy.size() < _reportedBefore)
        return words(copy.size(), _reportedBefore);
    return differenceNow(_device, _from, to);
}

qint64 CopiedSize::onComputer(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isDir())
        return info.size();
    qint64 bytes = 0;
    QDirIterator files(path, QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        bytes += QFileInfo(files.next()).size();
    return bytes;
}
