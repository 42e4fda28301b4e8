#include "Window/Views/PhotoPainter.h"

#include "Window/Views/FocusRing.h"

#include <QFontMetrics>

namespace
{
constexpr int PictureSize = 100;
constexpr int Margin = 10;
constexpr int CaptionGap = 6;
constexpr int Roundness = 6;
} // namespace

QSize PhotoPainter::size(const QFontMetrics& metrics)
{
    return {PictureSize + 2 * Margin + 8, PictureSize + 2 * Margin + CaptionGap + metrics.height()};
}

void PhotoPainter::setPhoto(const QImage& picture, const QString& caption)
{
    _picture = picture;
    _caption = caption;
}

void PhotoPainter::drawRect(QPainter& painter, const QRect& bounds, const QPalette& palette) const
{
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (_selected)
        painter.fillRect(bounds, palette.highlight());
    if (_focused)
        FocusRing::draw(painter, bounds, palette, _selected);
    const QRect box((bounds.left() + bounds.right() + 1 - PictureSize) / 2, bounds.top() + Margin,
                    PictureSize, PictureSize);
    drawPicture(painter, box, palette);

    const QFontMetrics metrics = painter.fontMetrics();
    const QRect caption(bounds.left() + 4, box.bottom() + 1 + CaptionGap, bounds.width() - 8,
                        metrics.height());
    painter.setPen(palette.color(_selected ? QPalette::HighlightedText : QPalette::Text));
    painter.drawText(caption, Qt::AlignCenter | Qt::TextSingleLine,
                     metrics.elidedText(_caption, Qt::ElideMiddle, caption.width()));
    painter.restore();
}

void PhotoPainter::drawPicture(QPainter& painter, const QRect& box, const QPalette& palette) const
{
    if (_picture.isNull()) { // its data was no picture: an empty frame says that it is there
        QColor line = palette.color(QPalette::Text);
        line.setAlphaF(0.35F);
        painter.setPen(line);
        painter.drawRoundedRect(box.adjusted(0, 0, -1, -1), Roundness, Roundness);
        return;
    }
    QSize size = _picture.size() / _picture.devicePixelRatio();
    size.scale(box.size().boundedTo(size), Qt::KeepAspectRatio);
    QRect target(QPoint(), size);
    target.moveCenter(box.center());
    painter.drawImage(target, _picture);
}

bool PhotoPainter::hitTest(const QPoint& point, const QRect& bounds)
{
    return bounds.contains(point);
}
