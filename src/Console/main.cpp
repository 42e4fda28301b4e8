#include "Base/Fault.h"
#include "Base/Translations.h"
#include "Console/CommandLine.h"
#include "Console/Commands.h"
#include "Console/Interrupt.h"
#include "Console/Terminal.h"
#include "Device/Device.h"
#include "Device/TemporaryCopy.h"
#include "Device/iPhone/PhoneDevice.h"
#include "Platform/PatientThread.h"

#include <QCoreApplication>
#include <QLocale>

#include <langinfo.h>

#include <atomic>
#include <clocale>
#include <csignal>
#include <cstring>
#include <exception>

namespace
{
struct Words {
    Q_DECLARE_TR_FUNCTIONS(Console)
};

std::atomic<bool> hadFault = false;

/// Names on devices are Unicode; a locale that is not would only make Qt complain.
void useUtf8()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        qputenv("LC_ALL", "C.UTF-8");
        std::setlocale(LC_ALL, "");
    }
}

/// Says what the current exception says; on whatever thread it was thrown.
void sayFault()
{
    hadFault = true;
    QString what;
    try {
        throw;
    } catch (const std::exception& exception) {
        what = QString::fromUtf8(exception.what());
    } catch (...) {
        what = QStringLiteral("?");
    }
    Terminal::say(Words::tr("A fault of this program ended a part of its work (%1)").arg(what));
}

int perform(const CommandLine& line)
{
    switch (line.command) {
    case CommandLine::Command::Devices:
        return Commands::devices(line);
    case CommandLine::Command::List:
        return Commands::list(line);
    case CommandLine::Command::Dump:
        return Commands::dump(line);
    case CommandLine::Command::Export:
        return Commands::exportMedia(line);
    }
    return ExitCode::WrongUsage;
}

int run(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Translations::install(QLocale());
    int exitCode = ExitCode::Done;
    const std::optional<CommandLine> line = CommandLine::parse(argc, argv, exitCode);
    if (!line)
        return exitCode;

    Interrupt::watch();
    PhoneDevice::setInterrupt(Interrupt::requested());
    Fault::setHandler(sayFault); // a preview that fails ends nothing but itself
    TemporaryCopy::removeLeftovers();
    Fault::guard([&] { exitCode = perform(*line); });
    Device::uninit();
    Fault::setHandler({});
    const Status output = Terminal::endOutput();
    if (!output)
        Terminal::say(output.failure().text());
    if (Interrupt::requested())
        return ExitCode::Stopped;
    return exitCode == ExitCode::Done && (hadFault || !output) ? ExitCode::SomeNotCopied : exitCode;
}
} // namespace

int main(int argc, char** argv)
{
    // A pipe that nobody reads any more must not end a copy; see Terminal for what becomes of it.
    std::signal(SIGPIPE, SIG_IGN);
    useUtf8();
    return PatientThread::endProgram(run(argc, argv));
}
