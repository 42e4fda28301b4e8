#include "Device/itdb/ItdbLists.h"

#include <algorithm>
#include <set>
#include <vector>

namespace
{
using ItdbLists::Contents;
using ItdbLists::Kind;
using ItdbLists::List;

constexpr quint32 DataSetTag = ItdbRecord::tag("mhsd");
constexpr std::size_t DataSetCount = 20;
constexpr std::size_t FileHeader = 24;
constexpr std::size_t DataSetType = 12;
constexpr std::size_t DataSetHeader = 16;

/// The file as a record. Its total length is no part of what leads the way; it tells a file that
/// was cut from one that contradicts itself.
Record whole(ByteView file)
{
    const std::size_t total = ItdbRecord::field(file, ItdbRecord::TotalLength);
    return {file, total > file.size() || total < ItdbRecord::SmallestRecord};
}

quint32 listTag(const Record& dataSet)
{
    const std::size_t header = ItdbRecord::field(dataSet.bytes, ItdbRecord::HeaderLength);
    const bool isInside = header <= dataSet.bytes.size() &&
                          dataSet.bytes.size() - header >= ItdbRecord::SmallestRecord;
    return isInside ? ItdbRecord::field(dataSet.bytes, header) : 0;
}

const Kind* kindOfType(std::span<const Kind> kinds, quint32 type)
{
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [&](const Kind& kind) { return kind.type == type; });
    return found != kinds.end() ? &*found : nullptr;
}

const Kind* kindOfList(std::span<const Kind> kinds, quint32 tag)
{
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [&](const Kind& kind) { return kind.list == tag; });
    return found != kinds.end() ? &*found : nullptr;
}

/// All lists' tags are alike, also those of lists that are not read.
bool isListTag(quint32 tag)
{
    constexpr quint32 FirstLetters = 0x00ffffff;
    return (tag & FirstLetters) == (ItdbRecord::tag("mhl?") & FirstLetters);
}

/// A data set, and what it is: by its type, unless its list says something else.
struct DataSet {
    Record record;
    const Kind* kind = nullptr;
    bool isGuess = false; ///< by the list's tag alone; the type is that of another kind, or none's
};

DataSet classify(const Record& record, std::span<const Kind> kinds)
{
    const Kind* byType = kindOfType(kinds, ItdbRecord::field(record.bytes, DataSetType));
    const quint32 tag = listTag(record);
    const Kind* byList = kindOfList(kinds, tag);
    if (byType && (byType->list == tag || !isListTag(tag)))
        return {record, byType, false};
    return {record, byList, true};
}

struct DataSets {
    std::vector<DataSet> all;
    std::set<const Kind*> certain; ///< kinds that one is beyond doubt
    bool haveTags = false;
};

DataSets dataSetsOf(const Record& database, quint32 count, std::span<const Kind> kinds,
                    quint64& contradictions)
{
    DataSets found;
    RecordWalk walk(database, count, {DataSetTag, DataSetTag}, contradictions);
    while (const Record* record = walk.next()) {
        found.haveTags = found.haveTags || walk.tag() == DataSetTag;
        if (walk.isBeyondCount() || record->bytes.size() < DataSetHeader)
            continue;
        found.all.push_back(classify(*record, kinds));
        if (!found.all.back().isGuess)
            found.certain.insert(found.all.back().kind);
    }
    if (walk.disagreesWithCount() && !database.isCut)
        ++contradictions;
    return found;
}

/// The lists of the data sets. A set that says two things is believed where no other is beyond
/// doubt what it looks like.
std::vector<List> listsOf(const DataSets& dataSets, quint64& contradictions)
{
    std::vector<List> lists;
    for (const DataSet& dataSet : dataSets.all) {
        if (!dataSet.kind || (dataSet.isGuess && dataSets.certain.contains(dataSet.kind)))
            continue;
        contradictions += dataSet.isGuess ? 1 : 0;
        lists.push_back({*dataSet.kind,
                         ItdbRecord::nested(dataSet.record, dataSet.kind->list, contradictions)});
    }
    return lists;
}
} // namespace

Contents ItdbLists::find(ByteView file, quint32 root, std::span<const Kind> kinds,
                         quint64& contradictions)
{
    Contents contents;
    const bool hasRootTag = file.size() >= sizeof root && ItdbRecord::field(file, 0) == root;
    if (file.size() < FileHeader) {
        contents.isCut = hasRootTag;
        contents.isForeign = !hasRootTag;
        return contents;
    }
    const quint32 count = ItdbRecord::field(file, DataSetCount);
    const DataSets dataSets = dataSetsOf(whole(file), count, kinds, contradictions);
    contents.lists = listsOf(dataSets, contradictions);
    const bool hasNothing = contents.lists.empty() && !dataSets.haveTags;
    const std::size_t header = ItdbRecord::field(file, ItdbRecord::HeaderLength);
    const bool endsInHeader = hasRootTag && file.size() < header + DataSetHeader;
    contents.isCut = ItdbRecord::field(file, ItdbRecord::TotalLength) > file.size() ||
                     (hasNothing && count > 0 && endsInHeader);
    contents.isForeign = hasNothing && !endsInHeader && (count > 0 || !hasRootTag);
    return contents;
}
