#pragma once

#include <QString>

/// Packing a folder into one zip archive. Any thread.
class Archive
{
public:
    /// Packs all that `folder` holds into the new file `archive`; members are named relative to
    /// the folder. A file `mimetype` at the top comes first, stored and without extra fields, as
    /// a valid EPUB demands. Links are left out. Gives an empty string, or in the system's words
    /// why it failed; no half-made archive is left then.
    static QString pack(const QString& folder, const QString& archive);
};
