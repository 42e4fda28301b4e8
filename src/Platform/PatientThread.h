#pragma once

#include <functional>

/// Threads for calls into a library that may block for longer than anybody wants to wait, and
/// that nothing can call back. Nobody waits for them but the end of the program, a moment.
///
/// For that reason a job owns all it touches, by value or by a share of it. SIGPIPE is blocked on
/// such a thread: a connection that broke is an error of the call that found out.
namespace PatientThread
{
using Job = std::function<void()>;

/// Runs `job` on a thread of its own.
void alone(Job job);
/// For the end of main: waits a moment for every thread, then gives `exitCode`. Where one is
/// still inside a library, this ends the process at once instead: the libraries' own tear-down
/// would pull the ground from under it.
int endProgram(int exitCode);
} // namespace PatientThread
