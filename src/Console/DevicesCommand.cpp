#include "Console/Commands.h"
#include "Console/DeviceChooser.h"
#include "Console/Interrupt.h"
#include "Console/LibraryJson.h"
#include "Console/Terminal.h"

#include <QCoreApplication>

int Commands::devices(const CommandLine& line)
{
    const Device::Devices devices = DeviceChooser::connected(line.waitSeconds);
    if (Interrupt::requested())
        return ExitCode::Stopped;
    if (line.json) {
        Terminal::printJson(LibraryJson::devices(devices));
        return ExitCode::Done;
    }
    for (const auto& [key, device] : devices)
        Terminal::print(
            QStringLiteral("%1\t%2\n")
                .arg(Terminal::harmless(key), Terminal::harmless(device->description())));
    if (devices.empty())
        Terminal::say(QCoreApplication::translate("DevicesCommand", "No device is connected."));
    return ExitCode::Done;
}
