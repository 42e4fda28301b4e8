#pragma once

#include <QListView>

class QMenu;

/// The photo grid. Its context menu is the same wherever it is asked for: on a picture, on a
/// caption or between the items.
class NSCollectionViewEx final : public QListView
{
    Q_OBJECT
public:
    explicit NSCollectionViewEx(QWidget* parent = nullptr);

    /// The menu; it is not owned.
    void setMenu(QMenu* menu) { _menu = menu; }
    [[nodiscard]] QMenu* menuForEvent() const { return _menu; }

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QMenu* _menu = nullptr;
};
