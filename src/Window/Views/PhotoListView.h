#pragma once

#include <QListView>

class QMenu;

/// The photo grid. Its context menu is the same wherever it is asked for: on a picture, on a
/// caption or between the items.
class PhotoListView final : public QListView
{
    Q_OBJECT
public:
    explicit PhotoListView(QWidget* parent = nullptr);

    /// The menu; it is not owned.
    void setMenu(QMenu* menu) { _menu = menu; }
    [[nodiscard]] QMenu* menuForEvent() const { return _menu; }

    /// The item of a point: that whose bounds hold it, whichever part of the item is there.
    [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QList<int>& roles) override;

private:
    QMenu* _menu = nullptr;
};
