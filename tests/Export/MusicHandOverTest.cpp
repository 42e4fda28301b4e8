#include "Export/MusicHandOver.h"

#include "Device/Playlist.h"
#include "support/PlayerFixture.h"

#include <QSet>

namespace
{
/// A music application that writes down what is asked of it.
struct FakeLibrary {
    using Outcome = MusicLibrary::Outcome;

    QStringList lists;
    QSet<QString> smart;
    Outcome onOpen = Outcome::Done;
    QHash<QString, Outcome> onAdd; ///< by file name; without one the file is taken
    QHash<QString, Outcome> onCreate;
    QHash<QString, Outcome> onAddToPlaylist;
    bool listsFail = false;
    int listings = 0; ///< how often all playlists were asked for
    QStringList calls;
};

class FakeApplication final : public MusicLibrary
{
public:
    explicit FakeApplication(FakeLibrary& library)
        : _library(library)
    {
    }

    [[nodiscard]] QString name() const override { return "Jukebox"; }
    Outcome open(const Stop& /*stop*/) override
    {
        _library.calls.append("open");
        return _library.onOpen;
    }
    Outcome add(const QString& path, const Stop& stop) override
    {
        _library.calls.append("add " + path);
        return stop() ? Outcome::Stopped : _library.onAdd.value(path, Outcome::Done);
    }
    std::optional<QStringList> playlists() override
    {
        ++_library.listings;
        return _library.listsFail ? std::nullopt : std::optional(_library.lists);
    }
    Outcome createPlaylist(const QString& name) override
    {
        _library.calls.append("create " + name);
        const Outcome outcome = _library.onCreate.value(name, Outcome::Done);
        if (outcome == Outcome::Done)
            _library.lists.append(name);
        return outcome;
    }
    Outcome addToPlaylist(const QString& path, const QString& name) override
    {
        if (_library.smart.contains(name))
            return Outcome::SmartPlaylist;
        _library.calls.append(path + " to " + name);
        if (!_library.lists.contains(name))
            return Outcome::Refused;
        return _library.onAddToPlaylist.value(name, Outcome::Done);
    }

private:
    FakeLibrary& _library;
};

class MusicHandOverTest : public testing::Test
{
protected:
    using Outcome = MusicLibrary::Outcome;

    /// Hands a file over as one of the playlists of these names.
    void give(const QString& path, const QStringList& names = {})
    {
        std::vector<Playlist> owned;
        for (const QString& name : names)
            owned.push_back(Playlist::playlistWithName(name));
        std::vector<Playlist*> playlists;
        for (Playlist& playlist : owned)
            playlists.push_back(&playlist);
        handOver.handOver(path, playlists, [this] { return stopped; });
    }
    QStringList whys() const
    {
        QStringList list;
        for (const ExportItem& item : report.items())
            list.append(item.why.section(": ", 1));
        return list;
    }

    FakeLibrary library;
    bool isThere = true;
    bool stopped = false;
    ExportReport report;
    MusicHandOver handOver{report, [this]() -> std::unique_ptr<MusicLibrary> {
                               if (!isThere)
                                   return nullptr;
                               return std::make_unique<FakeApplication>(library);
                           }};
};
} // namespace

TEST_F(MusicHandOverTest, AsksForNothingBeforeTheFirstFile)
{
    EXPECT_EQ(library.calls, QStringList());
    give("/a.mp3");
    give("/b.mp3");
    EXPECT_EQ(library.calls, QStringList({"open", "add /a.mp3", "add /b.mp3"}));
    EXPECT_TRUE(report.items().empty());
}

TEST_F(MusicHandOverTest, GivesTheFileToItsPlaylistsInOrder)
{
    library.lists = {"Road"};
    give("/a.mp3", {"New", "Road"});
    EXPECT_EQ(library.calls,
              QStringList({"open", "add /a.mp3", "create New", "/a.mp3 to New", "/a.mp3 to Road"}));
}

TEST_F(MusicHandOverTest, LeavesASmartPlaylistAloneAndFillsTheOthers)
{
    library.lists = {"Recent", "Road"};
    library.smart = {"Recent"};
    give("/a.mp3", {"Recent", "Road"});
    EXPECT_EQ(library.calls, QStringList({"open", "add /a.mp3", "/a.mp3 to Road"}));
    EXPECT_TRUE(report.items().empty());
}

TEST_F(MusicHandOverTest, TwoPlaylistsOfOneNameGiveTheFileToOnePlaylistTwice)
{
    give("/a.mp3", {"Twin", "Twin"});
    EXPECT_EQ(library.calls, QStringList({"open", "add /a.mp3", "create Twin", "/a.mp3 to Twin",
                                          "/a.mp3 to Twin"}));
}

TEST_F(MusicHandOverTest, ASecondExportAddsAgain)
{
    give("/a.mp3", {"Road"});
    library.calls.clear();
    give("/a.mp3", {"Road"});
    EXPECT_EQ(library.calls, QStringList({"add /a.mp3", "/a.mp3 to Road"}));
}

TEST_F(MusicHandOverTest, PassesOverAPlaylistWithoutAName)
{
    give("/a.mp3", {QString(), "", "Road"});
    EXPECT_EQ(library.calls, QStringList({"open", "add /a.mp3", "create Road", "/a.mp3 to Road"}));
}

TEST_F(MusicHandOverTest, ReportsThatThereIsNoApplication)
{
    isThere = false;
    give("/music/a.mp3", {"Road"});
    ASSERT_EQ(report.items().size(), 1u);
    const ExportItem& item = report.items().front();
    EXPECT_TRUE(item.isHandOver());
    EXPECT_EQ(item.title, "a.mp3");
    EXPECT_EQ(item.to, "/music/a.mp3");
    EXPECT_EQ(item.why, "Copied, but not added to the music application: "
                        "There is no music application");
    EXPECT_EQ(report.notCopiedCount(), 0u) << "it was copied";
    EXPECT_EQ(report.copyCount(), 0u) << "the line is no item of the export";
    EXPECT_EQ(report.handOverCount(), 1u);
}

TEST_F(MusicHandOverTest, ReportsAFileThatTheApplicationCannotReadAndGoesOn)
{
    library.onAdd["/a.pdf"] = Outcome::Refused;
    give("/a.pdf", {"Road"});
    give("/b.mp3");
    EXPECT_EQ(whys(), QStringList("Jukebox cannot read the file"));
    EXPECT_EQ(library.calls, QStringList({"open", "add /a.pdf", "add /b.mp3"}));
}

TEST_F(MusicHandOverTest, ReportsARefusedPlaylistAndFillsTheOthers)
{
    library.lists = {"Full"};
    library.onCreate["No"] = Outcome::Refused;
    library.onAddToPlaylist["Full"] = Outcome::Refused;
    give("/a.mp3", {"No", "Full", "Road"});
    EXPECT_EQ(whys(), QStringList({"Jukebox did not take the file into the playlist \"No\"",
                                   "Jukebox did not take the file into the playlist \"Full\""}));
    EXPECT_TRUE(library.calls.contains("/a.mp3 to Road"));
}

TEST_F(MusicHandOverTest, StartsAnApplicationThatDiedForTheNextFile)
{
    library.onAdd["/a.mp3"] = Outcome::NoAnswer;
    give("/a.mp3", {"Road"});
    give("/b.mp3");
    EXPECT_EQ(library.calls, QStringList({"open", "add /a.mp3", "open", "add /b.mp3"}));
    EXPECT_EQ(whys(), QStringList("Jukebox does not answer"));
}

TEST_F(MusicHandOverTest, AnApplicationThatDiesBetweenPlaylistsCostsOneLine)
{
    library.listsFail = true;
    give("/a.mp3", {"One", "Two", "Three"});
    EXPECT_EQ(whys(), QStringList("Jukebox does not answer"));
}

TEST_F(MusicHandOverTest, GivesUpAnApplicationThatNeverAnswers)
{
    library.onOpen = Outcome::NoAnswer;
    for (int i = 0; i < 10; ++i)
        give(QString("/%1.mp3").arg(i));
    EXPECT_EQ(library.calls, QStringList({"open", "open", "open"}));
    EXPECT_EQ(whys().size(), 10);
    EXPECT_EQ(whys().last(), "Jukebox does not answer");
}

TEST_F(MusicHandOverTest, AsksForThePlaylistsOnce)
{
    library.lists = {"Road", "Recent"};
    library.smart = {"Recent"};
    for (int i = 0; i < 10; ++i)
        give(QString("/%1.mp3").arg(i), {"Road", "New", "Recent"});
    EXPECT_EQ(library.listings, 1);
    EXPECT_EQ(library.calls.count("create New"), 1);
    EXPECT_TRUE(library.calls.contains("/9.mp3 to New"));
    EXPECT_TRUE(report.items().empty());
}

TEST_F(MusicHandOverTest, AsksForThePlaylistsAgainAfterALoss)
{
    give("/a.mp3", {"Road"});
    library.onAdd["/b.mp3"] = Outcome::NoAnswer;
    give("/b.mp3", {"Road"});
    library.lists.clear(); // it forgot what it was told
    give("/c.mp3", {"Road"});
    EXPECT_EQ(library.listings, 2);
    EXPECT_EQ(library.calls.count("create Road"), 2);
    EXPECT_TRUE(library.calls.contains("/c.mp3 to Road"));
}

TEST_F(MusicHandOverTest, MakesAPlaylistAgainThatThePersonRemovedMeanwhile)
{
    give("/a.mp3", {"Road"});
    library.lists.clear();
    give("/b.mp3", {"Road"});
    EXPECT_EQ(library.calls.last(), "/b.mp3 to Road");
    EXPECT_EQ(library.lists, QStringList("Road"));
    EXPECT_TRUE(report.items().empty());
}

TEST_F(MusicHandOverTest, AStopIsNoFailure)
{
    stopped = true;
    give("/a.mp3", {"Road"});
    EXPECT_TRUE(report.items().empty());
    EXPECT_EQ(library.calls, QStringList({"open", "add /a.mp3"}));
}

TEST_F(MusicHandOverTest, TheReportNamesTheLineAsAHandOver)
{
    isThere = false;
    give("/a.mp3");
    EXPECT_TRUE(Files::read(report.logPath()).contains("\"kind\":\"hand-over\""));
}
