#include "Console/CommandLine.h"

#include "Base/Program.h"
#include "Console/NearMatch.h"
#include "Console/PersonsPath.h"
#include "Console/Terminal.h"

#include <QCoreApplication>

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

using CLI::App;
using CLI::Option;

namespace
{
struct Words {
    Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

/// The arguments as CLI11 fills them in.
struct Arguments {
    std::string device;
    std::string category;
    std::string previews;
    std::vector<std::string> what;
    std::string destination;
    std::string clash;
    std::string report;
    double waitSeconds = -1;
    bool json = false;
    bool quiet = false;
    bool dryRun = false;
};

/// An argument that is not understood.
struct Complaint {
    QString words;
};

QString textOrNull(const std::string& text)
{
    return text.empty() ? QString() : QString::fromStdString(text);
}

std::string help(const QString& words)
{
    return words.toStdString();
}

std::string versionLine()
{
    return (Program::briefName() + u' ' + Program::version()).toStdString();
}

App* addCommand(App& app, const char* name, const QString& description)
{
    App* command = app.add_subcommand(name, help(description));
    command->set_version_flag("--version", versionLine(),
                              help(Words::tr("Print the version and exit")));
    return command;
}

/// An option with a text; an empty one is most likely a variable that was never set.
Option* addText(App* command, const std::string& name, std::string& text, const char* kind,
                const QString& description)
{
    const auto check = [](const std::string& given) {
        return given.empty() ? help(Words::tr("an empty text is no name")) : std::string();
    };
    return command->add_option(name, text, help(description))
        ->type_name(kind)
        ->check(CLI::Validator(check, "", "not empty"));
}

void addDevice(App* command, Arguments& arguments)
{
    addText(command, "--device", arguments.device, "DEVICE",
            Words::tr("A device key from \"devices\", or a folder that holds a player's files"));
}

void addWait(App* command, Arguments& arguments, const QString& description)
{
    const auto check = [](const std::string& given) {
        constexpr double Longest = 3600;
        double seconds = -1;
        const bool isNumber = CLI::detail::lexical_cast(given, seconds);
        // Not the other way round: what is no number compares with nothing.
        return isNumber && seconds >= 0 && seconds <= Longest
                   ? std::string()
                   : help(Words::tr("\"%1\" is no number of seconds from 0 to 3600")
                              .arg(QString::fromStdString(given)));
    };
    command->add_option("--wait", arguments.waitSeconds, help(description))
        ->type_name("SECONDS")
        ->check(CLI::Validator(check, "", "seconds"));
}

void addDevices(App& app, Arguments& arguments)
{
    App* command = addCommand(app, "devices", Words::tr("List the connected devices"));
    command->add_flag("--json", arguments.json, help(Words::tr("Print a JSON list")));
    addWait(command, arguments,
            Words::tr("Wait so long for a device to come; without it, 2 seconds for the phones "
                      "that are plugged in"));
}

void addPatience(App* command, Arguments& arguments)
{
    addWait(command, arguments,
            Words::tr("Wait so long for the device to come; without it, 10 seconds for a phone "
                      "that is plugged in"));
}

void addList(App& app, Arguments& arguments)
{
    App* command = addCommand(app, "list", Words::tr("Show what a device holds"));
    addDevice(command, arguments);
    addPatience(command, arguments);
    command->add_flag("--json", arguments.json, help(Words::tr("Print the counts as JSON")));
    addText(command, "CATEGORY", arguments.category, "",
            Words::tr("Show the items of one category: %1")
                .arg(Categories::names().join(QStringLiteral(", "))));
}

void addDump(App& app, Arguments& arguments)
{
    App* command = addCommand(app, "dump", Words::tr("Print a device's whole library as JSON"));
    addDevice(command, arguments);
    addPatience(command, arguments);
    addText(command, "--previews", arguments.previews, "FOLDER",
            Words::tr("Write the preview pictures here"));
}

void addExport(App& app, Arguments& arguments)
{
    App* command =
        addCommand(app, "export", Words::tr("Copy media from a device to this computer"));
    addDevice(command, arguments);
    addPatience(command, arguments);
    command
        ->add_option("WHAT", arguments.what,
                     help(Words::tr("all, everything (the same), media (every track), a category "
                                    "of \"list\", playlist=NAME or album=NAME")))
        ->type_name("")
        ->required();
    addText(command, "--to", arguments.destination, "FOLDER",
            Words::tr("Copy into folders below this one instead of those of the settings"));
    command
        ->add_option("--clash", arguments.clash,
                     help(Words::tr("What to do with files that exist already")))
        ->type_name("RULE")
        ->check(CLI::IsMember({"number", "overwrite", "skip"}));
    addText(command, "--report", arguments.report, "FILE",
            Words::tr("Write what became of each item here"));
    command->add_flag("--quiet", arguments.quiet, help(Words::tr("Show no progress")));
    command->add_flag("--dry-run", arguments.dryRun,
                      help(Words::tr("Print what would be copied, and write nothing")));
}

QString maybe(const QString& nearest)
{
    return nearest.isEmpty() ? QString() : u' ' + Words::tr("Did you mean \"%1\"?").arg(nearest);
}

Section categoryOf(const std::string& typed)
{
    const QString word = QString::fromStdString(typed);
    const std::optional<Section> section = Categories::section(word);
    if (!section)
        throw Complaint{
            Words::tr("There is no category \"%1\".").arg(word) +
            maybe(NearMatch::of(word, Categories::names())) + u' ' +
            Words::tr("There are: %1.").arg(Categories::names().join(QStringLiteral(", ")))};
    return *section;
}

Categories::Wish wishOf(const std::string& typed)
{
    const QString word = QString::fromStdString(typed);
    const std::optional<Categories::Wish> wish = Categories::Wish::of(word);
    if (!wish)
        throw Complaint{Words::tr("\"%1\" is nothing that can be exported.").arg(word) +
                        maybe(NearMatch::of(word, Categories::words())) + u' ' +
                        Words::tr("There are: %1, playlist=NAME and album=NAME.")
                            .arg(Categories::words().join(QStringLiteral(", ")))};
    return *wish;
}

CommandLine result(const App& app, const Arguments& arguments)
{
    using Command = CommandLine::Command;
    CommandLine line;
    line.command = app.got_subcommand("list")     ? Command::List
                   : app.got_subcommand("dump")   ? Command::Dump
                   : app.got_subcommand("export") ? Command::Export
                                                  : Command::Devices;
    const auto path = [](const std::string& text) {
        return PersonsPath::expanded(textOrNull(text));
    };
    line.device = path(arguments.device);
    if (arguments.waitSeconds >= 0)
        line.waitSeconds = arguments.waitSeconds;
    line.quiet = arguments.quiet;
    line.json = arguments.json;
    if (!arguments.category.empty())
        line.category = categoryOf(arguments.category);
    line.previews = path(arguments.previews);
    for (const std::string& what : arguments.what)
        line.wishes.push_back(wishOf(what));
    line.destination = path(arguments.destination);
    line.clash = textOrNull(arguments.clash);
    line.report = path(arguments.report);
    line.dryRun = arguments.dryRun;
    return line;
}

QStringList commandNames(const App& app)
{
    QStringList names;
    for (const App* command : app.get_subcommands({}))
        names.append(QString::fromStdString(command->get_name()));
    return names;
}

QStringList optionNames(const App& command)
{
    QStringList names;
    for (const Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames())
            names.append(QStringLiteral("--") + QString::fromStdString(name));
    }
    return names;
}

/// What is wrong with an argument that nothing takes.
QString wordsForExtra(const App& app, const QString& extra)
{
    const std::vector<App*> commands = app.get_subcommands();
    const App& command = commands.empty() ? app : *commands.front();
    if (extra.startsWith(u'-')) {
        const QStringList known = optionNames(command);
        const QString typed = extra.section(u'=', 0, 0);
        return Words::tr("There is no option \"%1\".").arg(typed) +
               maybe(NearMatch::of(typed, known)) + u' ' +
               Words::tr("There are: %1.").arg(known.join(QStringLiteral(", ")));
    }
    if (commands.empty())
        return Words::tr("There is no command \"%1\".").arg(extra) +
               maybe(NearMatch::of(extra, commandNames(app))) + u' ' +
               Words::tr("There are: %1.").arg(commandNames(app).join(QStringLiteral(", ")));
    return Words::tr("\"%1\" is one word too many.").arg(extra);
}

QString wordsFor(const App& app, const CLI::ParseError& error)
{
    // A word that nothing takes is the cause of whatever else is missing.
    const std::vector<std::string> extras = app.remaining(true);
    if (!extras.empty())
        return wordsForExtra(app, QString::fromStdString(extras.front()));
    if (app.get_subcommands().empty())
        return Words::tr("Say what to do: %1.").arg(commandNames(app).join(QStringLiteral(", ")));
    if (dynamic_cast<const CLI::RequiredError*>(&error)) // of "export", which alone requires one
        return Words::tr("Say what to export: %1, playlist=NAME or album=NAME.")
            .arg(Categories::words().join(QStringLiteral(", ")));
    return QString::fromUtf8(error.what());
}

void complain(const QString& words)
{
    Terminal::say(words);
    Terminal::say(Words::tr("Run with --help for more information."));
}
} // namespace

std::optional<CommandLine> CommandLine::parse(int argc, char** argv, int& exitCode)
{
    App app(help(Words::tr("Copies media from a portable player or phone to this computer")),
            "zell-transfer-cli");
    Arguments arguments;
    app.set_version_flag("--version", versionLine(), help(Words::tr("Print the version and exit")));
    app.require_subcommand(1);
    addDevices(app, arguments);
    addList(app, arguments);
    addDump(app, arguments);
    addExport(app, arguments);
    exitCode = ExitCode::WrongUsage;
    try {
        app.parse(argc, argv);
        return result(app, arguments);
    } catch (const CLI::Success& wanted) { // help and version
        exitCode = app.exit(wanted);
    } catch (const CLI::ParseError& error) {
        complain(wordsFor(app, error));
    } catch (const Complaint& complaint) {
        complain(complaint.words);
    }
    return std::nullopt;
}
