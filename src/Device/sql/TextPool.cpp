#include "Device/sql/TextPool.h"

#include <QHash>

namespace
{
constexpr std::size_t FirstSize = 1024;
constexpr int UpperHalf = 32;
} // namespace

QString TextPool::decode(QByteArrayView utf8)
{
    if (utf8.isEmpty())
        return QLatin1String("");
    return utf8.isValidUtf8() ? QString::fromUtf8(utf8) : QString();
}

QString TextPool::shared(QByteArrayView utf8)
{
    if ((_entries.size() + 1) * 2 > _slots.size())
        grow();
    const std::size_t hash = qHash(utf8);
    Slot& slot = find(hash, utf8);
    if (slot.entry == 0) {
        _entries.push_back({hash, _bytes.size(), utf8.size(), decode(utf8)});
        _bytes.append(utf8.data(), std::size_t(utf8.size()));
        slot = {quint32(hash >> UpperHalf), quint32(_entries.size())};
    }
    return _entries[slot.entry - 1].text;
}

/// The slot of a text, or the free one where it belongs. Half of the slots are free.
TextPool::Slot& TextPool::find(std::size_t hash, QByteArrayView utf8)
{
    for (std::size_t place = hash;; ++place) {
        Slot& slot = _slots[place & (_slots.size() - 1)];
        if (slot.entry == 0)
            return slot;
        if (slot.hash != quint32(hash >> UpperHalf))
            continue;
        const Entry& entry = _entries[slot.entry - 1];
        if (QByteArrayView(_bytes.data() + entry.start, entry.length) == utf8)
            return slot;
    }
}

void TextPool::grow()
{
    std::vector<Slot> old(_slots.empty() ? FirstSize : _slots.size() * 2);
    old.swap(_slots);
    for (const Slot& slot : old) {
        if (slot.entry == 0)
            continue;
        std::size_t place = _entries[slot.entry - 1].hash;
        while (_slots[place & (_slots.size() - 1)].entry != 0)
            ++place;
        _slots[place & (_slots.size() - 1)] = slot;
    }
}
