#pragma once

#include <QtGlobal>

#include <optional>

/// What stands at a path of a device.
struct FileInfo {
    enum class Kind {
        File,   ///< a regular file
        Folder, ///< a folder
        Link,   ///< a symbolic link, which nothing follows on a volume
        Other   ///< a pipe, a device node: never opened
    };

    Kind kind = Kind::File;
    std::optional<qint64> size; ///< bytes that the device reports; none where it reports nothing
};
