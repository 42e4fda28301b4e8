#pragma once

#include "Window/Models/KeyListModel.h"

#include <QWidget>

#include <array>

class RowTableView;
class TrackBrowser;

/// The browser: three lists, genre, artist and album, each narrowing the next. They share the
/// pane's width equally, with a gap of one point between neighbours.
class BrowserPane final : public QWidget
{
    Q_OBJECT
public:
    /// Chooses in `browser`, which outlives the pane.
    explicit BrowserPane(TrackBrowser& browser, QWidget* parent = nullptr);

    /// Shows the browser's genres and selects the first, which drives the lists below it and in
    /// the end the tracks. Without genres all lists are empty.
    void reload();

    [[nodiscard]] RowTableView* genreView() const { return _columns[0].table; }
    [[nodiscard]] RowTableView* artistView() const { return _columns[1].table; }
    [[nodiscard]] RowTableView* albumView() const { return _columns[2].table; }

Q_SIGNALS:
    /// An album row was chosen, so the browser's tracks are others now.
    void tracksChanged();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Column {
        QWidget* scrollView = nullptr;
        RowTableView* table = nullptr;
        KeyListModel* keys = nullptr;
    };

    Column makeColumn(const QString& level, const QString& title, const QString& scrollViewName,
                      const QString& tableName);
    void placeColumns();
    void genreChanged();
    void artistChanged();
    void albumChanged();

    TrackBrowser& _browser;
    std::array<Column, 3> _columns; ///< genre, artist, album
};
