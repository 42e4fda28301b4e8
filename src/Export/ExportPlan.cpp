#include "Export/ExportPlan.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/Photo.h"
#include "Device/PhotoDb.h"
#include "Device/Playlist.h"
#include "Device/Track.h"
#include "Export/ClashRule.h"
#include "Export/Config.h"
#include "Export/ExportPath.h"
#include "Export/OnDevice.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>

namespace
{
using Result = ExportItem::Result;

void settle(ExportItem& item, Result result, const QString& why)
{
    item.result = result;
    item.why = why;
}
} // namespace

ExportPlan::ExportPlan(Device& device, const Config& config)
    : _device(device)
    , _config(config)
{
}

void ExportPlan::addTracks(const std::vector<Track*>& tracks)
{
    for (const Track* track : tracks)
        addTrack(*track, nullptr);
}

void ExportPlan::addPlaylists(const std::vector<Playlist*>& playlists)
{
    for (const Playlist* playlist : playlists) {
        for (const Track* track : playlist->tracks)
            addTrack(*track, playlist);
    }
}

void ExportPlan::addPhotos(const std::vector<Photo*>& photos)
{
    for (const Photo* photo : photos)
        addPhoto(*photo);
}

void ExportPlan::addTrack(const Track& track, const Playlist* playlist)
{
    ExportItem item;
    item.title = track.title;
    item.from = track.path;
    if (hasSource(item)) {
        const ExportPath to = ExportPath::trackPath(track, playlist, _config);
        place(item, to.path, to.refusal);
    }
    _items.push_back(std::move(item));
}

void ExportPlan::addPhoto(const Photo& photo)
{
    ExportItem item;
    item.kind = ExportItem::Kind::Photo;
    item.title = photo.title;
    item.from = photo.fullSizeFile;
    bool isThere = hasSource(item);
    const QString rendition =
        item.result == Result::Missing && photo.photoId != 0 ? renditionFile(photo) : QString();
    if (!rendition.isNull()) {
        item.from = rendition;
        settle(item, Result::Planned, {});
        isThere = true;
    }
    if (isThere) {
        const ExportPath to =
            ExportPath::photoPath(photo,
                                  rendition.isNull() ? ExportPath::PhotoSource::FullSize
                                                     : ExportPath::PhotoSource::Rendition,
                                  _config);
        place(item, to.path, to.refusal);
    }
    _items.push_back(std::move(item));
}

bool ExportPlan::hasSource(ExportItem& item)
{
    if (namesNoFile(item.from)) {
        settle(item, Result::Missing, tr("The library names no file for this item"));
        return false;
    }
    const Expected<FileInfo> source = _device.info(item.from);
    if (!source) {
        settle(item, source.failedAs(Failure::Kind::Missing) ? Result::Missing : Result::Failed,
               source.failure().text());
        return false;
    }
    item.bytes = source->size.value_or(0);
    return true;
}

bool ExportPlan::namesNoFile(const QString& path) const
{
    if (path.isEmpty())
        return true;
    const QString clean = QDir::cleanPath(path);
    for (const QString& folder : {_device.prefix(), _device.controlPath(), _device.bookPath()}) {
        if (!folder.isNull() &&
            (QDir::cleanPath(folder) == clean || PathName::isInside(folder, clean)))
            return true;
    }
    return false;
}

QString ExportPlan::renditionFile(const Photo& photo) const
{
    PhotoDb* library = photo.thumbnails.empty() ? nullptr : _device.photoDb();
    const auto large = quint32(library ? library->largeCorrelationId() : 0);
    QString file;
    for (const Thumbnail& thumbnail : photo.thumbnails) {
        if (large != 0 && thumbnail.correlationId == large)
            file = thumbnail.filename;
    }
    return file;
}

void ExportPlan::place(ExportItem& item, const QString& path, const QString& refusal)
{
    if (!refusal.isEmpty()) {
        settle(item, Result::Failed, refusal);
        return;
    }
    item.to = path;
    if (const QString problem = problemOf(PathName::parent(path)); !problem.isEmpty()) {
        settle(item, Result::Failed, problem);
        return;
    }
    item.result = Result::Planned;
    if (isTaken(path)) {
        switch (_config.copyRule()) {
        case SkipRule:
            settle(item, Result::Skipped, tr("A file of this name is there already"));
            return;
        case AskRule:
        case KeepBothRule:
            item.to = availablePath(path);
            break;
        default:
            break; // overwritten
        }
    }
    _planned.insert(item.to);
}

QString ExportPlan::problemOf(const QString& folder)
{
    const auto known = _problems.constFind(folder);
    if (known != _problems.constEnd())
        return *known;
    QString there = folder;
    while (!QFileInfo::exists(there) && there != u"/")
        there = PathName::parent(there);
    QString problem;
    if (OnDevice::wouldLie(folder, _device.localRoot()))
        problem =
            tr("The destination folder is on the device itself, and nothing is written there");
    else if (!QFileInfo(there).isDir())
        problem = qt_error_string(ENOTDIR);
    _problems.insert(folder, problem);
    return problem;
}

bool ExportPlan::isTaken(const QString& path) const
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink() || _planned.contains(path);
}

QString ExportPlan::availablePath(const QString& path)
{
    const QString base = PathName::withoutExtension(path);
    const QString extension = PathName::extension(path);
    quint64& number = _lastNumbers[path];
    for (;;) {
        const QString candidate =
            PathName::withExtension(base + QString::number(++number), extension);
        if (!isTaken(candidate))
            return candidate;
    }
}
