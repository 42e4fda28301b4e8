#pragma once

#include "Base/Expected.h"
#include "Console/Categories.h"
#include "Device/SectionItems.h"

#include <QCoreApplication>

#include <vector>

class Device;

/// What the words of the command line stand for on a device, in the order they are exported.
class ExportSelection
{
    Q_DECLARE_TR_FUNCTIONS(ExportSelection)

public:
    /// Reads the device's library; the device outlives the object.
    explicit ExportSelection(Device& device);

    /// Fails when there is no playlist or album of the name that is asked for. A section that the
    /// device does not have adds nothing, and that is said.
    Status add(const Categories::Wish& wish);

    [[nodiscard]] const std::vector<SectionItems>& parts() const { return _parts; }

private:
    Status addPlaylists(const QString& name);
    Status addAlbums(const QString& name);
    void addSection(Section section);

    Device& _device;
    bool _hasLibrary;
    std::vector<SectionItems> _parts;
};
