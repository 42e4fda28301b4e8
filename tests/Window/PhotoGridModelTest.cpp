#include "Window/Models/PhotoGridModel.h"

#include "Device/Photo.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <utility>

namespace
{
QString captionOf(const QString& title, const QString& file, int id = 7)
{
    Photo photo;
    photo.photoId = id;
    photo.title = title;
    photo.fullSizeFile = file;
    PhotoGridModel model;
    model.setPhotos({&photo});
    return model.index(0).data().toString();
}
} // namespace

TEST(PhotoGridModel, CaptionsAPhotoWithItsTitleElseItsFileElseItsNumber)
{
    EXPECT_EQ(captionOf("Harbour", "/DCIM/100APPLE/IMG_0001.JPG"), "Harbour");
    EXPECT_EQ(captionOf("", "/DCIM/100APPLE/IMG_0001.JPG"), "IMG_0001.JPG");
    EXPECT_EQ(captionOf({}, {}), "7");
}

TEST(PhotoGridModel, SaysWhenTheDeviceHoldsOnlyACopyForItsScreen)
{
    Photo photo;
    photo.photoId = 7;
    for (const auto& [width, height] : {std::pair(130, 88), std::pair(720, 480)}) {
        Thumbnail rendition;
        rendition.imageWidth = std::uint16_t(width);
        rendition.imageHeight = std::uint16_t(height);
        photo.thumbnails.push_back(rendition);
    }
    PhotoGridModel model;
    model.setPhotos({&photo});
    EXPECT_EQ(model.index(0).data().toString(), "7 (720 x 480)");
    EXPECT_TRUE(model.index(0).data(Qt::ToolTipRole).toString().contains("only a copy"));

    photo.fullSizeFile = "/Photos/Full Resolution/7.jpg";
    EXPECT_EQ(model.index(0).data().toString(), "7.jpg");
    EXPECT_FALSE(model.index(0).data(Qt::ToolTipRole).toString().contains("720"));

    photo.fullSizeFile.clear();
    photo.thumbnails.resize(1);
    photo.thumbnails.front().imageWidth = 0; // it says nothing of its size
    EXPECT_EQ(model.index(0).data().toString(), "7");
}

TEST(PhotoGridModel, ShowsBothEndsOfAVeryLongName)
{
    const QString name = "begin" + QString(1'000'000, u'x') + "end.jpg";
    const QString caption = captionOf({}, "/DCIM/" + name);
    EXPECT_LT(caption.size(), 300);
    EXPECT_TRUE(caption.startsWith("begin") && caption.endsWith("end.jpg"));
}

TEST(PhotoGridModel, ShowsTagsInANameAsTheyAre)
{
    Photo photo;
    photo.title = "<img src='/etc/passwd'>";
    PhotoGridModel model;
    model.setPhotos({&photo});
    EXPECT_FALSE(model.index(0).data(Qt::ToolTipRole).toString().contains("<img"));
    EXPECT_TRUE(model.index(0).data(Qt::ToolTipRole).toString().contains("&lt;img"));
}

TEST(PhotoGridModel, ShowsThePlaceholderUntilThereIsAPreview)
{
    Photo photo;
    PhotoGridModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setPhotos({&photo});
    const auto shown = [&] { return model.index(0).data(Qt::DecorationRole).value<QImage>(); };
    EXPECT_EQ(shown(), Photo::placeHolder());
    EXPECT_EQ(model.index(0).data(PhotoGridModel::PhotoRole).value<Photo*>(), &photo);

    QImage preview(100, 75, QImage::Format_RGB32);
    preview.fill(Qt::red);
    photo.setSmallImage(preview);
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.previewsChanged();
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(shown(), preview);
}

TEST(PhotoGridModel, MayBeEmpty)
{
    PhotoGridModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setPhotos({});
    model.previewsChanged();
    EXPECT_EQ(changes.size(), 0);
    EXPECT_EQ(model.rowCount(), 0);
}
