#include "Window/Views/CheckDelegate.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

namespace
{
constexpr double BoxSize = 14;
constexpr double Roundness = 3.5;
constexpr double TickWidth = 2;

QRectF boxIn(const QRect& cell)
{
    QRectF box(0, 0, BoxSize, BoxSize);
    box.moveCenter(QRectF(cell).center());
    // Whole pixels and a half: a line of one pixel is then one pixel wide.
    box.moveTopLeft(QPointF(int(box.left()) + 0.5, int(box.top()) + 0.5));
    return box;
}

void drawTick(QPainter& painter, const QRectF& box, const QColor& color)
{
    painter.setPen(QPen(color, TickWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF start = box.topLeft();
    painter.drawPolyline(QPolygonF(
        {start + QPointF(3.5, 7.3), start + QPointF(6, 9.8), start + QPointF(10.7, 4.4)}));
}
} // namespace

void CheckDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    const QStyle* style = ground.widget ? ground.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &ground, painter, ground.widget);

    const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    const QPalette& palette = option.palette;
    const QRectF box = boxIn(option.rect);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QColor line = palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    if (!checked)
        line.setAlphaF(selected ? 0.9F : 0.5F);
    const QColor fill = selected ? palette.color(QPalette::HighlightedText)
                                 : palette.color(QPalette::Active, QPalette::Highlight);
    painter->setPen(QPen(checked ? fill : line, 1));
    painter->setBrush(checked ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter->drawRoundedRect(box, Roundness, Roundness);
    if (checked)
        drawTick(*painter, box,
                 palette.color(QPalette::Active,
                               selected ? QPalette::Highlight : QPalette::HighlightedText));
    painter->restore();
}

bool CheckDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                const QStyleOptionViewItem& /*option*/, const QModelIndex& index)
{
    const auto toggle = [&] {
        const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        return model->setData(index, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    };
    // A press selects the row; the release checks it.
    return event->type() == QEvent::MouseButtonRelease &&
           static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton && toggle();
}
