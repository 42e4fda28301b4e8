#include "Platform/MediaPlayer.h"

#include "Base/PathName.h"
#include "Base/Program.h"
#include "Platform/Workspace.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace
{
QString playingFolder()
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return PathName::join(PathName::join(cache, Program::briefName()), u"Playing");
}
} // namespace

QString MediaPlayer::privateCopyPath(const QString& fileName)
{
    const QString folder = playingFolder();
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return PathName::join(folder, PathName::lastComponent(fileName));
}

void MediaPlayer::removeOldCopies()
{
    QDir(playingFolder()).removeRecursively();
}

bool MediaPlayer::open(const QString& path)
{
    return Workspace::openFile(path);
}
