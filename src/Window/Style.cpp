#include "Window/Style.h"

#include "Window/Views/FocusRing.h"
#include "Window/Views/RowTableView.h"
#include "Window/Views/SourceTreeView.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTextEdit>

#include <algorithm>

namespace
{
constexpr int ScrollBarExtent = 12;
constexpr int ShortestThumb = 32;
constexpr int TextMargin = 5;

/// A colour of the palette, thinned.
QColor thin(const QPalette& palette, QPalette::ColorRole role, float opacity)
{
    QColor color = palette.color(role);
    color.setAlphaF(opacity);
    return color;
}

void drawHeaderSection(const QStyleOption& option, QPainter& painter)
{
    const auto& header = static_cast<const QStyleOptionHeader&>(option);
    painter.fillRect(option.rect, option.palette.window());
    painter.setPen(thin(option.palette, QPalette::WindowText, 0.18F));
    painter.drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    const bool last = header.position == QStyleOptionHeader::End ||
                      header.position == QStyleOptionHeader::OnlyOneSection;
    if (!last) {
        painter.setPen(thin(option.palette, QPalette::WindowText, 0.10F));
        painter.drawLine(option.rect.topRight() + QPoint(0, 5),
                         option.rect.bottomRight() - QPoint(0, 5));
    }
}

/// A text of several lines, which has no row or button to mark.
bool isText(const QWidget* widget)
{
    return qobject_cast<const QTextEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget);
}

/// The ground of the view that a scroll bar belongs to, which stands two parents above it.
QPalette::ColorRole groundBeside(const QWidget* scrollBar)
{
    const QWidget* container = scrollBar ? scrollBar->parentWidget() : nullptr;
    const auto* view =
        qobject_cast<const QAbstractScrollArea*>(container ? container->parentWidget() : nullptr);
    return view ? view->viewport()->backgroundRole() : QPalette::Base;
}

/// The thumb between its ends; the bars have no buttons.
QRect thumb(const QStyleOptionSlider& bar)
{
    const bool horizontal = bar.orientation == Qt::Horizontal;
    const int length = horizontal ? bar.rect.width() : bar.rect.height();
    const qint64 range = qint64(bar.maximum) - bar.minimum;
    int size = length;
    if (range > 0)
        size = int(qint64(bar.pageStep) * length / (range + bar.pageStep));
    size = std::clamp(size, std::min(ShortestThumb, length), length);
    const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      length - size, bar.upsideDown);
    if (!horizontal)
        return {bar.rect.left(), bar.rect.top() + start, bar.rect.width(), size};
    const QRect leftToRight(bar.rect.left() + start, bar.rect.top(), size, bar.rect.height());
    return QStyle::visualRect(bar.direction, bar.rect, leftToRight);
}
} // namespace

Style::Style()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

void Style::install()
{
    if (QApplication::style()->name() == u"fusion")
        QApplication::setStyle(new Style);
}

QPixmap Style::generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap,
                                   const QStyleOption* option) const
{
    if (mode != QIcon::Selected)
        return QProxyStyle::generatedIconPixmap(mode, pixmap, option);
    QPixmap tinted = pixmap;
    QPainter painter(&tinted);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(tinted.rect(), QApplication::palette().highlightedText());
    return tinted;
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return ScrollBarExtent;
    case PM_FocusFrameHMargin: // stands before and after the text of a cell
        return TextMargin;
    case PM_HeaderMargin:
        return TextMargin + 1;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* result) const
{
    switch (hint) {
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ScrollBar_LeftClickAbsolutePosition:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                            SubControl part, const QWidget* widget) const
{
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || !bar)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const QRect grip = thumb(*bar);
    const bool horizontal = bar->orientation == Qt::Horizontal;
    const QRect before =
        horizontal ? QRect(bar->rect.topLeft(), QPoint(grip.left() - 1, bar->rect.bottom()))
                   : QRect(bar->rect.topLeft(), QPoint(bar->rect.right(), grip.top() - 1));
    const QRect after =
        horizontal ? QRect(QPoint(grip.right() + 1, bar->rect.top()), bar->rect.bottomRight())
                   : QRect(QPoint(bar->rect.left(), grip.bottom() + 1), bar->rect.bottomRight());
    const bool mirrored = horizontal && bar->direction == Qt::RightToLeft;
    switch (part) {
    case SC_ScrollBarGroove:
        return bar->rect;
    case SC_ScrollBarSlider:
        return grip;
    case SC_ScrollBarSubPage:
        return mirrored ? after : before;
    case SC_ScrollBarAddPage:
        return mirrored ? before : after;
    default:
        return {};
    }
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                               QPainter* painter, const QWidget* widget) const
{
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && bar)
        drawScrollBar(*bar, *painter, widget);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    // The style below draws it only after a Tab, and not for each kind of control.
    if (control == CC_ComboBox && (option->state & State_HasFocus))
        FocusRing::draw(*painter, option->rect.adjusted(2, 2, -2, -2), option->palette, false);
}

void Style::drawScrollBar(const QStyleOptionSlider& bar, QPainter& painter,
                          const QWidget* widget) const
{
    painter.save();
    painter.fillRect(bar.rect, bar.palette.brush(groundBeside(widget)));
    if (bar.maximum > bar.minimum) {
        const bool held = (bar.activeSubControls & SC_ScrollBarSlider) &&
                          (bar.state & (State_Sunken | State_MouseOver));
        const QRectF grip = QRectF(thumb(bar)).adjusted(3, 3, -3, -3);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(thin(bar.palette, QPalette::Text, held ? 0.5F : 0.28F));
        const double radius = std::min(grip.width(), grip.height()) / 2;
        painter.drawRoundedRect(grip, radius, radius);
    }
    painter.restore();
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const
{
    if (element == CE_HeaderSection) {
        painter->save();
        drawHeaderSection(*option, *painter);
        painter->restore();
    } else if (element == CE_HeaderEmptyArea) {
        painter->fillRect(option->rect, option->palette.window());
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
    if (!(option->state & State_HasFocus))
        return;
    if (element == CE_PushButton)
        FocusRing::draw(*painter, option->rect.adjusted(2, 2, -2, -2), option->palette, false);
    else if (element == CE_ShapedFrame && isText(widget))
        FocusRing::draw(*painter, option->rect, option->palette, false);
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const
{
    // The source list draws the ground of its rows itself, over their whole width.
    const bool ground = element == PE_PanelItemViewRow || element == PE_PanelItemViewItem;
    if (ground && qobject_cast<const SourceTreeView*>(widget))
        return;
    if (element == PE_FrameFocusRect) {
        // Lists of rows draw it around the whole row.
        if (!qobject_cast<const RowTableView*>(widget) &&
            !qobject_cast<const SourceTreeView*>(widget))
            FocusRing::draw(*painter, option->rect, option->palette,
                            (option->state & State_Selected) != 0);
        return;
    }
    if (element == PE_PanelScrollAreaCorner)
        painter->fillRect(option->rect, option->palette.base());
    else
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}
