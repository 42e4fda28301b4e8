#include "Device/plist/XmlPropertyList.h"

#include <QXmlStreamReader>

namespace
{
using Document = PropertyListDocument;
using Value = Document::Value;
using Kind = Document::Kind;

/// One pass over the elements, with the arrays and dictionaries that are open kept by hand.
class XmlWalk
{
public:
    explicit XmlWalk(const QByteArray& bytes)
        : _reader(bytes)
    {
    }

    Document parse()
    {
        if (!_reader.readNextStartElement() || _reader.name() != u"plist")
            return {};
        while (!_reader.atEnd()) {
            const auto token = _reader.readNext();
            if (token == QXmlStreamReader::StartElement && !open())
                return {};
            if (token == QXmlStreamReader::EndElement && !_open.empty())
                close();
        }
        if (_reader.hasError() || !_hasRoot)
            return {};
        _document.isList = true;
        return std::move(_document);
    }

private:
    /// An array or a dictionary whose end has not come yet.
    struct Open {
        Kind kind;
        std::vector<std::uint32_t> keys;
        std::vector<std::uint32_t> items;
    };

    /// False where the list nests too deeply.
    bool open()
    {
        const QStringView name = _reader.name();
        if (name == u"dict" || name == u"array") {
            if (_open.size() >= std::size_t(XmlPropertyList::MostLevels))
                return false;
            _open.push_back({name == u"dict" ? Kind::Dictionary : Kind::Array, {}, {}});
            return true;
        }
        const bool isKey = name == u"key";
        Value value;
        if (isKey || name == u"string")
            _document.addText(value, _reader.readElementText(QXmlStreamReader::SkipChildElements));
        else
            _reader.skipCurrentElement();
        place(value, isKey);
        return true;
    }

    void close()
    {
        Open done = std::move(_open.back());
        _open.pop_back();
        Value value{done.kind, std::uint32_t(_document.references.size()), 0};
        if (done.kind == Kind::Dictionary) {
            // A key that came last has no value.
            done.keys.resize(done.items.size());
            value.count = std::uint32_t(done.keys.size());
            _document.references.insert(_document.references.end(), done.keys.begin(),
                                        done.keys.end());
        } else {
            value.count = std::uint32_t(done.items.size());
        }
        _document.references.insert(_document.references.end(), done.items.begin(),
                                    done.items.end());
        place(value, false);
    }

    /// Puts a value where it belongs: into what is open, or at the root.
    void place(const Value& value, bool isKey)
    {
        const auto index = std::uint32_t(_document.values.size());
        _document.values.push_back(value);
        if (_open.empty()) {
            if (!_hasRoot)
                _document.root = index;
            _hasRoot = true;
            return;
        }
        Open& parent = _open.back();
        const bool isItem =
            parent.kind == Kind::Array || (!isKey && parent.keys.size() > parent.items.size());
        if (isItem)
            parent.items.push_back(index);
        else if (isKey && parent.keys.size() == parent.items.size())
            parent.keys.push_back(index);
        else
            _document.hasBroken = true; // a key without a value, or a value without a key
    }

    QXmlStreamReader _reader;
    Document _document;
    std::vector<Open> _open;
    bool _hasRoot = false;
};
} // namespace

PropertyListDocument XmlPropertyList::parse(const QByteArray& bytes)
{
    return XmlWalk(bytes).parse();
}
