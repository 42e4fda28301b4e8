#pragma once

#include "Base/Expected.h"

#include <QByteArray>
#include <QString>

class Device;

/// The file of a player's binary database.
namespace ItdbFile
{
/// No player holds so many tracks or photos that their database would be larger.
constexpr qint64 MostBytes = qint64(512) << 20;

struct Content {
    QByteArray bytes;
    bool isCutOff = false; ///< the file goes on beyond `MostBytes`
};

/// Leaves a copy in the log folder for diagnosis, unless it would only fill the disk.
void keepForDiagnosis(Device& device, const QString& path);
/// The file, a large one as far as its records claim to reach: a file of nothing but a size must
/// not fill the memory.
Expected<Content> read(Device& device, const QString& path);
} // namespace ItdbFile
