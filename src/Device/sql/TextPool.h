#pragma once

#include <QByteArray>
#include <QString>

#include <string>
#include <vector>

/// Decodes equal texts once and gives them one shared buffer: thousands of rows name the same
/// artist. Texts are looked up some hundred at a time, since a look-up has to wait for memory
/// and many can wait together.
class TextPool
{
public:
    TextPool();

    /// Gives `target` the text, at the latest when `finish` is called: until then it must stay
    /// where it is. Bytes that are no UTF-8 give a null text.
    void share(QByteArrayView utf8, QString& target);
    void finish();

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
    /// A text that waits, its bytes in `_waitingBytes`.
    struct Waiting {
        std::size_t hash = 0;
        std::size_t start = 0;
        qsizetype length = 0;
        QString* target = nullptr;
    };

    [[nodiscard]] QByteArrayView bytesOf(const Waiting& waiting) const;
    [[nodiscard]] QByteArrayView bytesOf(const Entry& entry) const;
    const Entry* probable(std::size_t hash) const;
    const QString& shared(std::size_t hash, QByteArrayView utf8);
    Slot& find(std::size_t hash, QByteArrayView utf8);
    void grow();

    std::vector<Slot> _slots;
    std::vector<Entry> _entries;
    std::string _bytes;
    std::vector<Waiting> _waiting;
    std::string _waitingBytes;
};
