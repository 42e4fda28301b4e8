// A program that dies as it is told, or shows what an earlier run that died has left:
//   crashing-program FOLDER WAY

#include "Base/Exception.h"
#include "Window/Crash/Application.h"
#include "Window/Crash/FatalSignals.h"
#include "Window/Crash/FaultHandler.h"

#include <QFile>
#include <QPlainTextEdit>
#include <QTimer>

#include <sys/resource.h>

#include <cstdio>
#include <stdexcept>
#include <thread>

namespace
{
volatile int* volatile noAddress = nullptr;
volatile int depth = 0;

/// The system is to notice, and not a check in the code.
[[gnu::noinline, gnu::no_sanitize("undefined")]] void writeToNoAddress()
{
    *noAddress = 1;
    depth = depth + 1; // not the last thing here
}

[[gnu::noinline]] void abortOnPurpose()
{
    std::abort();
}

[[gnu::noinline]] int fillTheStack(int level)
{
    volatile char room[1024] = {};
    room[level % 1024] = char(level);
    if (level < 0) // never, but the compiler must not know
        return 0;
    return fillTheStack(level + 1) + room[level % 1024];
}

[[gnu::noinline]] void throwFromALibraryType()
{
    throw std::out_of_range("nothing at 7");
}

[[gnu::noinline]] void throwOurOwn()
{
    throw Exception("NSRangeException", "4 bytes at 13 of 16");
}

/// Its calls must come back, or the optimizer takes it off the stack.
[[gnu::noinline, gnu::optimize("no-optimize-sibling-calls")]] void dieOf(const QString& way)
{
    if (way == "segv")
        writeToNoAddress();
    else if (way == "abort")
        abortOnPurpose();
    else if (way == "stack")
        depth = fillTheStack(0);
    else if (way == "thread")
        std::thread(throwFromALibraryType).join();
    else if (way == "noexcept")
        []() noexcept { throwOurOwn(); }();
    else if (way == "terminate")
        std::terminate();
    else if (way == "segv-in-thread")
        std::thread(writeToNoAddress).join();
}

/// What the person sees, as the program would show it.
int show(const QString& folder)
{
    FaultHandler handler("support@zell.example");
    handler.showReportsLeftIn(folder);
    QCoreApplication::processEvents();
    const auto windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        if (window->isVisible() && window->objectName() == "_alertCrash") {
            const auto* report = window->findChild<QPlainTextEdit*>("_tfReport");
            std::fputs(qUtf8Printable(window->windowTitle() + u'\n' + report->toPlainText()),
                       stdout);
        }
    }
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(2) == "show")
        return show(arguments.value(1));
    FatalSignals::install(arguments.value(1));
    dieOf(arguments.value(2));
    return 0;
}
