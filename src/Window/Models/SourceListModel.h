#pragma once

#include "Device/Track.h"

#include <QAbstractItemModel>

#include <optional>
#include <vector>

class Device;
struct Playlist;

/// The source list: the categories of a device with their counts, and its playlists below
/// "Playlists". Counts are taken when the device is set; a library does not change afterwards.
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
        Photos,
        Playlist ///< one of them, below Playlists
    };
    enum Role {
        KindRole = Qt::UserRole, ///< the row's Kind, as an int
        PlaylistRole             ///< the `Playlist*` of a row below Playlists
    };

    explicit SourceListModel(QObject* parent = nullptr);

    /// Shows a device; null shows nothing. The device must live until another one is set.
    void setDevice(Device* device);

    [[nodiscard]] Kind kind(const QModelIndex& index) const;
    [[nodiscard]] Playlist* playlist(const QModelIndex& index) const;
    /// The category that a kind shows with the browser; none for ringtones and all others.
    static std::optional<MediaCategory> browsableCategory(Kind kind);

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

    std::vector<TopRow> _topRows;
    std::vector<Playlist*> _playlists;
};
