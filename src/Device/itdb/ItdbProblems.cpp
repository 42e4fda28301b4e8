#include "Device/itdb/ItdbProblems.h"

#include "Base/Failure.h"
#include "Device/itdb/ItdbFile.h"

#include <algorithm>
#include <limits>

namespace
{
int plural(quint64 count)
{
    return int(std::min<quint64>(count, std::numeric_limits<int>::max()));
}

QString missing(ItdbProblems::Items items, const ItdbLists::Tally& tally)
{
    using Items = ItdbProblems::Items;
    const int stated = plural(tally.stated);
    switch (items) {
    case Items::Tracks:
        return ItdbProblems::tr("The music library is damaged: %1 of %n tracks could be read",
                                nullptr, stated)
            .arg(tally.read);
    case Items::Playlists:
        return ItdbProblems::tr("The music library is damaged: %1 of %n playlists could be read",
                                nullptr, stated)
            .arg(tally.read);
    case Items::Photos:
        return ItdbProblems::tr("The photo library is damaged: %1 of %n photos could be read",
                                nullptr, stated)
            .arg(tally.read);
    case Items::Albums:
        return ItdbProblems::tr("The photo library is damaged: %1 of %n albums could be read",
                                nullptr, stated)
            .arg(tally.read);
    }
    return {};
}

QString statesNonsense(ItdbProblems::Items items, const ItdbLists::Tally& tally)
{
    using Items = ItdbProblems::Items;
    const int read = plural(tally.read);
    switch (items) {
    case Items::Tracks:
        return ItdbProblems::tr("The music library is damaged: it does not say how many tracks "
                                "it has, and %n could be read",
                                nullptr, read);
    case Items::Playlists:
        return ItdbProblems::tr("The music library is damaged: it does not say how many playlists "
                                "it has, and %n could be read",
                                nullptr, read);
    case Items::Photos:
        return ItdbProblems::tr("The photo library is damaged: it does not say how many photos it "
                                "has, and %n could be read",
                                nullptr, read);
    case Items::Albums:
        return ItdbProblems::tr("The photo library is damaged: it does not say how many albums it "
                                "has, and %n could be read",
                                nullptr, read);
    }
    return {};
}

QString leftOut(ItdbProblems::Items items, const ItdbLists::Tally& tally)
{
    using Items = ItdbProblems::Items;
    const int beyond = plural(tally.beyond);
    switch (items) {
    case Items::Tracks:
        return ItdbProblems::tr("The music library is damaged: %n tracks stand behind the last "
                                "one by its own count and were not read",
                                nullptr, beyond);
    case Items::Playlists:
        return ItdbProblems::tr("The music library is damaged: %n playlists stand behind the last "
                                "one by its own count and were not read",
                                nullptr, beyond);
    case Items::Photos:
        return ItdbProblems::tr("The photo library is damaged: %n photos stand behind the last "
                                "one by its own count and were not read",
                                nullptr, beyond);
    case Items::Albums:
        return ItdbProblems::tr("The photo library is damaged: %n albums stand behind the last "
                                "one by its own count and were not read",
                                nullptr, beyond);
    }
    return {};
}
} // namespace

void ItdbProblems::addDamage(const QString& words, const QString& exact)
{
    _problems.add(Problem::Kind::Damaged, words, exact);
}

void ItdbProblems::addUnreadable(const Failure& failure)
{
    _problems.add(failure, _isMusic ? tr("The music library could not be read")
                                    : tr("The photo library could not be read"));
}

void ItdbProblems::addFile(const ItdbFile::Content& file, const ItdbLists::Contents& contents)
{
    if (file.bytes.isEmpty()) {
        addDamage(_isMusic ? tr("The music library is damaged: its file is empty")
                           : tr("The photo library is damaged: its file is empty"));
    } else if (contents.isForeign) {
        _problems.add(Problem::Kind::NotUnderstood,
                      _isMusic ? tr("The music library is of a kind that is not known here")
                               : tr("The photo library is of a kind that is not known here"));
    } else if (file.isCutOff) {
        _problems.add(Problem::Kind::CutOff,
                      _isMusic ? tr("The music library is too large: only its beginning was read")
                               : tr("The photo library is too large: only its beginning was read"));
    } else if (contents.isCut) {
        addDamage(_isMusic ? tr("The music library is damaged: its file is shorter than it says")
                           : tr("The photo library is damaged: its file is shorter than it says"),
                  QStringLiteral("%1 bytes").arg(file.bytes.size()));
    }
}

void ItdbProblems::addItems(Items items, const ItdbLists::Tally& tally)
{
    if (tally.statesNonsense)
        addDamage(statesNonsense(items, tally));
    else if (tally.read < tally.stated)
        addDamage(missing(items, tally));
    if (tally.beyond > 0)
        addDamage(leftOut(items, tally));
}

void ItdbProblems::addContradictions(quint64 count)
{
    if (count == 0)
        return;
    addDamage(_isMusic ? tr("The music library is damaged: %n of its entries contradict "
                            "themselves and may be incomplete",
                            nullptr, plural(count))
                       : tr("The photo library is damaged: %n of its entries contradict "
                            "themselves and may be incomplete",
                            nullptr, plural(count)));
}
