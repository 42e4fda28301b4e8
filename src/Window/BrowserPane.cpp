#include "Window/BrowserPane.h"

#include "Window/TrackBrowser.h"
#include "Window/Views/RowTableView.h"

#include <QEvent>
#include <QHeaderView>
#include <QStyle>
#include <QVBoxLayout>

namespace
{
constexpr int Gap = 1;
}

BrowserPane::BrowserPane(TrackBrowser& browser, QWidget* parent)
    : QWidget(parent)
    , _browser(browser)
{
    setObjectName(QStringLiteral("_vBrowser"));
    _columns = {makeColumn(QStringLiteral("Genre"), tr("Genre"), QStringLiteral("_svGenre"),
                           QStringLiteral("_tvGenre")),
                makeColumn(QStringLiteral("Artist"), tr("Artist"), QStringLiteral("_svArtist"),
                           QStringLiteral("_tvArtist")),
                makeColumn(QStringLiteral("Album"), tr("Album"), QStringLiteral("_svAlbum"),
                           QStringLiteral("_tvAlbum"))};
    const auto follow = [this](const Column& column, void (BrowserPane::*changed)()) {
        connect(column.table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                changed);
    };
    follow(_columns[0], &BrowserPane::genreChanged);
    follow(_columns[1], &BrowserPane::artistChanged);
    follow(_columns[2], &BrowserPane::albumChanged);
}

BrowserPane::Column BrowserPane::makeColumn(const QString& level, const QString& title,
                                            const QString& scrollViewName, const QString& tableName)
{
    Column column;
    column.scrollView = new QWidget(this);
    column.scrollView->setObjectName(scrollViewName);
    column.table = new RowTableView;
    column.table->setObjectName(tableName);
    column.table->setAccessibleName(title);
    column.table->setSelectionMode(QAbstractItemView::SingleSelection);
    column.table->setAlternatingRowColors(false);
    column.table->setTabKeyNavigation(false);
    column.table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    column.keys = new KeyListModel(level, this);
    column.table->setModel(column.keys);
    column.table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    auto* layout = new QVBoxLayout(column.scrollView);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(column.table);
    return column;
}

void BrowserPane::reload()
{
    _columns[0].keys->setKeys(_browser.genres());
    if (_browser.genres().isEmpty())
        genreChanged();
    else
        _columns[0].table->selectRow(0);
}

void BrowserPane::genreChanged()
{
    _browser.chooseGenre(_columns[0].table->selectedRow());
    _columns[1].keys->setKeys(_browser.artists());
    if (_browser.artists().isEmpty())
        artistChanged();
    else
        _columns[1].table->selectRow(0);
}

void BrowserPane::artistChanged()
{
    _browser.chooseArtist(_columns[1].table->selectedRow());
    _columns[2].keys->setKeys(_browser.albums());
    // Without an album there is no row whose choice would change the tracks.
    if (!_browser.albums().isEmpty())
        _columns[2].table->selectRow(0);
}

void BrowserPane::albumChanged()
{
    _browser.chooseAlbum(_columns[2].table->selectedRow());
    Q_EMIT tracksChanged();
}

void BrowserPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placeColumns();
}

void BrowserPane::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        placeColumns();
}

void BrowserPane::placeColumns()
{
    const int width = (this->width() - 2 * Gap) / int(_columns.size());
    int left = 0;
    for (const Column& column : _columns) {
        column.scrollView->setGeometry(
            QStyle::visualRect(layoutDirection(), rect(), QRect(left, 0, width, height())));
        left += width + Gap;
    }
}
