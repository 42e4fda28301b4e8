#include "Base/Utility.h"
#include "Console/Commands.h"
#include "Console/DeviceChooser.h"
#include "Console/InterruptibleReading.h"
#include "Console/LibraryJson.h"
#include "Console/PreviewFiles.h"
#include "Console/Terminal.h"
#include "Export/OnDevice.h"

#include <QCoreApplication>

int Commands::dump(const CommandLine& line)
{
    const std::shared_ptr<Device> device = DeviceChooser::choose(line.device, line.waitSeconds);
    if (!device)
        return DeviceChooser::exitCodeWithout();
    if (!line.previews.isNull() && OnDevice::wouldLie(line.previews, device->localRoot())) {
        Terminal::say(
            QCoreApplication::translate("DumpCommand",
                                        "%1 is on the device itself, and nothing is written there.")
                .arg(line.previews));
        return ExitCode::WrongUsage;
    }
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
