#include "Window/SourceList.h"

#include "Window/Icons.h"
#include "Window/Views/ImageAndTextCell.h"
#include "Window/Views/NSOutlineViewEx.h"

#include <QPainter>
#include <QVBoxLayout>

namespace
{
using Kind = SourceListModel::Kind;

constexpr int CategoryIconSize = 20;
constexpr int RowPadding = 10;
constexpr int Indentation = 18;

QString categoryIcon(Kind kind)
{
    switch (kind) {
    case Kind::Music:
        return QStringLiteral("music");
    case Kind::Movies:
        return QStringLiteral("movies");
    case Kind::TVShows:
        return QStringLiteral("tvshows");
    case Kind::Podcasts:
        return QStringLiteral("podcasts");
    case Kind::Audiobooks:
        return QStringLiteral("audiobooks");
    case Kind::Ringtones:
        return QStringLiteral("ringtones");
    case Kind::Books:
        return QStringLiteral("books");
    case Kind::Playlists:
        return QStringLiteral("playlists");
    case Kind::VoiceMemos:
        return QStringLiteral("voicememos");
    case Kind::CameraRoll:
        return QStringLiteral("cameraroll");
    case Kind::Photos:
        return QStringLiteral("photos");
    case Kind::Playlist:
    case Kind::Album:
        break;
    }
    return {};
}

Kind kindOf(const QModelIndex& index)
{
    return Kind(index.data(SourceListModel::KindRole).toInt());
}

/// The cell of the list. Only playlists and albums have an image in their cell; a category's
/// sign stands before the cell, where it marks the row and not the item.
class SourceCell final : public ImageAndTextCell
{
public:
    using ImageAndTextCell::ImageAndTextCell;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        ImageAndTextCell::paint(painter, option, index);
        const QString name = categoryIcon(kindOf(index));
        if (name.isEmpty())
            return;
        const QRect sign(option.rect.left(),
                         option.rect.top() + (option.rect.height() - CategoryIconSize) / 2,
                         CategoryIconSize, CategoryIconSize);
        const bool selected = (option.state & QStyle::State_Selected) != 0;
        Icons::named(name).paint(painter, sign, Qt::AlignCenter,
                                 selected ? QIcon::Selected : QIcon::Normal);
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QSize size = ImageAndTextCell::sizeHint(option, index);
        size.setHeight(std::max(CategoryIconSize, option.fontMetrics.height()) + RowPadding);
        return size;
    }

protected:
    [[nodiscard]] QRect cellRect(const QRect& row, const QModelIndex& index) const override
    {
        return categoryIcon(kindOf(index)).isEmpty() ? row
                                                     : row.adjusted(CategoryIconSize + 5, 0, 0, 0);
    }
};
} // namespace

SourceList::SourceList(QWidget* parent)
    : QWidget(parent)
    , _outlineView(new NSOutlineViewEx)
    , _imgPlaylist(Icons::named(QStringLiteral("playlist")))
    , _imgPhotoAlbum(Icons::named(QStringLiteral("photoalbum")))
{
    _outlineView->setObjectName(QStringLiteral("_outlineView"));
    _outlineView->setAccessibleName(tr("Library"));
    _outlineView->setIndentation(Indentation);
    auto* cell = new SourceCell(_outlineView);
    cell->setWillDisplayCell([this](const QModelIndex& index) {
        switch (kindOf(index)) {
        case Kind::Playlist:
            return _imgPlaylist;
        case Kind::Album:
            return _imgPhotoAlbum;
        default:
            return QIcon();
        }
    });
    _outlineView->setItemDelegate(cell);
    _outlineView->setModel(&_model);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(_outlineView);
    connect(_outlineView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &SourceList::outlineViewSelectionDidChange);
}

void SourceList::setDevice(Device* device)
{
    _outlineView->clearSelection();
    _model.setDevice(device);
    // Playlists and albums are what people look for; both show at once.
    _outlineView->expandAll();
}

void SourceList::selectFirstRow()
{
    _outlineView->setCurrentIndex(_model.index(0, 0));
}

void SourceList::setMenu(QMenu* menu)
{
    _outlineView->setMenu(menu);
}

std::optional<SourceList::Kind> SourceList::selectedKind() const
{
    const QModelIndex index = _outlineView->selectedItem();
    return index.isValid() ? std::optional(_model.kind(index)) : std::nullopt;
}

Playlist* SourceList::selectedPlaylist() const
{
    return _model.playlist(_outlineView->selectedItem());
}

Album* SourceList::selectedAlbum() const
{
    return _model.album(_outlineView->selectedItem());
}

bool SourceList::canShowBrowser() const
{
    const std::optional<Kind> kind = selectedKind();
    return kind && SourceListModel::browsableCategory(*kind).has_value();
}
