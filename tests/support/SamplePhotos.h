#pragma once

#include "support/PhotoDatabaseWriter.h"

#include <QString>

/// The synced photos of the sample player: a few albums, each photo with renditions in several of
/// the stored pixel formats, some with their full-size file.
namespace SamplePhotos
{
constexpr int PhotoCount = 12;
constexpr int AlbumCount = 4;
/// The renditions that each photo has; previews come from the last small one.
constexpr quint32 Kinds[] = {1019, 3141, 1024, 1023};
constexpr quint32 SmallKind = 1023;
constexpr quint32 LargeKind = 1019;

/// The id of the photo with that number.
quint32 idOf(int number);
/// Whether that photo has its full-size file on the player.
bool hasFullSizeFile(int number);

/// Writes the "Photos" folder into a player's folder; empty, or what went wrong.
QString write(const QString& folder);
} // namespace SamplePhotos
