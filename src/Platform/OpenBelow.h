#pragma once

#include "Base/Descriptor.h"

#include <QByteArray>

/// Opens a path below an open folder, and follows no link on the way. A path that leads out of
/// the folder fails with EXDEV, one with a link with ELOOP; O_PATH with O_NOFOLLOW opens a link
/// that stands at its end. None means that `errno` says why.
Descriptor openBelow(int folder, const QByteArray& path, int flags);
