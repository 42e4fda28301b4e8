#include "Base/Utility.h"
#include "Console/Categories.h"
#include "Console/Commands.h"
#include "Console/DeviceChooser.h"
#include "Console/Terminal.h"
#include "Device/TrackDb.h"

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

void printCounts(TrackDb& library)
{
    for (const Categories::Media& media : Categories::media())
        printCount(media.name,
                   library.category(media.category).tracks(CategoryIndex::AllKey).size());
    printCount(QStringLiteral("playlists"), library.playlists().size());
}

void printCategory(TrackDb& library, const QString& category)
{
    if (category == u"playlists") {
        printPlaylists(library.playlists());
        return;
    }
    for (const Categories::Media& media : Categories::media()) {
        if (media.name == category) {
            printTracks(library.category(media.category).tracks(CategoryIndex::AllKey));
            return;
        }
    }
    Terminal::say(tr("The device has no %1.").arg(category));
}
} // namespace

int Commands::list(const CommandLine& line)
{
    const std::shared_ptr<Device> device = DeviceChooser::choose(line.device, line.waitSeconds);
    if (!device)
        return ExitCode::NoDevice;
    TrackDb* library = device->trackDb();
    if (!library) {
        Terminal::say(tr("The device holds no media library."));
        return ExitCode::Done;
    }
    (void)library->tracks(); // before any category is asked for
    if (line.category.isNull())
        printCounts(*library);
    else
        printCategory(*library, line.category);
    return ExitCode::Done;
}
