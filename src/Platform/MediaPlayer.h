#pragma once

#include <QString>

#include <functional>

/// Playing one file with the person's own player. Files on a device are played from a private
/// copy, because a player keeps them open.
class MediaPlayer
{
public:
    /// Where to copy a file of this name to: in a new folder of this user alone. Null when none
    /// can be made.
    static QString privateCopyPath(const QString& fileName);
    /// Removes the copies of earlier runs, but nothing through a link. Call it at start.
    static void removeOldCopies();

    /// Whether a file is sound or film to the desktop. Names come from a device, and opening,
    /// say, a desktop entry would run a program.
    static bool isPlayable(const QString& path);
    /// Opens a file with the desktop's player for its type, and tells the player to play where
    /// it listens to that. False for a file that is not playable, or when the desktop cannot be
    /// asked. Blocks for some seconds, until `stop` answers true; not for the window's thread.
    static bool open(const QString& path, const std::function<bool()>& stop);
};
