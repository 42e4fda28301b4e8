#include "Window/Crash/Application.h"

#include "Base/Fault.h"

bool Application::notify(QObject* receiver, QEvent* event)
{
    bool handled = false;
    Fault::guard([&] { handled = QApplication::notify(receiver, event); });
    return handled;
}
