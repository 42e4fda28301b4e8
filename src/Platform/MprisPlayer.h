#pragma once

#include <QString>

#include <functional>

/// Media players that can be told what to do over the session's bus.
namespace MprisPlayer
{
/// Waits a few seconds for the player whose desktop entry is `desktopEntry`, and has it play a
/// file that the desktop was asked to open with it. A player that has the file already goes on
/// with it. No other player is told anything. False when none answered; `stop` ends the wait.
/// Blocks: not for the window's thread.
bool play(const QString& path, const QString& desktopEntry, const std::function<bool()>& stop);
} // namespace MprisPlayer
