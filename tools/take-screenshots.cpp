// Takes the pictures of the window that the documentation shows: on a sample player that is
// mounted for this program alone, at the scale that QT_SCALE_FACTOR sets.

#include "Base/PathName.h"
#include "Export/Config.h"
#include "Window/Appearance.h"
#include "Window/DeviceBox.h"
#include "Window/Help/HelpWindow.h"
#include "Window/JobController.h"
#include "Window/MainWindowController.h"
#include "Window/SourceList.h"
#include "Window/Style.h"
#include "Window/TrackTable.h"
#include "Window/Views/RowTableView.h"
#include "Window/Views/SourceTreeView.h"
#include "support/Files.h"
#include "support/LargeLibrary.h"
#include "support/PrivateMounts.h"
#include "support/SamplePlayer.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>

#include <cstdio>

namespace
{
constexpr int SettleMilliseconds = 400;
constexpr QSize PictureSize(1080, 700);
constexpr QSize NarrowSize(900, 600);
constexpr int LargeTracks = 100'000;

void settle(int milliseconds = SettleMilliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (!deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

class Photographer
{
public:
    Photographer(const QString& folder, const QString& home)
        : _folder(folder)
        , _player(home + QStringLiteral("/player"))
        , _large(home + QStringLiteral("/large"))
        , _mountPoint(home + QStringLiteral("/IPOD"))
        , _out(home + QStringLiteral("/out"))
    {
    }

    void takeAll();

private:
    MainWindow& window() { return _controller.window(); }
    void take(const QString& name) { grab(window(), name); }
    void grab(QWidget& widget, const QString& name)
    {
        settle();
        const QString path = PathName::join(_folder, name + QStringLiteral(".png"));
        if (!widget.grab().save(path))
            std::fprintf(stderr, "%s could not be written\n", qPrintable(path));
    }
    /// Takes the dialog that opens next, and closes it.
    void takeDialog(const QString& name, const std::function<void()>& open)
    {
        QTimer::singleShot(SettleMilliseconds, &window(), [this, name] {
            if (QWidget* dialog = QApplication::activeModalWidget()) {
                grab(*dialog, name);
                dialog->close();
            }
        });
        open();
        settle();
    }
    /// An export that stands still at a question half-way through.
    void takeExport();
    void select(const QString& label)
    {
        QAbstractItemView* list = window().sources().outlineView();
        const QModelIndexList found =
            list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, label, 1,
                                 Qt::MatchStartsWith | Qt::MatchRecursive);
        if (!found.isEmpty())
            list->setCurrentIndex(found.first());
        settle();
    }

    QString _folder;
    QString _player;
    QString _large;
    QString _mountPoint;
    QString _out;
    MainWindowController _controller;
};

void Photographer::takeExport()
{
    const QString there = _out + QStringLiteral("/Music/The Lantern Makers/Letters Home/");
    Files::write(there + QStringLiteral("Unsent 4.mp3"), "older");
    Files::write(there + QStringLiteral("Unsent 4.m4a"), "older");
    QFile::remove(
        _player + QStringLiteral("/iPod_Control/Music/F03/") +
        QDir(_player + QStringLiteral("/iPod_Control/Music/F03")).entryList(QDir::Files).value(0));
    _controller.perform(Command::exportCheckedTracks);
    settle();
    const auto answer = [](bool accept) {
        if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            accept ? dialog->accept() : dialog->reject();
    };
    if (QWidget* mode = QApplication::activeModalWidget())
        grab(*mode, QStringLiteral("export-mode"));
    answer(true);
    settle();
    take(QStringLiteral("exporting"));
    if (QWidget* question = QApplication::activeModalWidget())
        grab(*question, QStringLiteral("clash"));
    answer(true);
    settle(1500);
    answer(true); // the alert at the end
    take(QStringLiteral("failures"));
    takeDialog(QStringLiteral("report"), [this] { _controller.perform(Command::showReport); });
}

void Photographer::takeAll()
{
    for (int i = 0; i < int(Sections::Count); ++i) {
        const auto folder = Section(i);
        Config::instance().setFolderPath(folder,
                                         PathName::join(_out, Sections::folderName(folder)));
    }
    window().resize(PictureSize);
    _controller.start();
    take(QStringLiteral("empty"));
    HelpWindow* help = HelpWindow::showFor(window());
    help->search(QStringLiteral("playlist"));
    grab(*help, QStringLiteral("help"));
    help->close();

    SamplePlayer::write(_player);
    auto mount = PrivateMounts::Mount::bind(_player, _mountPoint);
    settle(1500);
    window().tracks().checkAll(true);
    window().tracks().tableView()->selectRow(3);
    take(QStringLiteral("music"));
    select(QStringLiteral("Road"));
    take(QStringLiteral("playlist"));
    select(QStringLiteral("Photo"));
    take(QStringLiteral("photos"));
    select(QStringLiteral("Music"));
    window().searchField().setText(QStringLiteral("o"));
    take(QStringLiteral("search"));
    window().searchField().clear();

    takeDialog(QStringLiteral("preferences"), [this] { _controller.perform(Command::showPref); });
    takeDialog(QStringLiteral("about"), [this] { _controller.perform(Command::showAbout); });
    takeExport();
    window().resize(NarrowSize);
    take(QStringLiteral("narrow"));
    window().resize(PictureSize);
    Appearance::apply(true);
    take(QStringLiteral("dark"));
    Appearance::apply(false);

    mount.reset();
    settle(1500);
    Files::write(_large + QStringLiteral("/iPod_Control/iTunes/iTunesDB"),
                 largeITunesDb(LargeTracks));
    mount = PrivateMounts::Mount::bind(_large, _mountPoint);
    settle(3000);
    take(QStringLiteral("large"));
}
} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: take-screenshots DIR\n");
        return 2;
    }
    PrivateMounts::enter();
    QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    for (const char* variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(variable, QFile::encodeName(home.filePath(QString::fromLatin1(variable))));
    QApplication application(argc, argv);
    Style::install();
    const QString folder = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    QDir().mkpath(folder);
    Photographer(folder, home.path()).takeAll();
    return 0;
}
