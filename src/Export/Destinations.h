#pragma once

#include "Export/Config.h"
#include "Platform/Folder.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>

/// The folders that one export writes into, opened by descriptor. The folder that the person
/// chose for a category may be reached through links, which are resolved once; below it no link
/// is followed. Nothing on the device is opened or made, whatever path leads there.
class Destinations
{
    Q_DECLARE_TR_FUNCTIONS(Destinations)

public:
    using FolderPointer = std::shared_ptr<const Folder>;

    /// `deviceRoot` is where the device's files stand on the computer; null when they do not.
    Destinations(const Config& config, const QString& deviceRoot);

    /// The folder `below` that of a category; made as far as it is missing.
    Expected<FolderPointer> folder(Section category, const QString& below);

private:
    /// The device's own folder.
    struct DeviceFolder {
        Folder::Identity root;
        bool hasOwnFileSystem = false; ///< all that lies on its file system is the device
    };

    Expected<FolderPointer> category(Section category);
    [[nodiscard]] Expected<FolderPointer> open(const QString& path) const;
    [[nodiscard]] Expected<FolderPointer> make(FolderPointer folder,
                                               const QStringList& names) const;
    [[nodiscard]] bool isDevice(const Folder& folder) const;
    /// Whether the folder or one above it is the device's.
    [[nodiscard]] bool isOnDevice(const Folder& folder) const;
    static Failure onDevice();

    const Config& _config;
    std::optional<DeviceFolder> _device;
    std::map<Section, FolderPointer> _categories;
};
