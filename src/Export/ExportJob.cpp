#include "Export/ExportJob.h"

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "Device/Device.h"
#include "Device/Playlist.h"
#include "Device/Track.h"
#include "Export/CopiedSize.h"
#include "Export/ExportHost.h"
#include "Export/ExportPath.h"
#include "Platform/Archive.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace
{
using Result = ExportItem::Result;

QString words(const char* text)
{
    return QCoreApplication::translate("ExportJob", text);
}

void settle(ExportItem& item, Result result, const QString& why)
{
    item.result = result;
    item.why = why;
}

ExportItem itemFor(const Track& track)
{
    ExportItem item;
    item.title = track.title;
    item.from = track.path;
    return item;
}

/// `folder`, or the nearest folder above it that exists, without links.
QString existingPart(QString folder)
{
    folder = QDir::cleanPath(QDir(folder).absolutePath());
    while (!QFileInfo::exists(folder) && folder != u"/")
        folder = PathName::parent(folder);
    return QFileInfo(folder).canonicalFilePath();
}
} // namespace

ExportJob::ExportJob(std::shared_ptr<Device> device, Config& config, ExportHost& host,
                     ExportReport& report, const std::atomic<bool>& toStop)
    : _device(std::move(device))
    , _config(config)
    , _host(host)
    , _report(report)
    , _toStop(toStop)
{
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
        canceled = canceled || _toStop;
        if (canceled) {
            ExportItem item = itemAt(i);
            settle(item, Result::Stopped, words("The export was stopped before this item"));
            _report.add(std::move(item)); // not worth a line for each of thousands
        } else {
            canceled = exportOne(i) == Next::Cancel;
        }
    }
    _host.showFinish(canceled, true);
}

ExportJob::Next ExportJob::exportOne(const Entry& entry, int index)
{
    const Track& track = *entry.track;
    ExportItem item = itemFor(track);
    _host.showProgress(QStringLiteral("Export %1...").arg(track.title), index);
    write(item, {ExportPath::folderOf(track, entry.playlist),
                 [&] { return ExportPath::trackPath(track, entry.playlist, _config); },
                 [&](ExportItem& it) { copy(it, index); }});
    const Next next = after(item);
    const bool handOver =
        _handsOver && (item.result == Result::Copied || item.result == Result::Incomplete);
    const QString to = item.to;
    report(std::move(item));
    if (handOver)
        _host.handOver(to, track.playlists);
    return next;
}

void ExportJob::write(ExportItem& item, const Way& way)
{
    QString problem = destinationProblem(way.folder);
    ExportPath destination;
    if (problem.isEmpty()) {
        destination = way.path();
        problem = destination.refusal;
    }
    if (!problem.isEmpty()) {
        settle(item, Result::Failed, problem);
        return;
    }
    // The copy fails without its folder, and this says why better than the copy can.
    const QString folderError = Utility::createFolder(PathName::parent(destination.path));
    const std::optional<QString> path = ClashRule::checkPath(destination.path, _config, _host);
    item.to = path.value_or(destination.path);
    if (!path) {
        settle(item, Result::Stopped, words("The export was given up at this item"));
    } else if (path->isEmpty()) {
        item.to = destination.path;
        settle(item, Result::Skipped, words("A file of this name is there already"));
    } else {
        way.write(item);
        if (item.result == Result::Failed && !folderError.isEmpty())
            item.why = folderError;
    }
}

ExportJob::Next ExportJob::after(const ExportItem& item)
{
    return item.result == Result::Stopped ? Next::Cancel : Next::GoOn;
}

void ExportJob::copy(ExportItem& item, int index)
{
    if (namesNoFile(item.from)) {
        settle(item, Result::Missing, words("The library names no file for this item"));
        return;
    }
    const QFileInfo destination(item.to);
    const bool wasThere = destination.exists() || destination.isSymLink();
    const CopiedSize size(*_device, item.from);
    judge(item, _device->copyOut(item.from, item.to, index), size);
    // Only a folder that this copy made may be packed and deleted. One that lacks something is
    // packed as well, and stays reported as incomplete.
    const bool madeFolder = !wasThere && QFileInfo(item.to).isDir();
    if (madeFolder && (item.result == Result::Copied || item.result == Result::Incomplete))
        pack(item);
}

void ExportJob::judge(ExportItem& item, const CopyResult& copied, const CopiedSize& size)
{
    const bool written = copied.end != CopyResult::End::Missing;
    item.bytes = written ? CopiedSize::onComputer(item.to) : 0;
    switch (copied.end) {
    case CopyResult::End::Stopped:
        settle(item, Result::Stopped, words("The export was stopped during this item"));
        return;
    case CopyResult::End::Missing:
        settle(item, Result::Missing, copied.why);
        return;
    case CopyResult::End::Incomplete:
        settle(item, Result::Incomplete, copied.why);
        return;
    case CopyResult::End::Failed:
        settle(item, Result::Failed, copied.why);
        return;
    case CopyResult::End::Whole:
        break;
    }
    const QString difference = size.difference(item.to);
    if (!difference.isEmpty())
        settle(item, Result::Incomplete, difference);
}

void ExportJob::pack(ExportItem& item)
{
    QString archive = item.to + QStringLiteral(".zip");
    if (QFileInfo::exists(archive)) // somebody else's
        archive = ClashRule::availablePath(archive);
    const QString problem = Archive::pack(item.to, archive);
    if (!problem.isEmpty())
        settle(item, Result::Failed, problem);
    else if (!QDir(item.to).removeRecursively())
        settle(item, Result::Failed, words("The unpacked folder could not be removed"));
    else if (QFile file(archive); !file.rename(item.to))
        settle(item, Result::Failed, file.errorString());
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
    // A folder that is an item, such as an unpacked book, has the extension of its kind.
    return PathName::extension(clean).isEmpty() && _device->isDirectory(path);
}

QString ExportJob::destinationProblem(Section category) const
{
    const QString root = _device->localRoot();
    if (root.isNull())
        return {};
    const QString device = QFileInfo(root).canonicalFilePath();
    const QString folder = existingPart(_config.folderPath(category));
    if (device.isEmpty() || (folder != device && !PathName::isInside(folder, device)))
        return {};
    return words("The destination folder is on the device itself, and nothing is written there");
}

void ExportJob::report(ExportItem item)
{
    _host.showItem(item);
    _report.add(std::move(item));
}
