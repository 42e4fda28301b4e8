#include "Window/Models/PhotoGridModel.h"

#include "Base/PathName.h"
#include "Device/Photo.h"
#include "Window/ShownText.h"

#include <QTextDocument>

namespace
{
/// What people know a picture by: its title, else its file name, else its number.
QString caption(const Photo& photo)
{
    if (!photo.title.isEmpty())
        return photo.title;
    const QString fileName = PathName::lastComponent(photo.fullSizeFile);
    return fileName.isEmpty() ? QString::number(photo.photoId) : fileName;
}
} // namespace

void PhotoGridModel::setPhotos(const std::vector<Photo*>& photos)
{
    beginResetModel();
    _photos = photos;
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
        return ShownText::of(caption(*photo));
    case Qt::ToolTipRole: // or a name with tags in it would be shown as a document
        return Qt::convertFromPlainText(ShownText::of(caption(*photo)));
    case Qt::DecorationRole:
        return photo->smallImage();
    case PhotoRole:
        return QVariant::fromValue(photo);
    default:
        return {};
    }
}
