#pragma once

#include <QtGlobal>

#include <cstddef>
#include <vector>

/// Finds records by ids whose bits are as good as random. Tables of one database mostly list the
/// same ids in the same order, so the record after the one found last is tried first.
template <typename Record>
class IdMap
{
public:
    /// Of equal ids the last one set counts.
    void set(qint32 id, Record* record)
    {
        if ((_entries.size() + 1) * 2 > _slots.size())
            grow();
        Slot& slot = _slots[place(id)];
        if (slot.number != 0) {
            _entries[slot.number - 1].record = record;
            return;
        }
        _entries.push_back({id, record});
        slot = {id, quint32(_entries.size())};
    }

    /// Null for an unknown id.
    [[nodiscard]] Record* find(qint32 id)
    {
        if (_next < _entries.size() && _entries[_next].id == id)
            return _entries[_next++].record;
        if (_entries.empty())
            return nullptr;
        const Slot& slot = _slots[place(id)];
        if (slot.number == 0)
            return nullptr;
        _next = slot.number;
        return _entries[slot.number - 1].record;
    }

private:
    struct Entry {
        qint32 id = 0;
        Record* record = nullptr;
    };
    /// An entry's number plus one; 0 is a free slot.
    struct Slot {
        qint32 id = 0;
        quint32 number = 0;
    };
    static constexpr std::size_t FirstSize = 1024;

    /// The slot that has the id, or the free one where it belongs. A size is a power of two, and
    /// half of the slots are free.
    [[nodiscard]] std::size_t place(qint32 id) const
    {
        constexpr quint64 Spread = 0x9E3779B97F4A7C15;
        constexpr int HighBits = 32;
        const std::size_t mask = _slots.size() - 1;
        std::size_t slot = (quint32(id) * Spread) >> HighBits & mask;
        while (_slots[slot].number != 0 && _slots[slot].id != id)
            slot = (slot + 1) & mask;
        return slot;
    }

    void grow()
    {
        std::vector<Slot> old(_slots.empty() ? FirstSize : _slots.size() * 2);
        old.swap(_slots);
        for (const Slot& slot : old) {
            if (slot.number != 0)
                _slots[place(slot.id)] = slot;
        }
    }

    std::vector<Entry> _entries;
    std::vector<Slot> _slots;
    std::size_t _next = 0;
};
