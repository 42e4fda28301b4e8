#pragma once

#include "Console/CommandLine.h"

/// One function a command; each gives the program's exit code.
namespace Commands
{
int devices(const CommandLine& line);
int list(const CommandLine& line);
int dump(const CommandLine& line);
int exportMedia(const CommandLine& line);
} // namespace Commands
