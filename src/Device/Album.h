#pragma once

#include <QString>

#include <cstdint>
#include <vector>

struct Photo;

/// A named, ordered list of photos; a photo may be in several.
struct Album {
    static Album albumWithName(const QString& name) { return {0, name, {}}; }

    std::int32_t albumId = 0; ///< 0 where the library gives none
    QString name;
    std::vector<Photo*> photos;
};
