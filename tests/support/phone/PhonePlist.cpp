#include "support/phone/PhonePlist.h"

#include <plist/plist.h>

#include <cstdlib>

namespace
{
// Later versions of the library tell the format as well. Whichever there is, is called.

template <typename Result>
plist_t parse(Result (*fromMemory)(const char*, std::uint32_t, plist_t*), const QByteArray& bytes)
{
    plist_t root = nullptr;
    fromMemory(bytes.constData(), std::uint32_t(bytes.size()), &root);
    return root;
}

template <typename Result, typename Format>
plist_t parse(Result (*fromMemory)(const char*, std::uint32_t, plist_t*, Format*),
              const QByteArray& bytes)
{
    plist_t root = nullptr;
    fromMemory(bytes.constData(), std::uint32_t(bytes.size()), &root, nullptr);
    return root;
}
} // namespace

PhonePlist::PhonePlist()
    : _root(plist_new_dict(), plist_free)
{
}

PhonePlist::PhonePlist(const QByteArray& bytes)
{
    plist_t root = parse(plist_from_memory, bytes);
    if (!root || plist_get_node_type(root) != PLIST_DICT) {
        plist_free(root);
        root = plist_new_dict();
    }
    _root.reset(root, plist_free);
}

PhonePlist& PhonePlist::set(const char* key, const QString& text)
{
    plist_dict_set_item(_root.get(), key, plist_new_string(text.toUtf8().constData()));
    return *this;
}

PhonePlist& PhonePlist::set(const char* key, quint64 number)
{
    plist_dict_set_item(_root.get(), key, plist_new_uint(number));
    return *this;
}

PhonePlist& PhonePlist::setFlag(const char* key, bool flag)
{
    plist_dict_set_item(_root.get(), key, plist_new_bool(flag ? 1 : 0));
    return *this;
}

PhonePlist& PhonePlist::setData(const char* key, const QByteArray& data)
{
    plist_dict_set_item(_root.get(), key,
                        plist_new_data(data.constData(), std::uint64_t(data.size())));
    return *this;
}

PhonePlist& PhonePlist::set(const char* key, const PhonePlist& dictionary)
{
    plist_dict_set_item(_root.get(), key, plist_copy(dictionary._root.get()));
    return *this;
}

PhonePlist& PhonePlist::set(const char* key, const std::vector<PhonePlist>& list)
{
    plist_t array = plist_new_array();
    for (const PhonePlist& one : list)
        plist_array_append_item(array, plist_copy(one._root.get()));
    plist_dict_set_item(_root.get(), key, array);
    return *this;
}

void* PhonePlist::item(const char* key) const
{
    return plist_dict_get_item(_root.get(), key);
}

QString PhonePlist::text(const char* key) const
{
    plist_t node = item(key);
    if (!node || plist_get_node_type(node) != PLIST_STRING)
        return {};
    char* text = nullptr;
    plist_get_string_val(node, &text);
    const QString copy = QString::fromUtf8(text);
    std::free(text);
    return copy;
}

quint64 PhonePlist::number(const char* key) const
{
    plist_t node = item(key);
    std::uint64_t number = 0;
    if (node && plist_get_node_type(node) == PLIST_UINT)
        plist_get_uint_val(node, &number);
    return number;
}

QByteArray PhonePlist::xml() const
{
    char* text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(_root.get(), &text, &length);
    const QByteArray bytes(text, qsizetype(length));
    std::free(text);
    return bytes;
}
