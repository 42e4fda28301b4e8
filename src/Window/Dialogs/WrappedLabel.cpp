#include "Window/Dialogs/WrappedLabel.h"

#include <QPainter>
#include <QStyle>

namespace
{
constexpr int UsualWidth = 460;
constexpr int TextFlags = int(Qt::AlignLeft) | int(Qt::AlignTop) | int(Qt::TextWrapAnywhere);
constexpr int NoLimit = 100'000;
} // namespace

WrappedLabel::WrappedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize WrappedLabel::sizeHint() const
{
    return {UsualWidth, heightForWidth(UsualWidth)};
}

QSize WrappedLabel::minimumSizeHint() const
{
    return {UsualWidth / 2, fontMetrics().height()};
}

int WrappedLabel::heightForWidth(int width) const
{
    return fontMetrics().boundingRect(QRect(0, 0, width, NoLimit), TextFlags, text()).height();
}

void WrappedLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(rect(), TextFlags, text());
}
