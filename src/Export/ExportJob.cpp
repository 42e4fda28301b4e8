#include "Export/ExportJob.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/Playlist.h"
#include "Device/Track.h"
#include "Export/CopiedSize.h"
#include "Export/ExportHost.h"
#include "Export/ExportPath.h"
#include "Platform/Archive.h"

#include <QDir>
#include <QFile>

namespace
{
using Result = ExportItem::Result;

void settle(ExportItem& item, Result result, const QString& why)
{
    item.result = result;
    item.why = why;
}

/// What a failure is called in the report.
QString said(const Failure& failure)
{
    return failure.exact.isEmpty() ? failure.words : failure.exact;
}
} // namespace

ExportJob::ExportJob(std::shared_ptr<Device> device, Config& config, ExportHost& host,
                     ExportReport& report, const std::atomic<bool>& toStop)
    : _device(std::move(device))
    , _config(config)
    , _host(host)
    , _report(report)
    , _toStop(toStop)
    , _clash(config, host)
    , _destinations(config, _device->localRoot())
{
}

ExportItem ExportJob::itemFor(const Track& track)
{
    ExportItem item;
    item.title = track.title;
    item.from = track.path;
    return item;
}

void ExportJob::exportTracks(const std::vector<Track*>& tracks)
{
    if (tracks.empty())
        return;
    std::vector<Entry> entries;
    entries.reserve(tracks.size());
    for (const Track* track : tracks)
        entries.push_back({track, nullptr});
    run(entries);
}

void ExportJob::exportPlaylists(const std::vector<Playlist*>& playlists)
{
    if (playlists.empty())
        return;
    std::vector<Entry> entries;
    for (const Playlist* playlist : playlists) {
        for (const Track* track : playlist->tracks)
            entries.push_back({track, playlist});
    }
    run(entries);
}

void ExportJob::run(const std::vector<Entry>& entries)
{
    const std::optional<bool> handsOver = _host.askForHandOver();
    if (!handsOver || entries.empty())
        return;
    _handsOver = *handsOver;
    exportEach(
        entries.size(), [&](std::size_t i) { return itemFor(*entries[i].track); },
        [&](std::size_t i) { return exportOne(entries[i], int(i)); });
}

void ExportJob::exportEach(std::size_t count, const std::function<ExportItem(std::size_t)>& itemAt,
                           const std::function<Next(std::size_t)>& exportOne)
{
    _host.showBegin(int(count));
    bool canceled = false;
    for (std::size_t i = 0; i < count; ++i) {
        canceled = canceled || (_toStop && !_gone);
        if (canceled || _gone)
            reportUnreached(itemAt(i));
        else
            canceled = exportOne(i) == Next::Cancel;
    }
    _host.showFinish(canceled, true);
}

void ExportJob::reportUnreached(ExportItem item)
{
    if (_gone)
        settle(item, Result::Failed, _gone->words);
    else
        settle(item, Result::Stopped, tr("The export was stopped before this item"));
    _report.add(std::move(item)); // not worth a line for each of thousands
}

ExportJob::Next ExportJob::exportOne(const Entry& entry, int index)
{
    const Track& track = *entry.track;
    ExportItem item = itemFor(track);
    _host.showProgress(QStringLiteral("Export %1...").arg(track.title), index);
    if (namesNoFile(item.from))
        settle(item, Result::Missing, tr("The library names no file for this item"));
    else
        write(item, ExportPath::trackPath(track, entry.playlist, _config),
              [&](ExportItem& it, const Place& place) { return copy(it, index, place); });
    const Next next = after(item);
    // An incomplete file would stay in the application's library after it was exported anew.
    const bool handOver = _handsOver && item.result == Result::Copied;
    const QString to = item.to;
    report(item);
    if (handOver)
        _host.handOver(to, track.playlists);
    return next;
}

void ExportJob::write(ExportItem& item, const ExportPath& to, const Writer& writer)
{
    using Kind = Destination::Kind;
    if (!to.refusal.isEmpty()) {
        settle(item, Result::Failed, to.refusal);
        return;
    }
    const Expected<Destinations::FolderPointer> folder =
        _destinations.folder(to.category, to.folder);
    if (!folder) {
        if (!folder.failedAs(Failure::Kind::Refused))
            item.to = to.path;
        settle(item, Result::Failed, said(folder.failure()));
        return;
    }
    for (;;) {
        const Destination destination = _clash.checkPath(**folder, to.path);
        item.to = destination.path;
        switch (destination.kind) {
        case Kind::Cancel:
            settle(item, Result::Stopped, tr("The export was given up at this item"));
            return;
        case Kind::Skip:
            settle(item, Result::Skipped, tr("A file of this name is there already"));
            return;
        case Kind::New:
        case Kind::Replace:
            if (writer(item, {**folder, PathName::lastComponent(destination.path),
                              destination.kind == Kind::Replace}) == Written::Settled)
                return;
        }
    }
}

ExportJob::Next ExportJob::after(ExportItem& item)
{
    // Whoever watches the device ends the copy of one that has gone; that is nobody's stop.
    if (item.isNotCopied())
        _gone = _device->whyGone();
    if (_gone && item.result == Result::Stopped && item.bytes > 0)
        settle(item, Result::Incomplete, _gone->words);
    else if (_gone && item.result != Result::Incomplete)
        settle(item, Result::Failed, _gone->words);
    return item.result == Result::Stopped ? Next::Cancel : Next::GoOn;
}

ExportJob::Written ExportJob::copy(ExportItem& item, int index, const Place& place)
{
    const CopiedSize size(*_device, item.from);
    const CopyResult copied = place.replaces ? _device->copyOut(item.from, place.path(), index)
                                             : _device->copyOutNew(item.from, place.path(), index);
    if (copied.end == CopyResult::End::Taken)
        return Written::Taken;
    judge(item, copied, size, place);
    // Only a folder that this copy made may be packed and deleted.
    const Expected<Folder::Entry> made = place.folder.entry(place.name);
    if (!place.replaces && made && made->kind == Folder::Kind::Folder)
        packFolder(item, place);
    return Written::Settled;
}

void ExportJob::judge(ExportItem& item, const CopyResult& copied, const CopiedSize& size,
                      const Place& place)
{
    using End = CopyResult::End;
    const bool untouched = copied.end == End::Missing ||
                           (copied.end == End::Failed && place.replaces) ||
                           !place.folder.entry(place.name);
    item.bytes = untouched ? 0 : CopiedSize::onComputer(place.path());
    switch (copied.end) {
    case End::Stopped:
        settle(item, Result::Stopped, tr("The export was stopped during this item"));
        return;
    case End::Missing:
        settle(item, Result::Missing, copied.why);
        return;
    case End::Incomplete:
        settle(item, Result::Incomplete, copied.why);
        return;
    case End::Failed:
    case End::Taken:
        settle(item, Result::Failed, copied.why);
        return;
    case End::Whole:
        break;
    }
    const QString difference = size.difference(place.path());
    if (!difference.isEmpty())
        settle(item, Result::Incomplete, difference);
}

void ExportJob::packFolder(ExportItem& item, const Place& place)
{
    if (item.result == Result::Stopped) {
        (void)place.folder.remove(place.name);
        item.bytes = 0;
        return;
    }
    if (QDir(place.path())
            .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)) {
        (void)place.folder.remove(place.name);
        const Expected<FileInfo> source = _device->info(item.from);
        const bool isLink = source && source->kind == FileInfo::Kind::Link;
        // What is known to be incomplete keeps its reason.
        settle(item, Result::Failed,
               item.result == Result::Incomplete ? item.why
               : isLink ? tr("This is a link on the device, and leads to nothing")
                        : tr("This is an empty folder on the device"));
        return;
    }
    // One that lacks something is packed as well, and stays reported as incomplete.
    if (item.result != Result::Copied && item.result != Result::Incomplete)
        return;
    if (const Status packed = pack(place); !packed)
        settle(item, Result::Failed, packed.failure().text());
}

Status ExportJob::pack(const Place& place)
{
    QString archive = place.name + QStringLiteral(".zip");
    if (place.folder.entry(archive)) // somebody else's
        archive = _clash.availablePath(place.folder, archive);
    if (Status packed = Archive::pack(place.path(), place.folder.pathTo(archive)); !packed)
        return packed;
    if (Status removed = place.folder.remove(place.name); !removed)
        return removed;
    QFile file(place.folder.pathTo(archive));
    if (!file.rename(place.path()))
        return Failure{Failure::Kind::Unwritable, tr("The packed folder could not be renamed"),
                       file.errorString()};
    return {};
}

bool ExportJob::namesNoFile(const QString& path) const
{
    if (path.isEmpty())
        return true;
    const QString clean = QDir::cleanPath(path);
    for (const QString& folder : {_device->prefix(), _device->controlPath(), _device->bookPath()}) {
        if (!folder.isNull() &&
            (QDir::cleanPath(folder) == clean || PathName::isInside(folder, clean)))
            return true;
    }
    return isLibraryFolder(clean) && _device->isDirectory(path);
}

bool ExportJob::isLibraryFolder(const QString& folder) const
{
    // An item that is a folder, such as an unpacked book, may well have no extension. The folders
    // that libraries keep their files in have none, and stand where no item does.
    return PathName::extension(folder).isEmpty() &&
           (PathName::parent(folder) == QDir::cleanPath(_device->prefix()) ||
            PathName::isInside(folder, _device->controlPath()) ||
            (!_device->bookPath().isNull() &&
             folder == PathName::join(_device->bookPath(), u"Purchases")));
}

void ExportJob::report(const ExportItem& item)
{
    // Written before it is told: whoever has read a line may count on the report.
    _report.add(item);
    _host.showItem(item);
}
