// Plays phones on a simulated USB: each folder is the files of one phone. Says where programs
// find it, then obeys commands from standard input.

#include "support/phone/PhoneCommands.h"
#include "support/phone/SimulatedUsb.h"

#include <QDir>

#include <CLI/CLI.hpp>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace
{
constexpr int UsageError = 2;

std::shared_ptr<SimulatedPhone> newPhone(const std::string& root, int number,
                                         const std::string& version, bool tls)
{
    SimulatedPhone::Identity identity;
    identity.identifier = QStringLiteral("simulated-phone-%1").arg(number);
    identity.root = QDir(QString::fromStdString(root)).absolutePath();
    identity.version = QString::fromStdString(version);
    identity.tls = tls;
    return std::make_shared<SimulatedPhone>(identity);
}

/// Obeys until the input ends or says so; without input, until a signal comes.
void obey(PhoneCommands& commands, bool waits)
{
    std::string line;
    while (std::getline(std::cin, line)) {
        const QString answer = commands.run(QString::fromStdString(line));
        std::printf("%s\n", qPrintable(answer));
        std::fflush(stdout);
        if (commands.isOver())
            return;
    }
    while (waits)
        pause();
}
} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Plays phones whose files are those of folders");
    std::vector<std::string> roots;
    std::string socket;
    std::string version = "15.2";
    bool clear = false;
    bool wait = false;
    app.add_option("ROOT", roots, "A folder with the files of a phone")
        ->required()
        ->check(CLI::ExistingDirectory);
    app.add_option("--socket", socket, "Where to listen; a file of its own otherwise");
    app.add_option("--version", version, "What system the phones say they have")
        ->capture_default_str();
    app.add_flag("--clear", clear, "Speak without encryption");
    app.add_flag("--wait", wait, "Go on after the input has ended");
    app.footer(PhoneCommands::help().toStdString());
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : UsageError;
    }

    const QString path = socket.empty()
                             ? QDir::tempPath() + QStringLiteral("/simulated-usb-%1").arg(getpid())
                             : QString::fromStdString(socket);
    SimulatedUsb usb(path);
    std::vector<std::shared_ptr<SimulatedPhone>> phones;
    for (const std::string& root : roots) {
        phones.push_back(newPhone(root, int(phones.size()) + 1, version, !clear));
        usb.attach(phones.back());
    }
    std::printf("USBMUXD_SOCKET_ADDRESS=%s\n", usb.address().constData());
    std::fflush(stdout);
    PhoneCommands commands(usb, phones);
    obey(commands, wait);
    return 0;
}
