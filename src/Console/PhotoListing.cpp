#include "Console/PhotoListing.h"

#include "Console/Terminal.h"
#include "Device/CameraRollDb.h"
#include "Device/Device.h"
#include "Device/PhotoDb.h"

#include <QCoreApplication>

namespace
{
constexpr int IdWidth = 12;
constexpr int AlbumWidth = 36;

QString tr(const char* text)
{
    return QCoreApplication::translate("PhotoListing", text);
}

void printRow(const QString& id, const QString& album, const QString& file)
{
    Terminal::print(Terminal::field(id, IdWidth) + Terminal::field(album, AlbumWidth) +
                    Terminal::harmless(file) + u'\n');
}

void printPhotos(const std::vector<Photo*>& photos)
{
    printRow(tr("Photo"), tr("Album"), tr("File"));
    for (const Photo* photo : photos)
        printRow(QString::number(photo->photoId), photo->album ? photo->album->name : QString(),
                 photo->fullSizeFile);
}

void printCameraRoll(const std::vector<Photo*>& photos)
{
    for (const Photo* photo : photos)
        Terminal::print(Terminal::harmless(photo->fullSizeFile) + u'\n');
}
} // namespace

std::vector<std::pair<QString, std::size_t>> PhotoListing::counts(Device& device)
{
    std::vector<std::pair<QString, std::size_t>> result;
    if (CameraRollDb* roll = device.cameraRollDb())
        result.emplace_back(QStringLiteral("cameraRoll"), roll->photos().size());
    if (PhotoDb* library = device.photoDb())
        result.emplace_back(QStringLiteral("photos"), library->photos().size());
    return result;
}

bool PhotoListing::print(Device& device, const QString& category)
{
    if (category == u"photos" && device.photoDb())
        printPhotos(device.photoDb()->photos());
    else if (category == u"cameraRoll" && device.cameraRollDb())
        printCameraRoll(device.cameraRollDb()->photos());
    else
        return false;
    return true;
}
