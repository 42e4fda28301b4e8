#include "Window/Dialogs/ScrollingDialog.h"

#include "Window/ScreenRoom.h"

#include <QEvent>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace
{
constexpr QSize SmallestContent(240, 80);

/// As large as what it shows, where there is room for that.
class ContentArea final : public QScrollArea
{
public:
    ContentArea()
    {
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        return widget() ? widget()->sizeHint() : QScrollArea::sizeHint();
    }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return SmallestContent.boundedTo(sizeHint());
    }
};
} // namespace

ScrollingDialog::ScrollingDialog(QWidget* parent)
    : QDialog(parent)
    , _area(new ContentArea)
{
}

void ScrollingDialog::setParts(QWidget* content, QWidget* foot)
{
    _area->setWidget(content);
    content->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(_area, 1);
    layout->addWidget(foot);
}

QSize ScrollingDialog::fittingSize() const
{
    const QSize room = ScreenRoom::of(*this);
    QSize size = sizeHint();
    if (size.height() > room.height())
        size.rwidth() += style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return size.boundedTo(room);
}

bool ScrollingDialog::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest && object == _area->widget() && isVisible()) {
        _area->updateGeometry();
        resize(size().expandedTo(fittingSize()));
    }
    return QDialog::eventFilter(object, event);
}

void ScrollingDialog::setVisible(bool visible)
{
    if (visible && !testAttribute(Qt::WA_Resized)) {
        ensurePolished();
        resize(fittingSize());
    }
    QDialog::setVisible(visible);
}
