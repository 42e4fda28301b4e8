#include "Platform/MprisPlayer.h"

#include "Platform/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QSet>
#include <QThread>
#include <QUrl>
#include <QVariantMap>

namespace
{
constexpr int AppearMilliseconds = 3'000; ///< for a player that is being started
/// For a player that is there to come to the file that the desktop gave it. After that it is told
/// to open the file, which would make it begin again if it had.
constexpr int OpenMilliseconds = 1'000;
constexpr int CallMilliseconds = 1'000;
constexpr int PauseMilliseconds = 100;

const QString NamePrefix = QStringLiteral("org.mpris.MediaPlayer2.");
const QString Root = QStringLiteral("org.mpris.MediaPlayer2");
const QString Player = QStringLiteral("org.mpris.MediaPlayer2.Player");

/// The players on the bus, as far as they answer.
class Players
{
public:
    explicit Players(QString desktopEntry)
        : _desktopEntry(std::move(desktopEntry))
    {
    }

    /// The names of those whose desktop entry is the one that is looked for.
    QStringList wanted()
    {
        const QDBusMessage answer =
            _bus.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                     QStringLiteral("/org/freedesktop/DBus"),
                                                     QStringLiteral("org.freedesktop.DBus"),
                                                     QStringLiteral("ListNames")),
                      QDBus::Block, CallMilliseconds);
        QStringList names;
        for (const QString& name : answer.arguments().value(0).toStringList()) {
            if (name.startsWith(NamePrefix) && isWanted(name))
                names.append(name);
        }
        return names;
    }

    bool hasOpened(const QString& name, const QString& path)
    {
        const QVariantMap metadata =
            qdbus_cast<QVariantMap>(property(name, Player, QStringLiteral("Metadata")));
        const QString address = metadata.value(QStringLiteral("xesam:url")).toString();
        return QUrl(address).toLocalFile() == path;
    }

    bool call(const QString& name, const QString& method, const QVariantList& arguments = {})
    {
        QDBusMessage message = callOf(name, Player, method);
        message.setArguments(arguments);
        return _bus.call(message, QDBus::Block, CallMilliseconds).type() ==
               QDBusMessage::ReplyMessage;
    }

private:
    static QDBusMessage callOf(const QString& name, const QString& interface, const QString& method)
    {
        return QDBusMessage::createMethodCall(name, QStringLiteral("/org/mpris/MediaPlayer2"),
                                              interface, method);
    }

    bool isWanted(const QString& name)
    {
        return !_silent.contains(name) &&
               property(name, Root, QStringLiteral("DesktopEntry")).toString() == _desktopEntry;
    }

    QVariant property(const QString& name, const QString& interface, const QString& property)
    {
        QDBusMessage message =
            callOf(name, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        message << interface << property;
        const QDBusMessage answer = _bus.call(message, QDBus::Block, CallMilliseconds);
        // One that hangs is waited for once, not at every look.
        if (answer.errorName() == u"org.freedesktop.DBus.Error.NoReply")
            _silent.insert(name);
        return answer.arguments().value(0).value<QDBusVariant>().variant();
    }

    QDBusConnection _bus = SessionBus::connection();
    QString _desktopEntry;
    QSet<QString> _silent;
};
} // namespace

bool MprisPlayer::play(const QString& path, const QString& desktopEntry,
                       const std::function<bool()>& stop)
{
    if (desktopEntry.isEmpty())
        return false;
    Players players(desktopEntry);
    const QString play = QStringLiteral("Play");
    const QDeadlineTimer appeared(AppearMilliseconds);
    QDeadlineTimer opened(QDeadlineTimer::Forever);
    while (!stop()) {
        const QStringList names = players.wanted();
        for (const QString& name : names) {
            if (players.hasOpened(name, path))
                return players.call(name, play);
        }
        if (names.isEmpty() && appeared.hasExpired())
            return false;
        if (!names.isEmpty() && opened.isForever())
            opened = QDeadlineTimer(OpenMilliseconds);
        if (!names.isEmpty() && opened.hasExpired()) {
            const QString address = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
            if (!players.call(names.front(), QStringLiteral("OpenUri"), {address}))
                return false;
            // It answers before it has the file, and a word that comes too early is lost.
            const QDeadlineTimer loaded(OpenMilliseconds);
            while (!players.hasOpened(names.front(), path) && !loaded.hasExpired() && !stop())
                QThread::msleep(PauseMilliseconds);
            return players.call(names.front(), play);
        }
        QThread::msleep(PauseMilliseconds);
    }
    return false;
}
