#include "Window/ProblemLine.h"

#include "Window/Dialogs/ProblemAlert.h"
#include "Window/Dialogs/WrappedLabel.h"
#include "Window/Icons.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace
{
constexpr int SignSize = 20;
}

ProblemLine::ProblemLine(QWidget* parent)
    : QWidget(parent)
    , _words(new WrappedLabel)
    , _details(new QPushButton(tr("De&tails…")))
{
    setObjectName(QStringLiteral("_vProblems"));
    auto* sign = new QLabel;
    sign->setPixmap(Icons::named(QStringLiteral("warning"))
                        .pixmap(QSize(SignSize, SignSize), devicePixelRatioF()));
    _words->setObjectName(QStringLiteral("_tfProblems"));
    _words->setTextFormat(Qt::PlainText); // names in it come from the device
    _details->setObjectName(QStringLiteral("_btnProblems"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 6, 12, 6);
    layout->setSpacing(10);
    layout->addWidget(sign);
    layout->addWidget(_words, 1);
    layout->addWidget(_details);
    connect(_details, &QPushButton::clicked, this,
            [this] { ProblemAlert::show(*window(), _problems); });
    hide();
}

void ProblemLine::setProblems(std::vector<Problem> problems)
{
    _problems = std::move(problems);
    setVisible(!_problems.empty());
    if (_problems.empty())
        return;
    QString text = _problems.front().words;
    if (_problems.size() > 1)
        text = tr("%1 (and %n more problem(s))", nullptr, int(_problems.size()) - 1).arg(text);
    _words->setText(text);
    // A screen reader hears what it is about when the button has the keyboard.
    _details->setAccessibleDescription(text);
}
