#include "Window/Crash/FatalSignals.h"

#include "Window/Crash/CrashFile.h"

#include <execinfo.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <exception>

namespace
{
struct Fault {
    int signal;
    std::string_view name;
    std::string_view reason;
};

constexpr std::array<Fault, 5> Faults = {{
    {SIGSEGV, "SIGSEGV", "Segmentation fault"},
    {SIGBUS, "SIGBUS", "Bus error"},
    {SIGILL, "SIGILL", "Illegal instruction"},
    {SIGFPE, "SIGFPE", "Arithmetic exception"},
    {SIGABRT, "SIGABRT", "Aborted"},
}};

constexpr int MostFrames = 128;
constexpr int OwnFrames = 1;
constexpr std::size_t StackSize = 128 * 1024; ///< unwinding takes more than the usual minimum
constexpr unsigned ReportSeconds = 10;

/// What was done on these signals before.
std::array<struct sigaction, Faults.size()> formerActions;
std::terminate_handler formerTerminate = nullptr;
std::atomic<pid_t> reporter = 0;

/// True for the thread that reports. There is one report: what comes after the first fault is
/// only its consequence.
bool beginReport() noexcept
{
    pid_t nobody = 0;
    const pid_t self = gettid();
    if (reporter.compare_exchange_strong(nobody, self))
        return true;
    if (nobody != self) {
        for (;;) // another thread is about to end the program
            pause();
    }
    return false;
}

/// Sees to it that an attempt to report ends, if need be with the program: unwinding a damaged
/// stack, or waiting for a lock that the faulty code holds, may not.
void limitTime() noexcept
{
    std::signal(SIGALRM, SIG_DFL);
    sigset_t alarms;
    sigemptyset(&alarms);
    sigaddset(&alarms, SIGALRM);
    pthread_sigmask(SIG_UNBLOCK, &alarms, nullptr);
    alarm(ReportSeconds);
}

void handleSignal(int signal) noexcept
{
    std::size_t index = 0;
    while (index + 1 < Faults.size() && Faults[index].signal != signal)
        ++index;
    if (beginReport()) {
        limitTime();
        std::array<void*, MostFrames> frames{};
        const int count = backtrace(frames.data(), MostFrames);
        if (count > OwnFrames)
            CrashFile::write(Faults[index].name, Faults[index].reason, frames.data() + OwnFrames,
                             count - OwnFrames);
        else
            CrashFile::write(Faults[index].name, Faults[index].reason, nullptr, 0);
        alarm(0);
    }
    sigaction(signal, &formerActions[index], nullptr);
    raise(signal); // not every signal comes back by itself
}

[[noreturn]] void handleTerminate()
{
    if (beginReport()) {
        limitTime();
        const RaisedException exception = RaisedException::current();
        std::vector<void*> frames = exception.callStackReturnAddresses;
        if (frames.empty()) {
            frames.resize(MostFrames);
            frames.resize(std::size_t(backtrace(frames.data(), MostFrames)));
        }
        CrashFile::write(exception.name.toStdString(), exception.reason.toStdString(),
                         frames.data(), int(frames.size()));
        alarm(0);
    }
    formerTerminate(); // says on the standard error stream what it was
    std::abort();
}

void useAlternateStack()
{
    // A stack that is full has no room for a handler. Never freed: it may be needed to the end.
    stack_t stack = {};
    stack.ss_size = StackSize;
    stack.ss_sp =
        mmap(nullptr, StackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (stack.ss_sp != MAP_FAILED)
        sigaltstack(&stack, nullptr);
}
} // namespace

void FatalSignals::install(const QString& folder)
{
    CrashFile::prepare(folder);
    std::array<void*, 1> frame{};
    backtrace(frame.data(), 1); // loads what it needs at its first call
    useAlternateStack();
    for (std::size_t i = 0; i < Faults.size(); ++i) {
        struct sigaction action = {};
        action.sa_handler = handleSignal;
        action.sa_flags = SA_ONSTACK | SA_NODEFER;
        sigemptyset(&action.sa_mask);
        sigaction(Faults[i].signal, &action, &formerActions[i]);
    }
    formerTerminate = std::set_terminate(handleTerminate);
}
