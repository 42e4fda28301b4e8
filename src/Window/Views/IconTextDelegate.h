#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

#include <functional>

/// A text cell that draws a small icon before its text. One cell draws all rows: the image is
/// set just before a row is drawn, or asked for by `setWillDisplayCell`.
class IconTextDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    /// Gives the icon of a row; a null icon for none.
    using WillDisplayCell = std::function<QIcon(const QModelIndex& index)>;

    explicit IconTextDelegate(QObject* parent = nullptr);

    [[nodiscard]] const QIcon& image() const { return _image; }
    void setImage(const QIcon& image) { _image = image; }
    [[nodiscard]] QSize imageSize() const { return _imageSize; }
    void setImageSize(QSize size) { _imageSize = size; }
    void setWillDisplayCell(const WillDisplayCell& willDisplayCell);

    /// The size for a text of this size: wider by the image and the gap before it.
    [[nodiscard]] QSize cellSize(QSize textSize) const;
    /// Where the image stands in a cell; empty without an image.
    [[nodiscard]] QRect imageRectForBounds(const QRect& bounds) const;
    /// Where the text stands beside an image; empty without one, although text is drawn then.
    [[nodiscard]] QRect titleRectForBounds(const QRect& bounds) const;
    /// What is left of a cell for its text or its editor.
    [[nodiscard]] QRect remainder(const QRect& bounds) const;
    /// Whether the mouse is on the image.
    [[nodiscard]] bool hitTestForEvent(const QPoint& position, const QRect& bounds) const;
    /// A cell of its own with the same image.
    [[nodiscard]] IconTextDelegate* copyWithZone(QObject* parent) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    /// What is left of the row for the cell, where something else is drawn before it.
    [[nodiscard]] virtual QRect cellRect(const QRect& row, const QModelIndex& index) const;

private:
    void willDisplay(const QModelIndex& index) const;

    // Painting is const to the toolkit, while the cell changes its image from row to row.
    mutable QIcon _image;
    QSize _imageSize{16, 16};
    WillDisplayCell _willDisplayCell;
};
