#include "Window/SourceList.h"

#include "Window/Icons.h"
#include "Window/Views/IconTextDelegate.h"
#include "Window/Views/SourceTreeView.h"

#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

namespace
{
using Kind = SourceListModel::Kind;

constexpr int CategoryIconSize = 20;
constexpr int WarningSize = 16;
constexpr int WarningGap = 4;
constexpr int RowPadding = 10;
constexpr int Indentation = 18;

Kind kindOf(const QModelIndex& index)
{
    return Kind(index.data(SourceListModel::KindRole).toInt());
}

/// The sign before a section's cell; null for playlists and albums.
QString iconOf(const QModelIndex& index)
{
    return kindOf(index) == Kind::Section
               ? Sections::icon(Section(index.data(SourceListModel::SectionRole).toInt()))
               : QString();
}

/// The cell of the list. Only playlists and albums have an image in their cell; a category's
/// sign stands before the cell, where it marks the row and not the item.
class SourceDelegate final : public IconTextDelegate
{
public:
    using IconTextDelegate::IconTextDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        IconTextDelegate::paint(painter, option, index);
        if (index.data(SourceListModel::HasProblemsRole).toBool())
            paintWarning(*painter, option);
        const QString name = iconOf(index);
        if (name.isEmpty())
            return;
        const QRect leftToRight(option.rect.left(),
                                option.rect.top() + (option.rect.height() - CategoryIconSize) / 2,
                                CategoryIconSize, CategoryIconSize);
        const QRect sign = QStyle::visualRect(option.direction, option.rect, leftToRight);
        const bool selected = (option.state & QStyle::State_Selected) != 0;
        Icons::named(name).paint(painter, sign, Qt::AlignCenter,
                                 selected ? QIcon::Selected : QIcon::Normal);
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QSize size = IconTextDelegate::sizeHint(option, index);
        size.setHeight(std::max(CategoryIconSize, option.fontMetrics.height()) + RowPadding);
        return size;
    }

protected:
    [[nodiscard]] QRect cellRect(const QRect& row, const QModelIndex& index) const override
    {
        const int before = iconOf(index).isEmpty() ? 0 : CategoryIconSize + 5;
        const bool isWarned = index.data(SourceListModel::HasProblemsRole).toBool();
        return row.adjusted(before, 0, isWarned ? -(WarningSize + WarningGap) : 0, 0);
    }

private:
    /// At the end of the row: not all of what it stands for could be read.
    static void paintWarning(QPainter& painter, const QStyleOptionViewItem& option)
    {
        const QRect sign(option.rect.right() - WarningSize - WarningGap,
                         option.rect.top() + (option.rect.height() - WarningSize) / 2, WarningSize,
                         WarningSize);
        Icons::named(QStringLiteral("warning"))
            .paint(&painter, QStyle::visualRect(option.direction, option.rect, sign));
    }
};
} // namespace

SourceList::SourceList(QWidget* parent)
    : QWidget(parent)
    , _outlineView(new SourceTreeView)
    , _imgPlaylist(Icons::named(QStringLiteral("playlist")))
    , _imgPhotoAlbum(Icons::named(QStringLiteral("photoalbum")))
{
    _outlineView->setObjectName(QStringLiteral("_outlineView"));
    _outlineView->setAccessibleName(tr("Library"));
    _outlineView->setIndentation(Indentation);
    auto* cell = new SourceDelegate(_outlineView);
    cell->setWillDisplayCell([this](const QModelIndex& index) {
        switch (kindOf(index)) {
        case Kind::Playlist:
            return _imgPlaylist;
        case Kind::Album:
            return _imgPhotoAlbum;
        case Kind::Section:
            break;
        }
        return QIcon();
    });
    _outlineView->setItemDelegate(cell);
    _outlineView->setModel(&_model);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(_outlineView);
    connect(_outlineView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &SourceList::sourceChanged);
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

std::optional<Section> SourceList::selectedSection() const
{
    const QModelIndex index = _outlineView->selectedItem();
    return index.isValid() ? std::optional(_model.section(index)) : std::nullopt;
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
    const std::optional<Section> section = selectedSection();
    return section && Sections::facts(*section).view == SectionFacts::View::Browser;
}
