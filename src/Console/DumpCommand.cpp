#include "Base/Utility.h"
#include "Console/Commands.h"
#include "Console/DeviceChooser.h"
#include "Console/InterruptibleReading.h"
#include "Console/LibraryJson.h"
#include "Console/PreviewFiles.h"
#include "Console/Terminal.h"

int Commands::dump(const CommandLine& line)
{
    const std::shared_ptr<Device> device = DeviceChooser::choose(line.device, line.waitSeconds);
    if (!device)
        return DeviceChooser::exitCodeWithout();
    if (!line.previews.isNull()) {
        const QString problem = Utility::createFolder(line.previews);
        if (!problem.isEmpty()) {
            Terminal::say(line.previews + QStringLiteral(": ") + problem);
            return ExitCode::WrongUsage;
        }
    }
    const InterruptibleReading reading;
    LibraryJson::write(*device, [](const QByteArray& piece) { Terminal::printJson(piece); });
    if (!line.previews.isNull()) {
        const QString problem = PreviewFiles::write(*device, line.previews);
        if (!problem.isEmpty()) {
            Terminal::say(problem);
            return ExitCode::SomeNotCopied;
        }
    }
    return ExitCode::Done;
}
