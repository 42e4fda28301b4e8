#include "Window/Crash/MemoryMap.h"

#include <QFile>

namespace
{
// start-end permissions offset device inode path
constexpr qsizetype FieldsBeforePath = 5;

quint64 hex(const QByteArray& text)
{
    return text.toULongLong(nullptr, 16);
}
} // namespace

MemoryMap::MemoryMap(const QByteArray& text)
{
    for (const QByteArray& line : text.split('\n')) {
        const QByteArrayList fields = line.simplified().split(' ');
        const qsizetype path = line.indexOf('/');
        if (fields.size() <= FieldsBeforePath || path < 0 || !fields[1].contains('x'))
            continue;
        const QByteArrayList range = fields[0].split('-');
        const Region region{hex(range[0]), hex(range.value(1)), hex(fields[2]),
                            fields[3] + ' ' + fields[4] + ' ' + line.mid(path)};
        if (region.start < region.end)
            _regions.push_back(region);
    }
}

MemoryMap MemoryMap::ofThisProcess()
{
    QFile file(QStringLiteral("/proc/self/maps"));
    if (!file.open(QIODevice::ReadOnly))
        return MemoryMap({});
    return MemoryMap(file.readAll());
}

void* MemoryMap::samePlace(const MemoryMap& other, quint64 address) const
{
    for (const Region& there : other._regions) {
        if (address < there.start || address >= there.end)
            continue;
        const quint64 inFile = address - there.start + there.offset;
        for (const Region& here : _regions) {
            if (here.file == there.file && inFile >= here.offset &&
                inFile - here.offset < here.end - here.start)
                // NOLINTNEXTLINE(performance-no-int-to-ptr): an address is all that the map has
                return reinterpret_cast<void*>(here.start + (inFile - here.offset));
        }
    }
    return nullptr;
}
