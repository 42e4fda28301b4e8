#pragma once

#include <QMainWindow>

#include <functional>

class BrowserPane;
class DeviceBox;
class PhotoGrid;
class ProblemLine;
class QLineEdit;
class QSplitter;
class QStackedWidget;
class SourceList;
class StatusBar;
class TrackBrowser;
class TrackTable;

/// The one window: its parts and how they lie. What they do together is the controller's.
class MainWindow final : public QMainWindow
{
    Q_OBJECT
public:
    /// The browser pane chooses in `browser`, which outlives the window.
    explicit MainWindow(TrackBrowser& browser);
    ~MainWindow() override;

    [[nodiscard]] DeviceBox& devices() { return *_devices; }
    [[nodiscard]] QLineEdit& searchField() { return *_sf; }
    [[nodiscard]] SourceList& sources() { return *_sources; }
    [[nodiscard]] BrowserPane& browser() { return *_vBrowser; }
    [[nodiscard]] TrackTable& tracks() { return *_tracks; }
    [[nodiscard]] PhotoGrid& photos() { return *_scv; }
    [[nodiscard]] ProblemLine& problems() { return *_problems; }
    [[nodiscard]] StatusBar& status() { return *_status; }

    /// Shows the library, or what to do without a device.
    void showLibrary(bool show);
    /// The track area, or the photo grid in its place.
    void showTracks();
    void showPhotos();
    /// Shows or hides the browser above the tracks, and chains the keyboard focus accordingly.
    void showBrowser(bool show);

    /// Size, dividers and columns as the last run left them.
    void restoreLayout();
    void saveLayout();

    /// Asked when the window is to close; false keeps it open.
    void setMayClose(const std::function<bool()>& mayClose) { _mayClose = mayClose; }

Q_SIGNALS:
    void helpClicked();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* makeHeader();
    QWidget* makeLibrary();
    void chainFocus(bool withBrowser);
    void fitToScreen();

    DeviceBox* _devices;
    QLineEdit* _sf;
    SourceList* _sources;
    BrowserPane* _vBrowser;
    TrackTable* _tracks;
    PhotoGrid* _scv;
    ProblemLine* _problems;
    StatusBar* _status;
    QSplitter* _sv;
    QSplitter* _svRight;
    QStackedWidget* _pages;
    QWidget* _library = nullptr;
    QByteArray _browserSplit; ///< the divider below the browser, as it was when that last showed
    QWidget* _empty = nullptr;
    std::function<bool()> _mayClose;
};
