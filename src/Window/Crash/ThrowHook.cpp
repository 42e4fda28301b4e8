// Stands before the run-time library's own function for every `throw` of the program and of the
// libraries it uses. Linked into a program, and never into a library, so that whoever wants no
// hook has none.

#include "Window/Crash/ThrowSite.h"

#include <dlfcn.h>

#include <cstdlib>
#include <typeinfo>

extern "C" [[noreturn]] __attribute__((visibility("default"), noinline)) void
__cxa_throw(void* object, std::type_info* type, void (*destroy)(void*))
{
    using Throw = void (*)(void*, std::type_info*, void (*)(void*));
    static const auto next = reinterpret_cast<Throw>(dlsym(RTLD_NEXT, "__cxa_throw"));
    ThrowSite::remember(object, __builtin_return_address(0));
    next(object, type, destroy);
    std::abort(); // it does not return
}
