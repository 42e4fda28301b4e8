#include "Device/CategoryIndex.h"

#include "Base/StarOrder.h"
#include "Device/Track.h"

#include <QSet>
#include <QStringBuilder>

namespace
{
constexpr QChar Separator = u'|';
} // namespace

const QString CategoryIndex::AllKey = QStringLiteral("*|*|*");

QString CategoryIndex::joinedKey(const QString& genre, const QString& artist, const QString& album)
{
    return genre + Separator + artist + Separator + album;
}

void CategoryIndex::add(Track* track)
{
    _rows.push_back(
        {{intern(track->genre), intern(track->artist), intern(track->album)}, track, false});
}

void CategoryIndex::addFlat(Track* track)
{
    _rows.push_back({{}, track, true});
}

CategoryIndex::TextId CategoryIndex::intern(const QString& text)
{
    if (text.isEmpty())
        return NoText;
    TextId& id = _ids[text];
    if (id == NoText) {
        _texts.push_back(text);
        id = TextId(_texts.size());
    }
    return id;
}

template <typename Visit>
void CategoryIndex::forEachCombination(const Row& row, Visit visit) const
{
    Combination own;
    for (unsigned level = 0; level < LevelCount; ++level) {
        if (!row.flat && row.ids[level] != NoText)
            own[level] = _texts[row.ids[level] - 1];
    }
    constexpr unsigned Combinations = 1U << LevelCount;
    for (unsigned taken = 0; taken < Combinations; ++taken) {
        Combination parts;
        for (unsigned level = 0; level < LevelCount; ++level) {
            const bool ownValue = (taken & (1U << (Album - level))) != 0;
            parts[level] = ownValue ? own[level] : StarOrder::Star;
        }
        if (!parts[Genre].isEmpty() && !parts[Artist].isEmpty() && !parts[Album].isEmpty())
            visit(parts);
    }
}

std::vector<Track*> CategoryIndex::tracks(const QString& key) const
{
    // Values are joined as they are, so with a "|" in one of them several combinations can read
    // the same; comparing joined texts finds them all. The lengths settle nearly every case.
    const QStringView wanted = key;
    const auto readsAsKey = [wanted](const Combination& parts) {
        const auto [genre, artist, album] = parts;
        return genre.size() + 1 + artist.size() + 1 + album.size() == wanted.size() &&
               wanted.startsWith(genre) && wanted.endsWith(album) &&
               wanted[genre.size()] == Separator &&
               wanted[genre.size() + 1 + artist.size()] == Separator &&
               wanted.mid(genre.size() + 1, artist.size()) == artist;
    };
    std::vector<Track*> found;
    if (key == AllKey)
        found.reserve(_rows.size());
    for (const Row& row : _rows) {
        forEachCombination(row, [&](const Combination& parts) {
            if (readsAsKey(parts))
                found.push_back(row.track);
        });
    }
    return found;
}

QHash<QString, std::vector<Track*>> CategoryIndex::trackMap() const
{
    QHash<QString, std::vector<Track*>> map;
    map[AllKey]; // there even when the category is empty
    for (const Row& row : _rows) {
        forEachCombination(row, [&](const Combination& parts) {
            const auto [genre, artist, album] = parts;
            map[genre % Separator % artist % Separator % album].push_back(row.track);
        });
    }
    return map;
}

CategoryIndex::AlbumTree CategoryIndex::albumTree() const
{
    const QString star = StarOrder::Star.toString();
    QHash<QString, QHash<QString, QSet<QString>>> sets;
    sets[star][star].insert(star); // there even when the category is empty
    for (const Row& row : _rows) {
        if (row.flat)
            continue;
        forEachCombination(row, [&](const Combination& parts) {
            const auto [genre, artist, album] = parts;
            sets[genre.toString()][artist.toString()].insert(album.toString());
        });
    }
    AlbumTree tree;
    for (auto genre = sets.constBegin(); genre != sets.constEnd(); ++genre) {
        for (auto artist = genre->constBegin(); artist != genre->constEnd(); ++artist) {
            QStringList& albums = tree[genre.key()][artist.key()];
            albums = artist->values();
            StarOrder::sortStarFirst(albums);
        }
    }
    return tree;
}

CategoryIndex::Choice CategoryIndex::choice(const QString& text) const
{
    return {text == StarOrder::Star, _ids.value(text, NoText)};
}

QStringList CategoryIndex::genres() const
{
    return values(Genre, Choice{true, NoText}, Choice{true, NoText});
}

QStringList CategoryIndex::artists(const QString& genre) const
{
    return values(Artist, choice(genre), Choice{true, NoText});
}

QStringList CategoryIndex::albums(const QString& genre, const QString& artist) const
{
    return values(Album, choice(genre), choice(artist));
}

QStringList CategoryIndex::values(Level level, Choice genre, Choice artist) const
{
    // The root path "*" to "*" to "*" is there even without a track.
    bool exists = (level == Genre || genre.any) && (level != Album || artist.any);
    std::vector<bool> present(_texts.size() + 1);
    for (const Row& row : _rows) {
        if (row.flat)
            continue;
        if ((level == Genre || genre.matches(row.ids[Genre])) &&
            (level != Album || artist.matches(row.ids[Artist]))) {
            exists = true;
            present[row.ids[level]] = true;
        }
    }
    QStringList list;
    if (!exists)
        return list;
    present[_ids.value(StarOrder::Star.toString(), NoText)] = false;
    list.append(StarOrder::Star.toString());
    for (TextId id = 1; id < present.size(); ++id) {
        if (present[id])
            list.append(_texts[id - 1]);
    }
    StarOrder::sortStarFirst(list);
    return list;
}
