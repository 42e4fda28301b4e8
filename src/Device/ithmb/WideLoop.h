#pragma once

#include <cstddef>

/// A loop over pixels that do not depend on each other, compiled twice where the processor may
/// have wider registers than every processor of its kind has.
namespace WideLoop
{
template <typename Body>
[[gnu::always_inline]] inline void loop(std::size_t count, Body body)
{
    for (std::size_t i = 0; i < count; ++i)
        body(i);
}

#ifdef __x86_64__
template <typename Body>
[[gnu::target("avx2")]] void loopOnWideRegisters(std::size_t count, Body body)
{
    loop(count, body);
}
#endif

/// Calls `body` with each number below `count`, in any order.
template <typename Body>
void run(std::size_t count, Body body)
{
#ifdef __x86_64__
    if (__builtin_cpu_supports("avx2")) {
        loopOnWideRegisters(count, body);
        return;
    }
#endif
    loop(count, body);
}
} // namespace WideLoop
