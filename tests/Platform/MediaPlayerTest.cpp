// A file is opened and played: with a real player on a bus of its own.

#include "Platform/MediaPlayer.h"

#include "support/DesktopServices.h"
#include "support/EventLoop.h"
#include "support/Files.h"
#include "support/SoundFile.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QProcess>
#include <QUrl>

#include <gtest/gtest.h>

#include <csignal>
#include <future>

namespace
{
const QString Mpv = QStringLiteral("org.mpris.MediaPlayer2.mpv");

/// A desktop whose player for sound is mpv, without a screen and without sound.
class MediaPlayerTest : public testing::Test
{
protected:
    MediaPlayerTest()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
        const QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
        Files::write(config + "/mimeapps.list", "[Default Applications]\naudio/x-wav=mpv.desktop\n"
                                                "audio/wav=mpv.desktop\n"
                                                "audio/vnd.wave=mpv.desktop\n");
        Files::write(config + "/mpv/mpv.conf", "ao=null\nvideo=no\nkeep-open=yes\nterminal=no\n");
        Files::write(sound(), SoundFile::wav(3));
    }
    ~MediaPlayerTest() override
    {
        player.kill();
        player.waitForFinished();
        qputenv("PATH", _searchPath);
    }

    [[nodiscard]] QString path(const QString& name) const { return _folder.filePath(name); }
    [[nodiscard]] QString sound() const { return path("a song.wav"); }

    /// From now on nothing happens when the desktop opens a file.
    void replaceOpening()
    {
        const QString program = path("bin/xdg-open");
        Files::write(program, "#!/bin/sh\necho \"$@\" >>" + QFile::encodeName(path("opened")));
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("PATH", QFile::encodeName(path("bin")) + ':' + _searchPath);
    }
    void startPlayer(const QStringList& more = {})
    {
        player.setStandardErrorFile(QProcess::nullDevice());
        player.start("mpv", QStringList({"--idle", "--no-video", "--ao=null"}) + more);
        // It is on the bus before it can play.
        ASSERT_TRUE(waitUntil(
            [this] { return bus.processOf(Mpv) != 0 && property("PlaybackStatus").isValid(); }));
    }
    /// Opens on a thread, as a job does.
    bool open(const QString& file, bool stop = false)
    {
        auto done = std::async(std::launch::async, [file, stop] {
            return MediaPlayer::open(file, [stop] { return stop; });
        });
        EXPECT_TRUE(waitUntil(
            [&] { return done.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
        return done.get();
    }
    QVariant property(const QString& name)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            Mpv, "/org/mpris/MediaPlayer2", "org.freedesktop.DBus.Properties", "Get");
        message << "org.mpris.MediaPlayer2.Player" << name;
        return bus.own().call(message).arguments().value(0).value<QDBusVariant>().variant();
    }
    /// By the position: once idle, this player goes on calling itself stopped until it pauses.
    bool plays(const QString& file)
    {
        return waitUntil([&] {
            const auto metadata = qdbus_cast<QVariantMap>(property("Metadata"));
            return QUrl(metadata.value("xesam:url").toString()).toLocalFile() == file &&
                   property("PlaybackStatus").toString() != "Paused" &&
                   property("Position").toLongLong() > 0;
        });
    }

    PrivateBus bus;
    QProcess player;

private:
    QTemporaryDir _folder;
    QByteArray _searchPath = qgetenv("PATH");
};
} // namespace

TEST_F(MediaPlayerTest, TellsAPlayerThatRunsToOpenAndPlayTheFile)
{
    replaceOpening();
    startPlayer({"--loop-file=inf"});
    EXPECT_TRUE(open(sound()));
    EXPECT_TRUE(plays(sound()))
        << property("PlaybackStatus").toString().toStdString() << " "
        << qdbus_cast<QVariantMap>(property("Metadata"))["xesam:url"].toString().toStdString();
}

TEST_F(MediaPlayerTest, APlayerThatHasTheFileButWaitsIsToldToPlay)
{
    replaceOpening();
    startPlayer({"--loop-file=inf", "--pause", sound()});
    ASSERT_TRUE(waitUntil([this] { return property("PlaybackStatus").toString() == "Paused"; }));
    EXPECT_TRUE(open(sound()));
    EXPECT_TRUE(plays(sound()));
}

TEST_F(MediaPlayerTest, TheDesktopStartsItsOwnPlayer)
{
    qputenv("DISPLAY", ":none"); // the desktop asks for a screen before it looks for programs
    const QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    Files::write(config + "/mpv/mpv.conf", "ao=null\nvideo=no\nloop-file=inf\nterminal=no\n");
    EXPECT_TRUE(open(sound()));
    EXPECT_TRUE(plays(sound()));
    const qint64 started = bus.processOf(Mpv);
    ASSERT_GT(started, 0);
    ::kill(pid_t(started), SIGTERM);
    EXPECT_TRUE(waitUntil([this] { return bus.processOf(Mpv) == 0; }));
}

TEST_F(MediaPlayerTest, TellsNothingToAPlayerThatIsNotTheOneForTheFile)
{
    replaceOpening();
    DesktopServices other(bus, {"org.mpris.MediaPlayer2.radio"});
    other.answer("org.freedesktop.DBus.Properties.Get", [] {
        return QVariantList{QVariant::fromValue(QDBusVariant(QStringLiteral("radio")))};
    });
    EXPECT_TRUE(open(sound()));
    EXPECT_TRUE(other.calls("org.mpris.MediaPlayer2.Player.OpenUri").empty());
    EXPECT_TRUE(other.calls("org.mpris.MediaPlayer2.Player.Play").empty());
}

TEST_F(MediaPlayerTest, APlayerThatHangsIsNotWaitedForWithoutEnd)
{
    replaceOpening();
    DesktopServices hanging(bus, {Mpv});
    hanging.hold("org.freedesktop.DBus.Properties.Get");
    QElapsedTimer since;
    since.start();
    EXPECT_TRUE(open(sound()));
    EXPECT_LT(since.elapsed(), 8000);
}

TEST_F(MediaPlayerTest, AStopEndsTheWaitForAPlayer)
{
    replaceOpening();
    QElapsedTimer since;
    since.start();
    EXPECT_TRUE(open(sound(), true));
    EXPECT_LT(since.elapsed(), 2500);
}

TEST_F(MediaPlayerTest, OpensNothingButSoundAndFilm)
{
    replaceOpening();
    const QByteArray entry = "[Desktop Entry]\nType=Application\nName=x\nExec=touch /tmp/x\n";
    Files::write(path("trap.desktop"), entry);
    Files::write(path("trap.mp3"), entry);
    Files::write(path("trap"), entry);
    Files::write(path("page.html"), "<html></html>");
    Files::write(path("list.m3u"), "#EXTM3U\nhttp://zell.example/\n");
    Files::write(path("list.pls"), "[playlist]\nFile1=http://zell.example/\n");
    Files::write(path("script.sh"), "#!/bin/sh\n");
    Files::write(path("book.epub"), "PK");
    for (const char* name : {"trap.desktop", "trap.mp3", "trap", "page.html", "list.m3u",
                             "list.pls", "script.sh", "book.epub", "nothing.mp3"})
        EXPECT_FALSE(open(path(QString::fromUtf8(name)))) << name;
    EXPECT_FALSE(QFile::exists(path("opened")));
}

TEST_F(MediaPlayerTest, TakesTheTypesOfPlayersForSoundAndFilm)
{
    Files::write(path("movie.mov"), SoundFile::movie(1));
    Files::write(path("movie"), SoundFile::movie(1));
    EXPECT_TRUE(MediaPlayer::isPlayable(path("movie.mov")));
    EXPECT_TRUE(MediaPlayer::isPlayable(path("movie")));
    for (const char* name : {"a.mp3", "a.m4a", "a.m4b", "a.m4p", "a.m4r", "a.m4v", "a.mp4", "a.aac",
                             "a.wav", "a.aif", "a.aiff", "a.aa", "a.3gp", "a.MP3"}) {
        Files::write(path(QString::fromUtf8(name)), QByteArray("\0\0\0\x18"
                                                               "ftypM4A ",
                                                               12));
        EXPECT_TRUE(MediaPlayer::isPlayable(path(QString::fromUtf8(name)))) << name;
    }
}

TEST_F(MediaPlayerTest, RemovesNothingThroughALinkInPlaceOfTheOldCopies)
{
    const QString copy = MediaPlayer::privateCopyPath("song.mp3");
    const QString playing = QFileInfo(QFileInfo(copy).path()).path();
    Files::write(copy, "x");
    MediaPlayer::removeOldCopies();
    EXPECT_FALSE(QFileInfo::exists(playing));
    const QTemporaryDir person;
    Files::write(person.filePath("precious"), "mine");
    ASSERT_TRUE(QFile::link(person.path(), playing));
    MediaPlayer::removeOldCopies();
    EXPECT_EQ(Files::read(person.filePath("precious")), "mine");
    EXPECT_TRUE(QFile::remove(playing));
}
