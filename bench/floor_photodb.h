#pragma once

#include <QString>

#include <cstddef>

/// The least that any reader of a "Photo Database" has to do: reads the whole file into memory,
/// walks its records, decodes the texts that are used, and keeps nothing. Gives the number of
/// UTF-16 units seen, so that none of it can be left out.
std::size_t floorOfPhotoDatabase(const QString& path);
