#include "Export/PlayJob.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/Track.h"
#include "Export/ExportHost.h"
#include "Platform/MediaPlayer.h"

PlayJob::PlayJob(std::shared_ptr<Device> device, ExportHost& host, const std::atomic<bool>& toStop)
    : _device(std::move(device))
    , _host(host)
    , _toStop(toStop)
{
}

void PlayJob::doPlay(const Track& track)
{
    _host.showBegin(1);
    bool canceled = false;
    Status played = find(track);
    if (played) {
        const QString own = MediaPlayer::privateCopyPath(track.path);
        played = copy(track, own);
        canceled = !played;
        if (played)
            played = MediaPlayer::open(own, [this] { return _toStop.load(); });
    }
    if (!played && !played.failedAs(Failure::Kind::Stopped))
        _host.showNotPlayed(track.title, played.failure());
    _host.showFinish(canceled, false);
}

Status PlayJob::find(const Track& track) const
{
    const Expected<FileInfo> found = _device->info(track.path);
    if (!found)
        return found.failure();
    if (found->kind == FileInfo::Kind::Folder)
        return Failure{Failure::Kind::Refused, tr("The device has a folder in its place"), {}};
    return {};
}

Status PlayJob::copy(const Track& track, const QString& to)
{
    if (to.isNull())
        return Failure{Failure::Kind::Unwritable, tr("There is no place for a private copy"), {}};
    const CopyResult copied = _device->copyOut(track.path, to, 0);
    switch (copied.end) {
    case CopyResult::End::Whole:
        return {};
    case CopyResult::End::Stopped:
        return Failure{Failure::Kind::Stopped, {}, {}};
    case CopyResult::End::Missing:
        return Failure{Failure::Kind::Missing, copied.why, {}};
    case CopyResult::End::Incomplete:
        return Failure{Failure::Kind::Unreadable, copied.why, {}};
    case CopyResult::End::Failed:
    case CopyResult::End::Taken:
        return Failure{Failure::Kind::Unwritable, copied.why, {}};
    }
    return {};
}
