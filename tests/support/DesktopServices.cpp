#include "support/DesktopServices.h"

#include <gtest/gtest.h>

#include <utility>

DesktopServices::DesktopServices(PrivateBus& bus, const QStringList& names)
    : _connection(bus.connect())
{
    EXPECT_TRUE(
        _connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath));
    for (const QString& name : names)
        EXPECT_TRUE(_connection.registerService(name));
    EXPECT_TRUE(_connection.connect(QString(), QString(),
                                    QStringLiteral("com.canonical.Unity.LauncherEntry"),
                                    QStringLiteral("Update"), this, SLOT(update(QDBusMessage))));
}

void DesktopServices::answerHeld()
{
    _held.clear();
    for (const QDBusMessage& message : std::exchange(_waiting, {}))
        send(message);
}

std::vector<QDBusMessage> DesktopServices::calls(const QString& method) const
{
    std::vector<QDBusMessage> found;
    for (const QDBusMessage& call : _calls) {
        if (call.interface() + u'.' + call.member() == method)
            found.push_back(call);
    }
    return found;
}

QString DesktopServices::introspect(const QString& /*path*/) const
{
    return {};
}

bool DesktopServices::handleMessage(const QDBusMessage& message,
                                    const QDBusConnection& /*connection*/)
{
    _calls.push_back(message);
    if (_held.contains(message.interface() + u'.' + message.member()))
        _waiting.push_back(message);
    else
        send(message);
    return true;
}

void DesktopServices::update(const QDBusMessage& message)
{
    _updates.push_back(message);
}

void DesktopServices::send(const QDBusMessage& message)
{
    const Answer answer = _answers.value(message.interface() + u'.' + message.member());
    _connection.send(answer ? message.createReply(answer())
                            : message.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
}
