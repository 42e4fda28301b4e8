#include "support/SamplePhotos.h"

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "support/IthmbWriter.h"
#include "support/SamplePicture.h"

#include <QFile>

#include <map>

namespace
{
constexpr quint32 FirstId = 1001;
constexpr QSize FullSize(800, 600);

QString writeFile(const QString& path, const QByteArray& bytes)
{
    const QString problem = Utility::createFolder(PathName::parent(path));
    if (!problem.isEmpty())
        return PathName::parent(path) + QStringLiteral(": ") + problem;
    QFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    return written ? QString() : path + QStringLiteral(": ") + file.errorString();
}

QString ithmbName(quint32 kind)
{
    return QStringLiteral(":Thumbs:F%1_1.ithmb").arg(kind);
}

/// Adds a rendition to the bytes of its file and gives its record.
TestThumbnail addRendition(quint32 kind, const QImage& picture, QByteArray& file)
{
    const QByteArray pixels = IthmbWriter::rendition(kind, picture);
    const QSize grid = IthmbWriter::gridOf(kind);
    TestThumbnail thumbnail;
    thumbnail.correlationId = kind;
    thumbnail.fileName = ithmbName(kind);
    thumbnail.offset = quint32(file.size());
    thumbnail.size = quint32(pixels.size());
    thumbnail.width = quint16(grid.width());
    thumbnail.height = quint16(grid.height());
    file += pixels;
    return thumbnail;
}

std::vector<quint32> ids(int first, int count)
{
    std::vector<quint32> list;
    for (int i = 0; i < count; ++i)
        list.push_back(SamplePhotos::idOf(first + i));
    return list;
}

std::vector<TestAlbum> albums()
{
    return {{QStringLiteral("Coast Walk"), ids(0, 5)},
            {QString::fromUtf8("Сад весной"), ids(5, 3)},
            {QString::fromUtf8("京都 2009"), ids(6, 4)}, // shares two with the one before
            {QStringLiteral("Still Empty"), {}}};
}
} // namespace

quint32 SamplePhotos::idOf(int number)
{
    return FirstId + quint32(number);
}

bool SamplePhotos::hasFullSizeFile(int number)
{
    return number % 3 == 0;
}

QString SamplePhotos::write(const QString& folder)
{
    const QString photos = PathName::join(folder, u"Photos");
    TestPhotoLibrary library;
    library.albums = albums();
    library.kinds.assign(std::begin(Kinds), std::end(Kinds));
    std::map<QString, QByteArray> files;
    for (int number = 0; number < PhotoCount; ++number) {
        const QImage picture = SamplePicture::draw(number, FullSize);
        TestPhoto photo;
        photo.id = idOf(number);
        for (const quint32 kind : Kinds)
            photo.thumbnails.push_back(addRendition(kind, picture, files[ithmbName(kind)]));
        if (hasFullSizeFile(number)) {
            photo.fullSizeFile = QStringLiteral(":Full Resolution:2009:07:IMG_%1.jpg").arg(number);
            files[photo.fullSizeFile] = SamplePicture::encoded(picture, "jpeg");
        }
        library.photos.push_back(photo);
    }
    QString problem =
        writeFile(PathName::join(photos, u"Photo Database"), PhotoDatabaseWriter::write(library));
    for (const auto& [name, bytes] : files) {
        if (problem.isEmpty())
            problem = writeFile(photos + QString(name).replace(u':', u'/'), bytes);
    }
    return problem;
}
