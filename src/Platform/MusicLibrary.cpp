#include "Platform/MusicLibrary.h"

#include "Platform/RhythmboxLibrary.h"
#include "Platform/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <vector>

namespace
{
struct Application {
    QString service; ///< what the session's bus can start
    QString name;
    std::unique_ptr<MusicLibrary> (*make)(const QDBusConnection& bus);
};

const std::vector<Application>& applications()
{
    // The first that is there is used; a new application is one new line here.
    static const std::vector<Application> all = {
        {RhythmboxLibrary::service(), RhythmboxLibrary::applicationName(), RhythmboxLibrary::make},
    };
    return all;
}

QDBusMessage askForServices()
{
    return QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ListActivatableNames"));
}

const Application* firstOf(const QStringList& services)
{
    for (const Application& application : applications()) {
        if (services.contains(application.service))
            return &application;
    }
    return nullptr;
}
} // namespace

std::unique_ptr<MusicLibrary> MusicLibrary::create()
{
    const QDBusConnection bus = SessionBus::connection();
    const QDBusMessage answer = bus.call(askForServices(), QDBus::Block, SessionBus::TimeLimit);
    const Application* application = firstOf(answer.arguments().value(0).toStringList());
    return application ? application->make(bus) : nullptr;
}

void MusicLibrary::findApplication(QObject* context, std::function<void(const QString& name)> found)
{
    const QDBusConnection bus = SessionBus::connection();
    if (!bus.isConnected()) { // then no answer ever comes, not even that there is none
        QMetaObject::invokeMethod(
            context, [found = std::move(found)] { found({}); }, Qt::QueuedConnection);
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(
        bus.asyncCall(askForServices(), SessionBus::TimeLimit), context);
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, found = std::move(found)] {
            const QDBusPendingReply<QStringList> reply = *watcher;
            const Application* application = reply.isValid() ? firstOf(reply.value()) : nullptr;
            watcher->deleteLater();
            found(application ? application->name : QString());
        });
}
