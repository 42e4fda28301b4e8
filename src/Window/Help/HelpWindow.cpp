#include "Window/Help/HelpWindow.h"

#include "Base/Program.h"
#include "Window/Help/GuideView.h"
#include "Window/Icons.h"
#include "Window/ScreenRoom.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QShortcut>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{
constexpr QSize UsualSize(920, 680);
constexpr int ChaptersWidth = 230;
constexpr int SearchWidth = 220;
constexpr int FirstLevel = 2;
} // namespace

HelpWindow* HelpWindow::showFor(QWidget& window)
{
    auto* help = window.findChild<HelpWindow*>();
    if (!help)
        help = new HelpWindow(&window);
    help->show();
    help->raise();
    help->activateWindow();
    return help;
}

HelpWindow::HelpWindow(QWidget* parent)
    : QWidget(parent, Qt::Window)
    , _guide(new GuideView)
    , _chapters(new QListWidget)
    , _search(new QLineEdit)
    , _hits(new QLabel)
{
    setObjectName(QStringLiteral("_winHelp"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("%1 Help").arg(Program::briefName()));
    fillChapters();
    auto* parts = new QSplitter;
    parts->setHandleWidth(1);
    parts->setChildrenCollapsible(false);
    parts->addWidget(_chapters);
    parts->addWidget(_guide);
    parts->setStretchFactor(1, 1);
    parts->setSizes({ChaptersWidth, UsualSize.width() - ChaptersWidth});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeHeader());
    layout->addWidget(parts, 1);
    connect(_guide, &GuideView::hitsChanged, this, &HelpWindow::showHits);
    setShortcuts();
    resize(UsualSize.boundedTo(ScreenRoom::of(*this)));
    _guide->setFocus();
}

QWidget* HelpWindow::makeHeader()
{
    _search->setObjectName(QStringLiteral("_sfHelp"));
    _search->setPlaceholderText(tr("Search the guide"));
    _search->setAccessibleName(_search->placeholderText());
    _search->setClearButtonEnabled(true);
    _search->addAction(Icons::named(QStringLiteral("search")), QLineEdit::LeadingPosition);
    _search->setFixedWidth(SearchWidth);
    connect(_search, &QLineEdit::textChanged, _guide, &GuideView::search);
    connect(_search, &QLineEdit::returnPressed, _guide, [this] { _guide->goToHit(1); });
    _hits->setObjectName(QStringLiteral("_tfHits"));

    const bool mirrored = isRightToLeft();
    auto* back = makeButton(QStringLiteral("_btnBack"), tr("Back"), mirrored ? u"→" : u"←");
    auto* forward =
        makeButton(QStringLiteral("_btnForward"), tr("Forward"), mirrored ? u"←" : u"→");
    auto* previous = makeButton(QStringLiteral("_btnPrevious"), tr("Find Previous"), u"↑");
    auto* next = makeButton(QStringLiteral("_btnNext"), tr("Find Next"), u"↓");
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(back, &QToolButton::clicked, _guide, &GuideView::backward);
    connect(forward, &QToolButton::clicked, _guide, &GuideView::forward);
    connect(_guide, &GuideView::backwardAvailable, back, &QToolButton::setEnabled);
    connect(_guide, &GuideView::forwardAvailable, forward, &QToolButton::setEnabled);
    connect(previous, &QToolButton::clicked, _guide, [this] { _guide->goToHit(-1); });
    connect(next, &QToolButton::clicked, _guide, [this] { _guide->goToHit(1); });

    auto* header = new QWidget;
    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(12, 8, 12, 8);
    layout->addWidget(back);
    layout->addWidget(forward);
    layout->addStretch();
    layout->addWidget(_hits);
    layout->addWidget(_search);
    layout->addWidget(previous);
    layout->addWidget(next);
    return header;
}

QToolButton* HelpWindow::makeButton(const QString& name, const QString& text, QStringView sign)
{
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setText(sign.toString());
    button->setToolTip(text);
    button->setAccessibleName(text);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

void HelpWindow::fillChapters()
{
    _chapters->setObjectName(QStringLiteral("_lvChapters"));
    _chapters->setAccessibleName(tr("Chapters"));
    _chapters->setFrameShape(QFrame::NoFrame);
    for (const Guide::Chapter& chapter : _guide->guide().chapters()) {
        const bool first = chapter.level == FirstLevel;
        auto* item =
            new QListWidgetItem((first ? QString() : QStringLiteral("    ")) + chapter.title);
        item->setData(Qt::UserRole, chapter.anchor);
        item->setData(Qt::AccessibleTextRole, chapter.title);
        QFont font = _chapters->font();
        font.setBold(first);
        item->setFont(font);
        _chapters->addItem(item);
    }
    const auto show = [this](const QListWidgetItem* item) {
        _guide->showChapter(item->data(Qt::UserRole).toString());
    };
    connect(_chapters, &QListWidget::itemClicked, this, show);
    connect(_chapters, &QListWidget::itemActivated, this, show);
}

void HelpWindow::setShortcuts()
{
    const auto on = [this](auto keys, auto action) { // a standard key may stand for several
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    on(QKeySequence::Find, [this] {
        _search->setFocus(Qt::ShortcutFocusReason);
        _search->selectAll();
    });
    on(QKeySequence::FindNext, [this] { _guide->goToHit(1); });
    on(QKeySequence::FindPrevious, [this] { _guide->goToHit(-1); });
    on(QKeySequence::Back, [this] { _guide->backward(); });
    on(QKeySequence::Forward, [this] { _guide->forward(); });
    on(QKeySequence::Close, [this] { close(); });
    on(Qt::Key_Escape, [this] { escape(); });
}

void HelpWindow::search(const QString& text)
{
    _search->setText(text);
}

void HelpWindow::showHits()
{
    if (_search->text().isEmpty())
        _hits->clear();
    else if (_guide->hitCount() == 0)
        _hits->setText(tr("Not found"));
    else
        _hits->setText(tr("%1 of %2").arg(_guide->currentHit()).arg(_guide->hitCount()));
}

void HelpWindow::escape()
{
    if (_search->hasFocus() && !_search->text().isEmpty())
        _search->clear();
    else
        close();
}
