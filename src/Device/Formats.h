#pragma once

#include "Device/Device.h"

#include <memory>
#include <vector>

/// Devices of one kind, and how they are watched for.
struct DeviceFamily {
    /// Begins to follow devices that come and go, and gives those that are there.
    Device::Devices (*start)() = nullptr;
    void (*stop)() = nullptr;
};

/// The device families and on-device formats that the program knows. The base classes ask here
/// and know none of them; a new one is one new line in `registry/Formats.cpp`.
namespace Formats
{
/// The reader of a format, or null where the device has no such database.
using LibraryProbe = std::unique_ptr<TrackDb> (*)(Device& device);
using PhotoLibraryProbe = std::unique_ptr<PhotoDb> (*)(Device& device);

/// In the order they start. Of two devices with one key, that of the later family counts.
const std::vector<DeviceFamily>& families();
/// In the order they are tried: the first that finds its file wins.
const std::vector<LibraryProbe>& libraries();
const std::vector<PhotoLibraryProbe>& photoLibraries();
} // namespace Formats
