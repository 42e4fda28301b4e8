#pragma once

#include <QRandomGenerator>
#include <QtGlobal>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <vector>

/// Finds records by ids whose bits are as good as random, so that nearly every look-up has to
/// wait for memory. Whoever has many to do says so before: `expect` them all, then `find` them.
template <typename Record>
class IdMap
{
public:
    /// Of equal ids the last one set counts.
    void set(qint32 id, Record* record) { _entries.push_back({id, record}); }

    /// Says that `find` will be asked for the id.
    void expect(qint32 id)
    {
        index();
        __builtin_prefetch(&_slots[home(id)]);
    }

    /// Null for an unknown id.
    [[nodiscard]] Record* find(qint32 id)
    {
        index();
        return _slots[place(id)].record;
    }

private:
    struct Entry {
        qint32 id = 0;
        Record* record = nullptr; ///< null in a free slot
    };
    static constexpr int Bits = 64;
    static constexpr std::size_t ReadAhead = 16;

    /// Where the search for an id begins. Ids are taken from a file that may mean harm; with a
    /// factor that nobody can foresee it cannot choose ids that meet in one place.
    [[nodiscard]] std::size_t home(qint32 id) const { return quint32(id) * _factor >> _shift; }

    /// The slot that has the id, or the free one where it belongs.
    [[nodiscard]] std::size_t place(qint32 id) const
    {
        std::size_t slot = home(id);
        while (_slots[slot].record && _slots[slot].id != id)
            slot = (slot + 1) & (_slots.size() - 1);
        return slot;
    }

    /// Puts all that was set since the last time into slots, of which a third or more is free.
    void index()
    {
        if (_indexed == _entries.size() && !_slots.empty())
            return;
        const std::size_t size = std::bit_ceil(std::max<std::size_t>(_entries.size() * 3 / 2, 2));
        if (size != _slots.size()) {
            _slots.assign(size, {});
            _shift = Bits - std::countr_zero(size);
            _indexed = 0;
        }
        for (; _indexed < _entries.size(); ++_indexed) {
            if (_indexed + ReadAhead < _entries.size())
                __builtin_prefetch(&_slots[home(_entries[_indexed + ReadAhead].id)], 1);
            _slots[place(_entries[_indexed].id)] = _entries[_indexed];
        }
    }

    std::vector<Entry> _entries;
    std::vector<Entry> _slots;
    std::size_t _indexed = 0;
    int _shift = 0;
    quint64 _factor = QRandomGenerator::global()->generate64() | 1U;
};
