#pragma once

#include <QByteArray>
#include <QString>

#include <string>
#include <vector>

/// Decodes equal texts once and gives them one shared buffer: thousands of rows name the same
/// artist. Bytes that are no UTF-8 give a null text.
class TextPool
{
public:
    QString shared(QByteArrayView utf8);

    static QString decode(QByteArrayView utf8);

private:
    /// A text, and where its bytes stand in `_bytes`.
    struct Entry {
        std::size_t hash = 0;
        std::size_t start = 0;
        qsizetype length = 0;
        QString text;
    };
    /// An entry's number plus one; 0 is a free slot. The hash's upper half settles nearly every
    /// comparison without a look at the entry.
    struct Slot {
        quint32 hash = 0;
        quint32 entry = 0;
    };

    Slot& find(std::size_t hash, QByteArrayView utf8);
    void grow();

    std::vector<Slot> _slots;
    std::vector<Entry> _entries;
    std::string _bytes;
};
