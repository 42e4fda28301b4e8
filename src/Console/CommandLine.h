#pragma once

#include "Console/Categories.h"

#include <QString>

#include <optional>
#include <vector>

/// What the person asked the console program for.
struct CommandLine {
    enum class Command { Devices, List, Dump, Export };

    Command command = Command::Devices;
    QString device; ///< a device key or a folder; null: the one that is connected
    std::optional<double> waitSeconds; ///< for a device; none: as long as is sensible
    bool quiet = false;

    bool json = false;                    ///< devices, list
    std::optional<Section> category;      ///< list; none: all of them
    QString previews;                     ///< dump; null: none are written
    std::vector<Categories::Wish> wishes; ///< export
    QString destination;                  ///< export; null: the folders of the settings
    QString clash;                        ///< export; null: the rule of the settings
    QString report;                       ///< export; null: only the log
    bool dryRun = false;                  ///< export

    /// Understands the arguments. Help, version and complaints are printed at once; then there
    /// is no command line, and `exitCode` says how the program ends.
    static std::optional<CommandLine> parse(int argc, char** argv, int& exitCode);
};

/// How the program ends.
namespace ExitCode
{
constexpr int Done = 0;
constexpr int SomeNotCopied = 1;
constexpr int WrongUsage = 2;
constexpr int NoDevice = 3;
constexpr int Stopped = 130;
} // namespace ExitCode
