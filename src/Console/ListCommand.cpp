#include "Base/Utility.h"
#include "Console/Categories.h"
#include "Console/Commands.h"
#include "Console/DeviceChooser.h"
#include "Console/PhotoListing.h"
#include "Console/Terminal.h"
#include "Device/TrackDb.h"
#include "Device/VoiceMemoDb.h"

#include <QCoreApplication>

namespace
{
constexpr int TitleWidth = 36;
constexpr int ArtistWidth = 26;
constexpr int AlbumWidth = 28;
constexpr int CategoryWidth = 14;

QString tr(const char* text)
{
    return QCoreApplication::translate("ListCommand", text);
}

void printRow(const QString& title, const QString& artist, const QString& album,
              const QString& last)
{
    Terminal::print(Terminal::field(title, TitleWidth) + Terminal::field(artist, ArtistWidth) +
                    Terminal::field(album, AlbumWidth) + last + u'\n');
}

void printTracks(const std::vector<Track*>& tracks)
{
    printRow(tr("Title"), tr("Artist"), tr("Album"), tr("Duration"));
    for (const Track* track : tracks)
        printRow(track->title, track->artist, track->album,
                 Utility::intervalToString(track->duration));
}

void printPlaylists(const std::vector<Playlist*>& playlists)
{
    for (const Playlist* playlist : playlists)
        Terminal::print(QStringLiteral("%1%2\n")
                            .arg(Terminal::field(playlist->name, TitleWidth))
                            .arg(playlist->tracks.size()));
}

void printCount(const QString& category, std::size_t count)
{
    Terminal::print(QStringLiteral("%1%2\n").arg(category.leftJustified(CategoryWidth)).arg(count));
}

void printLibraryCounts(TrackDb& library)
{
    for (const Section section : Categories::ofLibrary())
        printCount(Sections::key(section),
                   library.category(section).tracks(CategoryIndex::AllKey).size());
    printCount(QStringLiteral("playlists"), library.playlists().size());
}

void sayThereAreNone(const QString& category)
{
    Terminal::say(tr("The device has no %1.").arg(category));
}

void printLibraryCategory(TrackDb& library, const QString& category)
{
    if (category == u"playlists") {
        printPlaylists(library.playlists());
        return;
    }
    const std::optional<Section> section = Sections::withKey(category);
    if (section && Sections::facts(*section).inLibraryIndex)
        printTracks(library.category(*section).tracks(CategoryIndex::AllKey));
    else
        sayThereAreNone(category);
}

void printVoiceMemos(VoiceMemoDb* recordings)
{
    if (recordings)
        printTracks(recordings->memos());
    else
        sayThereAreNone(Sections::key(Section::VoiceMemos));
}

void printCounts(TrackDb* library, VoiceMemoDb* recordings)
{
    if (library)
        printLibraryCounts(*library);
    if (recordings)
        printCount(Sections::key(Section::VoiceMemos), recordings->memos().size());
}
} // namespace

int Commands::list(const CommandLine& line)
{
    const std::shared_ptr<Device> device = DeviceChooser::choose(line.device, line.waitSeconds);
    if (!device)
        return ExitCode::NoDevice;
    if (!line.category.isNull() && PhotoListing::print(*device, line.category))
        return ExitCode::Done;
    TrackDb* library = device->trackDb();
    if (library)
        (void)library->tracks(); // before any category is asked for
    VoiceMemoDb* recordings = device->voiceMemoDb();
    const auto photos = PhotoListing::counts(*device);
    if (line.category == Sections::key(Section::VoiceMemos)) {
        printVoiceMemos(recordings);
    } else if (line.category.isNull() && (library || recordings || !photos.empty())) {
        printCounts(library, recordings);
        for (const auto& [name, count] : photos)
            printCount(name, count);
    } else if (!library) {
        Terminal::say(tr("The device holds no media library."));
    } else {
        printLibraryCategory(*library, line.category);
    }
    return ExitCode::Done;
}
