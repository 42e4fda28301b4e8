#include "support/SamplePicture.h"

#include <QBuffer>
#include <QImageWriter>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>

#include <algorithm>
#include <cmath>

namespace
{
void drawHills(QPainter& painter, int number, int layer)
{
    const double base = 0.5 + 0.13 * layer;
    QPainterPath hills(QPointF(0, 1));
    for (int i = 0; i <= 40; ++i) {
        const double x = i / 40.0;
        const double wave = std::sin(x * (4 + layer) + number * 1.7 + layer * 2.1);
        hills.lineTo(x, base - 0.09 * wave - 0.03 * std::sin(x * 23 + number));
    }
    hills.lineTo(1, 1);
    painter.fillPath(hills, QColor::fromHsv((110 + number * 37 + layer * 15) % 360,
                                            120 + layer * 25, 170 - layer * 40));
}
} // namespace

QImage SamplePicture::draw(int number, const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size.width(), size.height());
    QLinearGradient sky(0, 0, 0, 1);
    sky.setColorAt(0, QColor::fromHsv((200 + number * 53) % 360, 160, 220));
    sky.setColorAt(0.7, QColor::fromHsv((40 + number * 29) % 360, 60, 250));
    painter.fillRect(QRectF(0, 0, 1, 1), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 244, 200));
    painter.drawEllipse(QPointF(0.2 + 0.07 * (number % 9), 0.25), 0.07, 0.09);
    for (int layer = 0; layer < 3; ++layer)
        drawHills(painter, number, layer);
    return image;
}

QByteArray SamplePicture::encoded(const QImage& picture, const char* format, int quality)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    return writer.write(picture) ? buffer.data() : QByteArray();
}

QByteArray SamplePicture::cameraJpeg(int number)
{
    QImage picture = draw(number, {4032, 3024});
    QRandomGenerator random{quint32(number)};
    for (int y = 0; y < picture.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const int noise = int(random.generate() % 13) - 6;
            const auto byte = [noise](int value) { return std::clamp(value + noise, 0, 255); };
            row[x] = qRgb(byte(qRed(row[x])), byte(qGreen(row[x])), byte(qBlue(row[x])));
        }
    }
    return encoded(picture, "jpeg", 92);
}
