#include "Window/ExportButton.h"

#include <QApplication>
#include <QMouseEvent>

void ExportButton::mousePressEvent(QMouseEvent* event)
{
    _lastPress = event->timestamp();
    QPushButton::mousePressEvent(event);
}

void ExportButton::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The first of the two presses may have been for a window that stood above this one.
    const bool wasHere =
        event->timestamp() - _lastPress <= quint64(QApplication::doubleClickInterval());
    if (wasHere)
        event->accept();
    else
        QPushButton::mouseDoubleClickEvent(event);
}

void ExportButton::mouseReleaseEvent(QMouseEvent* event)
{
    _byMouse = true;
    QPushButton::mouseReleaseEvent(event);
    _byMouse = false;
}
