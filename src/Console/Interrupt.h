#pragma once

#include <atomic>

/// Ctrl-C as the Stop button: the first one asks to stop, a second one ends the program at once.
namespace Interrupt
{
/// From now on an interrupt or a request to terminate sets `requested`.
void watch();
/// Asks to stop, as an interrupt does.
void request();
const std::atomic<bool>& requested();
} // namespace Interrupt
