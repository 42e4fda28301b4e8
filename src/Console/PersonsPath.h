#pragma once

#include <QString>

/// Paths as people type them.
namespace PersonsPath
{
/// The path with a leading "~" or "~name" in the place of a home folder resolved. A shell does
/// so itself, but not in the middle of a word, as in "--to=~/Rescued".
QString expanded(const QString& typed);
} // namespace PersonsPath
