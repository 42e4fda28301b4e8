#pragma once

#include "Device/Section.h"

#include <QString>

#include <string>
#include <vector>

/// The words that the console takes for what a device holds: the keys of the sections, and a few
/// of its own.
namespace Categories
{
/// The sections that a library keeps an index of, in order.
std::vector<Section> ofLibrary();
/// All names that "list" and "export" take, in order.
std::vector<std::string> names();
/// Whether "export" takes `what`: a name, "all", "media", "playlist=..." or "album=...".
bool isExportable(const QString& what);

/// What stands before a playlist's or an album's own name.
extern const QString PlaylistPrefix;
extern const QString AlbumPrefix;
} // namespace Categories
