#include "Platform/SessionBus.h"

#include <QDBusConnection>
#include <QFile>

namespace
{
QString address()
{
    const QString given = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!given.isEmpty())
        return given;
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return QFile::exists(socket) ? QStringLiteral("unix:path=") + socket : QString();
}
} // namespace

QDBusConnection SessionBus::connection()
{
    const QString bus = address();
    const QString name = QStringLiteral("zell-session ") + bus;
    return bus.isEmpty() ? QDBusConnection(name) : QDBusConnection::connectToBus(bus, name);
}
