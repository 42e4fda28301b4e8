#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <cstdint>
#include <vector>

struct Track;

/// The tracks of one category by genre, artist and album.
///
/// It answers as two dictionaries would: the track map, whose keys are genre, artist and album
/// joined by "|" with "*" standing for all at any level, and the album tree genre to artist to
/// album that says which combinations exist. Neither is kept: each track costs one row of
/// numbers that stand for its texts, and a question is one pass over the rows. So filling costs
/// three look-ups a track instead of eight joined keys, and memory does not grow with the number
/// of combinations.
class CategoryIndex
{
public:
    /// The key of all tracks of the category.
    static const QString AllKey; // "*|*|*"

    static QString joinedKey(const QString& genre, const QString& artist, const QString& album);

    /// Files a track under every combination of its own values and "*". A null or empty value
    /// is filed only as "*". A value that is itself "*" files the track twice where both meet.
    void add(Track* track);
    /// Files a track under "*|*|*" alone, outside the album tree.
    void addFlat(Track* track);

    /// The track map: the tracks under a joined key, in the order they were added. Empty when
    /// there is no such key; only "*|*|*" exists without a track.
    [[nodiscard]] std::vector<Track*> tracks(const QString& key) const;
    /// The track map in full. It is large: meant for whoever prints a whole library.
    [[nodiscard]] QHash<QString, std::vector<Track*>> trackMap() const;

    /// The album tree, each level in the browser's order with "*" first. A genre or an artist
    /// that is not in the tree has an empty list below it.
    [[nodiscard]] QStringList genres() const;
    [[nodiscard]] QStringList artists(const QString& genre) const;
    [[nodiscard]] QStringList albums(const QString& genre, const QString& artist) const;

    /// Genre to artist to albums; the albums in the browser's order.
    using AlbumTree = QHash<QString, QHash<QString, QStringList>>;
    /// The album tree in full, for the same reader as `trackMap`.
    [[nodiscard]] AlbumTree albumTree() const;

private:
    enum Level { Genre, Artist, Album, LevelCount };
    /// One combination of a row's own values and "*"; empty parts are not filed.
    using Combination = std::array<QStringView, LevelCount>;

    /// A text's number: 0 for none, else its place in `_texts` plus one.
    using TextId = std::uint32_t;
    static constexpr TextId NoText = 0;
    struct Row {
        std::array<TextId, LevelCount> ids{};
        Track* track = nullptr;
        bool flat = false;
    };
    /// What one level of the tree asks of a row: any value, or one certain value.
    struct Choice {
        bool any = false;
        TextId id = NoText;
        [[nodiscard]] bool matches(TextId value) const
        {
            return any || (id != NoText && id == value);
        }
    };

    TextId intern(const QString& text);
    [[nodiscard]] Choice choice(const QString& text) const;
    [[nodiscard]] QStringList values(Level level, Choice genre, Choice artist) const;
    /// Calls `visit` for each combination that the row is filed under, "*|*|*" first.
    template <typename Visit>
    void forEachCombination(const Row& row, Visit visit) const;

    QHash<QString, TextId> _ids;
    std::vector<QString> _texts;
    std::vector<Row> _rows;
};
