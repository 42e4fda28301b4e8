#pragma once

#include "Device/Track.h"

#include <QAbstractItemModel>

#include <optional>
#include <vector>

class Device;
struct Album;
struct Playlist;

/// The source list: the categories of a device with their counts, its playlists below "Playlists"
/// and its photo albums below "Photo". Counts are taken when the device is set; a library does
/// not change afterwards.
class SourceListModel final : public QAbstractItemModel
{
    Q_OBJECT
public:
    enum class Kind {
        Music,
        Movies,
        TVShows,
        Podcasts,
        Audiobooks,
        Ringtones,
        Books,
        Playlists,
        VoiceMemos, ///< only where the device has a place for them
        CameraRoll, ///< only phones have one
        Photos,
        Playlist, ///< one of them, below Playlists
        Album     ///< one of them, below Photos
    };
    enum Role {
        KindRole = Qt::UserRole, ///< the row's Kind, as an int
        PlaylistRole,            ///< the `Playlist*` of a row below Playlists
        AlbumRole                ///< the `Album*` of a row below Photos
    };

    explicit SourceListModel(QObject* parent = nullptr);

    /// Shows a device; null shows nothing. The device must live until another one is set.
    void setDevice(Device* device);

    [[nodiscard]] Kind kind(const QModelIndex& index) const;
    [[nodiscard]] bool hasTopRow(Kind kind) const;
    /// Null for every row that is not a playlist, or not an album.
    [[nodiscard]] Playlist* playlist(const QModelIndex& index) const;
    [[nodiscard]] Album* album(const QModelIndex& index) const;
    /// The category that a kind shows with the browser; none for ringtones and all others.
    static std::optional<MediaCategory> browsableCategory(Kind kind);

    /// Whether a kind shows photos, in the grid.
    static bool showsPhotos(Kind kind);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    struct TopRow {
        Kind kind;
        QString label;
    };

    void addTopRow(Kind kind, const QString& name, std::size_t count);
    void addMedia(Device& device);
    void addVoiceMemos(Device& device);
    void addPhotos(Device& device);
    [[nodiscard]] int topRowOf(Kind kind) const;
    [[nodiscard]] QString label(const QModelIndex& index) const;

    std::vector<TopRow> _topRows;
    std::vector<Playlist*> _playlists;
    std::vector<Album*> _albums;
};
