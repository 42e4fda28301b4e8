#include "support/Files.h"

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{
QString icons()
{
    return QStringLiteral(ZELL_RESOURCES "/icons/");
}

/// The icons that stand beside a text; the program's own and the large picture are of other sizes.
QStringList smallIcons()
{
    QStringList names = QDir(icons()).entryList({QStringLiteral("*.svg")}, QDir::Files);
    names.removeAll(QStringLiteral("zell-transfer.svg"));
    names.removeAll(QStringLiteral("empty.svg"));
    return names;
}

QImage drawn(QSvgRenderer& svg, int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    svg.render(&painter);
    return image;
}

double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}
} // namespace

TEST(Icon, IsThereForEverythingThatTheWindowShows)
{
    const QStringList names = {
        "music",     "movies",     "tvshows",  "podcasts",   "audiobooks", "ringtones", "books",
        "playlists", "voicememos", "photos",   "cameraroll", "photoalbum", "playlist",  "start",
        "stop",      "play",       "search",   "genre",      "artist",     "album",     "device",
        "phone",     "warning",    "settings", "folder",     "help",       "about"};
    QStringList files;
    for (const QString& name : names)
        files.append(name + ".svg");
    files.sort();
    EXPECT_EQ(smallIcons(), files);
}

TEST(Icon, FitsIntoItsSquare)
{
    for (const QString& name : smallIcons()) {
        QSvgRenderer svg(icons() + name);
        ASSERT_TRUE(svg.isValid()) << name.toStdString();
        EXPECT_EQ(svg.viewBox(), QRect(0, 0, 24, 24)) << name.toStdString();
        const QImage image = drawn(svg, 240);
        for (int i = 0; i < 240; ++i) {
            for (const QPoint point : {QPoint(i, 0), QPoint(i, 239), QPoint(0, i), QPoint(239, i)})
                EXPECT_EQ(image.pixelColor(point).alpha(), 0) << name.toStdString();
        }
    }
}

TEST(Icon, IsReadableOnLightAndOnDark)
{
    for (const QString& name : smallIcons()) {
        QSvgRenderer svg(icons() + name);
        const QImage image = drawn(svg, 96);
        int lines = 0;
        double worst = 21;
        for (int y = 0; y < 96; ++y) {
            for (int x = 0; x < 96; ++x) {
                const QColor colour = image.pixelColor(x, y);
                if (colour.alpha() < 255)
                    continue; // a soft fill, or the edge of a line
                ++lines;
                worst = std::min({worst, contrast(colour, Qt::white),
                                  contrast(colour, QColor(0x2b, 0x2b, 0x2b))});
            }
        }
        EXPECT_GE(worst, 2) << name.toStdString();
        EXPECT_GT(lines, 100) << name.toStdString();
    }
}

TEST(Icon, OfTheProgramAndTheLogoCanBeDrawn)
{
    for (const char* file : {"icons/zell-transfer.svg", "icons/empty.svg", "brand/zell_logo.svg"}) {
        QSvgRenderer svg(QStringLiteral(ZELL_RESOURCES "/") + QString::fromUtf8(file));
        ASSERT_TRUE(svg.isValid()) << file;
        EXPECT_GT(drawn(svg, 64).pixelColor(32, 32).alpha() +
                      drawn(svg, 64).pixelColor(12, 24).alpha(),
                  0)
            << file;
    }
}
