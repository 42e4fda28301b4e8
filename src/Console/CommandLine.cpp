#include "Console/CommandLine.h"

#include "Base/Program.h"
#include "Console/Categories.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace
{
/// The arguments as CLI11 fills them in.
struct Arguments {
    std::string device;
    std::string category;
    std::string previews;
    std::vector<std::string> what;
    std::string destination;
    std::string clash;
    std::string report;
    double waitSeconds = 2;
    bool json = false;
    bool quiet = false;
};

QString textOrNull(const std::string& text)
{
    return text.empty() ? QString() : QString::fromStdString(text);
}

std::string versionLine()
{
    return (Program::briefName() + u' ' + Program::version()).toStdString();
}

CLI::App* addCommand(CLI::App& app, const char* name, const char* description)
{
    CLI::App* command = app.add_subcommand(name, description);
    command->set_version_flag("--version", versionLine(), "Print the version and exit");
    return command;
}

void addDevice(CLI::App* command, Arguments& arguments)
{
    command->add_option("--device", arguments.device,
                        "A device key from \"devices\", or a folder that holds a player's files");
}

void addDevices(CLI::App& app, Arguments& arguments)
{
    CLI::App* command = addCommand(app, "devices", "List the connected devices");
    command->add_flag("--json", arguments.json, "Print a JSON list");
    command->add_option("--wait", arguments.waitSeconds, "Wait so many seconds for phones")
        ->check(CLI::Range(0.0, 3600.0))
        ->capture_default_str();
}

void addList(CLI::App& app, Arguments& arguments)
{
    CLI::App* command = addCommand(app, "list", "Show what a device holds");
    addDevice(command, arguments);
    command->add_option("CATEGORY", arguments.category, "Show the items of one category")
        ->check(CLI::IsMember(Categories::names()));
}

void addDump(CLI::App& app, Arguments& arguments)
{
    CLI::App* command = addCommand(app, "dump", "Print a device's whole library as JSON");
    addDevice(command, arguments);
    command->add_option("--previews", arguments.previews, "Write the preview pictures here");
}

std::string checkWhat(const std::string& what)
{
    if (Categories::isExportable(QString::fromStdString(what)))
        return {};
    return what + " is nothing that can be exported";
}

void addExport(CLI::App& app, Arguments& arguments)
{
    CLI::App* command = addCommand(app, "export", "Copy media from a device to this computer");
    addDevice(command, arguments);
    command
        ->add_option("WHAT", arguments.what,
                     "all, media, a category of \"list\", playlist=NAME or album=NAME")
        ->required()
        ->check(CLI::Validator(checkWhat, "", "what"));
    command->add_option("--to", arguments.destination,
                        "Copy into folders below this one instead of those of the settings");
    command->add_option("--clash", arguments.clash, "What to do with files that exist already")
        ->check(CLI::IsMember({"number", "overwrite", "skip"}));
    command->add_option("--report", arguments.report, "Write what became of each item here");
    command->add_flag("--quiet", arguments.quiet, "Show no progress");
}

CommandLine result(const CLI::App& app, const Arguments& arguments)
{
    using Command = CommandLine::Command;
    CommandLine line;
    line.command = app.got_subcommand("list")     ? Command::List
                   : app.got_subcommand("dump")   ? Command::Dump
                   : app.got_subcommand("export") ? Command::Export
                                                  : Command::Devices;
    line.device = textOrNull(arguments.device);
    line.waitSeconds = arguments.waitSeconds;
    line.quiet = arguments.quiet;
    line.json = arguments.json;
    line.category = textOrNull(arguments.category);
    line.previews = textOrNull(arguments.previews);
    for (const std::string& what : arguments.what)
        line.what.append(QString::fromStdString(what));
    line.destination = textOrNull(arguments.destination);
    line.clash = textOrNull(arguments.clash);
    line.report = textOrNull(arguments.report);
    return line;
}
} // namespace

std::optional<CommandLine> CommandLine::parse(int argc, char** argv, int& exitCode)
{
    CLI::App app("Copies media from a portable player or phone to this computer",
                 "zell-transfer-cli");
    Arguments arguments;
    app.set_version_flag("--version", versionLine(), "Print the version and exit");
    app.require_subcommand(1);
    addDevices(app, arguments);
    addList(app, arguments);
    addDump(app, arguments);
    addExport(app, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        exitCode = app.exit(error) == 0 ? ExitCode::Done : ExitCode::WrongUsage;
        return std::nullopt;
    }
    return result(app, arguments);
}
