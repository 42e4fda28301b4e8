#pragma once

#include <QtGlobal>

#include <utility>
#include <vector>

struct Track;

/// Finds tracks by the ids that a database gives them. Databases list them in ascending order,
/// more or less, so a sorted list costs less than a hash; of equal ids the last one added counts.
class TrackIds
{
public:
    void add(quint32 id, Track* track);
    /// Null for an unknown id.
    Track* find(quint32 id);

private:
    std::vector<std::pair<quint32, Track*>> _tracks;
    bool _sorted = true;
};
