#pragma once

#include "Device/plist/PropertyListDocument.h"

#include <QByteArray>

/// Reads property lists in the XML form; one that is not well-formed is none.
namespace XmlPropertyList
{
/// Lists that nest deeper are not read, in either form. Catalogues nest four levels deep.
constexpr int MostLevels = 64;

[[nodiscard]] PropertyListDocument parse(const QByteArray& bytes);
} // namespace XmlPropertyList
