#pragma once

#include <vector>

/// Remembers for each thread where its latest exceptions were thrown. An exception of a library
/// says nothing about that, and where it is caught its stack is gone.
namespace ThrowSite
{
/// Keeps the return addresses of the throw that calls this, directly from its hook. `object` is
/// the exception's own object, `thrower` where the hook returns to. Takes no lock and no memory.
void remember(const void* object, const void* thrower) noexcept;
/// The return addresses, innermost first, of the exception that this thread handles now; none
/// when it is not among the latest.
std::vector<void*> ofCurrentException();
} // namespace ThrowSite
