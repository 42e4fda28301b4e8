#pragma once

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <thread>

/// Runs something on a thread for which the kernel refuses `openat2` with an error of its own:
/// as an old kernel (ENOSYS) or a sandbox (EPERM) does.
inline bool withoutOpenat2(int errorNumber, const std::function<void()>& run)
{
    bool refused = false;
    std::thread([&] {
        const auto answer = __u32(SECCOMP_RET_ERRNO | unsigned(errorNumber));
        std::array<sock_filter, 4> rules = {{
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat2, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, answer),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        }};
        const sock_fprog filter = {static_cast<unsigned short>(rules.size()), rules.data()};
        refused = prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
                  prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
        if (refused)
            run();
    }).join();
    return refused;
}
