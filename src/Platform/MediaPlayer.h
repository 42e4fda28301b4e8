#pragma once

#include <QString>

/// Playing one file with the person's own player. Files on a device are played from a private
/// copy, because a player keeps them open.
class MediaPlayer
{
public:
    /// Where to copy a file of this name to: in a folder of this user alone, made if missing.
    static QString privateCopyPath(const QString& fileName);
    /// Removes the copies of earlier runs. Call it at start.
    static void removeOldCopies();
    /// Opens a file with the desktop's player for its type, which plays it.
    static bool open(const QString& path);
};
