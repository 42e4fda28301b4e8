#pragma once

#include <QString>

/// Names the functions of this process. Any thread, but no signal handler.
namespace Symbolicator
{
/// The function that a call at this return address stands in; empty when it has no name.
QString symbolForAddress(const void* returnAddress);
/// A linker's name as a person would write it; any other comes back as it is.
QString demangled(const char* name);
} // namespace Symbolicator
