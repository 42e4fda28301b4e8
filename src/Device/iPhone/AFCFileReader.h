#pragma once

#include <QByteArray>

#include <deque>
#include <memory>
#include <vector>

class AFCInterface;
struct AFCRead;

/// The reads of one open file, in the order that a copy makes them. A read that fails leaves out
/// its stretch and the next goes on behind it, but every sequence of reads ends: at the end of
/// the file, with the connection, at a failure where the file should have ended, or after very
/// many failures in a row.
class AFCFileReader
{
public:
    /// `reportedSize` is what the phone says that the file holds.
    AFCFileReader(AFCInterface& files, quint64 handle, double reportedSize);

    /// Reads up to `size` bytes at `offset`; `size` becomes the count, unless the read failed.
    /// False when the sequence ends here.
    bool read(quint64 offset, quint32& size);
    /// Has the phone read already what the next `read` will ask for, with the same arguments, and
    /// what that one's next will.
    void readAhead(quint64 offset, quint32 size);
    /// What the last read gave; null when it failed.
    [[nodiscard]] const QByteArray& bytes() const { return _bytes; }
    /// Whether a stretch was left out, or what came last cannot be trusted.
    [[nodiscard]] bool hasGap() const { return _hasGap; }

private:
    bool goesOn(quint64 offset, quint32 size);
    QByteArray takeSpare();

    AFCInterface& _files;
    quint64 _handle;
    double _reportedSize;
    int _failures = 0;
    bool _hasGap = false;
    QByteArray _bytes;
    std::vector<QByteArray> _spares; ///< memory that further reads use again
    std::deque<std::shared_ptr<AFCRead>> _ahead;
};
