#pragma once

#include "support/TestLibrary.h"

#include <QString>

/// A believable player: a few hundred tracks of all kinds with their media files, playlists, and
/// names in many scripts, and a few albums of photos. The same each time.
namespace SamplePlayer
{
/// What the player's library says.
TestLibrary library();

/// Writes the player into `folder`, which is made if missing. Empty when all went well, else
/// what went wrong, in words.
QString write(const QString& folder);

/// Writes any library with a small media file for each track that has a location.
QString write(const QString& folder, const TestLibrary& library);

/// What the media file of a track holds, by its number in the library and its extension.
QByteArray mediaFile(int number, const QString& location);
} // namespace SamplePlayer
