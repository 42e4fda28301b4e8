#pragma once

#include "Window/Crash/RaisedException.h"

#include <string_view>

/// The last words of a program that is about to die, and how the next run reads them. The dying
/// program writes bare addresses and what its memory was mapped to: to look up names takes
/// memory and locks, which may be the very thing that is broken. The next run finds the same
/// places in its own memory, and names them.
namespace CrashFile
{
/// Where the files lie: beside the log folder, which is emptied at every start. Created if
/// missing.
QString folder();

/// Says where `write` writes to. Call it before anything can go wrong.
void prepare(const QString& folder);
/// Writes the file. Safe in a signal handler: nothing but system calls.
void write(std::string_view name, std::string_view reason, void* const* addresses,
           int count) noexcept;

/// Reads and removes the files of earlier runs, oldest first. A place that this run does not
/// know, as its file has changed since or is not loaded, has a null address. Damaged files give
/// what can be read of them.
std::vector<RaisedException> takeAll(const QString& folder);
} // namespace CrashFile
