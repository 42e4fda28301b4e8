#include "Window/ExportButton.h"

#include <QMouseEvent>

void ExportButton::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept();
}

void ExportButton::mouseReleaseEvent(QMouseEvent* event)
{
    _byMouse = true;
    QPushButton::mouseReleaseEvent(event);
    _byMouse = false;
}
