#include "Device/PhotoDb.h"
#include "support/MemoryDevice.h"
#include "support/PhotoDatabaseWriter.h"
#include "support/WrongFields.h"

#include <gtest/gtest.h>

namespace
{
using WrongFields::Cost;

const std::vector<WrongFields::Layout> Layouts = {
    {"mhfd", {{4, Cost::Nothing}, {8, Cost::Nothing}, {20, Cost::Items}}},
    {"mhsd", {{4, Cost::Nothing}, {8, Cost::Nothing}, {12, Cost::Nothing}}},
    {"mhli", {{4, Cost::Nothing}, {8, Cost::Items}}},
    {"mhla", {{4, Cost::Nothing}, {8, Cost::Items}}},
    {"mhlf", {{4, Cost::Nothing}, {8, Cost::Items}}},
    {"mhii", {{4, Cost::Nothing}, {8, Cost::Nothing}, {12, Cost::Part}, {16, Cost::Value}}, true},
    {"mhba", {{4, Cost::Nothing}, {8, Cost::Nothing}, {12, Cost::Part}, {16, Cost::Part}}, true},
    {"mhia", {{4, Cost::Nothing}, {8, Cost::Nothing}, {16, Cost::Value}}},
    {"mhif", {{4, Cost::Nothing}, {8, Cost::Nothing}}},
    {"mhni", {{4, Cost::Nothing}, {8, Cost::Nothing}, {20, Cost::Value}, {32, Cost::Value}}},
    // The header of one that holds a text says where its text is: nothing else does.
    {"mhod", {{4, Cost::Value}, {8, Cost::Nothing}, {12, Cost::Value}}}};

TestPhotoLibrary randomLibrary(QRandomGenerator& random)
{
    TestPhotoLibrary library;
    const int count = random.bounded(1, 8);
    for (int i = 0; i < count; ++i) {
        TestPhoto photo;
        photo.id = quint32(i * 3 + 100);
        for (int k = random.bounded(4); k > 0; --k)
            photo.thumbnails.push_back({k == 1 ? 1023U : 1019U,
                                        QString(":Thumbs:F%1.ithmb").arg(random.bounded(1000)),
                                        random.bounded(1000U) + 100, 46464, 0, 0, 132, 176});
        if (random.bounded(2))
            photo.fullSizeFile = QString(":Full:IMG_%1.jpg").arg(random.bounded(10000));
        library.photos.push_back(photo);
    }
    for (int i = random.bounded(4); i > 0; --i) {
        TestAlbum album{QString("Album %1").arg(i), {}};
        for (int k = random.bounded(5); k > 0; --k)
            album.photoIds.push_back(library.photos[std::size_t(random.bounded(count))].id);
        library.albums.push_back(album);
    }
    library.kinds = {1023, 1019};
    return library;
}

QString describe(const Thumbnail& thumbnail)
{
    return QString("%1 %2 %3 %4 %5x%6")
        .arg(thumbnail.filename)
        .arg(thumbnail.correlationId)
        .arg(thumbnail.thumbnailOffset)
        .arg(thumbnail.imageSize)
        .arg(thumbnail.width)
        .arg(thumbnail.height);
}

struct Reading {
    explicit Reading(const QByteArray& database)
    {
        MemoryDevice device;
        device.put("/Volumes/P/Photos/Photo Database", database);
        PhotoDb& db = *device.photoDb();
        for (const Photo* photo : db.photos()) {
            QStringList texts = {QString::number(photo->photoId), photo->fullSizeFile};
            for (const Thumbnail& thumbnail : photo->thumbnails)
                texts.append(describe(thumbnail));
            photos.append(texts.join(u'|'));
        }
        for (const Album* album : db.albums()) {
            QString text = album->name + u':';
            for (const Photo* photo : album->photos)
                text += QString(" %1").arg(photo->photoId);
            albums.append(text);
        }
        kinds = QString("%1 %2").arg(db.smallCorrelationId()).arg(db.largeCorrelationId());
        hasProblem = !db.problems().empty();
    }

    [[nodiscard]] QStringList everything() const { return photos + albums + QStringList(kinds); }

    QStringList photos;
    QStringList albums;
    QString kinds;
    bool hasProblem = false;
};

int missing(const QStringList& first, QStringList second)
{
    int count = 0;
    for (const QString& one : first)
        count += second.removeOne(one) ? 0 : 1;
    return count;
}

void expectNoMoreLost(const Reading& all, const Reading& part, Cost cost, bool isInPhoto)
{
    EXPECT_LE(part.photos.size(), all.photos.size()) << "duplicates";
    EXPECT_LE(part.albums.size(), all.albums.size()) << "duplicates";
    switch (cost) {
    case Cost::Nothing:
        EXPECT_EQ(part.everything(), all.everything());
        break;
    case Cost::Part:
        EXPECT_TRUE(part.hasProblem || part.everything() == all.everything());
        [[fallthrough]];
    case Cost::Value:
        EXPECT_EQ(part.photos.size(), all.photos.size());
        EXPECT_EQ(part.albums.size(), all.albums.size());
        EXPECT_EQ(part.kinds, all.kinds);
        EXPECT_LE(missing(all.photos, part.photos), isInPhoto ? 1 : 0);
        // A photo whose number is wrong is in no album.
        if (!isInPhoto) {
            EXPECT_LE(missing(all.albums, part.albums), 1);
        }
        break;
    case Cost::Items:
        EXPECT_EQ(part.photos, all.photos.first(part.photos.size()));
        EXPECT_TRUE(part.hasProblem || part.everything() == all.everything());
        break;
    }
}

void tryField(const QByteArray& whole, const Reading& all, const WrongFields::Field& field,
              quint32 value)
{
    SCOPED_TRACE(QString("%1 at %2 in the record at %3")
                     .arg(value)
                     .arg(field.at)
                     .arg(field.record)
                     .toStdString());
    const Reading part(WrongFields::with(whole, field.at, value));
    expectNoMoreLost(all, part, field.cost, whole.mid(field.record, 4) == "mhii");
}
} // namespace

TEST(WrongFieldOfPhotoDatabase, CostsOneRecordInEveryField)
{
    QRandomGenerator random(21);
    for (int round = 0; round < 3; ++round) {
        const QByteArray whole = PhotoDatabaseWriter::write(randomLibrary(random));
        const Reading all(whole);
        ASSERT_FALSE(all.hasProblem);
        for (const WrongFields::Field& field : WrongFields::in(whole, Layouts)) {
            for (const quint32 value :
                 WrongFields::valuesFor(WrongFields::at(whole, field.at), random))
                tryField(whole, all, field, value);
            if (HasFailure())
                return;
        }
    }
}

TEST(WrongFieldOfPhotoDatabase, CostsOneRecordInManyLibraries)
{
    QRandomGenerator random(22);
    for (int round = 0; round < 200; ++round) {
        PhotoDatabaseWriter::Options options;
        if (round % 2 == 0)
            options.encoding = PhotoDatabaseWriter::Encoding::Utf8;
        const QByteArray whole = PhotoDatabaseWriter::write(randomLibrary(random), options);
        const Reading all(whole);
        const std::vector<WrongFields::Field> fields = WrongFields::in(whole, Layouts);
        for (int i = 0; i < 20; ++i) {
            const auto& field = fields[std::size_t(random.bounded(int(fields.size())))];
            const auto values = WrongFields::valuesFor(WrongFields::at(whole, field.at), random);
            tryField(whole, all, field, values[std::size_t(random.bounded(int(values.size())))]);
        }
        if (HasFailure())
            return;
    }
}
