#include "Window/Models/PhotoGridModel.h"

#include "Base/PathName.h"
#include "Device/Photo.h"
#include "Window/ShownText.h"

#include <QTextDocument>

#include <algorithm>

namespace
{
/// What people know a picture by: its title, else its file name, else its number.
QString nameOf(const Photo& photo)
{
    if (!photo.title.isEmpty())
        return photo.title;
    const QString fileName = PathName::lastComponent(photo.fullSizeFile);
    return fileName.isEmpty() ? QString::number(photo.photoId) : fileName;
}

/// "720 x 480" where the library names no picture file, only renditions for the player's screen;
/// null for all others.
QString screenSize(const Photo& photo)
{
    if (!photo.fullSizeFile.isEmpty() || photo.thumbnails.empty())
        return {};
    const auto area = [](const Thumbnail& one) { return one.imageWidth * one.imageHeight; };
    const Thumbnail& largest = *std::max_element(
        photo.thumbnails.begin(), photo.thumbnails.end(),
        [&](const Thumbnail& one, const Thumbnail& other) { return area(one) < area(other); });
    return area(largest) == 0
               ? QString()
               : PhotoGridModel::tr("%1 x %2").arg(largest.imageWidth).arg(largest.imageHeight);
}

QString caption(const Photo& photo)
{
    const QString size = screenSize(photo);
    const QString name = ShownText::of(nameOf(photo));
    return size.isNull() ? name : PhotoGridModel::tr("%1 (%2)").arg(name, size);
}

QString toolTip(const Photo& photo)
{
    const QString size = screenSize(photo);
    const QString name = ShownText::of(nameOf(photo));
    return size.isNull()
               ? name
               : PhotoGridModel::tr("%1\nThe device holds only a copy for its screen, %2 pixels.")
                     .arg(name, size);
}
} // namespace

void PhotoGridModel::setPhotos(const std::vector<Photo*>& photos)
{
    std::vector<Photo*> shown = photos; // may throw, which nothing between these two may
    beginResetModel();
    _photos.swap(shown);
    endResetModel();
}

void PhotoGridModel::previewsChanged()
{
    if (!_photos.empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::DecorationRole});
}

int PhotoGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(_photos.size());
}

QVariant PhotoGridModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    Photo* photo = _photos[std::size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return caption(*photo);
    case Qt::ToolTipRole: // or a name with tags in it would be shown as a document
        return Qt::convertFromPlainText(toolTip(*photo), Qt::WhiteSpaceNormal);
    case Qt::DecorationRole:
        return photo->smallImage();
    case PhotoRole:
        return QVariant::fromValue(photo);
    default:
        return {};
    }
}
