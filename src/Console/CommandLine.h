#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What the person asked the console program for.
struct CommandLine {
    enum class Command { Devices, List, Dump, Export };

    Command command = Command::Devices;
    QString device; ///< a device key or a folder; null: the one that is connected
    double waitSeconds = 2;
    bool quiet = false;

    bool json = false;   ///< devices
    QString category;    ///< list; null: all categories
    QString previews;    ///< dump; null: none are written
    QStringList what;    ///< export
    QString destination; ///< export; null: the folders of the settings
    QString clash;       ///< export; null: the rule of the settings
    QString report;      ///< export; null: only the log

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
