#include "Console/Interrupt.h"

#include <csignal>
#include <initializer_list>

namespace
{
std::atomic<bool> stopRequested = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may set it");

void requestStop(int /*signal*/)
{
    stopRequested = true;
}
} // namespace

void Interrupt::watch()
{
    for (const int signal : {SIGINT, SIGTERM}) {
        struct sigaction action = {};
        action.sa_handler = requestStop;
        // The second of its kind meets the system's own handler. Calls that wait are broken off,
        // so that an interrupt is an answer to a question as well.
        action.sa_flags = int(SA_RESETHAND);
        sigaction(signal, &action, nullptr);
    }
}

const std::atomic<bool>& Interrupt::requested()
{
    return stopRequested;
}
