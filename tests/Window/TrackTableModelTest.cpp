#include "Window/Models/TrackTableModel.h"

#include "Device/Track.h"
#include "support/Files.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>

namespace
{
class TrackTableModelTest : public testing::Test
{
protected:
    TrackTableModelTest()
    {
        add("b", 61, "Z");
        add("A", 3600, "Y");
        add("c", 0.5, "X");
        model.setTracks(std::make_shared<const std::vector<Track*>>(tracks));
    }

    void add(const char* title, double duration, const char* artist)
    {
        Track& track = _tracks.emplace_back();
        track.title = title;
        track.duration = duration;
        track.artist = artist;
        tracks.push_back(&track);
    }
    QStringList column(int number) const
    {
        QStringList texts;
        for (int row = 0; row < model.rowCount(); ++row)
            texts.append(model.index(row, number).data().toString());
        return texts;
    }

    std::vector<Track*> tracks;
    TrackTableModel model;

private:
    std::deque<Track> _tracks;
    QAbstractItemModelTester _tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

using Model = TrackTableModel;
} // namespace

TEST_F(TrackTableModelTest, ShowsTheTracksOfTheReader)
{
    EXPECT_EQ(column(Model::Title), QStringList({"b", "A", "c"}));
    EXPECT_EQ(column(Model::Duration), QStringList({"01:01", "01:00:00", "00:01"}));
    EXPECT_EQ(column(Model::Artist), QStringList({"Z", "Y", "X"}));
    EXPECT_EQ(model.index(1, 0).data(Model::TrackRole).value<Track*>(), tracks[1]);
    EXPECT_EQ(model.headerData(Model::Album, Qt::Horizontal).toString(), "Album");
}

TEST_F(TrackTableModelTest, ChecksTheTrackItself)
{
    EXPECT_TRUE(model.setData(model.index(1, Model::Check), Qt::Checked, Qt::CheckStateRole));
    EXPECT_TRUE(tracks[1]->checked);
    EXPECT_EQ(model.checkedTracks(), std::vector<Track*>{tracks[1]});
    EXPECT_FALSE(model.setData(model.index(1, Model::Title), "x", Qt::EditRole));
    EXPECT_FALSE(model.setData(model.index(1, Model::Title), Qt::Checked, Qt::CheckStateRole));
}

TEST_F(TrackTableModelTest, KeepsAChecksThroughASearch)
{
    model.setTracks(std::make_shared<const std::vector<Track*>>(std::vector<Track*>{tracks[2]}));
    model.setAllChecked(true);
    model.setTracks(std::make_shared<const std::vector<Track*>>(tracks));
    EXPECT_FALSE(tracks[0]->checked);
    EXPECT_TRUE(tracks[2]->checked);
    model.setChecked({0, -1, 99}, true);
    EXPECT_EQ(model.checkedTracks().size(), 2U);
    model.setAllChecked(false);
    EXPECT_TRUE(model.checkedTracks().empty());
}

TEST_F(TrackTableModelTest, SortsItsRowsAndSoTheExport)
{
    model.setAllChecked(true);
    model.sort(Model::Title);
    EXPECT_EQ(column(Model::Title), QStringList({"A", "b", "c"}));
    EXPECT_EQ(model.checkedTracks(), (std::vector<Track*>{tracks[1], tracks[0], tracks[2]}));
    model.sort(Model::Duration, Qt::DescendingOrder);
    EXPECT_EQ(column(Model::Title), QStringList({"A", "b", "c"}));
    model.sort(Model::Artist);
    EXPECT_EQ(column(Model::Title), QStringList({"c", "A", "b"}));
    model.sort(-1);
    EXPECT_EQ(column(Model::Title), QStringList({"b", "A", "c"}));
}

TEST_F(TrackTableModelTest, KeepsSelectedTracksSelectedWhileItSorts)
{
    const QPersistentModelIndex selected = model.index(1, Model::Title);
    model.sort(Model::Title, Qt::DescendingOrder);
    EXPECT_EQ(selected.row(), 2);
    EXPECT_EQ(selected.data().toString(), "A");
}

TEST_F(TrackTableModelTest, ShowsNothingForNoTracks)
{
    model.setTracks(nullptr);
    EXPECT_EQ(model.rowCount(), 0);
    model.setAllChecked(true);
    EXPECT_FALSE(tracks[0]->checked);
}

TEST_F(TrackTableModelTest, AnnouncesTheMarkOfEachRowInWhichATrackStands)
{
    model.setTracks(std::make_shared<const std::vector<Track*>>(
        std::vector<Track*>{tracks[0], tracks[1], tracks[0]}));
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    const auto isAnnounced = [&](int row) {
        return std::any_of(changes.begin(), changes.end(), [row](const QList<QVariant>& change) {
            return change[0].toModelIndex().row() <= row && row <= change[1].toModelIndex().row();
        });
    };
    model.setData(model.index(0, Model::Check), Qt::Checked, Qt::CheckStateRole);
    EXPECT_TRUE(isAnnounced(0) && isAnnounced(2));
    changes.clear();
    model.setChecked({2}, false);
    EXPECT_TRUE(isAnnounced(0) && isAnnounced(2));
    changes.clear();
    model.setTracks(std::make_shared<const std::vector<Track*>>(tracks));
    model.setChecked({2}, true);
    EXPECT_TRUE(!isAnnounced(0) && isAnnounced(2)) << "no row more than needed";
}
