#pragma once

#include "Base/Expected.h"

#include <QString>

/// Packing a folder into one zip archive. Any thread.
class Archive
{
public:
    /// Packs all that `folder` holds into the new file `archive`; members are named relative to
    /// the folder. A file `mimetype` at the top comes first, stored and without extra fields, as
    /// a valid EPUB demands. Links are left out. No half-made archive is left where it fails.
    static Status pack(const QString& folder, const QString& archive);
};
