#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// One stored rendition of a photo.
struct TestThumbnail {
    quint32 correlationId = 0;
    QString fileName; ///< ":Thumbs:F1023_1.ithmb"
    quint32 offset = 0;
    quint32 size = 0;
    quint16 verticalPadding = 0;
    quint16 horizontalPadding = 0;
    quint16 height = 0;
    quint16 width = 0;
};

struct TestPhoto {
    quint32 id = 0;
    std::vector<TestThumbnail> thumbnails;
    QString fullSizeFile; ///< ":Full Resolution:2009:A.jpg"; null leaves its record out
};

struct TestAlbum {
    QString name;
    std::vector<quint32> photoIds;
};

/// A photo library to be written to a test device.
struct TestPhotoLibrary {
    std::vector<TestPhoto> photos;
    std::vector<TestAlbum> albums; ///< without the first one, which is the whole library
    std::vector<quint32> kinds;    ///< of rendition, in the order of the file list
};

/// Writes the binary "Photo Database" of players that mount as a volume, as real ones look: with
/// the fields, objects and data sets that no reader of ours looks at.
namespace PhotoDatabaseWriter
{
/// How texts are stored.
enum class Encoding : quint32 { Utf8 = 1, Utf16 = 2 };

struct Options {
    /// The data sets, by kind, in file order. 1: images, 2: albums, 3: files, anything else:
    /// opaque bytes.
    std::vector<quint32> dataSets = {1, 2, 3};
    Encoding encoding = Encoding::Utf16;
};

QByteArray write(const TestPhotoLibrary& library, const Options& options);
QByteArray write(const TestPhotoLibrary& library);

// The records by themselves, for databases that no device would write.

QByteArray database(const std::vector<QByteArray>& dataSets);
QByteArray dataSet(quint32 kind, const QByteArray& list);
QByteArray list(const char* tag, const std::vector<QByteArray>& items);
QByteArray image(quint32 id, const std::vector<QByteArray>& objects);
/// A data object of type 2 or 5 around a rendition's location.
QByteArray locationObject(quint32 type, const TestThumbnail& thumbnail, Encoding encoding);
QByteArray album(const std::vector<QByteArray>& objects, const std::vector<quint32>& photoIds);
QByteArray file(quint32 correlationId);
/// A data object that holds a text.
QByteArray stringObject(quint32 type, const QString& text, Encoding encoding);
/// The same, from bytes and any number for the encoding.
QByteArray stringObject(quint32 type, const QByteArray& text, quint32 encoding);
/// A data object that holds no text.
QByteArray opaqueObject(quint32 type, int size);
} // namespace PhotoDatabaseWriter
