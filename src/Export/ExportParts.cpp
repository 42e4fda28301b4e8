#include "Export/ExportParts.h"

#include "Device/Playlist.h"
#include "Export/ExportJob.h"

#include <numeric>
#include <utility>

namespace
{
/// How many items an export of this part has: a track for each playlist that lists it.
std::size_t itemCount(const SectionItems& part)
{
    return std::accumulate(
        part.playlists.begin(), part.playlists.end(), part.tracks.size() + part.photos.size(),
        [](std::size_t sum, const Playlist* playlist) { return sum + playlist->tracks.size(); });
}
} // namespace

ExportParts::ExportParts(std::shared_ptr<Device> device, Config& config, ExportHost& host,
                         ExportReport& report, std::atomic<bool>& toStop)
    : _device(std::move(device))
    , _config(config)
    , _host(host)
    , _report(report)
    , _toStop(toStop)
{
}

void ExportParts::run(const std::vector<SectionItems>& parts)
{
    std::size_t count = 0;
    bool hasMedia = false;
    for (const SectionItems& part : parts) {
        count += itemCount(part);
        hasMedia = hasMedia || itemCount(part) > part.photos.size();
    }
    if (count == 0)
        return;
    if (hasMedia)
        _handsOver = _host.askForHandOver();
    if (!_handsOver)
        return;
    _host.showBegin(int(count));
    ExportJob job(_device, _config, *this, _report, _toStop);
    for (const SectionItems& part : parts) {
        job.exportTracks(part.tracks);
        job.exportPlaylists(part.playlists);
        job.exportPhotos(part.photos);
    }
    _host.showPart(0);
    _host.showFinish(_canceled, true);
}

void ExportParts::showBegin(int count)
{
    _before += std::exchange(_begun, count);
    _host.showPart(_before);
}

void ExportParts::showProgress(const QString& text, double progress)
{
    _host.showProgress(text, _before + progress);
}

void ExportParts::showItem(const ExportItem& item)
{
    _host.showItem(item);
}

void ExportParts::showFinish(bool canceled, bool /*alert*/)
{
    if (!canceled)
        return;
    _canceled = true;
    _toStop = true;
}

std::optional<ClashAnswer> ExportParts::askClash(const QString& path)
{
    return _host.askClash(path);
}

std::optional<bool> ExportParts::askForHandOver()
{
    return _handsOver;
}

void ExportParts::handOver(const QString& path, const std::vector<Playlist*>& playlists)
{
    _host.handOver(path, playlists);
}
