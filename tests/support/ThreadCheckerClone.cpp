// Linked into every test program; empty but in a build for the thread checker.
//
// Qt starts programs with `clone`, in the parent's memory. The thread checker takes such a child
// for a fork of the whole process and stops watching the locks of the thread that it shares, so
// that each later use of a lock there looks like a race. This one gives the child memory of its
// own and tells the checker nothing.

#ifdef __SANITIZE_THREAD__

#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdarg>

extern "C" int clone(int (*child)(void*), void* /*stack*/, int flags, void* argument, ...) noexcept
{
    va_list more;
    va_start(more, argument);
    auto* const descriptor =
        (flags & (CLONE_PIDFD | CLONE_PARENT_SETTID)) != 0 ? va_arg(more, int*) : nullptr;
    va_end(more);
    const auto process = syscall(SYS_clone, flags & ~CLONE_VM, nullptr, descriptor, nullptr, 0);
    if (process == 0)
        _exit(child(argument));
    return int(process);
}

#endif
