#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

struct PropertyListDocument;

/// A value of a property list, XML or binary, that a device's file holds. The file is untrusted:
/// one that is too large, nests too deeply, or holds an array or a dictionary in two places is no
/// property list. A value that cannot be read costs itself. A question that does not fit the
/// value's kind has an empty answer.
class PropertyList
{
public:
    /// Larger files are not read.
    static constexpr qint64 MostBytes = qint64(32) * 1024 * 1024;

    /// A value that is nothing when the bytes are no property list.
    static PropertyList fromFile(const QString& path);
    static PropertyList fromBytes(const QByteArray& bytes);

    /// Whether the file was a property list.
    [[nodiscard]] bool isValid() const;
    /// Whether some of its values could not be read.
    [[nodiscard]] bool hasBrokenValues() const;

    [[nodiscard]] bool isDictionary() const;
    [[nodiscard]] std::vector<PropertyList> dictionaryValues() const;
    [[nodiscard]] std::vector<PropertyList> arrayItems() const;
    /// The string under a key of a dictionary, up to its first NUL; null when there is none.
    [[nodiscard]] QString text(QStringView key) const;
    /// The same with what follows a NUL, and without the NULs.
    [[nodiscard]] QString textAcrossNuls(QStringView key) const;

private:
    PropertyList(std::shared_ptr<const PropertyListDocument> document, std::uint32_t value);
    [[nodiscard]] std::vector<PropertyList> referred(std::uint32_t first,
                                                     std::uint32_t count) const;

    std::shared_ptr<const PropertyListDocument> _document;
    std::uint32_t _value = 0;
};
