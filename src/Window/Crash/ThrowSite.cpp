#include "Window/Crash/ThrowSite.h"

#include <execinfo.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <exception>

namespace
{
constexpr int MostFrames = 128; ///< from a click to main() are some sixty
/// While an exception is on its way, destructors may throw and catch others.
constexpr std::size_t SitesOfAThread = 4;

struct Site {
    const void* object = nullptr;
    int first = 0; ///< the frame that threw; before it stand remember() and the hook
    int count = 0;
    std::array<void*, MostFrames> frames{};
};

struct LatestSites {
    std::array<Site, SitesOfAThread> sites;
    std::size_t next = 0;
};

thread_local constinit LatestSites latest{};

/// The exception that is handled now, whatever its type.
const void* currentObject()
{
    const std::exception_ptr current = std::current_exception();
    // The pointer to the object is all it holds, but it does not give it away.
    static_assert(sizeof current == sizeof(void*));
    const void* object = nullptr;
    std::memcpy(&object, static_cast<const void*>(&current), sizeof object);
    return object;
}
} // namespace

void ThrowSite::remember(const void* object, const void* thrower) noexcept
{
    // A new object may lie where an old one was.
    for (Site& site : latest.sites) {
        if (site.object == object)
            site.object = nullptr;
    }
    Site& site = latest.sites[latest.next];
    latest.next = (latest.next + 1) % SitesOfAThread;
    site.object = object;
    site.count = backtrace(site.frames.data(), MostFrames);
    // Looked for and not counted: a checking tool may put frames of its own before it.
    const auto begin = site.frames.begin();
    const auto found = std::find(begin, begin + site.count, thrower);
    site.first = found == begin + site.count ? 0 : int(found - begin);
}

std::vector<void*> ThrowSite::ofCurrentException()
{
    const void* object = currentObject();
    if (!object)
        return {};
    for (const Site& site : latest.sites) {
        if (site.object == object && site.count > site.first)
            return {site.frames.begin() + site.first, site.frames.begin() + site.count};
    }
    return {};
}
