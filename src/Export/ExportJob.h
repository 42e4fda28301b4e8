#pragma once

#include "Export/ExportReport.h"

#include <QString>

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

class Config;
class CopiedSize;
class Device;
class ExportHost;
struct CopyResult;
struct Playlist;
struct Track;

/// Copies items from a device, one after another, on the thread that calls. A failed copy is
/// reported and the job goes on; only a stop, or a clash question that is given up, ends it.
///
/// The device's library must have been read before: the job reads tracks and playlists, which
/// live as long as the device it holds.
class ExportJob
{
public:
    /// `toStop` is looked at before each item; whoever sets it also answers the device's
    /// delegate, so that a copy ends at its next chunk. All references outlive the job.
    ExportJob(std::shared_ptr<Device> device, Config& config, ExportHost& host,
              ExportReport& report, const std::atomic<bool>& toStop);

    void exportTracks(const std::vector<Track*>& tracks);
    /// The tracks of all playlists, each into the folder of its playlist.
    void exportPlaylists(const std::vector<Playlist*>& playlists);

private:
    /// A track, and the playlist that it is exported as part of.
    struct Entry {
        const Track* track = nullptr;
        const Playlist* playlist = nullptr;
    };
    enum class Next { GoOn, Cancel };

    void run(const std::vector<Entry>& entries);
    bool exportAll(const std::vector<Entry>& entries);
    Next exportOne(const Entry& entry, int index);
    /// Copies to a path that was chosen, and fills in what became of it.
    void copy(ExportItem& item, int index);
    void judge(ExportItem& item, const CopyResult& copied, const CopiedSize& size);
    void pack(ExportItem& item);
    [[nodiscard]] QString destinationProblem(const Entry& entry) const;
    void report(ExportItem item);

    std::shared_ptr<Device> _device;
    Config& _config;
    ExportHost& _host;
    ExportReport& _report;
    const std::atomic<bool>& _toStop;
    bool _toiTunes = false;
};
