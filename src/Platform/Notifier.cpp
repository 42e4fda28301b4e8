#include "Platform/Notifier.h"

#include "Base/Program.h"
#include "Platform/SessionBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QVariantMap>

#include <algorithm>
#include <functional>
#include <optional>

namespace
{
const QString DesktopEntry = QStringLiteral("io.zell.Transfer");
const QString ScreenSaver = QStringLiteral("org.freedesktop.ScreenSaver");
const QString ScreenSaverPath = QStringLiteral("/org/freedesktop/ScreenSaver");

/// Sends a call and has `take` look at the answer, should there be one in time. The watcher is
/// the application's: an answer may come when the notifier has gone.
template <typename Answer>
void call(const QDBusConnection& bus, const QDBusMessage& message,
          std::function<void(const Answer& answer)> take)
{
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, SessionBus::TimeLimit),
                                                QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [watcher, take = std::move(take)] {
                         const QDBusPendingReply<Answer> reply = *watcher;
                         if (reply.isValid())
                             take(reply.value());
                         watcher->deleteLater();
                     });
}
} // namespace

/// One wish to stay awake. Two services are asked, as no desktop minds both: the login manager
/// gives a descriptor that holds sleep off until it is closed, the screen saver a number. What
/// is granted after the wish has ended is given back at once.
class Notifier::Hold
{
public:
    explicit Hold(QDBusConnection session)
        : _session(std::move(session))
    {
    }

    static std::shared_ptr<Hold> ask(const QDBusConnection& session, const QDBusConnection& system,
                                     const QString& reason)
    {
        auto hold = std::make_shared<Hold>(session);
        QDBusMessage sleep = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
            QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
        sleep << QStringLiteral("sleep:idle") << Program::briefName() << reason
              << QStringLiteral("block");
        call<QDBusUnixFileDescriptor>(system, sleep, [hold](const auto& lock) {
            if (hold->_wanted)
                hold->_lock = lock;
        });

        QDBusMessage blank = QDBusMessage::createMethodCall(ScreenSaver, ScreenSaverPath,
                                                            ScreenSaver, QStringLiteral("Inhibit"));
        blank << Program::briefName() << reason;
        call<quint32>(session, blank, [hold](quint32 cookie) {
            hold->_cookie = cookie;
            if (!hold->_wanted)
                hold->end();
        });
        return hold;
    }

    void end()
    {
        _wanted = false;
        _lock = {};
        if (!_cookie)
            return;
        QDBusMessage message = QDBusMessage::createMethodCall(
            ScreenSaver, ScreenSaverPath, ScreenSaver, QStringLiteral("UnInhibit"));
        message << *_cookie;
        (void)_session.send(message);
        _cookie.reset();
    }

private:
    QDBusConnection _session;
    bool _wanted = true;
    QDBusUnixFileDescriptor _lock;
    std::optional<quint32> _cookie;
};

Notifier::Notifier()
    : Notifier(SessionBus::connection(), QDBusConnection::systemBus())
{
}

Notifier::Notifier(const QDBusConnection& session, const QDBusConnection& system)
    : _session(std::make_unique<QDBusConnection>(session))
    , _system(std::make_unique<QDBusConnection>(system))
{
}

Notifier::~Notifier()
{
    hideProgress();
    letSleep();
}

void Notifier::showProgress(double fraction)
{
    // Written so that what is no number counts as nothing done.
    const double within = fraction > 0 ? std::min(fraction, 1.0) : 0.0;
    const int percent = int(within * 100);
    if (percent == _shownPercent)
        return;
    _shownPercent = percent;
    sendProgress(within, true);
}

void Notifier::hideProgress()
{
    if (_shownPercent < 0)
        return;
    _shownPercent = -1;
    sendProgress(0, false);
}

void Notifier::sendProgress(double fraction, bool visible)
{
    QDBusMessage message = QDBusMessage::createSignal(
        QStringLiteral("/io/zell/Transfer"), QStringLiteral("com.canonical.Unity.LauncherEntry"),
        QStringLiteral("Update"));
    message << QStringLiteral("application://%1.desktop").arg(DesktopEntry)
            << QVariantMap{{QStringLiteral("progress"), fraction},
                           {QStringLiteral("progress-visible"), visible}};
    (void)_session->send(message);
}

void Notifier::jobFinished(const QString& title, const QString& text)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"),
        QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    constexpr int DesktopsOwnTime = -1;
    // The body may hold markup, so what only looks like markup is escaped.
    message << Program::briefName() << *_notification << QStringLiteral("zell-transfer") << title
            << text.toHtmlEscaped() << QStringList()
            << QVariantMap{{QStringLiteral("desktop-entry"), DesktopEntry},
                           {QStringLiteral("category"), QStringLiteral("transfer.complete")}}
            << DesktopsOwnTime;
    call<quint32>(*_session, message, [last = _notification](quint32 id) { *last = id; });
}

void Notifier::keepAwake(const QString& reason)
{
    if (!_awake)
        _awake = Hold::ask(*_session, *_system, reason);
}

void Notifier::letSleep()
{
    if (!_awake)
        return;
    _awake->end();
    _awake.reset();
}
