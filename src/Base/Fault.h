#pragma once

#include <functional>

/// Where a thread's work ends when it throws what nobody expected. A program that can show such a
/// fault sets a handler and goes on; without one the exception goes its way and ends the program.
namespace Fault
{
/// Called in the `catch` of the thread that raised the exception, which is the current one there.
/// Throws nothing.
using Handler = std::function<void()>;

/// Replaces the handler; an empty one takes it away. No other is under way when this returns.
void setHandler(Handler handler);
/// Hands the current exception to the handler; false when there is none.
bool handleCurrent();

/// False when the work threw something, and the handler has it.
template <typename Work>
bool guard(Work&& work)
{
    try {
        work();
        return true;
    } catch (...) {
        if (!handleCurrent())
            throw; // nobody shows it here
        return false;
    }
}
} // namespace Fault
