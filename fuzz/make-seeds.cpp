// Writes the seed corpora: make-seeds fuzz/corpus

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "support/BookCatalogue.h"
#include "support/ITunesDbWriter.h"
#include "support/IthmbWriter.h"
#include "support/PhotoDatabaseWriter.h"
#include "support/PhotosSqliteWriter.h"
#include "support/SamplePicture.h"
#include "support/SqliteLibraries.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <cstdio>

namespace
{
TestLibrary smallLibrary()
{
    TestLibrary library;
    for (quint32 i = 1; i <= 3; ++i) {
        TestTrack track;
        track.id = i;
        track.title = QStringLiteral("Title %1").arg(i);
        track.artist = QStringLiteral("Artist");
        track.album = QStringLiteral("Album|%1").arg(i);
        track.genre = i == 2 ? QStringLiteral("*") : QStringLiteral("Rock");
        track.location = QStringLiteral(":iPod_Control:Music:F00:A%1.mp3").arg(i);
        track.mediaKind = i;
        library.tracks.push_back(track);
    }
    library.playlists = {{QStringLiteral("Mix"), {1, 3, 1, 99}}, {QStringLiteral("Empty"), {}}};
    return library;
}

bool write(const QString& folder, const char* name, const QByteArray& bytes)
{
    Utility::createFolder(folder);
    QFile file(PathName::join(folder, QString::fromLatin1(name)));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// The library with another number in a field of one of its records: the `nth` with the tag.
QByteArray damaged(QByteArray library, const char* tag, int nth, int field, quint32 value)
{
    qsizetype at = library.indexOf(tag);
    for (; nth > 0; --nth)
        at = library.indexOf(tag, at + 1);
    qToLittleEndian(value, library.data() + at + field);
    return library;
}

QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Small pages keep a database of many tables small.
void makeSmall(const QString& path, const char* more = "")
{
    SqliteWriter file(path, SqliteWriter::Existing);
    file.run(more);
    file.run("pragma page_size = 512; pragma journal_mode = delete; vacuum");
}

bool writeDamagedITunesDbs(const QString& folder)
{
    const QByteArray whole = ITunesDbWriter::write(smallLibrary());
    TestLibrary withNul = smallLibrary();
    withNul.tracks[0].location += QString(QChar::Null) + u'x';
    return write(folder, "short-track", damaged(whole, "mhit", 1, 8, 200)) &&
           write(folder, "long-text", damaged(whole, "mhod", 1, 28, 60)) &&
           write(folder, "header", damaged(whole, "mhsd", 1, 4, 0)) &&
           write(folder, "count", damaged(whole, "mhlt", 0, 8, 2)) &&
           write(folder, "objects", damaged(whole, "mhyp", 1, 12, 0)) &&
           write(folder, "other-kind", damaged(whole, "mhsd", 1, 12, 2)) &&
           write(folder, "no-tag", damaged(whole, "mhit", 1, 0, 0)) &&
           write(folder, "nul", ITunesDbWriter::write(withNul));
}

bool writeSqliteSeeds(const QString& corpus)
{
    const QTemporaryDir workshop;
    const QString media = workshop.filePath(QStringLiteral("media"));
    const QString library = workshop.filePath(QStringLiteral("Library.itdb"));
    const QString recordings = workshop.filePath(QStringLiteral("recordings"));
    SqliteLibraries::writeMediaLibrary(media, smallLibrary());
    makeSmall(media);
    SqliteLibraries::writeLibrary(workshop.path(), smallLibrary());
    makeSmall(library, "create table base_location (id integer primary key, path text);"
                       "create table location (item_pid integer, base_location_id integer, "
                       "location text); insert into base_location values (1, 'Music');"
                       "insert into location select pid, 1, 'F00/a.mp3' from item");
    SqliteLibraries::writeRecordings(recordings, {{1.5, 300000000, QStringLiteral("/a/b.m4a")},
                                                  {QVariant(), QVariant(), QVariant()}});
    makeSmall(recordings);
    return write(PathName::join(corpus, u"medialibrary"), "whole", read(media)) &&
           write(PathName::join(corpus, u"medialibrary"), "cut", read(media).first(6000)) &&
           write(PathName::join(corpus, u"library"), "whole", read(library)) &&
           write(PathName::join(corpus, u"library"), "cut", read(library).first(6000)) &&
           write(PathName::join(corpus, u"recordings"), "whole", read(recordings));
}

bool writeBookSeeds(const QString& corpus)
{
    const BookCatalogue::Book book = {{QStringLiteral("Name"), QStringLiteral("N")},
                                      {QStringLiteral("Genre"), QStringLiteral("\u0416")},
                                      {QStringLiteral("Path"), QStringLiteral("a.epub")}};
    const QString folder = PathName::join(corpus, u"books");
    const std::vector<std::vector<BookCatalogue::Book>> groups = {{book, book}, {}};
    return write(folder, "xml", BookCatalogue::write(groups)) &&
           write(folder, "binary", BookCatalogue::write(groups, BookCatalogue::Form::Binary));
}

TestPhotoLibrary smallPhotoLibrary()
{
    TestPhotoLibrary library;
    for (quint32 id = 1; id <= 3; ++id) {
        TestPhoto photo;
        photo.id = id;
        photo.thumbnails = {{1023, QStringLiteral(":F.ithmb"), id, 16, 0, 0, 2, 4},
                            {1019, QStringLiteral(":F.ithmb"), 0, 16, 0, 0, 2, 4}};
        if (id == 2)
            photo.fullSizeFile = QStringLiteral(":Full:A.jpg");
        library.photos.push_back(photo);
    }
    library.albums = {{QStringLiteral("Trip"), {1, 3, 99}}, {QStringLiteral("Empty"), {}}};
    library.kinds = {1019, 1023};
    return library;
}

/// Each begins another way of finding the next record.
bool writeDamagedPhotoDatabases(const QString& folder, const QByteArray& whole)
{
    return write(folder, "short-object", damaged(whole, "mhod", 2, 8, 90)) &&
           write(folder, "long-image", damaged(whole, "mhii", 0, 8, 0x7fffffff)) &&
           write(folder, "header", damaged(whole, "mhni", 0, 4, 70)) &&
           write(folder, "other-kind", damaged(whole, "mhsd", 0, 12, 2)) &&
           write(folder, "members", damaged(whole, "mhba", 1, 12, 0));
}

bool writePhotoDatabases(const QString& folder)
{
    PhotoDatabaseWriter::Options utf8;
    utf8.encoding = PhotoDatabaseWriter::Encoding::Utf8;
    const TestPhotoLibrary library = smallPhotoLibrary();
    return write(folder, "whole", PhotoDatabaseWriter::write(library)) &&
           write(folder, "utf8", PhotoDatabaseWriter::write(library, utf8)) &&
           write(folder, "empty", PhotoDatabaseWriter::write({})) &&
           write(folder, "cut", PhotoDatabaseWriter::write(library).first(900)) &&
           writeDamagedPhotoDatabases(folder, PhotoDatabaseWriter::write(library));
}

/// An input of fuzz_ithmb: the kind's number in its list, the visible size, and the pixels.
QByteArray ithmbInput(int kind, quint16 width, quint16 height, const QByteArray& pixels)
{
    QByteArray input(9, '\0');
    input[0] = char(kind);
    qToLittleEndian(width, input.data() + 1);
    qToLittleEndian(height, input.data() + 3);
    return input + pixels;
}

bool writeRenditions(const QString& folder)
{
    const QImage small = SamplePicture::draw(1, {16, 8});
    const QByteArray odd = IthmbWriter::yuvPlanar(SamplePicture::draw(2, {720, 2}));
    return write(folder, "packed", ithmbInput(0, 16, 8, IthmbWriter::yuvPacked(small))) &&
           write(folder, "rgb565", ithmbInput(1, 16, 8, IthmbWriter::rgb565(small))) &&
           write(folder, "bgr32", ithmbInput(3, 16, 8, IthmbWriter::bgr32(small))) &&
           write(folder, "planar", ithmbInput(4, 720, 2, odd)) &&
           write(folder, "jpeg", ithmbInput(5, 16, 8, SamplePicture::encoded(small, "jpeg"))) &&
           write(folder, "rgb555", ithmbInput(6, 16, 8, IthmbWriter::rgb555(small, 16))) &&
           write(folder, "rows150", ithmbInput(8, 150, 150, IthmbWriter::rendition(3141, small))) &&
           write(folder, "rows166",
                 ithmbInput(12, 166, 166, IthmbWriter::rendition(4040, small))) &&
           write(folder, "phone166", ithmbInput(14, 0, 0, IthmbWriter::fixedRecord(166, small))) &&
           write(folder, "phone158", ithmbInput(15, 0, 0, IthmbWriter::fixedRecord(158, small))) &&
           write(folder, "phone120", ithmbInput(16, 0, 0, IthmbWriter::fixedRecord(120, small)));
}

bool writePictures(const QString& folder)
{
    const QImage picture = SamplePicture::draw(1, {64, 48});
    const QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
    const QImage clear = picture.convertToFormat(QImage::Format_ARGB32);
    return write(folder, "jpeg", SamplePicture::encoded(picture, "jpeg")) &&
           write(folder, "grey", SamplePicture::encoded(grey, "jpeg", 50)) &&
           write(folder, "png", SamplePicture::encoded(clear, "png"));
}

bool writePhoneDatabase(const QString& folder)
{
    const QTemporaryDir work;
    const QString path = work.filePath(QStringLiteral("Photos.sqlite"));
    TestPhoneLibrary library;
    library.albums = {{1, QStringLiteral("Trip")}, {2, QStringLiteral("Photo Stream")}};
    library.assets = {{10, 0, QStringLiteral("DCIM/100APPLE"), QStringLiteral("A.JPG"), {}},
                      {11, -1, QStringLiteral("DCIM/100APPLE"), QStringLiteral("B.JPG"), {}}};
    library.members6 = {{1, 10}};
    library.members8 = {{2, 11}};
    QStringList statements = PhotosSqliteWriter::statements(library);
    statements.prepend(QStringLiteral("PRAGMA page_size=512")); // a small seed mutates faster
    if (!PhotosSqliteWriter::run(path, statements).isEmpty())
        return false;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && write(folder, "whole", file.readAll());
}
} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make-seeds CORPUS-FOLDER\n");
        return 2;
    }
    const QCoreApplication application(argc, argv); // finds the image formats
    const QString corpus = QFile::decodeName(argv[1]);
    const QString itunesdb = PathName::join(corpus, u"itunesdb");
    ITunesDbWriter::Options plain;
    plain.dataSets = {1, 2};
    ITunesDbWriter::Options old = plain;
    old.version = 11;
    const bool written = write(itunesdb, "whole", ITunesDbWriter::write(smallLibrary())) &&
                         write(itunesdb, "plain", ITunesDbWriter::write(smallLibrary(), plain)) &&
                         write(itunesdb, "old", ITunesDbWriter::write(smallLibrary(), old)) &&
                         write(itunesdb, "empty", ITunesDbWriter::write(TestLibrary())) &&
                         write(itunesdb, "cut", ITunesDbWriter::write(smallLibrary()).first(2000));
    const bool damagedWritten = writeDamagedITunesDbs(itunesdb);
    const bool photosWritten = writePhotoDatabases(PathName::join(corpus, u"photodatabase")) &&
                               writeRenditions(PathName::join(corpus, u"ithmb")) &&
                               writePictures(PathName::join(corpus, u"preview")) &&
                               writePhoneDatabase(PathName::join(corpus, u"photossqlite"));
    return written && damagedWritten && photosWritten && writeSqliteSeeds(corpus) &&
                   writeBookSeeds(corpus)
               ? 0
               : 1;
}
