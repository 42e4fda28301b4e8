#include "Device/Photo.h"

#include <QColor>

namespace
{
constexpr int PlaceHolderSize = 100;

/// A plain neutral square: a picture of anything would only flicker by.
QImage makePlaceHolder()
{
    QImage image(PlaceHolderSize, PlaceHolderSize, QImage::Format_RGB32);
    image.fill(QColor(0xbf, 0xbf, 0xbf));
    return image;
}
} // namespace

const QImage& Photo::placeHolder()
{
    static const QImage image = makePlaceHolder();
    return image;
}

QImage Photo::smallImage() const
{
    const std::lock_guard lock(_mutex);
    return _smallImage;
}

void Photo::setSmallImage(const QImage& image)
{
    const std::lock_guard lock(_mutex);
    _smallImage = image;
}
