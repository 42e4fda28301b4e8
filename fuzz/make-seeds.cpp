// Writes the seed corpora: make-seeds fuzz/corpus

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "support/BookCatalogue.h"
#include "support/ITunesDbWriter.h"
#include "support/SqliteLibraries.h"

#include <QFile>
#include <QTemporaryDir>

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
} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make-seeds CORPUS-FOLDER\n");
        return 2;
    }
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
    return written && writeSqliteSeeds(corpus) && writeBookSeeds(corpus) ? 0 : 1;
}
