#pragma once

#include "Export/Config.h"
#include "Export/ExportPath.h"
#include "Export/ExportReport.h"

#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class CopiedSize;
class Device;
class ExportHost;
struct CopyResult;
struct Photo;
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
    /// The full-size file of each photo, or else its large rendition as a JPEG file. Photos of
    /// the device's `photoDb` and of its `cameraRollDb`, in any mixture.
    void exportPhotos(const std::vector<Photo*>& photos);

private:
    /// A track, and the playlist that it is exported as part of.
    struct Entry {
        const Track* track = nullptr;
        const Playlist* playlist = nullptr;
    };
    enum class Next { GoOn, Cancel };
    /// How one item goes: where to, and what writes it there.
    struct Way {
        Section folder = Section::Music;
        std::function<ExportPath()> path;
        std::function<void(ExportItem& item)> write;
    };

    void run(const std::vector<Entry>& entries);
    /// Goes through the items until one of them cancels; those that follow are reported as
    /// stopped. Tells the host how it began and ended.
    void exportEach(std::size_t count, const std::function<ExportItem(std::size_t)>& itemAt,
                    const std::function<Next(std::size_t)>& exportOne);
    Next exportOne(const Entry& entry, int index);
    Next exportPhoto(const Photo& photo, int index);
    /// Finds the item's destination and, where nothing speaks against it, writes it there.
    void write(ExportItem& item, const Way& way);
    static Next after(const ExportItem& item);
    /// Copies to a path that was chosen, and fills in what became of it.
    void copy(ExportItem& item, int index);
    void judge(ExportItem& item, const CopyResult& copied, const CopiedSize& size);
    void pack(ExportItem& item);
    [[nodiscard]] bool hasFullSizeFile(const Photo& photo) const;
    /// Writes the last of a photo's large renditions that can be decoded.
    void writeRendition(const Photo& photo, ExportItem& item);
    [[nodiscard]] QString destinationProblem(Section folder) const;
    void report(ExportItem item);
    /// Whether `path` is no item's own file: a row without a location leads to the root of the
    /// device or to one of the library's folders.
    [[nodiscard]] bool namesNoFile(const QString& path) const;

    std::shared_ptr<Device> _device;
    Config& _config;
    ExportHost& _host;
    ExportReport& _report;
    const std::atomic<bool>& _toStop;
    bool _handsOver = false;
};
