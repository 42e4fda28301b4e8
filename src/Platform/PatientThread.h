#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

/// A thread for calls into a library that may block for longer than anybody wants to wait, and
/// that nothing can call back. Whoever waits for such a call gives up after a limit; the thread
/// is then left to end by itself, and only the end of the program waits for it, a moment.
///
/// For that reason a job owns all it touches, by value or by a share of it. SIGPIPE is blocked on
/// the thread: a connection that broke is an error of the call that found out.
class PatientThread
{
public:
    using Job = std::function<void()>;
    using Ticket = std::uint64_t; ///< which of the jobs, in their order

    /// Runs `job` on a thread of its own, likewise.
    static void alone(Job job);
    /// For the end of main: waits a moment for every thread, then gives `exitCode`. Where one is
    /// still inside a library, this ends the process at once instead: the libraries' own tear-down
    /// would pull the ground from under it.
    static int endProgram(int exitCode);

    PatientThread();
    /// Waits a moment for what is running and for what was posted, then leaves the thread alone.
    ~PatientThread();
    PatientThread(const PatientThread&) = delete;
    PatientThread& operator=(const PatientThread&) = delete;

    /// Runs `job` after those before it. False when it has not ended within `limit`; from then on
    /// every answer is false, at once.
    bool run(Job job, std::chrono::milliseconds limit);
    /// The same in two steps: the first waits for nothing.
    Ticket post(Job job);
    bool wait(Ticket ticket, std::chrono::milliseconds limit);
    /// Whether somebody gave up waiting.
    [[nodiscard]] bool isStuck() const;

private:
    struct State;

    static void work(const std::shared_ptr<State>& state);

    std::shared_ptr<State> _state;
};
