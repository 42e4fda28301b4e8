#pragma once

#include "support/TestLibrary.h"

#include <QString>

/// A believable player: a few hundred tracks of all kinds with their media files, playlists, and
/// names in many scripts, and a few albums of photos. The same each time.
namespace SamplePlayer
{
/// How the player keeps its library. Those with SQLite libraries have voice memos, and a folder
/// of books with a catalogue, which phones show.
enum class Format { ITunesDb, Library, MediaLibrary };

/// What the player's library says.
TestLibrary library();

/// Writes the player into `folder`, which is made if missing. Empty when all went well, else
/// what went wrong, in words.
QString write(const QString& folder, Format format = Format::ITunesDb);

/// Writes any library with a small media file for each track that has a location.
QString write(const QString& folder, const TestLibrary& library, Format format = Format::ITunesDb);

/// Writes the library alone, without media files.
QString writeLibrary(const QString& folder, const TestLibrary& library, Format format);

constexpr int VoiceMemoCount = 4;
constexpr int BookCount = 3; ///< in the catalogue; the second one is a folder, the third bought

/// What the media file of a track holds, by its number in the library and its extension.
QByteArray mediaFile(int number, const QString& location);
} // namespace SamplePlayer
