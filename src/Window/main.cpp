#include "Base/Program.h"
#include "Window/Appearance.h"
#include "Window/MainWindowController.h"
#include "Window/Style.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zell-transfer"));
    QApplication::setApplicationDisplayName(Program::briefName());
    QApplication::setApplicationVersion(Program::version());
    QApplication::setDesktopFileName(QStringLiteral("io.zell.Transfer"));
    Style::install();
    const Appearance appearance;

    MainWindowController controller;
    controller.start();
    return QApplication::exec();
}
