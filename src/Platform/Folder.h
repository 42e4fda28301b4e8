#pragma once

#include "Base/Descriptor.h"
#include "Base/Expected.h"
#include "Platform/File.h"

#include <QString>
#include <QStringList>

/// An open folder of the computer or of a mounted volume. Whatever is reached from it lies below
/// it: no link is followed, and no path leads out, whatever happens to names meanwhile. Paths are
/// relative; an empty one is the folder itself. Any thread.
///
/// An open folder keeps its volume from being unmounted: hold one only as long as it is used.
class Folder
{
public:
    /// What one file or folder is, whatever path leads to it.
    struct Identity {
        quint64 device = 0; ///< the file system
        quint64 inode = 0;
        bool operator==(const Identity&) const = default;
    };
    enum class Kind { File, Folder, Link, Other };
    struct Entry {
        Kind kind = Kind::Other;
        qint64 size = 0;
        Identity identity;
    };
    enum class Which { Folders, NoFolders };

    /// Opens a folder by its path, along links: whoever gave the path has chosen them.
    static Expected<Folder> open(const QString& path);

    [[nodiscard]] const Identity& identity() const { return _identity; }
    /// The folder above; the root is above itself.
    [[nodiscard]] Expected<Folder> parent() const;

    /// What stands at a path; a link is not followed and has the kind "Link".
    [[nodiscard]] Expected<Entry> entry(const QString& path) const;
    /// Bare names of the entries of the folder at a path, in the system's order.
    [[nodiscard]] Expected<QStringList> list(const QString& path, Which which) const;
    /// Opens a regular file for reading, and leaves its time of access alone where it may. A
    /// pipe or a device node is never opened.
    [[nodiscard]] Expected<File> openFile(const QString& path) const;

    /// The folder of this name, made if nothing is there. A link is not one.
    [[nodiscard]] Expected<Folder> makeFolder(const QString& name) const;
    /// Removes an entry with all that it holds; a link goes itself.
    [[nodiscard]] Status remove(const QString& name) const;
    /// A path to an entry that leads through this very folder while it is open, for those who
    /// need a path.
    [[nodiscard]] QString pathTo(const QString& name) const;

private:
    Folder(Descriptor descriptor, const Identity& identity);

    Descriptor _descriptor;
    Identity _identity;
};
