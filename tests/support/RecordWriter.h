#pragma once

#include <QByteArray>
#include <QString>
#include <QtEndian>

#include <algorithm>
#include <vector>

/// A record under construction: a header of fixed length, then whatever it holds.
class Record
{
public:
    Record(const char* tag, qsizetype headerLength)
        : _bytes(headerLength, '\0')
    {
        qToLittleEndian<quint32>(quint32(headerLength), at(4));
        std::copy(tag, tag + 4, _bytes.data());
    }

    /// One that is written already, to be changed.
    explicit Record(QByteArray bytes)
        : _bytes(std::move(bytes))
    {
    }

    Record& u32(qsizetype offset, quint32 value)
    {
        qToLittleEndian(value, at(offset));
        return *this;
    }
    Record& u16(qsizetype offset, quint16 value)
    {
        qToLittleEndian(value, at(offset));
        return *this;
    }
    Record& u8(qsizetype offset, quint8 value)
    {
        _bytes[offset] = char(value);
        return *this;
    }
    Record& append(const QByteArray& bytes)
    {
        _bytes += bytes;
        return *this;
    }
    Record& append(const std::vector<QByteArray>& records)
    {
        for (const QByteArray& record : records)
            _bytes += record;
        return *this;
    }
    /// Writes the total length into byte 8.
    QByteArray closed() { return u32(8, quint32(_bytes.size())).open(); }
    /// As it is: byte 8 is something else.
    QByteArray open() { return _bytes; }

private:
    char* at(qsizetype offset) { return _bytes.data() + offset; }

    QByteArray _bytes;
};

/// A text as these databases store it: UTF-16, little-endian.
inline QByteArray utf16Bytes(const QString& text)
{
    QByteArray bytes(text.size() * 2, Qt::Uninitialized);
    qToLittleEndian<quint16>(text.utf16(), text.size(), bytes.data());
    return bytes;
}
