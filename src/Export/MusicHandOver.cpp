#include "Export/MusicHandOver.h"

#include "Base/PathName.h"
#include "Device/Playlist.h"
#include "Export/ExportReport.h"

#include <QCoreApplication>

namespace
{
/// After so many files without an answer the application is not asked again: each of thousands
/// of files would wait for it.
constexpr int MostLosses = 3;

QString words(const char* text)
{
    return QCoreApplication::translate("MusicHandOver", text);
}
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
    const QString refusal = words("%1 cannot read the file").arg(_library->name());
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
        report(path, words("There is no music application"));
        return false;
    }
    _isOpen = true;
    _isOpen = succeeded(_library->open(stop), path, noAnswer());
    return _isOpen;
}

void MusicHandOver::addToPlaylist(const QString& path, const QString& name)
{
    const QString refusal =
        words("%1 did not take the file into the playlist \"%2\"").arg(_library->name(), name);
    const std::optional<QStringList> there = _library->playlists();
    if (!there) {
        (void)succeeded(Outcome::NoAnswer, path, refusal);
        return;
    }
    if (!there->contains(name) && !succeeded(_library->createPlaylist(name), path, refusal))
        return;
    (void)succeeded(_library->addToPlaylist(path, name), path, refusal);
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
}

QString MusicHandOver::noAnswer() const
{
    return words("%1 does not answer").arg(_library->name());
}

void MusicHandOver::report(const QString& path, const QString& why)
{
    ExportItem item;
    item.kind = ExportItem::Kind::HandOver;
    item.title = PathName::lastComponent(path);
    item.to = path;
    item.result = ExportItem::Result::Failed;
    item.why = words("Copied, but not added to the music application: %1").arg(why);
    _report.add(std::move(item));
}
