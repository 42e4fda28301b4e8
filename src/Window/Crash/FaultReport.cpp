#include "Window/Crash/FaultReport.h"

#include "Base/Program.h"
#include "Window/Crash/RaisedException.h"
#include "Window/Crash/Symbolicator.h"

#include <QCoreApplication>

#include <execinfo.h>

#include <array>

namespace
{
std::vector<void*> addressesOfThisThread()
{
    std::array<void*, 128> frames{};
    const int count = backtrace(frames.data(), int(frames.size()));
    // Round brackets: pointers to addresses would pass for addresses in a list of them.
    return std::vector<void*>(frames.begin(), frames.begin() + count);
}
} // namespace

FaultReport::FaultReport(const RaisedException& exception, QString emailAddress, Alert alert)
    : _emailAddress(std::move(emailAddress))
    , _alert(std::move(alert))
{
    displayCrashReport(exception);
}

QString FaultReport::stackTrace(const RaisedException& exception)
{
    const std::vector<void*> addresses = exception.callStackReturnAddresses.empty()
                                             ? addressesOfThisThread()
                                             : exception.callStackReturnAddresses;
    QString trace;
    for (const void* address : addresses)
        trace += Symbolicator::symbolForAddress(address) + u'\r';
    return trace;
}

void FaultReport::displayCrashReport(const RaisedException& exception) const
{
    const QString sentence = QCoreApplication::translate(
        "FaultReport",
        " has encountered an unexpected error. Please email this report to %1 so it can be fixed "
        "in the next release.");
    QString text = Program::briefName() + sentence.arg(_emailAddress);
    text += QStringLiteral("\r\r") + exception.name + QStringLiteral("\r\r") + exception.reason +
            QStringLiteral("\r\r");
    text += QStringLiteral("Stack Trace:\r") + stackTrace(exception);
    _alert(text);
}
