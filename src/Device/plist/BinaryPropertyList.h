#pragma once

#include "Device/plist/PropertyListDocument.h"

#include <QByteArray>

/// Reads property lists in the binary form. Nothing is read outside of the bytes, and work and
/// memory are bounded by their number.
namespace BinaryPropertyList
{
[[nodiscard]] bool isBinary(const QByteArray& bytes);
[[nodiscard]] PropertyListDocument parse(const QByteArray& bytes);
} // namespace BinaryPropertyList
