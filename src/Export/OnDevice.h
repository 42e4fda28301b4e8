#pragma once

#include <QString>

/// Keeps this program from writing to a device that is a folder of this computer.
namespace OnDevice
{
/// Whether something made at `path` would lie on the device whose files stand below `root`: the
/// nearest folder above it that exists is the root or below it, by whatever path and mount. False
/// for a null root.
bool wouldLie(const QString& path, const QString& root);
} // namespace OnDevice
