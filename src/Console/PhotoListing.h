#pragma once

#include <QString>

#include <cstddef>
#include <utility>
#include <vector>

class Device;

/// What "list" shows of a device's photos.
namespace PhotoListing
{
/// The categories of photos that the device has, each with its count.
std::vector<std::pair<QString, std::size_t>> counts(Device& device);

/// Prints the items of "photos" or "cameraRoll"; false when `category` is neither, or the device
/// has none of it.
bool print(Device& device, const QString& category);
} // namespace PhotoListing
