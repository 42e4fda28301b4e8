#include "Window/ScreenRoom.h"

#include <QScreen>
#include <QWidget>

namespace
{
constexpr QSize Frame(16, 48); ///< what a window manager adds
}

QSize ScreenRoom::of(const QWidget& window)
{
    return window.screen()->availableSize() - Frame;
}
