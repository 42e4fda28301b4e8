#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

/// Property lists as phones and the service between them and the computer exchange them.
class PhonePlist
{
public:
    /// An empty dictionary.
    PhonePlist();
    /// What the bytes hold, text or binary; not a dictionary: an empty one.
    explicit PhonePlist(const QByteArray& bytes);

    PhonePlist& set(const char* key, const QString& text);
    PhonePlist& set(const char* key, quint64 number);
    PhonePlist& setFlag(const char* key, bool flag);
    PhonePlist& setData(const char* key, const QByteArray& data);
    PhonePlist& set(const char* key, const PhonePlist& dictionary);
    PhonePlist& set(const char* key, const std::vector<PhonePlist>& list);

    [[nodiscard]] QString text(const char* key) const;
    [[nodiscard]] quint64 number(const char* key) const;
    [[nodiscard]] QByteArray xml() const;

private:
    [[nodiscard]] void* item(const char* key) const;

    std::shared_ptr<void> _root;
};
