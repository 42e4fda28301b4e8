#include "Export/PlayJob.h"

#include "Platform/MediaPlayer.h"
#include "support/FolderDevice.h"
#include "support/PlayerFixture.h"
#include "support/SoundFile.h"

#include <QThread>

namespace
{
/// A player, and a desktop whose `xdg-open` writes down what it is to open.
class PlayJobTest : public PlayerFixture
{
protected:
    PlayJobTest()
    {
        for (const char* name : {"xdg-open", "xdg-mime"}) {
            const QString program = path("bin/" + QString::fromLatin1(name));
            Files::write(program, "#!/bin/sh\nprintf '%s\\n' \"$@\" >>" +
                                      QFile::encodeName(path(QString::fromLatin1(name))) + "\n");
            QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        qputenv("PATH", QFile::encodeName(path("bin")) + ':' + _searchPath);
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(path("no bus here")));
    }
    ~PlayJobTest() override { qputenv("PATH", _searchPath); }

    void play(const std::shared_ptr<Device>& from, const Track& track)
    {
        PlayJob(from, host, host.toStop).doPlay(track);
    }
    void playFirst() { play(device, *connect().trackDb()->tracks().front()); }
    /// What was opened; the program that opens runs on by itself.
    QString opened()
    {
        for (int i = 0; i < 100 && !QFile::exists(path("xdg-open")); ++i)
            QThread::msleep(50);
        return QFile::exists(path("xdg-open"))
                   ? QString::fromUtf8(Files::read(path("xdg-open"))).trimmed()
                   : QString();
    }

private:
    QByteArray _searchPath = qgetenv("PATH");
};
} // namespace

TEST_F(PlayJobTest, OpensAPrivateCopyOfTheFile)
{
    const QByteArray sound = SoundFile::wav(1);
    add("One", {}).location = ":iPod_Control:Music:F00:SONG.wav";
    Files::write(path("player/iPod_Control/Music/F00/SONG.wav"), sound);
    playFirst();
    const QString copy = opened();
    EXPECT_EQ(QFileInfo(copy).fileName(), "SONG.wav");
    EXPECT_EQ(Files::read(copy), sound);
    const auto others = QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    EXPECT_FALSE(QFileInfo(QFileInfo(copy).path()).permissions() & others);
    EXPECT_EQ(host.told, QStringList({"begin 1", "finished"}));
}

TEST_F(PlayJobTest, AMissingFilePlaysNothingAndIsNoFailure)
{
    QFile::remove(onDevice(add("Gone", "x")));
    playFirst();
    ASSERT_EQ(host.told.size(), 3);
    EXPECT_TRUE(host.told[1].startsWith("Gone not played: ")) << host.told[1].toStdString();
    EXPECT_GT(host.told[1].size(), QString("Gone not played: ").size());
    EXPECT_EQ(host.told[2], "finished");
    EXPECT_FALSE(QFile::exists(path("xdg-open")));
}

TEST_F(PlayJobTest, AFailedCopyIsCanceledAndNothingIsOpened)
{
    add("One", Files::content(100));
    host.stopAtChunk = 1;
    connect();
    playFirst();
    EXPECT_EQ(host.told, QStringList({"begin 1", "canceled"}));
    EXPECT_FALSE(QFile::exists(path("xdg-open")));
}

TEST_F(PlayJobTest, NeverOpensWhatIsNeitherSoundNorFilm)
{
    add("Trap", "[Desktop Entry]\nType=Application\nName=x\nExec=touch x\n").location =
        ":iPod_Control:Music:F00:trap.desktop";
    Files::write(path("player/iPod_Control/Music/F00/trap.desktop"),
                 "[Desktop Entry]\nType=Application\nName=x\nExec=touch x\n");
    playFirst();
    EXPECT_EQ(host.told, QStringList({"begin 1", "Trap not played: It is neither sound nor film",
                                      "finished"}));
    EXPECT_FALSE(QFile::exists(path("xdg-open")));
    EXPECT_FALSE(QFile::exists(path("xdg-mime")));
}

TEST_F(PlayJobTest, OldCopiesAreRemovedAtTheNextStart)
{
    const QString copy = MediaPlayer::privateCopyPath("a.mp3");
    Files::write(copy, "x");
    EXPECT_NE(MediaPlayer::privateCopyPath("a.mp3"), copy) << "a player may still read the first";
    MediaPlayer::removeOldCopies();
    EXPECT_FALSE(QFile::exists(copy));
    EXPECT_FALSE(QFile::exists(QFileInfo(copy).path()));
}
