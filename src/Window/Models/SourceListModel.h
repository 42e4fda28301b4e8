#pragma once

#include "Device/Problem.h"
#include "Device/Section.h"

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
    /// What a row stands for.
    enum class Kind {
        Section,  ///< a section of the device
        Playlist, ///< one of them, below the section of the playlists
        Album     ///< one of them, below the section of the photos
    };
    enum Role {
        KindRole = Qt::UserRole, ///< the row's Kind, as an int
        SectionRole,             ///< the Section that the row is or stands below, as an int
        PlaylistRole,            ///< the `Playlist*` of a row below Playlists
        AlbumRole,               ///< the `Album*` of a row below Photos
        HasProblemsRole          ///< whether not all that a section holds could be read
    };

    explicit SourceListModel(QObject* parent = nullptr);

    /// Shows a device; null shows nothing. The device must live until another one is set.
    void setDevice(Device* device);

    /// What could not be read of the device. Rows whose section it is about say so, in a role, a
    /// tip and to screen readers.
    void setProblems(const std::vector<ReaderProblem>& problems);
    /// What could not be read of a section.
    [[nodiscard]] std::vector<Problem> problems(Section section) const;
    /// How many of the device's tracks are checked.
    [[nodiscard]] int checkedCount() const;

    [[nodiscard]] Kind kind(const QModelIndex& index) const;
    /// The section that the row is, or stands below.
    [[nodiscard]] Section section(const QModelIndex& index) const;
    /// Voice memos show only where the device has a place for them, a camera roll on phones.
    [[nodiscard]] bool hasSection(Section section) const;
    /// Null for every row that is not a playlist, or not an album.
    [[nodiscard]] Playlist* playlist(const QModelIndex& index) const;
    [[nodiscard]] Album* album(const QModelIndex& index) const;
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    struct TopRow {
        Section section;
        QString label;
    };
    /// All that is known of a device.
    struct Rows {
        std::vector<TopRow> top;
        std::vector<Playlist*> playlists;
        std::vector<Album*> albums;
        std::vector<Track*> tracks; ///< that can be checked
    };

    static Rows rowsOf(Device& device);
    static void addSection(Rows& rows, Device& device, Section section);
    [[nodiscard]] QString problemWords(const QModelIndex& index) const;
    [[nodiscard]] int topRowOf(Section section) const;
    [[nodiscard]] QString label(const QModelIndex& index) const;

    Rows _rows;
    std::vector<ReaderProblem> _problems;
};
