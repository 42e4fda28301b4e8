#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

/// A value of a property list, XML or binary, that a device's file holds. The file is untrusted:
/// what is too large, nests too deeply, or says little and means much is no property list. A
/// question that does not fit the value's kind has an empty answer.
class PropertyList
{
public:
    /// Larger files are not read.
    static constexpr qint64 MostBytes = qint64(32) * 1024 * 1024;

    /// A value that is nothing when the bytes are no property list.
    static PropertyList fromFile(const QString& path);
    static PropertyList fromBytes(const QByteArray& bytes);

    [[nodiscard]] bool isDictionary() const;
    [[nodiscard]] std::vector<PropertyList> dictionaryValues() const;
    [[nodiscard]] std::vector<PropertyList> arrayItems() const;
    /// The string under a key of a dictionary; null when there is none.
    [[nodiscard]] QString text(const char* key) const;

private:
    PropertyList(std::shared_ptr<void> document, void* node);

    // A plist_t each; the document owns all of its nodes.
    std::shared_ptr<void> _document;
    void* _node = nullptr;
};
