#pragma once

#include <QString>

#include <memory>

class QDBusConnection;

/// What the desktop shows and does for a job outside the window: progress on the task bar, a
/// notification at the end, no sleep in between. Nothing here waits for an answer, and where the
/// desktop does not offer a service nothing happens. Lives on the window's thread.
class Notifier
{
public:
    /// Uses the buses of the session and of the system.
    Notifier();
    Notifier(const QDBusConnection& session, const QDBusConnection& system);
    /// Takes back the progress, and lets the computer sleep.
    ~Notifier();
    Notifier(const Notifier&) = delete;
    Notifier& operator=(const Notifier&) = delete;

    /// Shows how far the job is, from 0 to 1. May be called as often as one likes: the desktop
    /// hears of each whole hundredth once.
    void showProgress(double fraction);
    void hideProgress();

    /// Tells a person who is busy elsewhere that a job has ended. The next one takes the place of
    /// the one before. Both texts are plain.
    void jobFinished(const QString& title, const QString& text);

    /// From now on the computer neither falls asleep nor locks itself for want of input.
    void keepAwake(const QString& reason);
    void letSleep();

private:
    class Hold;

    void sendProgress(double fraction, bool visible);

    std::unique_ptr<QDBusConnection> _session;
    std::unique_ptr<QDBusConnection> _system;
    int _shownPercent = -1; ///< -1 while none is shown
    std::shared_ptr<quint32> _notification = std::make_shared<quint32>(0);
    std::shared_ptr<Hold> _awake;
};
