#pragma once

#include <QString>

/// Text operations on "/" paths, for device paths and for paths on the computer alike. Nothing
/// here looks at a file system.
namespace PathName
{
/// `base` and `component` joined with exactly one "/" at the seam; an empty component adds
/// nothing.
QString join(const QString& base, QStringView component);

/// What follows the last "/" (trailing "/" not counted).
QString lastComponent(const QString& path);

/// What precedes the last component; "/" for an entry of the root, empty for a bare name.
QString parent(const QString& path);

/// What follows the last dot of the last component; empty when there is none. A name whose only
/// dot comes first (".hidden") has no extension.
QString extension(const QString& path);

/// The path without its extension and the dot before it.
QString withoutExtension(const QString& path);

/// The path with "." and `extension` appended; unchanged when `extension` is empty.
QString withExtension(const QString& path, const QString& extension);

/// Whether `path` names something below `folder` once "." and ".." components are resolved as
/// text. The folder itself is not inside.
bool isInside(const QString& path, const QString& folder);

/// Whether one of the components is "..".
bool hasParentComponent(const QString& path);
} // namespace PathName
