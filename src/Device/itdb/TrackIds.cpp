#include "Device/itdb/TrackIds.h"

#include <algorithm>

namespace
{
using Entry = std::pair<quint32, Track*>;

bool byId(const Entry& a, const Entry& b)
{
    return a.first < b.first;
}
} // namespace

void TrackIds::add(quint32 id, Track* track)
{
    _sorted = _sorted && (_tracks.empty() || _tracks.back().first <= id);
    _tracks.emplace_back(id, track);
}

Track* TrackIds::find(quint32 id)
{
    if (!_sorted)
        std::stable_sort(_tracks.begin(), _tracks.end(), byId);
    _sorted = true;
    const auto next = std::upper_bound(_tracks.begin(), _tracks.end(), Entry(id, nullptr), byId);
    return next != _tracks.begin() && (next - 1)->first == id ? (next - 1)->second : nullptr;
}
