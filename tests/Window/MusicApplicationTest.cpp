// Files go to the real music application, started by a bus of the test's own.

#include "Device/Playlist.h"
#include "Export/MusicHandOver.h"
#include "Platform/RhythmboxLibrary.h"
#include "Window/Dialogs/RadioMatrix.h"
#include "support/PrivateBus.h"
#include "support/SoundFile.h"
#include "support/WindowFixture.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QRadioButton>
#include <QUrl>

#include <csignal>

namespace
{
const QString SmartPlaylist = QStringLiteral("Recently Added"); ///< every new library has it

/// A bus that can start Rhythmbox, which then knows nothing but its own few smart playlists.
class MusicApplicationTest : public WindowFixture
{
protected:
    MusicApplicationTest()
    {
        _lastBus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus->address().toUtf8());
    }
    ~MusicApplicationTest() override
    {
        end();
        qputenv("DBUS_SESSION_BUS_ADDRESS", _lastBus);
    }

    [[nodiscard]] qint64 process() { return bus->processOf(RhythmboxLibrary::service()); }
    /// The application dies, at once.
    void end()
    {
        const qint64 pid = process();
        if (pid == 0)
            return;
        ::kill(pid_t(pid), SIGKILL);
        EXPECT_TRUE(waitUntil([this] { return process() == 0; }));
    }

    QString song(const QString& name)
    {
        const QString file = path("songs/" + name);
        Files::write(file, SoundFile::wav(int(name.size())));
        return file;
    }
    void give(const QString& file, const QStringList& names = {})
    {
        std::vector<Playlist> owned;
        for (const QString& name : names)
            owned.push_back(Playlist::playlistWithName(name));
        std::vector<Playlist*> playlists;
        for (Playlist& playlist : owned)
            playlists.push_back(&playlist);
        handOver.handOver(file, playlists, [] { return false; });
    }
    QStringList whys() const
    {
        QStringList list;
        for (const ExportItem& item : report.items())
            list.append(item.why);
        return list;
    }

    QDBusMessage call(const QString& object, const QString& method, const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            RhythmboxLibrary::service(), "/org/gnome/Rhythmbox3/" + object,
            "org.gnome.Rhythmbox3." + object, method);
        message.setArguments(arguments);
        return bus->own().call(message);
    }
    QStringList playlists()
    {
        return call("PlaylistManager", "GetPlaylists", {}).arguments().value(0).toStringList();
    }
    bool isInLibrary(const QString& file)
    {
        const QDBusMessage answer =
            call("RhythmDB", "GetEntryProperties", {QUrl::fromLocalFile(file).toString()});
        return !qdbus_cast<QVariantMap>(answer.arguments().value(0))
                    .value("title")
                    .toString()
                    .isEmpty();
    }
    /// The file names of a playlist, in order.
    QStringList filesOf(const QString& playlist)
    {
        const QString list = path("list.m3u");
        QFile::remove(list);
        call("PlaylistManager", "ExportPlaylist",
             {playlist, QUrl::fromLocalFile(list).toString(), true});
        if (!waitUntil([&] { return QFile::exists(list); }))
            return {};
        QStringList names;
        for (const QString& line : QString::fromUtf8(Files::read(list)).split('\n')) {
            if (!line.isEmpty() && !line.startsWith('#'))
                names.append(QFileInfo(line).fileName());
        }
        return names;
    }

    std::unique_ptr<PrivateBus> bus =
        std::make_unique<PrivateBus>(QStringList({RhythmboxLibrary::service(), "ca.desrt.dconf"}));
    ExportReport report;
    MusicHandOver handOver{report};

private:
    QByteArray _lastBus;
};
} // namespace

TEST_F(MusicApplicationTest, AddsAFileToTheLibraryAndMakesItsPlaylists)
{
    const QString one = song("one.wav");
    const QString two = song("It's (a) [t] & 100% #1 é;,=@~+!$*:.wav");
    give(one, {"Road", "Night"});
    give(two, {"Road"});
    EXPECT_EQ(whys(), QStringList());
    EXPECT_TRUE(isInLibrary(one));
    EXPECT_EQ(playlists().count("Road"), 1);
    EXPECT_EQ(filesOf("Road").size(), 2);
    EXPECT_EQ(filesOf("Night"), QStringList("one.wav"));
}

TEST_F(MusicApplicationTest, ASmartPlaylistIsLeftAloneAndTheOthersAreFilled)
{
    const QString one = song("one.wav");
    give(one, {SmartPlaylist, "Road"});
    EXPECT_EQ(whys(), QStringList());
    EXPECT_TRUE(isInLibrary(one));
    EXPECT_EQ(filesOf("Road"), QStringList("one.wav"));
    EXPECT_EQ(playlists().count(SmartPlaylist), 1);
}

TEST_F(MusicApplicationTest, ANewPlaylistIsMadeOnceForTwoOfOneName)
{
    give(song("one.wav"), {"Twin", "Twin"});
    EXPECT_EQ(whys(), QStringList());
    EXPECT_EQ(playlists().count("Twin"), 1);
    // The application lists a file once, although it was given it twice.
    EXPECT_EQ(filesOf("Twin"), QStringList("one.wav"));
}

TEST_F(MusicApplicationTest, ASecondExportAddsAgain)
{
    give(song("one.wav"), {"Road"});
    give(song("one1.wav"), {"Road"}); // both are kept
    give(song("one.wav"), {"Road"});  // replaced
    EXPECT_EQ(whys(), QStringList());
    EXPECT_EQ(filesOf("Road").size(), 2);
    EXPECT_EQ(playlists().count("Road"), 1);
}

TEST_F(MusicApplicationTest, AFileThatItCannotReadIsALineOfTheReport)
{
    const QString book = path("songs/book.pdf");
    Files::write(book, SoundFile::pdf("book"));
    const QString one = song("one.wav");
    give(book, {"Road"});
    give(one, {"Road"});
    ASSERT_EQ(report.items().size(), 1u);
    EXPECT_EQ(report.items().front().title, "book.pdf");
    EXPECT_TRUE(report.items().front().why.endsWith("Rhythmbox cannot read the file"))
        << report.items().front().why.toStdString();
    EXPECT_EQ(filesOf("Road"), QStringList("one.wav"));
}

TEST_F(MusicApplicationTest, DyingHalfWayCostsNothingOrALineOfTheReport)
{
    const QString one = song("one.wav");
    const QString two = song("two.wav");
    const QString three = song("three.wav");
    give(one);
    end();
    give(two); // the bus starts it anew
    give(three, {"Road"});
    EXPECT_LE(whys().size(), 1);
    EXPECT_TRUE(isInLibrary(three));
    EXPECT_EQ(filesOf("Road"), QStringList("three.wav"));
}

TEST_F(MusicApplicationTest, ABusThatEndsCostsALineForEachFile)
{
    const QString one = song("one.wav");
    give(one);
    end();
    bus.reset();
    QElapsedTimer since;
    since.start();
    for (int i = 0; i < 5; ++i)
        give(one, {"Road"});
    EXPECT_EQ(whys().size(), 5);
    EXPECT_LT(since.elapsed(), 5000);
    bus = std::make_unique<PrivateBus>();
}

TEST_F(MusicApplicationTest, TheWindowHandsOverWhatItExports)
{
    add("One", SoundFile::wav(1)).location = ":iPod_Control:Music:F00:1.wav";
    add("Two", SoundFile::wav(2)).location = ":iPod_Control:Music:F00:2.wav";
    add("Three", "no sound").location = ":iPod_Control:Music:F00:3.wav";
    library.playlists = {{"Road", {1, 2}}, {SmartPlaylist, {1}}};
    openOnPlayer();
    controller->perform(Command::checkAll);
    Hands::key("ctrl+e");
    auto* mode = waitFor<QDialog>("_winExportMode");
    ASSERT_TRUE(mode);
    const auto rows = part<RadioMatrix>("_mExportMode")->findChildren<QRadioButton*>();
    ASSERT_TRUE(waitUntil([&] { return mode->isActiveWindow() && rows.at(1)->isEnabled(); }));
    EXPECT_TRUE(rows.at(1)->text().contains("Rhythmbox"));
    EXPECT_TRUE(rows.at(0)->isChecked());
    Hands::key("alt+m");
    ASSERT_TRUE(waitUntil([&] { return rows.at(1)->isChecked(); }));
    Hands::key("Return");
    EXPECT_EQ(closeAlert(), "Export finished!");
    EXPECT_EQ(part<QToolButton>("_btnFailures")->text(),
              "1 time(s) the music application did not take a file");
    EXPECT_TRUE(isInLibrary(out("Music/Artist/Album/One.wav")));
    EXPECT_EQ(filesOf("Road"), QStringList({"One.wav", "Two.wav"}));

    waitForKeyboard();
    Hands::key("ctrl+e");
    ASSERT_TRUE(waitFor<QDialog>("_winExportMode"));
    EXPECT_TRUE(waitUntil([this] { return part<RadioMatrix>("_mExportMode")->selectedRow() == 1; }))
        << "what was answered last is proposed";
    part<QDialog>("_winExportMode")->reject();
    EXPECT_TRUE(waitUntil([this] { return !controller->jobs().isBusy(); }));
}

TEST_F(MusicApplicationTest, TheQuestionSaysThatThereIsNoApplication)
{
    const PrivateBus bare;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bare.address().toUtf8());
    add("One", SoundFile::wav(1));
    openOnPlayer();
    controller->perform(Command::checkAll);
    Hands::key("ctrl+e");
    ASSERT_TRUE(waitFor<QDialog>("_winExportMode"));
    const auto* row = part<RadioMatrix>("_mExportMode")->findChildren<QRadioButton*>().at(1);
    ASSERT_TRUE(waitUntil([&] { return row->text().contains("No music application"); }));
    EXPECT_FALSE(row->isEnabled());
    confirmExportMode();
    EXPECT_EQ(closeAlert(), "Export finished!");
}
