#pragma once

#include <QAbstractListModel>

#include <vector>

struct Photo;

/// The items of the photo grid: the reader's own photos, which outlive them. Captions stand in
/// the display role, previews as images in the decoration role.
class PhotoGridModel final : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role { PhotoRole = Qt::UserRole }; ///< the item's `Photo*`

    using QAbstractListModel::QAbstractListModel;

    void setPhotos(const std::vector<Photo*>& photos);
    [[nodiscard]] const std::vector<Photo*>& photos() const { return _photos; }
    /// Previews may have changed: what is visible is drawn again.
    void previewsChanged();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    std::vector<Photo*> _photos;
};
