#pragma once

#include <QSize>

class QWidget;

/// What a screen has for a window.
namespace ScreenRoom
{
/// The largest size of a window on its screen, with room left for the frame around it.
QSize of(const QWidget& window);
} // namespace ScreenRoom
