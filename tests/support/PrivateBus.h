#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

#include <optional>

/// A message bus that only the test knows, and that knows no service but the test's own and those
/// installed ones that the test names. What the bus starts has the environment of this moment.
class PrivateBus
{
public:
    explicit PrivateBus(const QStringList& installedServices = {});
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    [[nodiscard]] const QString& address() const { return _address; }
    /// A new connection to the bus; it ends with the bus.
    QDBusConnection connect();
    /// The test's own connection, always the same.
    QDBusConnection own();
    /// The process that owns a name; 0 when none does.
    qint64 processOf(const QString& service);

private:
    QTemporaryDir _folder;
    QProcess _daemon;
    QString _address;
    QStringList _connections;
    std::optional<QDBusConnection> _own;
};
