#include "support/SamplePlayer.h"

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "support/BookCatalogue.h"
#include "support/ITunesDbWriter.h"
#include "support/SamplePhotos.h"
#include "support/SoundFile.h"
#include "support/SqliteLibraries.h"

#include <QFile>

#include <array>
#include <exception>

namespace
{
constexpr int FoldersOfMedia = 10;

/// Media kinds as the database stores them.
enum Kind : quint32 {
    Music = 1,
    Movie = 2,
    Podcast = 4,
    Audiobook = 8,
    MusicVideo = 32,
    TVShow = 64,
    Ringtone = 16384,
    Book = 4194304
};

QString fromUtf8(const char* text)
{
    return text ? QString::fromUtf8(text) : QString();
}

/// Builds the library track by track, giving each its id and its file on the device.
class Builder
{
public:
    TestTrack& add(const QString& title, const QString& artist, const QString& album,
                   const QString& genre, quint32 kind, const char* extension)
    {
        const int number = int(_library.tracks.size());
        TestTrack track;
        track.id = quint32(100 + number);
        track.title = title;
        track.artist = artist;
        track.album = album;
        track.genre = genre;
        track.location = QStringLiteral(":iPod_Control:Music:F%1:%2.%3")
                             .arg(number % FoldersOfMedia, 2, 10, QChar(u'0'))
                             .arg(fileName(number), QString::fromLatin1(extension));
        track.milliseconds = kind == Movie || kind == TVShow || kind == MusicVideo ? 1000 : 500;
        track.mediaKind = kind;
        _library.tracks.push_back(track);
        return _library.tracks.back();
    }

    /// An album of `count` tracks whose titles are taken in turn from `words`.
    void addAlbum(const char* artist, const char* album, const char* genre, int count,
                  const std::vector<const char*>& words)
    {
        for (int i = 0; i < count; ++i) {
            const QString word = fromUtf8(words[std::size_t(i) % words.size()]);
            const int round = i / int(words.size());
            add(round == 0 ? word : QStringLiteral("%1 %2").arg(word).arg(round + 1),
                fromUtf8(artist), fromUtf8(album), fromUtf8(genre), Music, "wav");
        }
    }

    void addSeries(const QString& title, const QString& artist, const QString& album,
                   const QString& genre, quint32 kind, const char* extension, int count)
    {
        for (int i = 1; i <= count; ++i)
            add(title.arg(i), artist, album, genre, kind, extension);
    }

    void addPlaylist(const char* name, const std::vector<int>& numbers)
    {
        TestPlaylist playlist;
        playlist.name = fromUtf8(name);
        for (const int number : numbers)
            playlist.trackIds.push_back(_library.tracks.at(std::size_t(number)).id);
        _library.playlists.push_back(playlist);
    }

    TestLibrary& library() { return _library; }

private:
    /// Four letters, as players name their files.
    static QString fileName(int number)
    {
        QString name;
        int rest = number * 7919 + 12345;
        for (int i = 0; i < 4; ++i, rest /= 26)
            name += QChar(u'A' + rest % 26);
        return name + QString::number(number);
    }

    TestLibrary _library;
};

void addMusic(Builder& builder)
{
    builder.addAlbum("The Lantern Makers", "Harbour Lights", "Folk", 12,
                     {"First Ferry", "Salt on the Window", "The Keeper's Daughter", "Low Tide"});
    builder.addAlbum("The Lantern Makers", "Letters Home", "Folk", 10,
                     {"Postmark", "Blue Ink", "Unsent", "Sealed with Wax", "Return to Sender"});
    builder.addAlbum("Copper & Rain", "Static Garden", "Rock", 14,
                     {"Antenna", "Love Song for a Radio", "Weeds", "Glass House", "Signal Loss"});
    builder.addAlbum("Copper & Rain", "Live at the Old Mill", "Rock", 9,
                     {"Antenna", "Weeds", "Encore", "One More"});
    builder.addAlbum("Orchestra of the Northern Shore", "Symphony in Grey", "Classical", 8,
                     {"I. Andante", "II. Allegro", "III. Largo", "IV. Finale"});
    builder.addAlbum("Вечерний Трамвай", "Последний рейс", "Поп", 11,
                     {"Огни проспекта", "Кондуктор", "Тихий снег", "Депо", "Ёлка и звёзды"});
    builder.addAlbum("夜の喫茶店", "雨の音", "ジャズ", 10,
                     {"二杯目のコーヒー", "窓際の席", "閉店まで", "傘を忘れて"});
    builder.addAlbum("Élodie Garçon", "Café de l'Été", "Chanson", 9,
                     {"Où es-tu", "La pluie à Brest", "Déjà", "Cœur de papier"});
    builder.addAlbum("새벽 기차", "첫 정거장", "Indie", 8, {"안녕", "창밖", "바다로", "종착역"});
    builder.addAlbum("Pixel Kitchen", "8-Bit Breakfast 🥐", "Electronic", 13,
                     {"Toast.wav", "Jam Session 🎵", "Sunny Side", "Spoon"});
    builder.addAlbum("Quartet Bravo", "Takes", "Jazz", 12,
                     {"Blue Door", "Stairs", "Corner of Fifth", "After Closing"});
    builder.addAlbum("Ana Moreira & Família", "Mar Aberto", "Fado", 9,
                     {"Saudade Velha", "O Cais", "Coração", "Amanhã"});
    for (int i = 1; i <= 30; ++i) {
        builder.add(QStringLiteral("Sampler Track %1").arg(i),
                    QStringLiteral("Artist %1").arg(i % 15 + 1), QStringLiteral("Big Sampler"),
                    QStringLiteral("World"), Music, "wav");
    }
}

/// What real libraries hold besides well-kept albums.
void addOddities(Builder& builder)
{
    const QString artist = QStringLiteral("Copper & Rain");
    const QString album = QStringLiteral("Odds and Ends");
    const QString genre = QStringLiteral("Rock");
    builder.add(QStringLiteral("Same Name"), artist, album, genre, Music, "wav");
    builder.add(QStringLiteral("Same Name"), artist, album, genre, Music, "wav");
    builder.add(QStringLiteral("Side A/Side B"), artist, album, genre, Music, "wav");
    // The accent is a character of its own.
    builder.add(fromUtf8("Cafe\xCC\x81 Noir"), artist, album, genre, Music, "wav");
    builder.add(QStringLiteral("No Artist"), QString(), album, genre, Music, "wav");
    builder.add(QStringLiteral("No Album"), artist, QString(), genre, Music, "wav");
    builder.add(QStringLiteral("No Genre"), artist, album, QString(), Music, "wav");
    builder.add(QStringLiteral("Nothing Known"), QString(), QString(), QString(), Music, "wav");
    builder.add(QStringLiteral("A Star for an Album"), artist, QStringLiteral("*"), genre, Music,
                "wav");
}

void addOtherMedia(Builder& builder)
{
    builder.addSeries(QStringLiteral("The Long Summer, Reel %1"), QStringLiteral("Home Movies"),
                      QStringLiteral("Family"), QStringLiteral("Family"), Movie, "mov", 6);
    builder.addSeries(QStringLiteral("Episode %1"), QStringLiteral("Station Nine"),
                      QStringLiteral("Station Nine, Season 1"), QStringLiteral("Drama"), TVShow,
                      "mov", 10);
    builder.addSeries(QStringLiteral("Clip %1"), QStringLiteral("Pixel Kitchen"),
                      QStringLiteral("Clips"), QStringLiteral("Electronic"), MusicVideo, "mov", 4);
    builder.addSeries(QStringLiteral("Garden Hour %1"), QStringLiteral("Radio Meadow"),
                      QStringLiteral("Garden Hour"), QStringLiteral("Podcast"), Podcast, "wav", 20);
    for (int i = 1; i <= 5; ++i) {
        builder
            .add(QStringLiteral("Night Walk %1").arg(i), QStringLiteral("Radio Meadow"),
                 QStringLiteral("Night Walks"), QStringLiteral("Podcast"), Music, "wav")
            .podcast = true;
    }
    builder.addSeries(QStringLiteral("Chapter %1"), QStringLiteral("M. Ellery"),
                      QStringLiteral("The Clockmaker's Map"), QStringLiteral("Audiobook"),
                      Audiobook, "wav", 16);
    builder.addSeries(QStringLiteral("Ring %1"), QString(), QString(), QStringLiteral("Ringtone"),
                      Ringtone, "wav", 8);
    builder.addSeries(QStringLiteral("Field Notes %1"), QStringLiteral("R. Alder"),
                      QStringLiteral("Field Notes"), QStringLiteral("Nature"), Book, "pdf", 5);
}

std::vector<int> every(int step, int start, int count)
{
    std::vector<int> numbers;
    for (int i = 0; i < count; ++i)
        numbers.push_back(start + i * step);
    return numbers;
}

QString writeFile(const QString& path, const QByteArray& bytes)
{
    const QString problem = Utility::createFolder(PathName::parent(path));
    if (!problem.isEmpty())
        return PathName::parent(path) + QStringLiteral(": ") + problem;
    QFile file(path);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
    return written ? QString() : path + QStringLiteral(": ") + file.errorString();
}

QString writeVoiceMemos(const QString& folder)
{
    constexpr double FirstRecording = 300000000; // in 2010
    constexpr double SecondsBetween = 100000;
    std::vector<SqliteLibraries::Recording> recordings;
    QString problem = Utility::createFolder(folder);
    for (int i = 0; i < SamplePlayer::VoiceMemoCount && problem.isEmpty(); ++i) {
        const QString name = QStringLiteral("20100705 08200%1.wav").arg(i);
        recordings.push_back({0.5, FirstRecording + i * SecondsBetween,
                              QStringLiteral("/var/mobile/Media/Recordings/") + name});
        problem = writeFile(PathName::join(folder, name), SoundFile::wav(i));
    }
    if (problem.isEmpty())
        SqliteLibraries::writeRecordings(PathName::join(folder, u"Recordings.db"), recordings);
    return problem;
}

QString writeBooks(const QString& folder)
{
    const auto book = [](const char* name, const char* path) {
        return BookCatalogue::Book{{QStringLiteral("Name"), QString::fromUtf8(name)},
                                   {QStringLiteral("Artist"), QStringLiteral("R. Alder")},
                                   {QStringLiteral("Album"), QStringLiteral("Walks")},
                                   {QStringLiteral("Genre"), QStringLiteral("Nature")},
                                   {QStringLiteral("Path"), QString::fromUtf8(path)}};
    };
    const std::vector<std::pair<const char*, QByteArray>> files = {
        {"Hills.pdf", SoundFile::pdf("Hills")},
        {"Rivers.epub/mimetype", "application/epub+zip"},
        {"Rivers.epub/OEBPS/one.xhtml", "<html xmlns=\"http://www.w3.org/1999/xhtml\"/>"},
        {"Purchases/Coast.pdf", SoundFile::pdf("Coast")},
        {"Books.plist",
         BookCatalogue::write({{book("Hills", "Hills.pdf"), book("Rivers", "Rivers.epub")}})},
        {"Purchases/Purchases.plist",
         BookCatalogue::write({{book("Coast", "Coast.pdf")}}, BookCatalogue::Form::Binary)}};
    QString problem;
    for (const auto& [name, content] : files) {
        if (problem.isEmpty())
            problem = writeFile(PathName::join(folder, QString::fromUtf8(name)), content);
    }
    return problem;
}
} // namespace

TestLibrary SamplePlayer::library()
{
    Builder builder;
    builder.library().name = fromUtf8("Mira's Player");
    addMusic(builder);
    addOddities(builder);
    addOtherMedia(builder);
    builder.addPlaylist("Road Trip", every(7, 0, 20));
    builder.addPlaylist("Sunday Morning", every(3, 60, 15));
    builder.addPlaylist("Любимое", every(1, 53, 11));
    builder.addPlaylist("朝の音楽", every(2, 64, 6));
    builder.addPlaylist("Twice the Fun", {5, 9, 5});
    builder.addPlaylist("Still Empty", {});
    return builder.library();
}

QString SamplePlayer::write(const QString& folder, Format format)
{
    const QString problem = write(folder, library(), format);
    return problem.isEmpty() ? SamplePhotos::write(folder) : problem;
}

QString SamplePlayer::writeLibrary(const QString& folder, const TestLibrary& library, Format format)
try {
    const QString place = PathName::join(folder, u"iPod_Control/iTunes");
    switch (format) {
    case Format::ITunesDb:
        return writeFile(PathName::join(place, u"iTunesDB"), ITunesDbWriter::write(library));
    case Format::Library:
        SqliteLibraries::writeLibrary(PathName::join(place, u"iTunes Library.itlp"), library);
        break;
    case Format::MediaLibrary:
        SqliteLibraries::writeMediaLibrary(PathName::join(place, u"MediaLibrary.sqlitedb"), library,
                                           SqliteLibraries::Rows::InLog);
        break;
    }
    return {};
} catch (const std::exception& error) {
    return QString::fromUtf8(error.what());
}

QString SamplePlayer::write(const QString& folder, const TestLibrary& library, Format format)
{
    const QString control = PathName::join(folder, u"iPod_Control");
    QString problem = writeLibrary(folder, library, format);
    if (problem.isEmpty())
        problem = writeFile(PathName::join(control, u"Device/SysInfo"),
                            "BoardHwName: iPod Q98\nModelNumStr: xA446\n");
    if (problem.isEmpty() && format != Format::ITunesDb)
        problem = writeVoiceMemos(PathName::join(folder, u"Recordings"));
    if (problem.isEmpty() && format != Format::ITunesDb)
        problem = writeBooks(PathName::join(folder, u"Books"));
    for (std::size_t i = 0; i < library.tracks.size() && problem.isEmpty(); ++i) {
        QString location = library.tracks[i].location;
        if (location.isEmpty())
            continue;
        const QByteArray content = mediaFile(int(i), location);
        problem = writeFile(PathName::join(folder, location.replace(u':', u'/')), content);
    }
    return problem;
}

QByteArray SamplePlayer::mediaFile(int number, const QString& location)
{
    const QString extension = PathName::extension(location);
    if (extension == u"mov")
        return SoundFile::movie(number);
    if (extension == u"pdf")
        return SoundFile::pdf("Field notes, sheet " + QByteArray::number(number));
    return SoundFile::wav(number);
}
