#pragma once

#include "Base/Descriptor.h"
#include "Base/Failure.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <optional>
#include <span>

/// An open file of the computer or of a mounted volume, closed with the object. Sizes and
/// positions are 64 bits wide. One thread at a time.
class File
{
public:
    enum class Mode {
        Read,     ///< an existing regular file; a pipe or a device node could block for ever
        Create,   ///< a new file, in place of a file or a link that is there
        CreateNew ///< a new file, and only where nothing is
    };

    /// Opens at once; ask `isOpen` or `error` how that went.
    File(const QString& path, Mode mode);
    /// Takes over a descriptor; one that is no regular file is closed.
    explicit File(Descriptor descriptor);

    [[nodiscard]] bool isOpen() const { return bool(_descriptor); }
    /// The system's words for what failed last; empty when nothing did.
    [[nodiscard]] const QString& error() const { return _error; }
    /// The same with what it means.
    [[nodiscard]] Failure failure() const;
    /// Whether `CreateNew` found something of that name.
    [[nodiscard]] bool wasTaken() const;

    /// The size in bytes that the file system reports; none when it cannot be asked.
    [[nodiscard]] std::optional<qint64> size() const;
    /// Reads up to `buffer.size()` bytes on from the last position: the count, 0 at the end or
    /// after an error.
    qint64 read(std::span<std::byte> buffer);
    /// The file from its start, as far as the reported size goes; null when reading fails before
    /// the first byte, or when it is larger than the memory that is free.
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
    void keepOnlyRegular();
    qint64 appendThroughBuffer(File& source, qint64 length);

    Descriptor _descriptor;
    bool _kernelCopies = true;
    int _errorNumber = 0;
    QString _error;
};
