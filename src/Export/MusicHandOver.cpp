#include "Export/MusicHandOver.h"

#include "Base/PathName.h"
#include "Device/Playlist.h"
#include "Export/ExportReport.h"

namespace
{
/// After so many files without an answer the application is not asked again: each of thousands
/// of files would wait for it.
constexpr int MostLosses = 3;
} // namespace

MusicHandOver::MusicHandOver(ExportReport& report, Create create)
    : _report(report)
    , _create(std::move(create))
{
}

MusicHandOver::~MusicHandOver() = default;

void MusicHandOver::handOver(const QString& path, const std::vector<Playlist*>& playlists,
                             const MusicLibrary::Stop& stop)
{
    if (!ready(path, stop))
        return;
    const QString refusal = tr("%1 cannot read the file").arg(_library->name());
    const Outcome added = _library->add(path, stop);
    if (added == Outcome::Refused)
        _losses = 0; // it answered
    if (!succeeded(added, path, refusal))
        return;
    for (const Playlist* playlist : playlists) {
        // One without a name has no counterpart that could be looked up.
        if (!playlist->name.isEmpty())
            addToPlaylist(path, playlist->name);
        if (!_isOpen)
            return;
    }
    _losses = 0;
}

bool MusicHandOver::ready(const QString& path, const MusicLibrary::Stop& stop)
{
    if (_isOpen)
        return true;
    if (_losses >= MostLosses) {
        report(path, noAnswer());
        return false;
    }
    if (!_library)
        _library = _create();
    if (!_library) {
        report(path, tr("There is no music application"));
        return false;
    }
    _isOpen = true;
    _isOpen = succeeded(_library->open(stop), path, noAnswer());
    return _isOpen;
}

void MusicHandOver::addToPlaylist(const QString& path, const QString& name)
{
    const QString refusal =
        tr("%1 did not take the file into the playlist \"%2\"").arg(_library->name(), name);
    if (_smart.contains(name))
        return;
    const bool wasKnown = _playlists.has_value();
    if (!hasPlaylist(path, name, refusal))
        return;
    Outcome outcome = _library->addToPlaylist(path, name);
    if (outcome == Outcome::Refused && wasKnown) {
        // The person has the application in front of them, and may have removed the playlist.
        _playlists.reset();
        if (!hasPlaylist(path, name, refusal))
            return;
        outcome = _library->addToPlaylist(path, name);
    }
    if (outcome == Outcome::SmartPlaylist)
        _smart.insert(name);
    (void)succeeded(outcome, path, refusal);
}

bool MusicHandOver::hasPlaylist(const QString& path, const QString& name, const QString& refusal)
{
    if (!_playlists)
        _playlists = _library->playlists();
    if (!_playlists)
        return succeeded(Outcome::NoAnswer, path, refusal);
    if (_playlists->contains(name))
        return true;
    if (!succeeded(_library->createPlaylist(name), path, refusal))
        return false;
    _playlists->append(name);
    return true;
}

bool MusicHandOver::succeeded(Outcome outcome, const QString& path, const QString& refusal)
{
    switch (outcome) {
    case Outcome::Done:
    case Outcome::SmartPlaylist: // such a playlist is left alone, and that is no failure
        return true;
    case Outcome::Refused:
        report(path, refusal);
        break;
    case Outcome::NoAnswer:
        report(path, noAnswer());
        lose();
        break;
    case Outcome::Stopped:
        break;
    }
    return false;
}

void MusicHandOver::lose()
{
    ++_losses;
    _isOpen = false; // the next file tries to start it again
    _playlists.reset();
    _smart.clear();
}

QString MusicHandOver::noAnswer() const
{
    return tr("%1 does not answer").arg(_library->name());
}

void MusicHandOver::report(const QString& path, const QString& why)
{
    ExportItem item;
    item.kind = ExportItem::Kind::HandOver;
    item.title = PathName::lastComponent(path);
    item.to = path;
    item.result = ExportItem::Result::Failed;
    item.why = tr("Copied, but not added to the music application: %1").arg(why);
    _report.add(std::move(item));
}
