#pragma once

#include <QDateTime>
#include <QString>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

struct sqlite3_stmt;

/// Bytes of a device's file that somebody else owns.
using ByteView = std::span<const std::byte>;

/// The small things that the whole program shares. Everything may be called on any thread.
class Utility
{
public:
    /// Little-endian fields at a byte offset. A field that does not lie wholly inside the buffer
    /// throws the Exception named "NSRangeException".
    static std::uint8_t readUCharFromData(ByteView data, std::size_t offset)
    {
        return field<std::uint8_t>(data, offset);
    }
    static std::int8_t readCharFromData(ByteView data, std::size_t offset)
    {
        return field<std::int8_t>(data, offset);
    }
    static std::uint16_t readUShortFromData(ByteView data, std::size_t offset)
    {
        return field<std::uint16_t>(data, offset);
    }
    static std::int16_t readShortFromData(ByteView data, std::size_t offset)
    {
        return field<std::int16_t>(data, offset);
    }
    static std::uint32_t readUIntFromData(ByteView data, std::size_t offset)
    {
        return field<std::uint32_t>(data, offset);
    }
    static std::int32_t readIntFromData(ByteView data, std::size_t offset)
    {
        return field<std::int32_t>(data, offset);
    }

    /// `length` bytes at `offset`; throws "NSRangeException" when they reach past the buffer.
    static ByteView bytesOfData(ByteView data, std::size_t offset, std::size_t length)
    {
        // Subtract, never add: offset + length could wrap around and pass the check.
        if (offset > data.size() || length > data.size() - offset)
            throwRangeException(data.size(), offset, length);
        return data.subspan(offset, length);
    }

    /// The column's text; NULL gives the empty string, bytes that are no UTF-8 give a null one.
    static QString stringWithStmt(sqlite3_stmt* statement, int index);
    /// The column's double as seconds since 2001-01-01 00:00:00 UTC, to the millisecond; NULL
    /// gives that moment itself.
    static QDateTime dateWithStmt(sqlite3_stmt* statement, int index);

    /// "mm:ss", or "hh:mm:ss" from one hour on. Seconds round up, so 59.2 reads "00:60".
    static QString intervalToString(double seconds);

    /// The temporary folder with the last component of `path` appended. A name that ends in
    /// "XXXXXX" is made unique and the file created, empty; any other is only a name.
    static QString getTempFilePath(const QString& path);
    /// The program's folder for data of this user; created if missing.
    static QString applicationSupportFolder();
    /// The folder of logs and diagnostic copies inside it; created if missing.
    static QString logFolder();
    /// Removes the log folder with everything in it. One that is reached through a link, or that is
    /// another user's, is left alone.
    static void clearLog();
    /// Creates a folder with all missing parents. Gives an empty string, or the system's words why
    /// there is no such folder now.
    static QString createFolder(const QString& path);
    /// A new UUID in its standard text form, upper case, without braces.
    static QString stringWithUUID();

private:
    template <typename Field>
    static Field field(ByteView data, std::size_t offset)
    {
        static_assert(std::endian::native == std::endian::little);
        Field value{};
        std::memcpy(&value, bytesOfData(data, offset, sizeof value).data(), sizeof value);
        return value;
    }
    [[noreturn]] static void throwRangeException(std::size_t size, std::size_t offset,
                                                 std::size_t length);
};
