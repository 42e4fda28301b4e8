#pragma once

#include "Base/Failure.h"

#include <QString>

/// What the system's error numbers mean to us.
namespace SystemFailure
{
/// The system's words.
QString text(int errorNumber);

/// "Missing" only where the system says that nothing is there, "Lost" where what holds the file
/// has gone, "Refused" for links and for paths that lead out of their folder.
Failure of(int errorNumber);
/// Whether a failure is that of a link in the way.
bool isLink(const Failure& failure);
} // namespace SystemFailure
