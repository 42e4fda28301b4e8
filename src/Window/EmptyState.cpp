#include "Window/EmptyState.h"

#include "Window/Icons.h"

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr QSize PictureSize(160, 160);
constexpr int TextWidth = 460;
constexpr double HeadingScale = 1.6;

/// Its own size at any scale of the screen.
class Picture final : public QWidget
{
public:
    Picture() { setFixedSize(PictureSize); }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        Icons::named(QStringLiteral("empty")).paint(&painter, rect());
    }
};

QLabel* makeText(const QString& text)
{
    auto* label = new QLabel(text);
    label->setAlignment(Qt::AlignHCenter);
    label->setWordWrap(true);
    label->setFixedWidth(TextWidth);
    return label;
}

/// A centred label is given no height for its width, so it has to have it.
void fitHeight(QLabel& label)
{
    label.setMinimumHeight(label.heightForWidth(TextWidth));
}
} // namespace

EmptyState::EmptyState(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("_vEmpty"));
    auto* heading = makeText(tr("Connect a player or phone"));
    QFont large = heading->font();
    large.setPointSizeF(large.pointSizeF() * HeadingScale);
    large.setBold(true);
    heading->setFont(large);
    auto* text = makeText(
        tr("Its music, movies, books and pictures show here as soon as it is connected. A player "
           "must be mounted as a volume; a phone must be unlocked and trust this computer. "
           "Nothing is ever written to the device."));
    fitHeight(*heading);
    fitHeight(*text);
    auto* help = new QPushButton(Icons::named(QStringLiteral("help")), tr("How to &connect"));
    help->setObjectName(QStringLiteral("_btnHowToConnect"));
    connect(help, &QPushButton::clicked, this, &EmptyState::helpClicked);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(14);
    layout->addStretch(2);
    layout->addWidget(new Picture, 0, Qt::AlignHCenter);
    layout->addWidget(heading, 0, Qt::AlignHCenter);
    layout->addWidget(text, 0, Qt::AlignHCenter);
    layout->addSpacing(6);
    layout->addWidget(help, 0, Qt::AlignHCenter);
    layout->addStretch(3);
}
