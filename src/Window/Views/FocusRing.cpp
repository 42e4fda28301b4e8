#include "Window/Views/FocusRing.h"

#include <QPainter>
#include <QPalette>

namespace
{
constexpr double Width = 2;
constexpr double Roundness = 4;
} // namespace

void FocusRing::draw(QPainter& painter, const QRect& bounds, const QPalette& palette, bool selected)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    // In the colours of the active window: only there is a focus.
    painter.setPen(QPen(
        palette.color(QPalette::Active, selected ? QPalette::HighlightedText : QPalette::Highlight),
        Width));
    const double inset = Width / 2 + (selected ? 1 : 0);
    painter.drawRoundedRect(QRectF(bounds).adjusted(inset, inset, -inset, -inset), Roundness,
                            Roundness);
    painter.restore();
}
