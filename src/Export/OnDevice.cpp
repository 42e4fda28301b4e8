#include "Export/OnDevice.h"

#include "Base/PathName.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace
{
bool isSame(const QString& path, const struct stat& root)
{
    struct stat here = {};
    return stat(QFile::encodeName(path).constData(), &here) == 0 && here.st_dev == root.st_dev &&
           here.st_ino == root.st_ino;
}

/// What is there of a path, without links.
QString existingPart(const QString& path)
{
    QString there = QDir::cleanPath(QDir(path).absolutePath());
    while (!QFileInfo::exists(there) && there != u"/")
        there = PathName::parent(there);
    return QFileInfo(there).canonicalFilePath();
}
} // namespace

bool OnDevice::wouldLie(const QString& path, const QString& root)
{
    struct stat device = {};
    if (root.isNull() || stat(QFile::encodeName(root).constData(), &device) != 0)
        return false;
    QString folder = existingPart(path);
    while (!isSame(folder, device)) {
        if (folder.isEmpty() || folder == u"/")
            return false;
        folder = PathName::parent(folder);
    }
    return true;
}
