#pragma once

#include <QByteArray>

#include <vector>

/// Which files the memory of a process is made of, to find a place of one run in another: the
/// system loads a program at different addresses each time.
class MemoryMap
{
public:
    /// From the text of `/proc/PID/maps`; lines that are damaged are left out.
    explicit MemoryMap(const QByteArray& text);
    static MemoryMap ofThisProcess();

    /// Where this process has what the other had at an address; null when it has not.
    [[nodiscard]] void* samePlace(const MemoryMap& other, quint64 address) const;

private:
    struct Region {
        quint64 start = 0;
        quint64 end = 0;
        quint64 offset = 0; ///< in the file
        QByteArray file;    ///< device, inode and path
    };

    std::vector<Region> _regions;
};
