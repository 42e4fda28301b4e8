#pragma once

#include <QString>

/// What the program does when it dies of a fault: it leaves a report for its next run, and then
/// dies as it would have, so that the system sees the same end and may keep a core.
namespace FatalSignals
{
/// Handles the signals of faults, and the program's end by an exception that nobody catches or
/// by a call of std::terminate. Reports go to the folder. Call it once, on the window's thread.
///
/// An overflow of the stack is reported where it is most likely: on the thread that calls this.
void install(const QString& folder);
} // namespace FatalSignals
