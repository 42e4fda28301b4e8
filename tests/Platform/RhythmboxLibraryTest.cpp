// How the music application is spoken to where it misbehaves; the real one is met in the tests of
// the window.

#include "Platform/RhythmboxLibrary.h"

#include "support/DesktopServices.h"
#include "support/EventLoop.h"
#include "support/Files.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <future>

namespace
{
const QString Actions = QStringLiteral("org.gtk.Actions.Activate");
const QString Playlists = QStringLiteral("org.gnome.Rhythmbox3.PlaylistManager.");
const QString Properties = QStringLiteral("org.gnome.Rhythmbox3.RhythmDB.GetEntryProperties");

using Outcome = MusicLibrary::Outcome;

class RhythmboxLibraryTest : public testing::Test
{
protected:
    /// Makes blocking calls on a thread, as a job does, while the service answers on this one.
    template <typename Result>
    Result onJobThread(std::function<Result(MusicLibrary& library)> body)
    {
        auto done = std::async(std::launch::async, [this, body] {
            RhythmboxLibrary library(_connection);
            return body(library);
        });
        EXPECT_TRUE(waitUntil(
            [&] { return done.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
        return done.get();
    }
    Outcome add(const QString& path, bool stop = false)
    {
        return onJobThread<Outcome>(
            [&](MusicLibrary& library) { return library.add(path, [stop] { return stop; }); });
    }
    void answerProperties(const QString& title)
    {
        services.answer(Properties, [title] {
            return QVariantList{QVariantMap{{QStringLiteral("title"), title}}};
        });
    }

    PrivateBus bus;
    DesktopServices services{bus, {RhythmboxLibrary::service()}};

private:
    QDBusConnection _connection = bus.connect();
};
} // namespace

TEST_F(RhythmboxLibraryTest, AsksForTheFileByTheAddressThatTheApplicationUses)
{
    services.answer(Actions, [] { return QVariantList(); });
    answerProperties("One");
    EXPECT_EQ(add("/music/It's (a) [t] & 100% #1 é;,=@~+!$*:.wav"), Outcome::Done);
    ASSERT_EQ(services.calls(Actions).size(), 1u);
    EXPECT_EQ(services.calls(Actions).front().signature(), "sava{sv}");
    EXPECT_EQ(services.calls(Properties).front().arguments().value(0).toString(),
              "file:///music/It's%20(a)%20%5Bt%5D%20&%20100%25%20%231%20%C3%A9%3B,=@~+!$*:.wav");
}

TEST_F(RhythmboxLibraryTest, AFileWithoutATitleCouldNotBeRead)
{
    services.answer(Actions, [] { return QVariantList(); });
    answerProperties("");
    EXPECT_EQ(add("/a.pdf"), Outcome::Refused);
}

TEST_F(RhythmboxLibraryTest, AStopEndsTheWaitForTheLibrary)
{
    services.answer(Actions, [] { return QVariantList(); }); // and no properties, ever
    EXPECT_EQ(add("/a.mp3", true), Outcome::Stopped);
}

TEST_F(RhythmboxLibraryTest, AnApplicationThatHangsIsGivenUpInTime)
{
    services.hold(Actions);
    QElapsedTimer since;
    since.start();
    EXPECT_EQ(add("/a.mp3"), Outcome::NoAnswer);
    EXPECT_LT(since.elapsed(), 6000);
}

TEST_F(RhythmboxLibraryTest, WaitsForPlaylistsThatAreStillBeingRead)
{
    int asked = 0;
    services.answer(Playlists + "GetPlaylists", [&asked] {
        return QVariantList{++asked < 4 ? QStringList() : QStringList("Road")};
    });
    EXPECT_EQ(onJobThread<Outcome>(
                  [](MusicLibrary& library) { return library.open([] { return false; }); }),
              Outcome::Done);
    EXPECT_EQ(asked, 4);
}

TEST_F(RhythmboxLibraryTest, SomebodyMayHaveNoPlaylistAtAll)
{
    services.answer(Playlists + "GetPlaylists", [] { return QVariantList{QStringList()}; });
    EXPECT_EQ(onJobThread<Outcome>(
                  [](MusicLibrary& library) { return library.open([] { return false; }); }),
              Outcome::Done);
}

TEST_F(RhythmboxLibraryTest, WhatIsListedAndRefusedIsASmartPlaylist)
{
    services.answer(Playlists + "GetPlaylists",
                    [] { return QVariantList{QStringList("Recent")}; }); // all else is refused
    const auto give = [this](const QString& name) {
        return onJobThread<Outcome>(
            [&](MusicLibrary& library) { return library.addToPlaylist("/a.mp3", name); });
    };
    EXPECT_EQ(give("Recent"), Outcome::SmartPlaylist);
    EXPECT_EQ(give("Unknown"), Outcome::Refused);
}

TEST(MusicLibraryTest, IsNotThereWithoutABus)
{
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/nowhere");
    EXPECT_EQ(MusicLibrary::create(), nullptr);
    QObject context;
    std::optional<QString> name;
    MusicLibrary::findApplication(&context, [&](const QString& found) { name = found; });
    ASSERT_TRUE(waitUntil([&] { return name.has_value(); }));
    EXPECT_EQ(*name, "");
}

TEST(MusicLibraryTest, IsNotThereWhenNothingCanBeStarted)
{
    const PrivateBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    EXPECT_EQ(MusicLibrary::create(), nullptr);
}

TEST(MusicLibraryTest, IsFoundWhereTheBusCanStartIt)
{
    const PrivateBus bus({RhythmboxLibrary::service()});
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    const std::unique_ptr<MusicLibrary> library = MusicLibrary::create();
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(library->name(), "Rhythmbox");
    QObject context;
    std::optional<QString> name;
    MusicLibrary::findApplication(&context, [&](const QString& found) { name = found; });
    EXPECT_FALSE(name.has_value()) << "nobody waited";
    ASSERT_TRUE(waitUntil([&] { return name.has_value(); }));
    EXPECT_EQ(*name, "Rhythmbox");
}
