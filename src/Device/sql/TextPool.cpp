#include "Device/sql/TextPool.h"

#include "Base/Utf8.h"

#include <QHash>
#include <QHashSeed>

namespace
{
constexpr std::size_t FirstSize = 1024;
constexpr std::size_t MostWaiting = 192;
constexpr std::size_t MostWaitingBytes = 16384;
constexpr int UpperHalf = 32;
} // namespace

TextPool::TextPool()
    : _slots(FirstSize)
{
}

QString TextPool::decode(QByteArrayView utf8)
{
    return Utf8::text(utf8);
}

void TextPool::share(QByteArrayView utf8, QString& target)
{
    // The seed differs from run to run: no file can choose texts that meet in one slot.
    const std::size_t hash = qHash(utf8, QHashSeed::globalSeed());
    __builtin_prefetch(&_slots[hash & (_slots.size() - 1)]);
    _waiting.push_back({hash, _waitingBytes.size(), utf8.size(), &target});
    _waitingBytes.append(utf8.data(), std::size_t(utf8.size()));
    if (_waiting.size() >= MostWaiting || _waitingBytes.size() >= MostWaitingBytes)
        finish();
}

void TextPool::finish()
{
    // First each step of all look-ups is only asked of memory, then all are done.
    for (const Waiting& waiting : _waiting)
        __builtin_prefetch(probable(waiting.hash));
    for (const Waiting& waiting : _waiting) {
        if (const Entry* entry = probable(waiting.hash)) {
            __builtin_prefetch(_bytes.data() + entry->start);
            __builtin_prefetch(reinterpret_cast<const char*>(entry->text.constData()) -
                                   sizeof(QArrayData),
                               1); // where the count of owners stands
        }
    }
    for (const Waiting& waiting : _waiting)
        *waiting.target = shared(waiting.hash, bytesOf(waiting));
    _waiting.clear();
    _waitingBytes.clear();
}

QByteArrayView TextPool::bytesOf(const Waiting& waiting) const
{
    return {_waitingBytes.data() + waiting.start, waiting.length};
}

QByteArrayView TextPool::bytesOf(const Entry& entry) const
{
    return {_bytes.data() + entry.start, entry.length};
}

/// The entry in the first slot for a hash, nearly always the one that is wanted; null where none
/// stands.
const TextPool::Entry* TextPool::probable(std::size_t hash) const
{
    const quint32 entry = _slots[hash & (_slots.size() - 1)].entry;
    return entry == 0 ? nullptr : &_entries[entry - 1];
}

const QString& TextPool::shared(std::size_t hash, QByteArrayView utf8)
{
    if ((_entries.size() + 1) * 2 > _slots.size())
        grow();
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
        if (slot.hash == quint32(hash >> UpperHalf) && bytesOf(_entries[slot.entry - 1]) == utf8)
            return slot;
    }
}

void TextPool::grow()
{
    std::vector<Slot> old(_slots.size() * 2);
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
