#include "Window/Models/SourceListModel.h"

#include "Device/Track.h"
#include "Device/TrackDb.h"
#include "support/Files.h"
#include "support/ITunesDbWriter.h"
#include "support/MemoryDevice.h"
#include "support/SamplePlayer.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace
{
class SourceListModelTest : public testing::Test
{
protected:
    void show(const TestLibrary& library)
    {
        device.put("/Volumes/P/iPod_Control/iTunes/iTunesDB", ITunesDbWriter::write(library));
        model.setDevice(&device);
    }
    QStringList labels(const QModelIndex& parent = {}) const
    {
        QStringList list;
        for (int row = 0; row < model.rowCount(parent); ++row)
            list.append(model.index(row, 0, parent).data().toString());
        return list;
    }

    MemoryDevice device;
    SourceListModel model;

private:
    QAbstractItemModelTester _tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

using Kind = SourceListModel::Kind;
} // namespace

TEST_F(SourceListModelTest, IsEmptyWithoutADevice)
{
    EXPECT_EQ(model.rowCount(), 0);
    show(SamplePlayer::library());
    model.setDevice(nullptr);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(SourceListModelTest, CountsEachCategory)
{
    show(SamplePlayer::library());
    EXPECT_EQ(labels(), QStringList({"Music (169)", "Movies (6)", "TV Shows (10)", "Podcasts (25)",
                                     "Audiobooks (16)", "Ringtones (8)", "Books (5)",
                                     "Playlists (6)", "Photo (0)"}));
}

TEST_F(SourceListModelTest, ShowsEveryCategoryOfADeviceWithoutALibrary)
{
    model.setDevice(&device);
    ASSERT_EQ(model.rowCount(), 9);
    EXPECT_EQ(labels().first(), "Music (0)");
    EXPECT_EQ(labels().last(), "Photo (0)");
}

TEST_F(SourceListModelTest, HasThePlaylistsBelowTheirRow)
{
    show(SamplePlayer::library());
    const QModelIndex playlists = model.index(7, 0);
    EXPECT_EQ(model.kind(playlists), Kind::Section);
    EXPECT_EQ(model.section(playlists), Section::Playlists);
    EXPECT_EQ(labels(playlists).first(), "Road Trip (20)");
    EXPECT_EQ(labels(playlists).last(), "Still Empty (0)");
    const QModelIndex first = model.index(0, 0, playlists);
    EXPECT_EQ(model.kind(first), Kind::Playlist);
    EXPECT_EQ(model.playlist(first), device.trackDb()->playlists()[0]);
    EXPECT_EQ(model.playlist(playlists), nullptr);
    EXPECT_EQ(first.parent(), playlists);
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 0);
}

TEST_F(SourceListModelTest, KnowsWhichSectionEachRowBelongsTo)
{
    show(SamplePlayer::library());
    for (int row = 0; row < 7; ++row)
        EXPECT_EQ(model.section(model.index(row, 0)), Section(row));
    EXPECT_EQ(model.section(model.index(0, 0, model.index(7, 0))), Section::Playlists);
    EXPECT_EQ(model.section(model.index(8, 0)), Section::Photos);
    EXPECT_TRUE(model.hasSection(Section::Music));
    EXPECT_FALSE(model.hasSection(Section::CameraRoll));
}

TEST_F(SourceListModelTest, SaysOfWhichRowsNotEverythingCouldBeRead)
{
    show(SamplePlayer::library());
    const auto isWarned = [this](int row) {
        return model.index(row, 0).data(SourceListModel::HasProblemsRole).toBool();
    };
    const auto textOf = [this](int row, int role) {
        return model.index(row, 0).data(role).toString();
    };
    constexpr int PhotosRow = 8;
    for (int row = 0; row < model.rowCount(); ++row)
        EXPECT_FALSE(isWarned(row)) << row;

    const Problem problem{Problem::Kind::Damaged, "12 of <b>20</b> photos", "cut at 400"};
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setProblems({{"photoDb", problem}});
    EXPECT_EQ(changes.size(), 1);
    for (int row = 0; row < model.rowCount(); ++row)
        EXPECT_EQ(isWarned(row), row == PhotosRow) << row;
    EXPECT_TRUE(textOf(PhotosRow, Qt::ToolTipRole).contains("&lt;b&gt;"));
    EXPECT_EQ(textOf(PhotosRow, Qt::AccessibleDescriptionRole), problem.words);
    EXPECT_EQ(model.problems(Section::Photos).size(), 1U);
    EXPECT_TRUE(model.problems(Section::Music).empty());

    model.setProblems({{"photoDb", problem}});
    EXPECT_EQ(changes.size(), 1) << "nothing has changed";
    model.setProblems({{"trackDb", problem}});
    EXPECT_TRUE(isWarned(0));
    EXPECT_FALSE(isWarned(PhotosRow));
    model.setDevice(nullptr);
    EXPECT_TRUE(model.problems(Section::Music).empty());
}

TEST_F(SourceListModelTest, CountsTheCheckedTracksOfTheDevice)
{
    EXPECT_EQ(model.checkedCount(), 0);
    show(SamplePlayer::library());
    EXPECT_EQ(model.checkedCount(), 0);
    const auto& tracks = device.trackDb()->tracks();
    tracks.front()->checked = tracks.back()->checked = true;
    EXPECT_EQ(model.checkedCount(), 2);
    model.setDevice(nullptr);
    EXPECT_EQ(model.checkedCount(), 0);
}
