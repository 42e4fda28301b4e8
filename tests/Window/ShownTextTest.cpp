#include "Window/ShownText.h"

#include "Device/Album.h"
#include "Device/Track.h"
#include "Window/Models/KeyListModel.h"
#include "Window/Models/TrackTableModel.h"

#include <gtest/gtest.h>

namespace
{
const QString Endless(1'000'000, u'W');
} // namespace

TEST(ShownTextTest, LeavesATextOfUsualLengthAlone)
{
    EXPECT_TRUE(ShownText::of(QString()).isNull());
    EXPECT_EQ(ShownText::of("Love Song"), "Love Song");
    const QString longest(ShownText::Longest, u'x');
    EXPECT_EQ(ShownText::of(longest), longest);
}

TEST(ShownTextTest, KeepsTheBeginningAndTheEndOfALongText)
{
    const QString shown = ShownText::of("Begin " + Endless + " end.mp3");
    EXPECT_TRUE(shown.startsWith("Begin WWW"));
    EXPECT_TRUE(shown.endsWith("WWW end.mp3"));
    EXPECT_LE(shown.size(), ShownText::Longest + 1);
}

TEST(ShownTextTest, CutsNoLetterInTwo)
{
    const QString letter = QString::fromUcs4(U"\U0001F3B5");
    for (const QString& before : {QString(), QString("x")}) {
        const QString shown = ShownText::of(before + letter.repeated(1000));
        EXPECT_TRUE(shown.isValidUtf16());
    }
}

TEST(ShownTextTest, IsWhatEachColumnOfTheTracksShows)
{
    Track track;
    track.title = track.artist = track.album = track.genre = Endless;
    TrackTableModel model;
    model.setTracks(std::make_shared<const std::vector<Track*>>(std::vector<Track*>{&track}));
    for (int column = 0; column < TrackTableModel::ColumnCount; ++column) {
        for (int role = 0; role < Qt::UserRole; ++role)
            EXPECT_LE(model.index(0, column).data(role).toString().size(), 300) << column;
    }
}

TEST(ShownTextTest, IsWhatTheBrowserShows)
{
    KeyListModel model("Genre");
    model.setKeys({"*", Endless});
    EXPECT_LE(model.index(1).data().toString().size(), 300);
}
