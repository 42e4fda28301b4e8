#include "Console/Categories.h"

namespace
{
const QString PlaylistPrefix = QStringLiteral("playlist=");
const QString AlbumPrefix = QStringLiteral("album=");

const QString TrackDbName = QStringLiteral("trackDb");
const QString BookDbName = QStringLiteral("bookDb");
const QString VoiceMemoDbName = QStringLiteral("voiceMemoDb");
const QString CameraRollDbName = QStringLiteral("cameraRollDb");
const QString PhotoDbName = QStringLiteral("photoDb");

/// "TV Shows", "tv-shows" and "tvShows" are one.
QString folded(const QString& word)
{
    QString letters;
    for (const QChar letter : word) {
        if (!letter.isSpace() && letter != u'-' && letter != u'_')
            letters += letter;
    }
    return letters.toCaseFolded();
}
} // namespace

std::vector<Section> Categories::ofLibrary()
{
    std::vector<Section> sections;
    for (const SectionFacts& one : Sections::all()) {
        if (one.inLibraryIndex)
            sections.push_back(one.section);
    }
    return sections;
}

QStringList Categories::names()
{
    QStringList all;
    for (const SectionFacts& one : Sections::all())
        all.append(QString::fromLatin1(one.key));
    return all;
}

QStringList Categories::words()
{
    return QStringList(
               {QStringLiteral("all"), QStringLiteral("everything"), QStringLiteral("media")}) +
           names();
}

std::optional<Section> Categories::section(const QString& word)
{
    for (const SectionFacts& one : Sections::all()) {
        if (folded(word) == folded(QString::fromLatin1(one.key)))
            return one.section;
    }
    return std::nullopt;
}

std::optional<Categories::Wish> Categories::Wish::of(const QString& word)
{
    if (word.startsWith(PlaylistPrefix, Qt::CaseInsensitive))
        return Wish{Kind::Playlist, Section::Playlists, word.sliced(PlaylistPrefix.size())};
    if (word.startsWith(AlbumPrefix, Qt::CaseInsensitive))
        return Wish{Kind::Album, Section::Photos, word.sliced(AlbumPrefix.size())};
    const QString letters = folded(word);
    if (letters == u"all" || letters == u"everything")
        return Wish{Kind::Everything, {}, {}};
    if (letters == u"media")
        return Wish{Kind::Media, {}, {}};
    const std::optional<Section> found = Categories::section(word);
    return found ? std::optional(Wish{Kind::OneSection, *found, {}}) : std::nullopt;
}

QStringList Categories::Wish::readers() const
{
    switch (kind) {
    case Kind::Everything:
        return {TrackDbName, PhotoDbName, CameraRollDbName, VoiceMemoDbName, BookDbName};
    case Kind::Media:
        return {TrackDbName};
    case Kind::OneSection:
    case Kind::Playlist:
    case Kind::Album:
        return readersOf(section);
    }
    return {};
}

QStringList Categories::readersOf(Section section)
{
    switch (section) {
    case Section::Music:
    case Section::Movies:
    case Section::TVShows:
    case Section::Podcasts:
    case Section::Audiobooks:
    case Section::Ringtones:
    case Section::Playlists:
        return {TrackDbName};
    case Section::Books: // the catalogue's, where there is one
        return {TrackDbName, BookDbName};
    case Section::VoiceMemos:
        return {VoiceMemoDbName};
    case Section::CameraRoll:
        return {CameraRollDbName};
    case Section::Photos:
        return {PhotoDbName};
    }
    return {};
}
