#pragma once

#include "Device/itdb/RecordWalk.h"

#include <span>
#include <vector>

/// The lists of a player's binary database. Its file is one record that holds data sets, and each
/// of these a list of items, of a kind that the data set's type tells.
namespace ItdbLists
{
/// A type of data set, and the tags of the list and the items in it.
struct Kind {
    quint32 type = 0;
    quint32 list = 0;
    quint32 item = 0;
};

struct List {
    Kind kind;
    Record record; ///< from the list's tag to the end of its data set
};

/// How many items there are: by what the lists state, by what was read, and how many stand there
/// beyond the number that is stated.
struct Tally {
    quint64 stated = 0;
    quint64 read = 0;
    quint64 beyond = 0;
    bool statesNonsense = false; ///< the list has no room for as many

    void add(const Tally& other)
    {
        stated += other.stated;
        read += other.read;
        beyond += other.beyond;
        statesNonsense = statesNonsense || other.statesNonsense;
    }
    /// The same without the first item, which stands for all the others.
    [[nodiscard]] Tally withoutFirst() const
    {
        return {stated - (stated > 0 ? 1 : 0), read - (read > 0 ? 1 : 0), beyond, statesNonsense};
    }
};

struct Contents {
    std::vector<List> lists; ///< of the kinds asked for, in the order of the file
    /// The file says that it goes on, which it does not.
    bool isCut = false;
    /// It holds something, but nothing that looks like such a database.
    bool isForeign = false;
};

/// Finds the lists of the kinds. `root` is the tag of the file's own record.
Contents find(ByteView file, quint32 root, std::span<const Kind> kinds, quint64& contradictions);

/// Calls `read` with each item of the list and with its number, counted from 0. It answers whether
/// the item could be read.
template <typename Read>
Tally eachItem(const List& list, quint64& contradictions, Read read)
{
    Tally tally;
    const ByteView bytes = list.record.bytes;
    if (bytes.size() < ItdbRecord::SmallestRecord)
        return tally;
    tally.stated = ItdbRecord::field(bytes, ItdbRecord::ItemCount);
    tally.statesNonsense =
        !list.record.isCut && tally.stated > bytes.size() / ItdbRecord::SmallestRecord;
    RecordWalk items(list.record, tally.stated, {list.kind.item, list.kind.item}, contradictions);
    while (const Record* item = items.next()) {
        if (items.isBeyondCount())
            ++tally.beyond;
        else if (!item->isCut && read(*item, items.index()))
            ++tally.read;
    }
    return tally;
}
} // namespace ItdbLists
