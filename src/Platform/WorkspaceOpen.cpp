// What the workspace opens for a person: files, folders, addresses.

#include "Platform/SessionBus.h"
#include "Platform/Workspace.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace
{
/// Has the desktop open a path or an address with whatever it opens such things with.
bool openWithDesktop(const QString& what)
{
    QProcess process;
    process.setProgram(QStringLiteral("xdg-open"));
    process.setArguments({what});
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

QDBusMessage showInFileManager(const QFileInfo& info)
{
    const QString fileManager = QStringLiteral("org.freedesktop.FileManager1");
    QDBusMessage message = QDBusMessage::createMethodCall(
        fileManager, QStringLiteral("/org/freedesktop/FileManager1"), fileManager,
        info.isDir() ? QStringLiteral("ShowFolders") : QStringLiteral("ShowItems"));
    const QString noStartupId = QLatin1String("");
    message << QStringList(
                   QUrl::fromLocalFile(info.absoluteFilePath()).toString(QUrl::FullyEncoded))
            << noStartupId;
    return message;
}
} // namespace

bool Workspace::openFile(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() && openWithDesktop(info.absoluteFilePath());
}

bool Workspace::openAddress(const QUrl& address)
{
    // Nothing else is an address for a person; a file, say, goes through openFile.
    static const QStringList schemes = {QStringLiteral("http"), QStringLiteral("https"),
                                        QStringLiteral("mailto")};
    return address.isValid() && schemes.contains(address.scheme()) &&
           openWithDesktop(address.toString(QUrl::FullyEncoded));
}

bool Workspace::revealInFileManager(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return false;
    const QString folder = info.isDir() ? info.absoluteFilePath() : info.absolutePath();
    const QDBusConnection session = SessionBus::connection();
    if (!session.isConnected())
        return openWithDesktop(folder);
    auto* watcher = new QDBusPendingCallWatcher(
        session.asyncCall(showInFileManager(info), SessionBus::TimeLimit),
        QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, folder] {
        if (watcher->isError())
            openWithDesktop(folder);
        watcher->deleteLater();
    });
    return true;
}
