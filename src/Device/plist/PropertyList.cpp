#include "Device/plist/PropertyList.h"

#include "Device/plist/BinaryPropertyList.h"
#include "Device/plist/PropertyListDocument.h"
#include "Device/plist/XmlPropertyList.h"
#include "Platform/File.h"

using Document = PropertyListDocument;

void PropertyListDocument::addText(Value& value, QString text)
{
    value.kind = Kind::Text;
    value.first = std::uint32_t(texts.size());
    const qsizetype nul = text.indexOf(QChar(u'\0'));
    if (nul < 0)
        texts.push_back({std::move(text), {}});
    else
        texts.push_back({text.first(nul), text.remove(QChar(u'\0'))});
}

namespace
{
/// The text that a key of a dictionary leads to; null where there is none.
const Document::Text* find(const Document& document, std::uint32_t dictionary, QStringView key)
{
    const Document::Value& value = document.values[dictionary];
    if (!document.isList || value.kind != Document::Kind::Dictionary)
        return nullptr;
    for (std::uint32_t i = 0; i < value.count; ++i) {
        const Document::Value& name = document.values[document.references[value.first + i]];
        if (name.kind != Document::Kind::Text || document.texts[name.first].ended != key)
            continue;
        const Document::Value& found =
            document.values[document.references[value.first + value.count + i]];
        return found.kind == Document::Kind::Text ? &document.texts[found.first] : nullptr;
    }
    return nullptr;
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
    auto document = std::make_shared<Document>();
    if (!bytes.isEmpty() && bytes.size() <= MostBytes)
        *document = BinaryPropertyList::isBinary(bytes) ? BinaryPropertyList::parse(bytes)
                                                        : XmlPropertyList::parse(bytes);
    if (document->values.empty()) {
        document->values.emplace_back();
        document->isList = false;
    }
    const std::uint32_t root = document->root;
    return {std::move(document), root};
}

PropertyList::PropertyList(std::shared_ptr<const Document> document, std::uint32_t value)
    : _document(std::move(document))
    , _value(value)
{
}

bool PropertyList::isValid() const
{
    return _document->isList;
}

bool PropertyList::hasBrokenValues() const
{
    return _document->hasBroken;
}

bool PropertyList::isDictionary() const
{
    return isValid() && _document->values[_value].kind == Document::Kind::Dictionary;
}

std::vector<PropertyList> PropertyList::dictionaryValues() const
{
    const Document::Value& value = _document->values[_value];
    return isDictionary() ? referred(value.first + value.count, value.count)
                          : std::vector<PropertyList>();
}

std::vector<PropertyList> PropertyList::arrayItems() const
{
    const Document::Value& value = _document->values[_value];
    return isValid() && value.kind == Document::Kind::Array ? referred(value.first, value.count)
                                                            : std::vector<PropertyList>();
}

std::vector<PropertyList> PropertyList::referred(std::uint32_t first, std::uint32_t count) const
{
    std::vector<PropertyList> values;
    values.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i)
        values.push_back({_document, _document->references[first + i]});
    return values;
}

QString PropertyList::text(QStringView key) const
{
    const Document::Text* text = find(*_document, _value, key);
    return text ? text->ended : QString();
}

QString PropertyList::textAcrossNuls(QStringView key) const
{
    const Document::Text* text = find(*_document, _value, key);
    return !text ? QString() : text->whole.isNull() ? text->ended : text->whole;
}
