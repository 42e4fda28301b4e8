#include "Base/Translations.h"
#include "Console/CommandLine.h"
#include "Console/Commands.h"
#include "Device/Device.h"
#include "Device/TemporaryCopy.h"
#include "Platform/PatientThread.h"

#include <QCoreApplication>
#include <QLocale>

#include <langinfo.h>

#include <clocale>
#include <cstdio>
#include <cstring>

namespace
{
/// Names on devices are Unicode; a locale that is not would only make Qt complain.
void useUtf8()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        qputenv("LC_ALL", "C.UTF-8");
        std::setlocale(LC_ALL, "");
    }
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
    int exitCode = ExitCode::Done;
    const std::optional<CommandLine> line = CommandLine::parse(argc, argv, exitCode);
    if (!line)
        return exitCode;

    const QCoreApplication application(argc, argv);
    Translations::install(QLocale());
    TemporaryCopy::removeLeftovers();
    exitCode = perform(*line);
    Device::uninit();
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::perror("zell-transfer-cli: standard output");
        return ExitCode::SomeNotCopied;
    }
    return exitCode;
}
} // namespace

int main(int argc, char** argv)
{
    useUtf8();
    return PatientThread::endProgram(run(argc, argv));
}
