#include "support/PrivateBus.h"

#include "support/Files.h"

#include <QDBusMessage>

namespace
{
/// Without the folders of installed services, which the bus would start; with one of the test's.
const char* const Configuration = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <servicedir>%1/services</servicedir>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";
} // namespace

PrivateBus::PrivateBus(const QStringList& installedServices)
{
    QDir().mkpath(_folder.filePath(QStringLiteral("services")));
    for (const QString& name : installedServices) {
        const QString file = name + QStringLiteral(".service");
        EXPECT_TRUE(QFile::copy(QStringLiteral("/usr/share/dbus-1/services/") + file,
                                _folder.filePath(QStringLiteral("services/") + file)))
            << file.toStdString();
    }
    const QString file = _folder.filePath(QStringLiteral("bus.conf"));
    Files::write(file, QString::fromUtf8(Configuration).arg(_folder.path()).toUtf8());
    _daemon.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--config-file=") + file, QStringLiteral("--nofork"),
                   QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
    while (!_daemon.canReadLine() && _daemon.waitForReadyRead(10000)) {
    }
    _address = QString::fromUtf8(_daemon.readLine()).trimmed();
    EXPECT_FALSE(_address.isEmpty()) << _daemon.readAllStandardError().toStdString();
}

PrivateBus::~PrivateBus()
{
    _own.reset();
    for (const QString& name : _connections)
        QDBusConnection::disconnectFromBus(name);
    _daemon.terminate();
    _daemon.waitForFinished();
}

QDBusConnection PrivateBus::connect()
{
    const QString name = QStringLiteral("test %1 %2").arg(_address).arg(_connections.size());
    _connections.append(name);
    return QDBusConnection::connectToBus(_address, name);
}

QDBusConnection PrivateBus::own()
{
    if (!_own)
        _own = connect();
    return *_own;
}

qint64 PrivateBus::processOf(const QString& service)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"));
    message << service;
    return own().call(message).arguments().value(0).toLongLong();
}
