#include "Window/MainWindow.h"

#include "Base/Program.h"
#include "Window/BrowserPane.h"
#include "Window/DeviceBox.h"
#include "Window/EmptyState.h"
#include "Window/Icons.h"
#include "Window/PhotoGrid.h"
#include "Window/ProblemLine.h"
#include "Window/ScreenRoom.h"
#include "Window/SourceList.h"
#include "Window/StatusBar.h"
#include "Window/TrackTable.h"
#include "Window/Views/PhotoListView.h"
#include "Window/Views/RowTableView.h"
#include "Window/Views/SourceTreeView.h"

#include <QAction>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QSettings>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>

namespace
{
constexpr QSize UsualSize(1080, 700);
constexpr QSize SmallestSize(760, 480);
constexpr int SourceListWidth = 230;
constexpr int BrowserHeight = 190;
constexpr int SearchWidth = 240;

const QString FrameKey = QStringLiteral("MainWindow");
const QString SplitKey = QStringLiteral("_sv");
const QString BrowserSplitKey = QStringLiteral("_svRight");
const QString ColumnsKey = QStringLiteral("_tableView");

/// Beside the settings, in a file of its own: it says how the window lies, and may be lost.
QSettings layoutStore()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, Program::briefName(),
                     QStringLiteral("Window"));
}

QFrame* makeLine()
{
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    line->setFixedHeight(1);
    return line;
}

QSplitter* makeSplitter(Qt::Orientation orientation, const char* name)
{
    auto* splitter = new QSplitter(orientation);
    splitter->setObjectName(QString::fromLatin1(name));
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    return splitter;
}
} // namespace

MainWindow::MainWindow(TrackBrowser& browser)
    : _devices(new DeviceBox)
    , _sf(new QLineEdit)
    , _sources(new SourceList)
    , _vBrowser(new BrowserPane(browser))
    , _tracks(new TrackTable)
    , _scv(new PhotoGrid)
    , _problems(new ProblemLine)
    , _status(new StatusBar)
    , _sv(makeSplitter(Qt::Horizontal, "_sv"))
    , _svRight(makeSplitter(Qt::Vertical, "_svRight"))
    , _pages(new QStackedWidget)
{
    setObjectName(QStringLiteral("_window"));
    setWindowTitle(Program::fullName());
    setWindowIcon(Icons::named(QStringLiteral("zell-transfer")));

    auto* empty = new EmptyState;
    connect(empty, &EmptyState::helpClicked, this, &MainWindow::helpClicked);
    _empty = empty;
    _library = makeLibrary();
    _pages->addWidget(_empty);
    _pages->addWidget(_library);

    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeHeader());
    layout->addWidget(makeLine());
    layout->addWidget(_pages, 1);
    layout->addWidget(makeLine());
    layout->addWidget(_status);
    setCentralWidget(central);
    fitToScreen();
    showLibrary(false);
    showTracks();
    showBrowser(false);
}

MainWindow::~MainWindow() = default;

void MainWindow::fitToScreen()
{
    // At a large scale the usual size is more than the screen has.
    const QSize room = ScreenRoom::of(*this);
    setMinimumSize(SmallestSize.boundedTo(room));
    resize(UsualSize.boundedTo(room));
}

QWidget* MainWindow::makeHeader()
{
    _sf->setObjectName(QStringLiteral("_sf"));
    _sf->setAccessibleName(tr("Search titles"));
    _sf->setPlaceholderText(tr("Search titles"));
    _sf->setClearButtonEnabled(true);
    _sf->addAction(Icons::named(QStringLiteral("search")), QLineEdit::LeadingPosition);
    _sf->setFixedWidth(SearchWidth);
    auto* escape = new QShortcut(Qt::Key_Escape, _sf, _sf, &QLineEdit::clear);
    escape->setContext(Qt::WidgetShortcut);
    auto* header = new QWidget;
    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(12, 8, 12, 8);
    layout->addWidget(_devices);
    layout->addStretch();
    layout->addWidget(_sf);
    return header;
}

QWidget* MainWindow::makeLibrary()
{
    _svRight->addWidget(_vBrowser);
    _svRight->addWidget(_tracks);
    _svRight->setStretchFactor(1, 1);
    _svRight->setSizes({BrowserHeight, UsualSize.height() - BrowserHeight});

    auto* right = new QWidget;
    auto* layout = new QVBoxLayout(right);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(_problems);
    layout->addWidget(_svRight, 1);
    layout->addWidget(_scv, 1);

    _sv->addWidget(_sources);
    _sv->addWidget(right);
    _sv->setStretchFactor(1, 1);
    _sv->setSizes({SourceListWidth, UsualSize.width() - SourceListWidth});
    return _sv;
}

void MainWindow::showLibrary(bool show)
{
    _pages->setCurrentWidget(show ? _library : _empty);
    _sf->setEnabled(show);
}

void MainWindow::showTracks()
{
    _svRight->show();
    _scv->hide();
}

void MainWindow::showPhotos()
{
    _scv->show();
    _svRight->hide();
}

void MainWindow::showBrowser(bool show)
{
    // The splitter forgets where the divider was when what is above it goes.
    const bool shown = _vBrowser->isVisibleTo(_svRight);
    if (shown && !show)
        _browserSplit = _svRight->saveState();
    _vBrowser->setVisible(show);
    if (show && !shown)
        _svRight->restoreState(_browserSplit);
    chainFocus(show);
}

void MainWindow::chainFocus(bool withBrowser)
{
    QWidget* last = _sources->outlineView();
    const auto then = [&last](QWidget* next) {
        QWidget::setTabOrder(last, next);
        last = next;
    };
    if (withBrowser) {
        then(_vBrowser->genreView());
        then(_vBrowser->artistView());
        then(_vBrowser->albumView());
    }
    then(_tracks->tableView());
    then(_scv->collectionView());
}

void MainWindow::restoreLayout()
{
    const QSettings settings = layoutStore();
    restoreGeometry(settings.value(FrameKey).toByteArray());
    _sv->restoreState(settings.value(SplitKey).toByteArray());
    _browserSplit = settings.value(BrowserSplitKey).toByteArray();
    _svRight->restoreState(_browserSplit);
    _tracks->tableView()->horizontalHeader()->restoreState(
        settings.value(ColumnsKey).toByteArray());
}

void MainWindow::saveLayout()
{
    QSettings settings = layoutStore();
    settings.setValue(FrameKey, saveGeometry());
    settings.setValue(SplitKey, _sv->saveState());
    // A hidden browser must not be remembered as a divider at the top.
    if (_vBrowser->isVisibleTo(_svRight))
        _browserSplit = _svRight->saveState();
    settings.setValue(BrowserSplitKey, _browserSplit);
    settings.setValue(ColumnsKey, _tracks->tableView()->horizontalHeader()->saveState());
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (_mayClose && !_mayClose()) {
        event->ignore();
        return;
    }
    saveLayout();
    event->accept();
}
