#include "Platform/PhonePacket.h"

#include <QString>
#include <QtEndian>

namespace
{
const QByteArray Signature = QByteArrayLiteral("CFA6LPAA");
constexpr quint64 OpenForReading = 1; // the next higher mode creates a file that is missing
constexpr quint64 FromStart = 0;

QByteArray littleEndian(quint64 value)
{
    value = qToLittleEndian(value);
    return QByteArray(reinterpret_cast<const char*>(&value), sizeof value);
}

quint64 fieldAt(const QByteArray& bytes, qsizetype offset)
{
    return offset + PhonePacket::NumberSize <= bytes.size()
               ? qFromLittleEndian<quint64>(bytes.constData() + offset)
               : 0;
}

QByteArray pathBytes(const QString& path)
{
    return path.toUtf8() + '\0';
}
} // namespace

namespace PhonePacket
{
QByteArray question(quint64 number, Operation operation, const QByteArray& body)
{
    const QByteArray length = littleEndian(quint64(HeaderSize + body.size()));
    return Signature + length + length + littleEndian(number) + littleEndian(quint64(operation)) +
           body;
}

QByteArray bodyForPath(const QString& path)
{
    return pathBytes(path);
}

QByteArray bodyToOpen(const QString& path)
{
    return littleEndian(OpenForReading) + pathBytes(path);
}

QByteArray bodyToRead(quint64 handle, quint64 size)
{
    return littleEndian(handle) + littleEndian(size);
}

QByteArray bodyToSeek(quint64 handle, qint64 offset)
{
    return littleEndian(handle) + littleEndian(FromStart) + littleEndian(quint64(offset));
}

QByteArray bodyToClose(quint64 handle)
{
    return littleEndian(handle);
}

std::optional<Head> readHead(const QByteArray& bytes)
{
    if (bytes.size() != HeaderSize || !bytes.startsWith(Signature))
        return std::nullopt;
    const quint64 entire = fieldAt(bytes, 8);
    const quint64 fixed = fieldAt(bytes, 16);
    if (fixed < quint64(HeaderSize) || entire < fixed)
        return std::nullopt;
    const Head head = {fieldAt(bytes, 24), Operation(fieldAt(bytes, 32)),
                       entire - quint64(HeaderSize)};
    switch (head.operation) {
    case Operation::Data:
        return head;
    case Operation::Status:
    case Operation::FileOpened:
        return head.bodySize == quint64(NumberSize) ? std::optional(head) : std::nullopt;
    default:
        return std::nullopt;
    }
}

quint64 numberIn(const QByteArray& body)
{
    return fieldAt(body, 0);
}
} // namespace PhonePacket
