#include "Window/StatusBar.h"

#include "Window/ExportButton.h"
#include "Window/Icons.h"
#include "Window/ShownText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <climits>

namespace
{
constexpr int StepsPerItem = 1000; ///< the bar counts in whole numbers, a copy in fractions
constexpr int LevelWidth = 220;
constexpr int ButtonWidth = 108;

template <typename Button>
Button* makeButton(const QString& name, const QString& text, const QIcon& icon)
{
    auto* button = new Button(icon, text);
    button->setObjectName(name);
    button->setAccessibleName(text);
    button->setMinimumWidth(ButtonWidth);
    button->setIconSize(QSize(18, 18));
    return button;
}
} // namespace

StatusBar::StatusBar(QWidget* parent)
    : QWidget(parent)
    , _tfInfo(new QLabel)
    , _elsewhere(new QLabel)
    , _failureLine(new QToolButton)
    , _li(new QProgressBar)
    , _imgStart(Icons::named(QStringLiteral("start")))
    , _imgStop(Icons::named(QStringLiteral("stop")))
{
    _failureLine->setObjectName(QStringLiteral("_btnFailures"));
    _failureLine->setAutoRaise(true);
    _failureLine->setIcon(Icons::named(QStringLiteral("warning")));
    _failureLine->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    _failureLine->setCursor(Qt::PointingHandCursor);
    _failureLine->hide();
    _li->setObjectName(QStringLiteral("_li"));
    _li->setAccessibleName(tr("Progress"));
    _li->setFixedWidth(LevelWidth);
    _li->setTextVisible(false);
    _li->hide();
    _btnPlay = makeButton<QPushButton>(QStringLiteral("_btnPlay"), tr("Play"),
                                       Icons::named(QStringLiteral("play")));
    _btnPlay->setToolTip(tr("Play the selected track"));
    _btnExport = makeButton<ExportButton>(QStringLiteral("_btnExport"), tr("Export"), _imgStart);
    _btnExport->setDefault(true);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 8, 12, 8);
    layout->setSpacing(10);
    layout->addLayout(makeLines(), 1);
    layout->addWidget(_failureLine);
    layout->addWidget(_li);
    layout->addWidget(_btnPlay);
    layout->addWidget(_btnExport);
    connect(_btnPlay, &QPushButton::clicked, this, &StatusBar::playClicked);
    connect(_btnExport, &QPushButton::clicked, this,
            [this] { Q_EMIT exportClicked(!_btnExport->isClickedByMouse()); });
    connect(_failureLine, &QToolButton::clicked, this, &StatusBar::failureLineClicked);
    setExporting(false);
}

QLayout* StatusBar::makeLines()
{
    _tfInfo->setObjectName(QStringLiteral("_tfInfo"));
    _tfInfo->setTextFormat(Qt::PlainText); // titles come from the device
    _tfInfo->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    _elsewhere->setObjectName(QStringLiteral("_tfElsewhere"));
    _elsewhere->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    _elsewhere->hide();
    auto* layout = new QVBoxLayout;
    layout->setSpacing(0);
    layout->addWidget(_tfInfo);
    layout->addWidget(_elsewhere);
    return layout;
}

void StatusBar::setInfo(const QString& text)
{
    const QString shown = ShownText::of(text);
    _tfInfo->setText(shown);
    _tfInfo->setToolTip(shown.toHtmlEscaped());
}

QString StatusBar::info() const
{
    return _tfInfo->text();
}

void StatusBar::setFailureLine(const QString& text)
{
    _failureLine->setText(ShownText::of(text));
    _failureLine->setAccessibleName(_failureLine->text());
    _failureLine->setToolTip(tr("Show what was not copied, and why"));
    _failureLine->setVisible(!text.isEmpty());
}

QString StatusBar::failureLine() const
{
    return _failureLine->text();
}

void StatusBar::showLevel(int maximum)
{
    // More items than fit still show how far the job is.
    _li->setMaximum(int(std::min<qint64>(qint64(maximum) * StepsPerItem, INT_MAX)));
    _items = std::max(1, maximum);
    _li->setValue(0);
    _li->show();
}

void StatusBar::setLevel(double value)
{
    // A device may claim a size of nothing for a file, and its copy is then infinitely far.
    const double fraction = value > 0 ? std::min(value / _items, 1.0) : 0.0;
    _li->setValue(int(fraction * _li->maximum()));
}

void StatusBar::hideLevel()
{
    _li->hide();
}

void StatusBar::setExporting(bool exporting)
{
    _isExporting = exporting;
    showButton();
}

void StatusBar::setChosen(int chosen, int elsewhere)
{
    _chosen = chosen;
    showButton();
    _elsewhere->setText(tr("%n more are checked elsewhere", nullptr, elsewhere));
    _elsewhere->setVisible(elsewhere > 0);
}

void StatusBar::showButton()
{
    _btnExport->setIcon(_isExporting ? _imgStop : _imgStart);
    _btnExport->setText(_isExporting  ? tr("Stop")
                        : _chosen > 0 ? tr("Export %L1").arg(_chosen)
                                      : tr("Export"));
    _btnExport->setAccessibleName(_btnExport->text());
    _btnExport->setToolTip(_isExporting ? tr("Stop the export at the next chunk")
                                        : tr("Copy the checked tracks or the selected photos"));
}

void StatusBar::setButtonsEnabled(bool exportEnabled, bool playEnabled)
{
    _btnExport->setEnabled(exportEnabled);
    _btnPlay->setEnabled(playEnabled);
}
