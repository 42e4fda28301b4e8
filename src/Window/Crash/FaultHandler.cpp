#include "Window/Crash/FaultHandler.h"

#include "Base/Fault.h"
#include "Window/Crash/CrashFile.h"
#include "Window/Crash/CrashWindow.h"
#include "Window/Crash/FaultReport.h"
#include "Window/Crash/RaisedException.h"

#include <QStringList>
#include <QtDebug>

FaultHandler::FaultHandler(QString emailAddress)
    : _emailAddress(std::move(emailAddress))
{
    Fault::setHandler([this] { handleCurrentException(); });
}

FaultHandler::~FaultHandler()
{
    Fault::setHandler({});
}

bool FaultHandler::shouldHandleException(const RaisedException& exception)
{
    if (shouldDisplayException(exception)) {
        // The names are looked up here, where the stack may have to be this thread's; the window
        // is another thread's, and in no state to be asked anything right now.
        FaultReport(exception, _emailAddress, [this](const QString& text) {
            _mailbox.post([text] { CrashWindow::show(text); });
        });
    }
    return true;
}

bool FaultHandler::shouldLogException(const RaisedException& /*exception*/)
{
    return true;
}

bool FaultHandler::shouldDisplayException(const RaisedException& exception)
{
    static const QStringList silent = {QStringLiteral("NSImageCacheException"),
                                       QStringLiteral("GIFReadingException"),
                                       QStringLiteral("NSRTFException")};
    if (silent.contains(exception.name))
        return false;
    return exception.name != QLatin1String("NSInternalInconsistencyException") ||
           !exception.reason.startsWith(QLatin1String("lockFocus"));
}

void FaultHandler::showReportsLeftIn(const QString& folder)
{
    for (const RaisedException& exception : CrashFile::takeAll(folder))
        shouldHandleException(exception);
}

void FaultHandler::handleCurrentException() noexcept
{
    try {
        const RaisedException exception = RaisedException::current();
        if (shouldLogException(exception))
            qCritical("%s: %s", qUtf8Printable(exception.name), qUtf8Printable(exception.reason));
        shouldHandleException(exception);
    } catch (...) {
        // There is not even memory for a report.
        qCritical("An exception could not be reported");
    }
}
