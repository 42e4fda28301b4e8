#include "Device/plist/PropertyList.h"

#include "Device/plist/PropertyListGuard.h"
#include "Platform/File.h"

#include <plist/plist.h>

namespace
{
plist_t parse(const QByteArray& bytes)
{
    plist_t root = nullptr;
    if (PropertyListGuard::isBinary(bytes)) {
        if (PropertyListGuard::isHarmlessBinary(bytes))
            plist_from_bin(bytes.constData(), std::uint32_t(bytes.size()), &root);
        return root;
    }
    const QByteArray xml = PropertyListGuard::plainXml(bytes);
    if (!xml.isEmpty())
        plist_from_xml(xml.constData(), std::uint32_t(xml.size()), &root);
    return root;
}
} // namespace

PropertyList PropertyList::fromFile(const QString& path)
{
    File file(path, File::Mode::Read);
    if (!file.isOpen() || file.size().value_or(0) > MostBytes)
        return fromBytes({});
    return fromBytes(file.readAll());
}

PropertyList PropertyList::fromBytes(const QByteArray& bytes)
{
    plist_t root = bytes.isEmpty() || bytes.size() > MostBytes ? nullptr : parse(bytes);
    return {std::shared_ptr<void>(root, plist_free), root};
}

PropertyList::PropertyList(std::shared_ptr<void> document, void* node)
    : _document(std::move(document))
    , _node(node)
{
}

bool PropertyList::isDictionary() const
{
    return _node && plist_get_node_type(_node) == PLIST_DICT;
}

std::vector<PropertyList> PropertyList::dictionaryValues() const
{
    std::vector<PropertyList> values;
    if (!isDictionary())
        return values;
    plist_dict_iter next = nullptr;
    plist_dict_new_iter(_node, &next);
    const std::unique_ptr<void, decltype(&free)> iterator(next, free);
    for (;;) {
        plist_t value = nullptr;
        plist_dict_next_item(_node, next, nullptr, &value);
        if (!value)
            return values;
        values.push_back({_document, value});
    }
}

std::vector<PropertyList> PropertyList::arrayItems() const
{
    std::vector<PropertyList> items;
    if (!_node || plist_get_node_type(_node) != PLIST_ARRAY)
        return items;
    plist_array_iter next = nullptr;
    plist_array_new_iter(_node, &next);
    const std::unique_ptr<void, decltype(&free)> iterator(next, free);
    for (;;) {
        plist_t item = nullptr;
        plist_array_next_item(_node, next, &item);
        if (!item)
            return items;
        items.push_back({_document, item});
    }
}

QString PropertyList::text(const char* key) const
{
    plist_t value = isDictionary() ? plist_dict_get_item(_node, key) : nullptr;
    if (!value || plist_get_node_type(value) != PLIST_STRING)
        return {};
    std::uint64_t length = 0;
    const char* utf8 = plist_get_string_ptr(value, &length);
    if (!utf8 || length == 0)
        return QLatin1String("");
    const QByteArrayView bytes(utf8, qsizetype(length));
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : QString();
}
