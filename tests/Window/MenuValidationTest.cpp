#include "Window/MenuValidation.h"

#include <gtest/gtest.h>

#include <functional>

using MenuValidation::isEnabled;

namespace
{
using Set = std::function<void(MenuState& state)>;

/// A command, what it needs, and one thing of that missing in turn.
struct Row {
    const char* name;
    Command command;
    std::vector<Set> needs;
};

void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.name;
}

void device(MenuState& state)
{
    state.device = true;
}
void tracks(MenuState& state)
{
    state.tracksShown = true;
}

class MenuRow : public testing::TestWithParam<Row>
{
};
} // namespace

TEST_P(MenuRow, IsEnabledOnlyWithAllItNeeds)
{
    const Row& row = GetParam();
    MenuState all;
    for (const Set& set : row.needs)
        set(all);
    EXPECT_TRUE(isEnabled(row.command, all));
    for (std::size_t missing = 0; missing < row.needs.size(); ++missing) {
        MenuState state;
        for (std::size_t i = 0; i < row.needs.size(); ++i) {
            if (i != missing)
                row.needs[i](state);
        }
        EXPECT_FALSE(isEnabled(row.command, state)) << "need " << missing;
    }
}

INSTANTIATE_TEST_SUITE_P(
    , MenuRow,
    testing::Values(Row{"exportSelectedPlaylist",
                        Command::exportSelectedPlaylist,
                        {device, [](MenuState& s) { s.playlistSelected = true; }}},
                    Row{"exportSelectedPhotoAlbum",
                        Command::exportSelectedPhotoAlbum,
                        {device, [](MenuState& s) { s.albumSelected = true; }}},
                    Row{"exportEverything", Command::exportEverything, {device}},
                    Row{"exportAllMedia", Command::exportAllMedia, {device}},
                    Row{"exportAllMusic", Command::exportAllMusic, {device}},
                    Row{"exportAllMovies", Command::exportAllMovies, {device}},
                    Row{"exportAllTVShows", Command::exportAllTVShows, {device}},
                    Row{"exportAllPodcasts", Command::exportAllPodcasts, {device}},
                    Row{"exportAllAudiobooks", Command::exportAllAudiobooks, {device}},
                    Row{"exportAllRingtones", Command::exportAllRingtones, {device}},
                    Row{"exportAllBooks", Command::exportAllBooks, {device}},
                    Row{"exportAllPlaylists", Command::exportAllPlaylists, {device}},
                    Row{"exportAllPhotos", Command::exportAllPhotos, {device}},
                    Row{"exportAllCameraRoll",
                        Command::exportAllCameraRoll,
                        {device, [](MenuState& s) { s.cameraRoll = true; }}},
                    Row{"exportAllVoiceMemos",
                        Command::exportAllVoiceMemos,
                        {device, [](MenuState& s) { s.voiceMemos = true; }}},
                    Row{"exportCheckedTracks",
                        Command::exportCheckedTracks,
                        {tracks, [](MenuState& s) { s.trackChecked = true; }}},
                    Row{"exportSelectedPhotos", Command::exportSelectedPhotos, {[](MenuState& s) {
                            s.photoSelected = true;
                        }}},
                    Row{"checkAll", Command::checkAll, {tracks}},
                    Row{"uncheckAll", Command::uncheckAll, {tracks}},
                    Row{"checkSelected",
                        Command::checkSelected,
                        {tracks, [](MenuState& s) { s.trackRowSelected = true; }}},
                    Row{"uncheckSelected",
                        Command::uncheckSelected,
                        {tracks, [](MenuState& s) { s.trackRowSelected = true; }}},
                    Row{"selectAll", Command::selectAll, {[](MenuState& s) {
                            s.photosShown = true;
                        }}},
                    Row{"invertSelection", Command::invertSelection, {[](MenuState& s) {
                            s.photosShown = true;
                        }}},
                    Row{"clearSelection", Command::clearSelection, {[](MenuState& s) {
                            s.photoSelected = true;
                        }}},
                    Row{"switchBrowser", Command::switchBrowser, {[](MenuState& s) {
                            s.canShowBrowser = true;
                        }}},
                    Row{"stop", Command::stop, {[](MenuState& s) { s.exporting = true; }}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(MenuValidationTest, AnyOtherItemIsAlwaysEnabled)
{
    for (const Command command : {Command::showPref, Command::showAbout, Command::help,
                                  Command::openLog, Command::quit, Command::find, Command::hide})
        EXPECT_TRUE(isEnabled(command, MenuState()));
}

TEST(MenuValidationTest, ShownListsCanBeExportedWithoutADevice)
{
    MenuState state;
    state.tracksShown = state.trackChecked = state.photosShown = state.photoSelected = true;
    EXPECT_TRUE(isEnabled(Command::exportCheckedTracks, state));
    EXPECT_TRUE(isEnabled(Command::exportSelectedPhotos, state));
    EXPECT_FALSE(isEnabled(Command::exportAllMedia, state));
    EXPECT_FALSE(isEnabled(Command::exportAllPhotos, state));
}

TEST(MenuValidationTest, PlayingNeedsADeviceAndNoJob)
{
    MenuState state;
    state.device = true;
    EXPECT_TRUE(isEnabled(Command::play, state));
    state.exporting = true;
    EXPECT_FALSE(isEnabled(Command::play, state));
}

TEST(MenuValidationTest, TheBrowserItemSaysWhatItWillDo)
{
    MenuState state;
    EXPECT_EQ(MenuValidation::browserTitle(state), "Hide &Browser");
    state.browserHidden = true;
    EXPECT_EQ(MenuValidation::browserTitle(state), "Show &Browser");
}
