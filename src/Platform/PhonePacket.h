#pragma once

#include <QByteArray>

#include <optional>

/// The packets of a phone's file service, as bytes: questions that read, and the heads of their
/// answers. The operations that would change a phone are not among them.
namespace PhonePacket
{
enum class Operation : quint64 {
    Status = 0x01, ///< an answer: how it went
    Data = 0x02,   ///< an answer: names, attributes or bytes
    ListFolder = 0x03,
    FileInfo = 0x0A,
    OpenFile = 0x0D,
    FileOpened = 0x0E, ///< an answer: the handle
    ReadFile = 0x0F,
    SeekFile = 0x11,
    CloseFile = 0x14
};

/// Statuses that mean something to us; all others are only passed on.
enum Status : quint64 { Success = 0, BadArgument = 7, NotFound = 8, EndOfData = 14 };

constexpr qsizetype HeaderSize = 40;
/// What an answer holds behind its head when it is a status or a handle.
constexpr qsizetype NumberSize = 8;

/// A whole packet.
QByteArray question(quint64 number, Operation operation, const QByteArray& body);

QByteArray bodyForPath(const QString& path);
QByteArray bodyToOpen(const QString& path);
QByteArray bodyToRead(quint64 handle, quint64 size);
QByteArray bodyToSeek(quint64 handle, qint64 offset);
QByteArray bodyToClose(quint64 handle);

/// What the head of an answer says.
struct Head {
    quint64 number = 0; ///< of the question
    Operation operation = Operation::Status;
    quint64 bodySize = 0; ///< what follows; only a claim until it is there
};

/// None for what is no head of an answer: a wrong signature, lengths that contradict each other,
/// a kind of packet that answers nothing, or a number of a wrong size.
std::optional<Head> readHead(const QByteArray& bytes);

/// The number that a body holds.
quint64 numberIn(const QByteArray& body);
} // namespace PhonePacket
