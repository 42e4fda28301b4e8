#pragma once

#include "Export/ExportReport.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>
#include <QString>

#include <vector>

class Config;
class Device;
struct Photo;
struct Playlist;
struct Track;

/// What an export would do: each item with the place that the paths and rules of the settings
/// give it, against what is there and against what the export itself would have written by then.
/// Nothing is written. Where the rule is to ask, both files are kept.
class ExportPlan
{
    Q_DECLARE_TR_FUNCTIONS(ExportPlan)

public:
    /// Both outlive the object.
    ExportPlan(Device& device, const Config& config);

    void addTracks(const std::vector<Track*>& tracks);
    void addPlaylists(const std::vector<Playlist*>& playlists);
    void addPhotos(const std::vector<Photo*>& photos);

    /// One for each, in the order of the export: planned, skipped, or why it cannot be copied.
    [[nodiscard]] const std::vector<ExportItem>& items() const { return _items; }

private:
    void addTrack(const Track& track, const Playlist* playlist);
    void addPhoto(const Photo& photo);
    /// Whether the device has the item's file; else the item says why not.
    bool hasSource(ExportItem& item);
    [[nodiscard]] bool namesNoFile(const QString& path) const;
    /// The file that a photo's large rendition is in; null when there is none.
    [[nodiscard]] QString renditionFile(const Photo& photo) const;
    void place(ExportItem& item, const QString& path, const QString& refusal);
    /// Why nothing can be made in a folder; empty when nothing is known.
    QString problemOf(const QString& folder);
    [[nodiscard]] bool isTaken(const QString& path) const;
    QString availablePath(const QString& path);

    Device& _device;
    const Config& _config;
    std::vector<ExportItem> _items;
    QSet<QString> _planned;               ///< paths that are written by then
    QHash<QString, quint64> _lastNumbers; ///< of a name, so that none is tried twice
    QHash<QString, QString> _problems;    ///< of folders
};
