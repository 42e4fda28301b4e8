#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

/// A message bus that only the test knows, and that knows no service but the test's own.
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    [[nodiscard]] const QString& address() const { return _address; }
    /// A new connection to the bus; it ends with the bus.
    QDBusConnection connect();

private:
    QTemporaryDir _folder;
    QProcess _daemon;
    QString _address;
    QStringList _connections;
};
