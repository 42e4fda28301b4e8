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
    if (_device->fileExists(track.path) && !_device->isDirectory(track.path)) {
        const QString copy = MediaPlayer::privateCopyPath(track.path);
        canceled =
            copy.isNull() || _device->copyOut(track.path, copy, 0).end != CopyResult::End::Whole;
        if (!canceled)
            MediaPlayer::open(copy, [this] { return _toStop.load(); });
    }
    _host.showFinish(canceled, false);
}
