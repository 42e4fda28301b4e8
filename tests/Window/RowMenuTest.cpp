// Context menus first select the row under the mouse.

#include "Window/Views/RowTableView.h"
#include "Window/Views/SourceTreeView.h"
#include "support/EventLoop.h"
#include "support/Hands.h"

#include <QStringListModel>

#include <gtest/gtest.h>

namespace
{
template <typename View>
class RowMenuTest : public testing::Test
{
protected:
    RowMenuTest()
    {
        view.setModel(&model);
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        menu.addAction("Something");
        view.setMenu(&menu);
        view.resize(300, 300);
        view.show();
        EXPECT_TRUE(waitUntil([this] { return view.isActiveWindow(); }));
    }
    void select(int row)
    {
        view.selectionModel()->select(model.index(row),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    QList<int> selected() const
    {
        QList<int> rows;
        for (const QModelIndex& index : view.selectionModel()->selectedRows())
            rows.append(index.row());
        std::sort(rows.begin(), rows.end());
        return rows;
    }
    void rightClick(int row)
    {
        Hands::clickCell(&view, model.index(row), Hands::Right);
        EXPECT_TRUE(waitUntil([this] { return menu.isVisible(); }));
    }

    QStringListModel model{{"A", "B", "C", "D"}};
    QMenu menu;
    View view;
};

using Views = testing::Types<RowTableView, SourceTreeView>;
} // namespace

TYPED_TEST_SUITE(RowMenuTest, Views);

TYPED_TEST(RowMenuTest, RightClickOnAnUnselectedRowSelectsItAlone)
{
    this->select(0);
    this->select(1);
    this->rightClick(2);
    EXPECT_EQ(this->selected(), QList<int>({2}));
}

TYPED_TEST(RowMenuTest, RightClickOnASelectedRowKeepsTheWholeSelection)
{
    this->select(0);
    this->select(1);
    this->select(3);
    this->rightClick(1);
    EXPECT_EQ(this->selected(), QList<int>({0, 1, 3}));
}

TYPED_TEST(RowMenuTest, TheMenuKeyIsAboutTheCurrentRow)
{
    this->view.setCurrentIndex(this->model.index(3));
    Hands::key("Menu");
    EXPECT_TRUE(waitUntil([this] { return this->menu.isVisible(); }));
    EXPECT_EQ(this->selected(), QList<int>({3}));
}
