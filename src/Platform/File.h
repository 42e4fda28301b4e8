#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <span>

/// An open file of the computer or of a mounted volume, closed with the object. Sizes and
/// positions are 64 bits wide. One thread at a time.
class File
{
public:
    enum class Mode {
        Read,  ///< an existing regular file; a pipe or a device node could block for ever
        Create ///< an empty file in place of whatever file is there
    };

    /// Opens at once; ask `isOpen` or `error` how that went.
    File(const QString& path, Mode mode);
    ~File();
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    [[nodiscard]] bool isOpen() const { return _descriptor >= 0; }
    /// The system's words for what failed last; empty when nothing did.
    [[nodiscard]] const QString& error() const { return _error; }

    /// The size in bytes that the file system reports.
    qint64 size() const;
    /// Reads up to `buffer.size()` bytes on from the last position: the count, 0 at the end or
    /// after an error.
    qint64 read(std::span<std::byte> buffer);
    /// The whole file from its start; null when reading fails before the first byte, or when it
    /// is larger than the memory that is free.
    QByteArray readAll();
    /// At most `length` bytes from `offset`; fewer at the end, empty past it.
    QByteArray readRange(qint64 offset, qint64 length);
    /// Writes all of `bytes`, or answers false.
    bool write(std::span<const std::byte> bytes);
    /// Moves up to `length` bytes from `source` to here, inside the kernel where the file systems
    /// can. Gives the count moved: less than `length` when the source ended or one of the two
    /// files failed, which `error` of that file then says.
    qint64 append(File& source, qint64 length);
    /// Closes the file; false when the system only now reports that writing had failed.
    bool close();

private:
    void fail(int errorNumber);
    qint64 appendThroughBuffer(File& source, qint64 length);

    int _descriptor = -1;
    bool _kernelCopies = true;
    QString _error;
};
