#pragma once

#include "Base/Expected.h"
#include "Export/ClashRule.h"
#include "Export/Config.h"
#include "Export/Destinations.h"
#include "Export/ExportPath.h"
#include "Export/ExportReport.h"

#include <QCoreApplication>
#include <QImage>
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
/// reported and the job goes on; only a stop, a clash question that is given up, or a device
/// that has gone ends it. Every item is reported, those that were not reached too.
///
/// The device's library must have been read before: the job reads tracks and playlists, which
/// live as long as the device it holds.
class ExportJob
{
    Q_DECLARE_TR_FUNCTIONS(ExportJob)

public:
    /// `toStop` is looked at before each item; whoever sets it also answers the device's
    /// delegate, so that a copy ends at its next chunk. All references outlive the job.
    ExportJob(std::shared_ptr<Device> device, Config& config, ExportHost& host,
              ExportReport& report, const std::atomic<bool>& toStop);

    void exportTracks(const std::vector<Track*>& tracks);
    /// The tracks of all playlists, each into the folder of its playlist.
    void exportPlaylists(const std::vector<Playlist*>& playlists);
    /// The full-size file of each photo, or else its large rendition as a JPEG file, which the
    /// report says. Photos of the device's `photoDb` and of its `cameraRollDb`, in any mixture.
    void exportPhotos(const std::vector<Photo*>& photos);

private:
    /// A track, and the playlist that it is exported as part of.
    struct Entry {
        const Track* track = nullptr;
        const Playlist* playlist = nullptr;
    };
    enum class Next { GoOn, Cancel };
    /// Where one item is written.
    struct Place {
        const Folder& folder;
        QString name;
        bool replaces = false; ///< what has the name

        [[nodiscard]] QString path() const { return folder.pathTo(name); }
    };
    enum class Written {
        Settled, ///< in whatever way: the item says how
        Taken    ///< something took the name meanwhile
    };
    using Writer = std::function<Written(ExportItem& item, const Place& place)>;

    void run(const std::vector<Entry>& entries);
    /// Goes through the items until one of them cancels or the device has gone; those that follow
    /// are reported as stopped or failed. Tells the host how it began and ended.
    void exportEach(std::size_t count, const std::function<ExportItem(std::size_t)>& itemAt,
                    const std::function<Next(std::size_t)>& exportOne);
    /// The line of an item that was not reached.
    void reportUnreached(ExportItem item);
    Next exportOne(const Entry& entry, int index);
    Next exportPhoto(const Photo& photo, int index);
    /// Finds the item's destination and, where nothing speaks against it, has it written there.
    void write(ExportItem& item, const ExportPath& to, const Writer& writer);
    /// What the item's end means for the job. An item that failed because the device has gone
    /// says that from here on.
    Next after(ExportItem& item);
    /// Copies to a place that was chosen, and fills in what became of it.
    Written copy(ExportItem& item, int index, const Place& place);
    static void judge(ExportItem& item, const CopyResult& copied, const CopiedSize& size,
                      const Place& place);
    /// Makes one archive of a folder that was copied, or removes one that is of no use.
    void packFolder(ExportItem& item, const Place& place);
    Status pack(const Place& place);
    /// Whether a photo's own file is there to be copied; a failure when nobody can tell.
    [[nodiscard]] Expected<bool> hasFullSizeFile(const Photo& photo) const;
    void exportFullSize(const Photo& photo, ExportItem& item, int index);
    void exportRendition(const Photo& photo, ExportItem& item);
    /// The last of a photo's large renditions that can be decoded.
    [[nodiscard]] Expected<QImage> rendition(const Photo& photo, ExportItem& item) const;
    static Written writePicture(const QImage& picture, ExportItem& item, const Place& place);
    void report(const ExportItem& item);
    /// Whether `path` is no item's own file: a row without a location leads to the root of the
    /// device or to one of the library's folders.
    [[nodiscard]] bool namesNoFile(const QString& path) const;
    [[nodiscard]] bool isLibraryFolder(const QString& folder) const;
    static ExportItem itemFor(const Track& track);
    static ExportItem itemFor(const Photo& photo);

    std::shared_ptr<Device> _device;
    Config& _config;
    ExportHost& _host;
    ExportReport& _report;
    const std::atomic<bool>& _toStop;
    ClashRule _clash;
    Destinations _destinations;
    std::optional<Failure> _gone; ///< why nothing more comes from the device
    bool _handsOver = false;
};
