// Writes the seed corpora: make-seeds fuzz/corpus

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "support/ITunesDbWriter.h"

#include <QFile>

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
    return written ? 0 : 1;
}
