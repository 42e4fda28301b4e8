#include "Base/Fault.h"

#include <mutex>

namespace
{
// Never destroyed: threads that nobody waits for may come here while the program ends.
struct Shared {
    std::recursive_mutex mutex; ///< a handler may run work of its own
    Fault::Handler handler;
};

Shared& shared()
{
    static auto* const instance = new Shared;
    return *instance;
}
} // namespace

void Fault::setHandler(Handler handler)
{
    const std::lock_guard lock(shared().mutex);
    shared().handler = std::move(handler);
}

bool Fault::handleCurrent()
{
    const std::lock_guard lock(shared().mutex);
    if (!shared().handler)
        return false;
    shared().handler();
    return true;
}
