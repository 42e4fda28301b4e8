#pragma once

#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QHash>

#include <functional>
#include <vector>

/// The services of a desktop on a private bus: they write down what they are told and answer as
/// the test says. They live on the test's own thread, so a caller that waited for an answer on
/// that thread would never get one.
class DesktopServices final : public QDBusVirtualObject
{
    Q_OBJECT
public:
    /// The arguments of the answer.
    using Answer = std::function<QVariantList()>;

    DesktopServices(PrivateBus& bus, const QStringList& names);

    /// What calls of a method are answered; a method without an answer gives an error.
    void answer(const QString& method, Answer answer) { _answers[method] = std::move(answer); }
    /// Calls of a method are kept until `answerHeld`.
    void hold(const QString& method) { _held.append(method); }
    void answerHeld();

    /// The calls of a method so far.
    [[nodiscard]] std::vector<QDBusMessage> calls(const QString& method) const;
    /// What was broadcast for the task bar.
    [[nodiscard]] const std::vector<QDBusMessage>& updates() const { return _updates; }

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

public Q_SLOTS:
    void update(const QDBusMessage& message);

private:
    void send(const QDBusMessage& message);

    QDBusConnection _connection;
    QHash<QString, Answer> _answers;
    QStringList _held;
    std::vector<QDBusMessage> _waiting;
    std::vector<QDBusMessage> _calls;
    std::vector<QDBusMessage> _updates;
};
