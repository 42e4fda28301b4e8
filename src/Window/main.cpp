#include "Base/Program.h"
#include "Base/Translations.h"
#include "Platform/PatientThread.h"
#include "Window/Appearance.h"
#include "Window/Crash/Application.h"
#include "Window/Crash/CrashFile.h"
#include "Window/Crash/FatalSignals.h"
#include "Window/Crash/FaultExceptionHandlerDelegate.h"
#include "Window/MainWindowController.h"
#include "Window/Style.h"

#include <QLocale>

namespace
{
int run(int argc, char** argv)
{
    Application application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zell-transfer"));
    QApplication::setApplicationVersion(Program::version());
    QApplication::setDesktopFileName(QStringLiteral("io.zell.Transfer"));
    Translations::install(QLocale());
    Style::install();
    const Appearance appearance;

    FatalSignals::install(CrashFile::folder());
    FaultExceptionHandlerDelegate handler(Program::supportAddress());

    MainWindowController controller;
    controller.start();
    handler.showReportsLeftIn(CrashFile::folder());
    return QApplication::exec();
}
} // namespace

int main(int argc, char** argv)
{
    return PatientThread::endProgram(run(argc, argv));
}
