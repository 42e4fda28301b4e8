#pragma once

#include "Device/Device.h"

#include <QByteArray>

#include <functional>

/// The JSON documents of the console.
namespace LibraryJson
{
/// Takes the document piece by piece.
using Sink = std::function<void(const QByteArray& piece)>;

/// A device's whole library, with what could not be read of it. Strings are as the library has
/// them, null where it has none.
void write(Device& device, const Sink& sink);

/// The list of devices: key, family, prefix, controlPath, bookPath and description of each.
QByteArray devices(const Device::Devices& devices);
} // namespace LibraryJson
