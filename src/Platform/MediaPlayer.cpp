#include "Platform/MediaPlayer.h"

#include "Base/FolderRemoval.h"
#include "Base/PathName.h"
#include "Base/Program.h"
#include "Platform/MprisPlayer.h"
#include "Platform/Workspace.h"

#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QMimeType>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace
{
constexpr int AskMilliseconds = 3'000;

QString playingFolder()
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return PathName::join(PathName::join(cache, Program::briefName()), u"Playing");
}

/// The desktop entry of the program that the desktop opens files of a type with, without its
/// extension; empty when there is none.
QString defaultPlayer(const QMimeType& type)
{
    // The same type has several names, and desktops differ in which one they know.
    for (const QString& name : QStringList(type.name()) + type.aliases()) {
        QProcess process;
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(QStringLiteral("xdg-mime"),
                      {QStringLiteral("query"), QStringLiteral("default"), name});
        if (!process.waitForFinished(AskMilliseconds))
            return {};
        QString entry = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
        if (entry.endsWith(u".desktop"))
            return entry.chopped(8);
    }
    return {};
}
/// Playlists count as "audio" as well, but lead to any address.
bool isListOfAddresses(const QMimeType& type)
{
    static const QStringList lists = {
        QStringLiteral("audio/x-mpegurl"), QStringLiteral("audio/x-scpls"),
        QStringLiteral("audio/x-ms-asx"), QStringLiteral("video/vnd.mpegurl")};
    return lists.contains(type.name()) || type.inherits(QStringLiteral("text/plain"));
}
} // namespace

QString MediaPlayer::privateCopyPath(const QString& fileName)
{
    const QString folder = playingFolder();
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    // A folder for each copy: a player may still have the one before open.
    QTemporaryDir own(PathName::join(folder, u"XXXXXX"));
    own.setAutoRemove(false);
    return own.isValid() ? PathName::join(own.path(), PathName::lastComponent(fileName))
                         : QString();
}

void MediaPlayer::removeOldCopies()
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    (void)FolderRemoval::removeOwn(cache, {Program::briefName(), QStringLiteral("Playing")});
}

bool MediaPlayer::isPlayable(const QString& path)
{
    const QMimeDatabase database;
    // By its name first, as the desktop does it: several types may claim one extension.
    QList<QMimeType> types = database.mimeTypesForFileName(path);
    if (types.isEmpty())
        types = {database.mimeTypeForFile(path)};
    for (const QMimeType& type : types) {
        const bool isMedia = type.name().startsWith(u"audio/") || type.name().startsWith(u"video/");
        if (!isMedia || isListOfAddresses(type))
            return false;
    }
    // A text under a name of music: no player has any use for it, other programs might.
    return !database.mimeTypeForFile(path, QMimeDatabase::MatchContent)
                .inherits(QStringLiteral("text/plain"));
}

bool MediaPlayer::open(const QString& path, const std::function<bool()>& stop)
{
    if (!isPlayable(path) || !Workspace::openFile(path))
        return false;
    MprisPlayer::play(path, defaultPlayer(QMimeDatabase().mimeTypeForFile(path)), stop);
    return true;
}
