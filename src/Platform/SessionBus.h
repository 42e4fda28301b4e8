#pragma once

class QDBusConnection;

/// The message bus of the person's desktop session.
namespace SessionBus
{
/// How long a call to another program may take, in milliseconds, before it counts as unanswered.
constexpr int TimeLimit = 3000;

/// The connection, not connected where the session has no bus. Never starts a bus, which would
/// outlive the program.
QDBusConnection connection();
} // namespace SessionBus
