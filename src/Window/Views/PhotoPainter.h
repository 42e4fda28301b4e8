#pragma once

#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QString>

/// One item of the photo grid: the picture above its caption, on a filled ground when it is
/// selected. It draws at any place, so one view serves all items.
class PhotoPainter
{
public:
    /// The space of one item.
    static QSize size(const QFontMetrics& metrics);

    void setSelected(bool selected) { _selected = selected; }
    [[nodiscard]] bool selected() const { return _selected; }
    void setPhoto(const QImage& picture, const QString& caption);
    /// Whether the item also has the keyboard's attention.
    void setFocused(bool focused) { _focused = focused; }

    /// Fills the bounds when selected, then draws picture and caption over it.
    void drawRect(QPainter& painter, const QRect& bounds, const QPalette& palette) const;
    /// Whether a point belongs to the item: all of its bounds, so that a click on the picture,
    /// the caption or between them is a click on the item.
    [[nodiscard]] static bool hitTest(const QPoint& point, const QRect& bounds);

private:
    void drawPicture(QPainter& painter, const QRect& box, const QPalette& palette) const;

    bool _selected = false;
    bool _focused = false;
    QImage _picture;
    QString _caption;
};
