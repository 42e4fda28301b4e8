#include "support/Desktop.h"

#include <QProcess>

#include <sys/prctl.h>

#include <csignal>
#include <stdexcept>

namespace
{
constexpr int StartMilliseconds = 20'000;
} // namespace

Desktop::Desktop()
{
    const QByteArray display =
        start(QStringLiteral("Xvfb"),
              {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
               QStringLiteral("0"), QStringLiteral("1600x1200x24"), QStringLiteral("-nolisten"),
               QStringLiteral("tcp")});
    qputenv("DISPLAY", ":" + display);
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DBUS_SESSION_BUS_ADDRESS", _bus.address().toUtf8());
    // Without a window manager no window ever has the keyboard. It must be there before the
    // first window, and says so.
    start(QStringLiteral("openbox"), {QStringLiteral("--startup"), QStringLiteral("echo ready")});
}

Desktop::~Desktop()
{
    while (!_programs.empty()) {
        _programs.back()->kill();
        _programs.back()->waitForFinished();
        _programs.pop_back();
    }
}

QByteArray Desktop::start(const QString& program, const QStringList& arguments)
{
    auto process = std::make_unique<QProcess>();
    process->setStandardErrorFile(QProcess::nullDevice());
    process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process->start(program, arguments);
    if (!process->waitForStarted(StartMilliseconds))
        throw std::runtime_error(program.toStdString() + " did not start");
    while (!process->canReadLine()) {
        if (!process->waitForReadyRead(StartMilliseconds))
            throw std::runtime_error(program.toStdString() + " says nothing");
    }
    const QByteArray line = process->readLine().trimmed();
    _programs.push_back(std::move(process));
    return line;
}
